#include "QAVISpecObject.h"

QAV_IMPLEMENT_CLASS(QAVISpecObject, QAVBaseUnknown, "Model");

QAVISpecObject::~QAVISpecObject() = default;
