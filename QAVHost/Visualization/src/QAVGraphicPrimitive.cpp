#include "QAVGraphicPrimitive.h"

QAV_IMPLEMENT_CLASS(QAVGraphicPrimitive, QAVBaseUnknown, "Visualization");
QAV_IMPLEMENT_CLASS(QAV3DFaceGP, QAVGraphicPrimitive, "Visualization");
QAV_IMPLEMENT_CLASS(QAV3DFixedPlanGP, QAVGraphicPrimitive, "Visualization");
QAV_IMPLEMENT_CLASS(QAV3DFixedArrowGP, QAVGraphicPrimitive, "Visualization");

QAVGraphicPrimitive::~QAVGraphicPrimitive() = default;
QAV3DFaceGP::~QAV3DFaceGP() = default;
QAV3DFixedPlanGP::~QAV3DFixedPlanGP() = default;
QAV3DFixedArrowGP::~QAV3DFixedArrowGP() = default;
