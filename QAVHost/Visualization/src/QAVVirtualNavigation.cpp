#include "QAVVirtualNavigation.h"

QAV_IMPLEMENT_CLASS(QAVVirtualNavigation, QAVBaseUnknown, "Visualization");

QAVVirtualNavigation::~QAVVirtualNavigation() = default;
