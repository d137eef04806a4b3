#include "QAVRulerDecoratedEditor.h"

#include <utility>

#include "QAV3DViewer.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVNotification.h"
#include "QAVViewDecoration.h"

QAV_IMPLEMENT_CLASS(QAVRulerDecoratedEditor, QAVCommand, "System");

namespace {

// The 3D viewer of the current window, or null.
QAV3DViewer* CurrentViewer() {
  const QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout();
  const QAVFrmWindow* window = layout ? layout->GetCurrentWindow() : nullptr;
  return window ? dynamic_cast<QAV3DViewer*>(window->GetViewer()) : nullptr;
}

}  // namespace

const char* QAVRulerDecoratedEditor::EDIT_MODIFY() { return "QAVVidEditModifyExtNotification"; }

QAVRulerDecoratedEditor::QAVRulerDecoratedEditor(QAVCommand* father, const char* name,
                                                 QAV3DViewer* viewer,
                                                 QAVRef<QAVViewDecoration> decoration)
    : QAVCommand(father, name),
      _viewer(viewer),
      _decoration(std::move(decoration)),
      _editNotification(QAVMakeRef<QAVNotification>()) {}

QAVRulerDecoratedEditor::~QAVRulerDecoratedEditor() { Undecorate(); }

void QAVRulerDecoratedEditor::SetGlobalVisibility(bool visible) {
  _globalVisible = visible;
  UpdateDecoration();
}

void QAVRulerDecoratedEditor::SetDecoratorVisibility(bool visible) {
  _decoratorVisible = visible;
  UpdateDecoration();
}

HRESULT QAVRulerDecoratedEditor::Build() {
  if (_built) return S_FALSE;
  _built = true;
  UpdateDecoration();
  return S_OK;
}

void QAVRulerDecoratedEditor::Undecorate() {
  if (_decorated) _decorated->RemoveDecoration(_decoration.get());
  _decorated = nullptr;
}

void QAVRulerDecoratedEditor::UpdateDecoration() {
  if (!IsShown()) {
    Undecorate();
    return;
  }
  if (_decorated) return;
  QAV3DViewer* viewer = _viewer ? _viewer.get() : CurrentViewer();
  if (viewer && SUCCEEDED(viewer->AddDecoration(_decoration.get())))
    _decorated = QAVRef<QAV3DViewer>(viewer);
}
