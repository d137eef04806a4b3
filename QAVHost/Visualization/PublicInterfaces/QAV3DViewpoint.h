// A 3D viewpoint: the eye (origin), the point looked at, the up direction and
// the vertical field of view, in degrees.
#ifndef QAV3DViewpoint_h
#define QAV3DViewpoint_h

#include "QAVBaseUnknown.h"
#include "QAVMathPoint.h"

class QAVHOST_API QAV3DViewpoint : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAV3DViewpoint() = default;
  ~QAV3DViewpoint() override;

  const QAVMathPoint& GetOrigin() const { return _origin; }
  const QAVMathPoint& GetTarget() const { return _target; }
  const QAVMathVector& GetUpDirection() const { return _up; }
  double GetFieldOfView() const { return _fieldOfView; }
  void Set(const QAVMathPoint& origin, const QAVMathPoint& target, const QAVMathVector& up,
           double fieldOfViewDegrees);

 private:
  QAVMathPoint _origin{0, 0, 10};
  QAVMathPoint _target{0, 0, 0};
  QAVMathVector _up{0, 1, 0};
  double _fieldOfView = 45.0;
};

#endif
