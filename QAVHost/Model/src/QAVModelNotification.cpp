#include "QAVModelNotification.h"

QAV_IMPLEMENT_CLASS(QAVModelNotification, QAVNotification, "System");

QAVModelNotification::~QAVModelNotification() = default;

QAVModelNotification* QAVModelNotification::Clone() const {
  return new QAVModelNotification(*this);
}
