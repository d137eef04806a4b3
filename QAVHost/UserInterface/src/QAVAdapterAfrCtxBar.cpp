#include "QAVAdapterAfrCtxBar.h"

#include "QAVAfrCtxBarFrame.h"

QAV_IMPLEMENT_CLASS(QAVIAfrCtxBar, QAVBaseUnknown, "ApplicationFrame");
QAV_IMPLEMENT_CLASS(QAVAdapterAfrCtxBar, QAVIAfrCtxBar, "ApplicationFrame");

QAVAdapterAfrCtxBar::QAVAdapterAfrCtxBar() = default;
QAVAdapterAfrCtxBar::~QAVAdapterAfrCtxBar() = default;

QAVICAfrComponent* QAVAdapterAfrCtxBar::GetComponent(const QAVString& name) const {
  QAVICAfrComponent* row = _frame ? _frame->FindRow(name) : nullptr;
  if (row) row->AddRef();
  return row;
}
