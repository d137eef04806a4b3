// A direction of 3D space in single precision: a vector meant to be of unit
// length. The default direction is the Z axis.
#ifndef QAVMathDirectionf_h
#define QAVMathDirectionf_h

#include "QAVMathVectorf.h"

struct QAVMathDirectionf : QAVMathVectorf {
  constexpr QAVMathDirectionf() : QAVMathVectorf(0.0F, 0.0F, 1.0F) {}
  // Normalised from the vector given (a null vector stays null).
  explicit QAVMathDirectionf(const QAVMathVectorf& v) : QAVMathVectorf(v) { Normalize(); }
  QAVMathDirectionf(float xValue, float yValue, float zValue)
      : QAVMathDirectionf(QAVMathVectorf(xValue, yValue, zValue)) {}
};

#endif
