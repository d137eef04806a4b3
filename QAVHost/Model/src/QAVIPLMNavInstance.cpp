#include "QAVIPLMNavInstance.h"

QAV_IMPLEMENT_CLASS(QAVIPLMNavInstance, QAVIPLMComponent, "Model");

QAVIPLMNavInstance::~QAVIPLMNavInstance() = default;
