#include "QAV3DViewpoint.h"

QAV_IMPLEMENT_CLASS(QAV3DViewpoint, QAVBaseUnknown, "Visualization");

QAV3DViewpoint::~QAV3DViewpoint() = default;

void QAV3DViewpoint::Set(const QAVMathPoint& origin, const QAVMathPoint& target,
                         const QAVMathVector& up, double fieldOfViewDegrees) {
  _origin = origin;
  _target = target;
  _up = up;
  _fieldOfView = fieldOfViewDegrees;
}
