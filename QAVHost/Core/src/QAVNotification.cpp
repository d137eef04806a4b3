#include "QAVNotification.h"

QAV_IMPLEMENT_CLASS(QAVNotification, QAVBaseUnknown, "System");

QAVNotification::~QAVNotification() = default;
