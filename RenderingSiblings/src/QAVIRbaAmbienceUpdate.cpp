#include "QAVIRbaAmbienceUpdate.h"

QAV_IMPLEMENT_CLASS(QAVIRbaAmbienceUpdate, QAVBaseUnknown, "RenderingSiblings");

QAVIRbaAmbienceUpdate::~QAVIRbaAmbienceUpdate() = default;
