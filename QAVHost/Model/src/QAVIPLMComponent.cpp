#include "QAVIPLMComponent.h"

QAV_IMPLEMENT_CLASS(QAVIPLMComponent, QAVBaseUnknown, "Model");

QAVIPLMComponent::~QAVIPLMComponent() = default;
