#include "QAVIRbaGeometry.h"

QAV_IMPLEMENT_CLASS(QAVIRbaGeometry, QAVBaseUnknown, "RenderingSiblings");

QAVIRbaGeometry::~QAVIRbaGeometry() = default;
