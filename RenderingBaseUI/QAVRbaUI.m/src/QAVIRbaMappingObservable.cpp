#include "QAVIRbaMappingObservable.h"

QAV_IMPLEMENT_CLASS(QAVIRbaMappingObservable, QAVBaseUnknown, "RenderingBaseUI");
