#include "QAVIPLMNavRepInstance.h"

QAV_IMPLEMENT_CLASS(QAVIPLMNavRepInstance, QAVIPLMComponent, "Model");

QAVIPLMNavRepInstance::~QAVIPLMNavRepInstance() = default;
