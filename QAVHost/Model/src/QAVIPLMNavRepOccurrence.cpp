#include "QAVIPLMNavRepOccurrence.h"

QAV_IMPLEMENT_CLASS(QAVIPLMNavRepOccurrence, QAVBaseUnknown, "Model");

QAVIPLMNavRepOccurrence::~QAVIPLMNavRepOccurrence() = default;
