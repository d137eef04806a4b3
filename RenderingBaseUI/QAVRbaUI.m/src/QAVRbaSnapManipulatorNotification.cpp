#include "QAVRbaSnapManipulatorNotification.h"

QAV_IMPLEMENT_CLASS(QAVRbaSnapManipulatorNotification, QAVNotification, "RenderingBaseUI");

QAVRbaSnapManipulatorNotification::QAVRbaSnapManipulatorNotification(int eventName,
                                                                     const QAVMathVector& normal,
                                                                     const QAVMathVector& origin)
    : QAVNotification(-1), _eventName(eventName), _normal(normal), _origin(origin) {}

QAVRbaSnapManipulatorNotification::QAVRbaSnapManipulatorNotification(
    const QAVRbaSnapManipulatorNotification& other) = default;

QAVRbaSnapManipulatorNotification& QAVRbaSnapManipulatorNotification::operator=(
    const QAVRbaSnapManipulatorNotification& other) = default;

QAVRbaSnapManipulatorNotification::~QAVRbaSnapManipulatorNotification() = default;
