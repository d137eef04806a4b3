#include "QAVApplicationFrame.h"

#include "QAVNotificationDialog.h"
#include "QAVProcessState.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVApplicationFrame, QAVBaseUnknown, "UserInterface");

namespace {

QAVRef<QAVApplicationFrame>& Frame() {
  static auto* const frame = new QAVRef<QAVApplicationFrame>;
  return *frame;
}

void ForgetFrame() { Frame().Reset(); }
QAV_REGISTER_RESET(QAVApplicationFrame, ForgetFrame);

}  // namespace

QAVApplicationFrame::QAVApplicationFrame() = default;
QAVApplicationFrame::~QAVApplicationFrame() = default;

QAVApplicationFrame* QAVApplicationFrame::GetFrame() {
  if (!Frame()) Frame() = QAVMakeRef<QAVApplicationFrame>();
  return Frame().get();
}

QAVFrmWindow* QAVApplicationFrame::GetApplicationDocument() const {
  return QAVNotificationDialog::GetApplicationDocument();
}
