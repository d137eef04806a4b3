#include "QAVVidFraMessageBox.h"

#include "QAVHostJournal.h"
#include "QAVProcessState.h"

QAV_IMPLEMENT_CLASS(QAVVidFraMessageBox, QAVDialog, "UserInterface");

namespace {

std::vector<QAVVidFraMessageBox::Shown>& ShownBoxes() {
  static auto* const shown = new std::vector<QAVVidFraMessageBox::Shown>;
  return *shown;
}

void ForgetBoxes() { ShownBoxes().clear(); }
QAV_REGISTER_RESET(QAVVidFraMessageBox, ForgetBoxes);

}  // namespace

QAVVidFraMessageBox::QAVVidFraMessageBox(const char* name, int actionIcon, int buttons)
    : QAVDialog(name), _actionIcon(actionIcon), _buttons(buttons) {
  QAVDlgWidget::SetVisibility(false);
}

QAVVidFraMessageBox::~QAVVidFraMessageBox() = default;

void QAVVidFraMessageBox::SetVisibility(bool visible) {
  QAVDlgWidget::SetVisibility(visible);
  if (!visible) return;
  Shown shown{GetName().str(),
              GetTitle().ToString().str(),
              _text.ToString().str(),
              _informativeText.ToString().str(),
              _actionIcon,
              _buttons};
  if (qavjournal::Recording())
    qavjournal::Record({"message-box", shown.name,
                        shown.title + " | " + shown.text + " | " + shown.informativeText, this,
                        nullptr});
  ShownBoxes().push_back(std::move(shown));
}

std::vector<QAVVidFraMessageBox::Shown> QAVVidFraMessageBox::GetShownBoxes() {
  return ShownBoxes();
}

void QAVVidFraMessageBox::ClearShownBoxes() { ShownBoxes().clear(); }
