// A 4 x 4 transformation of 3D space in double precision, acting on column
// vectors: a point p becomes M p. Stored row by row; the identity by default.
#ifndef QAV4x4Matrix_h
#define QAV4x4Matrix_h

#include <array>

#include "QAVHostExport.h"
#include "QAVMathPoint.h"

class QAVHOST_API QAV4x4Matrix {
 public:
  QAV4x4Matrix();  // the identity
  explicit QAV4x4Matrix(const std::array<double, 16>& rowMajor) : _m(rowMajor) {}
  // The frame of three axes (the columns) and an origin.
  QAV4x4Matrix(const QAVMathVector& x, const QAVMathVector& y, const QAVMathVector& z,
               const QAVMathPoint& origin);

  double operator()(int row, int column) const { return _m[row * 4 + column]; }
  const std::array<double, 16>& RowMajor() const { return _m; }

  // This transformation after `other`: (this * other) p = this (other p).
  QAV4x4Matrix operator*(const QAV4x4Matrix& other) const;
  QAVMathPoint operator*(const QAVMathPoint& point) const;  // with the perspective divide
  QAVMathVector Rotate(const QAVMathVector& vector) const;  // the linear part only

  // True when every coefficient is finite and the linear part is invertible
  // (its determinant not negligibly small).
  bool IsUsable() const;
  double Determinant3x3() const;
  // The inverse of the transpose of the linear part, for normals.
  QAV4x4Matrix NormalMatrix() const;

  friend bool operator==(const QAV4x4Matrix& a, const QAV4x4Matrix& b) { return a._m == b._m; }

 private:
  std::array<double, 16> _m;
};

#endif
