#include "QAVWidgetInput.h"

#include "QAVCallbackManager.h"
#include "QAVDlgWidget.h"
#include "QAVNotification.h"
#include "QAVRef.h"
#include "QAVVidFraMessageBox.h"

namespace {

bool Send(QAVDlgWidget* widget, const char* event) {
  if (!widget || !widget->IsShown() || !widget->GetSensitivity()) return false;
  const QAVRef<QAVDlgWidget> alive(widget);  // a handler may end the widget
  const auto notification = QAVMakeRef<QAVNotification>();
  widget->GetCallbackManager()->DispatchCallbacks(event, notification.get(), widget);
  return true;
}

}  // namespace

bool QAVWidgetInput::Click(QAVDlgWidget* widget, bool doubleClick) {
  return Send(widget, doubleClick ? QAVDlgWidget::DOUBLE_CLICK() : QAVDlgWidget::CLICK());
}

bool QAVWidgetInput::Hover(QAVDlgWidget* widget, bool entering) {
  return Send(widget, entering ? QAVDlgWidget::POINTER_ENTER() : QAVDlgWidget::POINTER_LEAVE());
}

bool QAVWidgetInput::PressButton(QAVDlgWidget* widget) {
  if (!widget || widget->GetKind() != QAVDlgKind::Button) return false;
  return Send(widget, QAVDlgWidget::BUTTON_PRESS());
}

bool QAVWidgetInput::SetCheckBox(QAVDlgWidget* widget, int state) {
  if (!widget || widget->GetKind() != QAVDlgKind::CheckBox || !widget->IsShown() ||
      !widget->GetSensitivity())
    return false;
  widget->SetCheckState(state ? 1 : 0);
  return Send(widget, QAVDlgWidget::CHECK_CHANGE());
}

bool QAVWidgetInput::CloseDialog(QAVDialog* dialog) {
  return Send(dialog, QAVDialog::WINDOW_CLOSE());
}

bool QAVWidgetInput::AnswerMessageBox(QAVVidFraMessageBox* box, bool accept) {
  const QAVRef<QAVVidFraMessageBox> alive(box);
  if (!Send(box, accept ? QAVVidFraMessageBox::ACCEPT() : QAVVidFraMessageBox::REJECT()))
    return false;
  if (box->IsAutoClose() && !box->IsDestructionRequested()) {
    box->SetVisibility(false);
    box->RequestDelayedDestruction();
  }
  return true;
}
