#include "QAVEventSubscriber.h"

QAV_IMPLEMENT_CLASS(QAVEventSubscriber, QAVBaseUnknown, "System");

QAVEventSubscriber::~QAVEventSubscriber() = default;
