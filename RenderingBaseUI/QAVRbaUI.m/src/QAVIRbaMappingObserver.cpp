#include "QAVIRbaMappingObserver.h"

QAV_IMPLEMENT_CLASS(QAVIRbaMappingObserver, QAVBaseUnknown, "RenderingBaseUI");
