#include "QAVDlgWidget.h"

#include <algorithm>
#include <string>

#include "QAVHostJournal.h"

QAV_IMPLEMENT_CLASS(QAVDlgWidget, QAVCommand, "UserInterface");
QAV_IMPLEMENT_CLASS(QAVDialog, QAVDlgWidget, "UserInterface");

namespace {

std::vector<QAVDialog*>& Dialogs() {
  static auto* const dialogs = new std::vector<QAVDialog*>;
  return *dialogs;
}

void Journal(const QAVDlgWidget& widget, std::string detail) {
  if (qavjournal::Recording())
    qavjournal::Record({"widget", widget.GetName().str(), std::move(detail), &widget, nullptr});
}

}  // namespace

QAVDlgWidget::QAVDlgWidget(QAVDlgWidget* father, const char* name, QAVDlgKind kind)
    : QAVCommand(father, name), _kind(kind), _fatherWidget(father) {
  if (father) father->_children.emplace_back(this);
}

QAVDlgWidget::~QAVDlgWidget() {
  for (const QAVRef<QAVDlgWidget>& child : _children)
    child->_fatherWidget = nullptr;
}

QAVDlgWidget* QAVDlgWidget::GetChild(int index) const {
  if (index < 0 || index >= GetChildCount()) return nullptr;
  return _children[static_cast<std::size_t>(index)].get();
}

QAVDlgWidget* QAVDlgWidget::FindWidget(const char* name) const {
  if (!name) return nullptr;
  if (GetName().str() == name) return const_cast<QAVDlgWidget*>(this);
  for (const QAVRef<QAVDlgWidget>& child : _children)
    if (QAVDlgWidget* found = child->FindWidget(name)) return found;
  return nullptr;
}

void QAVDlgWidget::SetTitle(const QAVUnicodeString& title) {
  _title = title;
  Journal(*this, "title=" + title.ToString().str());
}

void QAVDlgWidget::SetVisibility(bool visible) {
  _visible = visible;
  Journal(*this, visible ? "shown" : "hidden");
}

void QAVDlgWidget::SetSensitivity(bool sensitive) {
  _sensitive = sensitive;
  Journal(*this, sensitive ? "sensitive" : "insensitive");
}

void QAVDlgWidget::SetCheckState(int state) {
  _checkState = state;
  Journal(*this, "check=" + std::to_string(state));
}

bool QAVDlgWidget::IsShown() const {
  for (const QAVDlgWidget* widget = this; widget; widget = widget->_fatherWidget)
    if (!widget->_visible) return false;
  return true;
}

void QAVDlgWidget::RequestDelayedDestruction() {
  if (IsDestructionRequested()) return;
  for (const QAVRef<QAVDlgWidget>& child : _children)
    child->RequestDelayedDestruction();
  if (auto* dialog = dynamic_cast<QAVDialog*>(this)) {
    std::vector<QAVDialog*>& dialogs = Dialogs();
    dialogs.erase(std::remove(dialogs.begin(), dialogs.end(), dialog), dialogs.end());
  }
  QAVCommand::RequestDelayedDestruction();
}

QAVDialog::QAVDialog(QAVViewer* viewer, const char* name, int width, int height)
    : QAVDlgWidget(nullptr, name, QAVDlgKind::Dialog),
      _viewer(viewer),
      _width(std::max(0, width)),
      _height(std::max(0, height)) {
  Dialogs().push_back(this);
}

QAVDialog::QAVDialog(const char* name) : QAVDlgWidget(nullptr, name, QAVDlgKind::DialogBox) {
  Dialogs().push_back(this);
}

QAVDialog::~QAVDialog() {
  std::vector<QAVDialog*>& dialogs = Dialogs();
  dialogs.erase(std::remove(dialogs.begin(), dialogs.end(), this), dialogs.end());
}

std::vector<QAVDialog*> QAVDialog::GetOpenDialogs() { return Dialogs(); }
