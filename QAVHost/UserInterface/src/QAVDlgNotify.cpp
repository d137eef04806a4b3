#include "QAVDlgNotify.h"

#include "QAVHostJournal.h"
#include "QAVProcessState.h"

QAV_IMPLEMENT_CLASS(QAVDlgNotify, QAVDialog, "UserInterface");

namespace {

std::vector<QAVDlgNotify::Shown>& ShownNotices() {
  static auto* const shown = new std::vector<QAVDlgNotify::Shown>;
  return *shown;
}

void ForgetNotices() { ShownNotices().clear(); }
QAV_REGISTER_RESET(QAVDlgNotify, ForgetNotices);

}  // namespace

QAVDlgNotify::QAVDlgNotify(const char* name, int style) : QAVDialog(name), _style(style) {}

QAVDlgNotify::~QAVDlgNotify() = default;

int QAVDlgNotify::DisplayBlocked() {
  Shown shown{GetName().str(), GetTitle().ToString().str(), _text.ToString().str()};
  if (qavjournal::Recording())
    qavjournal::Record({"notify", shown.name, shown.title + " | " + shown.text, this, nullptr});
  ShownNotices().push_back(std::move(shown));
  return 0;
}

std::vector<QAVDlgNotify::Shown> QAVDlgNotify::GetShownNotices() { return ShownNotices(); }

void QAVDlgNotify::ClearShownNotices() { ShownNotices().clear(); }
