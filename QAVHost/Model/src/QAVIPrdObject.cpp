#include "QAVIPrdObject.h"

QAV_IMPLEMENT_CLASS(QAVIPrdObject, QAVIPLMComponent, "Model");

QAVIPrdObject::~QAVIPrdObject() = default;
