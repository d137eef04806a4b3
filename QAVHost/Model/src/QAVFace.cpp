#include "QAVFace.h"

#include <cmath>

QAV_IMPLEMENT_CLASS(QAVFace, QAVBaseUnknown, "Model");

QAVFace::QAVFace(const QAVMathPoint& centre, const QAVMathVector& halfU, const QAVMathVector& halfV)
    : _centre(centre), _halfU(halfU), _halfV(halfV) {}

QAVFace::~QAVFace() = default;

void QAVFace::GetPoint(double t, QAVMathPoint& point) const {
  point = {_centre.x + t * _halfU.x, _centre.y + t * _halfU.y, _centre.z + t * _halfU.z};
}

void QAVFace::GetBoundingBox(QAVMathBox& box) const {
  // The corners are the centre plus or minus each half side.
  const double dx = std::abs(_halfU.x) + std::abs(_halfV.x);
  const double dy = std::abs(_halfU.y) + std::abs(_halfV.y);
  const double dz = std::abs(_halfU.z) + std::abs(_halfV.z);
  box = QAVMathBox(_centre.x - dx, _centre.x + dx, _centre.y - dy, _centre.y + dy, _centre.z - dz,
                   _centre.z + dz);
}
