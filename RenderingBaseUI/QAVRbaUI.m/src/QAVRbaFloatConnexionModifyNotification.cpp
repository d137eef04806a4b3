#include "QAVRbaFloatConnexionModifyNotification.h"

QAV_IMPLEMENT_CLASS(QAVRbaFloatConnexionModifyNotification, QAVRbaModifyParameterNotification,
                    "RenderingBaseUI");

QAVRbaFloatConnexionModifyNotification::QAVRbaFloatConnexionModifyNotification(
    const QAVString& name, QAVBaseUnknown* object, const GUID& iid, double previous, double next)
    : QAVRbaModifyParameterNotification(name, object, iid), _previous(previous), _next(next) {}

// The handle is taken by value so that its reference goes when the constructor
// returns; nothing of it, nor the kind, is kept.
QAVRbaFloatConnexionModifyNotification::QAVRbaFloatConnexionModifyNotification(
    QAVBaseUnknown* object, QAVBaseUnknown_var /*handle*/, const GUID& iid,
    QAVAttributKind /*kind*/)
    : QAVRbaModifyParameterNotification(object, iid), _previous(0.0), _next(0.0) {}

QAVRbaFloatConnexionModifyNotification::QAVRbaFloatConnexionModifyNotification(
    const QAVRbaFloatConnexionModifyNotification& other) = default;

QAVRbaFloatConnexionModifyNotification::~QAVRbaFloatConnexionModifyNotification() = default;

QAVModelNotification* QAVRbaFloatConnexionModifyNotification::Clone() const {
  return new QAVRbaFloatConnexionModifyNotification(GetName(), GetObject(), GetInterfaceIID(),
                                                    _previous, _next);
}
