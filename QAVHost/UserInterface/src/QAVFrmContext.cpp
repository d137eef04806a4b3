#include "QAVFrmContext.h"

#include "QAVProcessState.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVFrmContext, QAVBaseUnknown, "UserInterface");

namespace {
QAVRef<QAVFrmContext>& Current() {
  static auto* const current = new QAVRef<QAVFrmContext>;
  return *current;
}
void ResetContext() { QAVFrmContext::SetContext(nullptr); }
}  // namespace

QAV_REGISTER_RESET(QAVFrmContext, &ResetContext);

QAVFrmContext::~QAVFrmContext() = default;

QAVFrmContext* QAVFrmContext::GetContext() { return Current().get(); }

void QAVFrmContext::SetContext(QAVFrmContext* context) {
  Current() = QAVRef<QAVFrmContext>(context);
}
