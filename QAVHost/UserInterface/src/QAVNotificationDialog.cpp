#include "QAVNotificationDialog.h"

#include <utility>

#include "QAVProcessState.h"

QAV_IMPLEMENT_CLASS(QAVNotificationDialog, QAVEventSubscriber, "System");

namespace {

struct DialogState {
  std::vector<QAVNotificationDialog::ShownMessage> shown;
  QAVRef<QAVFrmWindow> applicationDocument;
};

DialogState& State() {
  static auto* const state = new DialogState;
  return *state;
}

void ForgetDialogs() {
  State().shown.clear();
  State().applicationDocument.Reset();
}
QAV_REGISTER_RESET(QAVNotificationDialog, ForgetDialogs);

}  // namespace

QAVFrmWindow* QAVNotificationDialog::GetApplicationDocument() {
  QAVRef<QAVFrmWindow>& document = State().applicationDocument;
  if (!document) document = QAVMakeRef<QAVFrmWindow>("ApplicationDocument");
  return document.get();
}

QAVNotificationDialog::QAVNotificationDialog() = default;

QAVNotificationDialog::QAVNotificationDialog(QAVFrmWindow* parent, const char* name, int style)
    : _parent(parent), _name(name ? name : ""), _style(style) {}

QAVNotificationDialog::~QAVNotificationDialog() = default;

void QAVNotificationDialog::Show() {
  State().shown.push_back(
      ShownMessage{_name, _parent ? _parent->GetName().str() : std::string(), _text.str(), _style});
}

std::vector<QAVNotificationDialog::ShownMessage> QAVNotificationDialog::GetShownMessages() {
  return State().shown;
}

void QAVNotificationDialog::ClearShownMessages() { State().shown.clear(); }
