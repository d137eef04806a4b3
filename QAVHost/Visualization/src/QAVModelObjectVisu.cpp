#include "QAVModelObjectVisu.h"

#include "QAVExtension.h"

QAV_IMPLEMENT_CLASS(QAVModelObjectVisu, QAVI3DGeoVisu, "Visualization");
QAV_REGISTER_EXTENSION(QAVModelObjectVisu, "QAVModelObject", QAVI3DGeoVisu);

QAVModelObjectVisu::QAVModelObjectVisu() = default;
QAVModelObjectVisu::~QAVModelObjectVisu() = default;
