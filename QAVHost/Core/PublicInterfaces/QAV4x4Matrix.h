// A 4 x 4 transformation of 3D space in double precision, acting on column
// vectors: a point p becomes M p. Stored row by row; the identity by default.
#ifndef QAV4x4Matrix_h
#define QAV4x4Matrix_h

#include <array>

#include "QAVHostExport.h"
#include "QAVMathPoint.h"
#include "QAVMathPointf.h"
#include "QAVMathVectorf.h"

class QAVHOST_API QAV4x4Matrix {
 public:
  QAV4x4Matrix();  // the identity
  explicit QAV4x4Matrix(const std::array<double, 16>& rowMajor) : _m(rowMajor) {}
  // The frame of three axes (the columns) and an origin.
  QAV4x4Matrix(const QAVMathVector& x, const QAVMathVector& y, const QAVMathVector& z,
               const QAVMathPoint& origin);
  // The frame of three axes (the columns) and an origin, given in single precision.
  QAV4x4Matrix(const QAVMathVectorf& x, const QAVMathVectorf& y, const QAVMathVectorf& z,
               const QAVMathPointf& origin)
      : _m{x.x, y.x, z.x, origin.x, x.y, y.y, z.y, origin.y, x.z, y.z, z.z, origin.z, 0, 0, 0, 1} {}

  double operator()(int row, int column) const { return _m[row * 4 + column]; }
  const std::array<double, 16>& RowMajor() const { return _m; }

  // This transformation after `other`: (this * other) p = this (other p).
  QAV4x4Matrix operator*(const QAV4x4Matrix& other) const;
  QAVMathPoint operator*(const QAVMathPoint& point) const;  // with the perspective divide
  QAVMathVector Rotate(const QAVMathVector& vector) const;  // the linear part only
  // A point in single precision: coefficients and arithmetic in float, with the
  // perspective divide.
  QAVMathPointf operator*(const QAVMathPointf& point) const {
    const auto f = [this](int i) { return static_cast<float>(_m[i]); };
    const float x = f(0) * point.x + f(1) * point.y + f(2) * point.z + f(3);
    const float y = f(4) * point.x + f(5) * point.y + f(6) * point.z + f(7);
    const float z = f(8) * point.x + f(9) * point.y + f(10) * point.z + f(11);
    const float w = f(12) * point.x + f(13) * point.y + f(14) * point.z + f(15);
    if (w == 1.0F || w == 0.0F) return {x, y, z};
    return {x / w, y / w, z / w};
  }

  // True when every coefficient is finite and the linear part is invertible
  // (its determinant not negligibly small).
  bool IsUsable() const;
  double Determinant3x3() const;
  // The inverse of the transpose of the linear part, for normals.
  QAV4x4Matrix NormalMatrix() const;
  // The inverse of an affine transformation (its last row 0 0 0 1); the
  // identity when the linear part is singular.
  QAV4x4Matrix AffineInverse() const;

  friend bool operator==(const QAV4x4Matrix& a, const QAV4x4Matrix& b) { return a._m == b._m; }

 private:
  std::array<double, 16> _m;
};

#endif
