// A point of 3D space in single precision.
#ifndef QAVMathPointf_h
#define QAVMathPointf_h

#include "QAVMathVectorf.h"

struct QAVMathPointf {
  float x = 0.0F;
  float y = 0.0F;
  float z = 0.0F;

  constexpr QAVMathPointf() = default;
  constexpr QAVMathPointf(float xValue, float yValue, float zValue)
      : x(xValue), y(yValue), z(zValue) {}

  friend constexpr QAVMathVectorf operator-(const QAVMathPointf& a, const QAVMathPointf& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
  }
  friend constexpr QAVMathPointf operator+(const QAVMathPointf& p, const QAVMathVectorf& v) {
    return {p.x + v.x, p.y + v.y, p.z + v.z};
  }
  friend constexpr bool operator==(const QAVMathPointf& a, const QAVMathPointf& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
  }
};

#endif
