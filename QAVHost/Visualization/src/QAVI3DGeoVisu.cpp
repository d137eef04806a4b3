#include "QAVI3DGeoVisu.h"

QAV_IMPLEMENT_CLASS(QAVI3DGeoVisu, QAVBaseUnknown, "Visualization");

QAVI3DGeoVisu::~QAVI3DGeoVisu() = default;
