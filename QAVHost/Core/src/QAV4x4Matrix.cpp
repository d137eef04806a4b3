#include "QAV4x4Matrix.h"

#include <cmath>
#include <cstddef>

QAV4x4Matrix::QAV4x4Matrix() : _m{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1} {}

QAV4x4Matrix::QAV4x4Matrix(const QAVMathVector& x, const QAVMathVector& y, const QAVMathVector& z,
                           const QAVMathPoint& origin)
    : _m{x.x, y.x, z.x, origin.x, x.y, y.y, z.y, origin.y, x.z, y.z, z.z, origin.z, 0, 0, 0, 1} {}

QAV4x4Matrix QAV4x4Matrix::operator*(const QAV4x4Matrix& other) const {
  std::array<double, 16> product{};
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) {
      double sum = 0.0;
      for (int k = 0; k < 4; ++k)
        sum += _m[r * 4 + k] * other._m[k * 4 + c];
      product[r * 4 + c] = sum;
    }
  return QAV4x4Matrix(product);
}

QAVMathPoint QAV4x4Matrix::operator*(const QAVMathPoint& p) const {
  const double x = _m[0] * p.x + _m[1] * p.y + _m[2] * p.z + _m[3];
  const double y = _m[4] * p.x + _m[5] * p.y + _m[6] * p.z + _m[7];
  const double z = _m[8] * p.x + _m[9] * p.y + _m[10] * p.z + _m[11];
  const double w = _m[12] * p.x + _m[13] * p.y + _m[14] * p.z + _m[15];
  if (w == 1.0 || w == 0.0) return {x, y, z};
  return {x / w, y / w, z / w};
}

QAVMathVector QAV4x4Matrix::Rotate(const QAVMathVector& v) const {
  return {_m[0] * v.x + _m[1] * v.y + _m[2] * v.z, _m[4] * v.x + _m[5] * v.y + _m[6] * v.z,
          _m[8] * v.x + _m[9] * v.y + _m[10] * v.z};
}

double QAV4x4Matrix::Determinant3x3() const {
  return _m[0] * (_m[5] * _m[10] - _m[6] * _m[9]) - _m[1] * (_m[4] * _m[10] - _m[6] * _m[8]) +
         _m[2] * (_m[4] * _m[9] - _m[5] * _m[8]);
}

bool QAV4x4Matrix::IsUsable() const {
  for (const double value : _m)
    if (!std::isfinite(value)) return false;
  return std::abs(Determinant3x3()) > 1e-12;
}

QAV4x4Matrix QAV4x4Matrix::NormalMatrix() const {
  // The cofactor matrix of the linear part divided by its determinant (a
  // singular part gives the identity: it has no normals to keep).
  const auto& m = _m;
  const double det = Determinant3x3();
  if (det == 0.0) return {};
  const double k = 1.0 / det;
  const std::array<double, 16> inverseTranspose = {k * (m[5] * m[10] - m[6] * m[9]),
                                                   k * (m[6] * m[8] - m[4] * m[10]),
                                                   k * (m[4] * m[9] - m[5] * m[8]),
                                                   0,
                                                   k * (m[2] * m[9] - m[1] * m[10]),
                                                   k * (m[0] * m[10] - m[2] * m[8]),
                                                   k * (m[1] * m[8] - m[0] * m[9]),
                                                   0,
                                                   k * (m[1] * m[6] - m[2] * m[5]),
                                                   k * (m[2] * m[4] - m[0] * m[6]),
                                                   k * (m[0] * m[5] - m[1] * m[4]),
                                                   0,
                                                   0,
                                                   0,
                                                   0,
                                                   1};
  return QAV4x4Matrix(inverseTranspose);
}

QAV4x4Matrix QAV4x4Matrix::AffineInverse() const {
  if (Determinant3x3() == 0.0) return {};
  // The inverse of the linear part is the transpose of the normal matrix; the
  // translation goes back through it.
  const QAV4x4Matrix n = NormalMatrix();
  std::array<double, 16> inverse{};
  for (std::size_t r = 0; r < 3; ++r) {
    double* row = &inverse[r * 4];
    for (std::size_t c = 0; c < 3; ++c)
      row[c] = n(static_cast<int>(c), static_cast<int>(r));
    row[3] = -(row[0] * _m[3] + row[1] * _m[7] + row[2] * _m[11]);
  }
  inverse[15] = 1;
  return QAV4x4Matrix(inverse);
}
