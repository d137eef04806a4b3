#include "QAVRbaModifyParameterNotification.h"

QAV_IMPLEMENT_CLASS(QAVRbaModifyParameterNotification, QAVModelNotification, "System");

QAVRbaModifyParameterNotification::QAVRbaModifyParameterNotification(const QAVString& name,
                                                                     QAVBaseUnknown* object,
                                                                     const GUID& iid)
    : _name(name), _object(object), _iid(iid) {}

QAVRbaModifyParameterNotification::QAVRbaModifyParameterNotification(QAVBaseUnknown* object,
                                                                     const GUID& iid)
    : _object(object), _iid(iid) {}

QAVRbaModifyParameterNotification::~QAVRbaModifyParameterNotification() = default;

QAVModelNotification* QAVRbaModifyParameterNotification::Clone() const {
  return new QAVRbaModifyParameterNotification(*this);
}
