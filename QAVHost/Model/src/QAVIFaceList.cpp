#include "QAVIFaceList.h"

QAV_IMPLEMENT_CLASS(QAVIFaceList, QAVBaseUnknown, "Model");

QAVIFaceList::~QAVIFaceList() = default;
