// Sent by the snap manipulator: the manipulation phase and the frame it snapped
// to, given by the surface normal and the origin point.
#ifndef QAVRbaSnapManipulatorNotification_h
#define QAVRbaSnapManipulatorNotification_h

#include "QAVMathVector.h"
#include "QAVNotification.h"
#include "QAVRbaUIExport.h"

class QAVRBAUI_API QAVRbaSnapManipulatorNotification : public QAVNotification {
  QAV_DECLARE_CLASS
 public:
  // Note the order: the normal first, then the origin.
  QAVRbaSnapManipulatorNotification(int eventName, const QAVMathVector& normal,
                                    const QAVMathVector& origin);
  QAVRbaSnapManipulatorNotification(const QAVRbaSnapManipulatorNotification& other);
  QAVRbaSnapManipulatorNotification& operator=(const QAVRbaSnapManipulatorNotification& other);
  ~QAVRbaSnapManipulatorNotification() override;

  // The phase: 0 begin of a drag, 1 drag step, 2 end of a drag, 3 hover step.
  int GetEventName() const { return _eventName; }
  QAVMathVector GetNormal() const { return _normal; }
  QAVMathVector GetOrigin() const { return _origin; }

 private:
  int _eventName;
  QAVMathVector _normal;
  QAVMathVector _origin;
};

#endif
