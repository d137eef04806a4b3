// An affine transformation of 3D space in double precision: a linear part,
// given by the images of the three axes (its columns), then a translation.
// The identity by default. A placement (an isometry) has unit, orthogonal,
// right-handed axes; the type does not enforce it.
#ifndef QAVMathTransformation_h
#define QAVMathTransformation_h

#include "QAV4x4Matrix.h"
#include "QAVMathPoint.h"
#include "QAVMathVector.h"

struct QAVMathTransformation {
  QAVMathVector xAxis{1, 0, 0};
  QAVMathVector yAxis{0, 1, 0};
  QAVMathVector zAxis{0, 0, 1};
  QAVMathVector translation{0, 0, 0};

  constexpr QAVMathTransformation() = default;
  constexpr QAVMathTransformation(const QAVMathVector& x, const QAVMathVector& y,
                                  const QAVMathVector& z, const QAVMathVector& t)
      : xAxis(x), yAxis(y), zAxis(z), translation(t) {}

  // The image of the origin.
  QAVMathPoint GetOrigin() const { return {translation.x, translation.y, translation.z}; }
  QAVMathPoint operator*(const QAVMathPoint& p) const {
    return {xAxis.x * p.x + yAxis.x * p.y + zAxis.x * p.z + translation.x,
            xAxis.y * p.x + yAxis.y * p.y + zAxis.y * p.z + translation.y,
            xAxis.z * p.x + yAxis.z * p.y + zAxis.z * p.z + translation.z};
  }
  QAV4x4Matrix ToMatrix() const { return {xAxis, yAxis, zAxis, GetOrigin()}; }

  friend constexpr bool operator==(const QAVMathTransformation& a, const QAVMathTransformation& b) {
    return a.xAxis == b.xAxis && a.yAxis == b.yAxis && a.zAxis == b.zAxis &&
           a.translation == b.translation;
  }
};

#endif
