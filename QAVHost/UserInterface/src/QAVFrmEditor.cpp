#include "QAVFrmEditor.h"

#include "QAVProcessState.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVFrmEditor, QAVBaseUnknown, "UserInterface");

namespace {
QAVRef<QAVFrmEditor>& Current() {
  static auto* const current = new QAVRef<QAVFrmEditor>;
  return *current;
}
void ResetEditor() { QAVFrmEditor::SetCurrentEditor(nullptr); }
}  // namespace

QAV_REGISTER_RESET(QAVFrmEditor, &ResetEditor);

QAVFrmEditor::~QAVFrmEditor() = default;

QAVFrmEditor* QAVFrmEditor::GetCurrentEditor() { return Current().get(); }

void QAVFrmEditor::SetCurrentEditor(QAVFrmEditor* editor) {
  Current() = QAVRef<QAVFrmEditor>(editor);
}
