#include "QAVModifyAttribut.h"

#include <utility>

QAV_IMPLEMENT_CLASS(QAVModifyAttribut, QAVModelNotification, "System");

QAVModifyAttribut::QAVModifyAttribut(QAVBaseUnknown* object, QAVBaseUnknown_var handle,
                                     const GUID& iid, QAVAttributKind kind, QAVPathElement path)
    : _object(object), _handle(std::move(handle)), _iid(iid), _kind(kind), _path(path) {}

QAVModifyAttribut::~QAVModifyAttribut() = default;

QAVModelNotification* QAVModifyAttribut::Clone() const { return new QAVModifyAttribut(*this); }
