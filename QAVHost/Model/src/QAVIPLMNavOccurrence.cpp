#include "QAVIPLMNavOccurrence.h"

QAV_IMPLEMENT_CLASS(QAVIPLMNavOccurrence, QAVBaseUnknown, "Model");

QAVIPLMNavOccurrence::~QAVIPLMNavOccurrence() = default;
