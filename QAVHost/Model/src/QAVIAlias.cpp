#include "QAVIAlias.h"

QAV_IMPLEMENT_CLASS(QAVIAlias, QAVBaseUnknown, "Model");

QAVIAlias::~QAVIAlias() = default;
