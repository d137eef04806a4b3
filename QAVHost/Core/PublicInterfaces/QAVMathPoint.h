// Points of 3D space (double precision) and of a viewer's graphic area (float
// pixels), and the host's infinity.
#ifndef QAVMathPoint_h
#define QAVMathPoint_h

#include <cmath>
#include <limits>

#include "QAVMathVector.h"

// The host's infinite value: anything at least this large counts as infinite.
inline constexpr double QAVMathInfinite = std::numeric_limits<double>::infinity();

struct QAVMathPoint {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  constexpr QAVMathPoint() = default;
  constexpr QAVMathPoint(double xValue, double yValue, double zValue)
      : x(xValue), y(yValue), z(zValue) {}

  friend constexpr QAVMathVector operator-(const QAVMathPoint& a, const QAVMathPoint& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
  }
  friend constexpr QAVMathPoint operator+(const QAVMathPoint& p, const QAVMathVector& v) {
    return {p.x + v.x, p.y + v.y, p.z + v.z};
  }
  friend constexpr bool operator==(const QAVMathPoint& a, const QAVMathPoint& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
  }
  // The distance to another point.
  double DistanceTo(const QAVMathPoint& other) const {
    const QAVMathVector d = other - *this;
    return std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
  }
};

struct QAVMathPoint2Df {
  float x = 0.0F;
  float y = 0.0F;
};

#endif
