#include "QAVRbaContextBarEditMatrixPositionCmd.h"

#include "QAVCallbackManager.h"
#include "QAVDiagnostics.h"
#include "QAVFillDictionary.h"
#include "QAVFrmLayout.h"
#include "QAVIRbaMappingModelUpdater.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRbaEditMatrixDlg.h"
#include "QAVRbaPanelManager.h"
#include "QAVRbaUIEvents.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarEditMatrixPositionCmd, QAVCommand, "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarEditMatrixPositionCmd() {
  return new QAVRbaContextBarEditMatrixPositionCmd;
}
[[maybe_unused]] static const bool registered = QAVFillDictionary::Register(
    "QAVRbaContextBarEditMatrixPositionCmd", &fctCreateQAVRbaContextBarEditMatrixPositionCmd);

namespace {
// The position and orientation panel's id.
constexpr int kPositionPanel = 25;
}  // namespace

QAVRbaContextBarEditMatrixPositionCmd::QAVRbaContextBarEditMatrixPositionCmd()
    : QAVCommand(nullptr, "QAVRbaContextBarEditMatrixPositionCmd", 1) {}
QAVRbaContextBarEditMatrixPositionCmd::~QAVRbaContextBarEditMatrixPositionCmd() = default;

int QAVRbaContextBarEditMatrixPositionCmd::Activate(QAVCommand* /*from*/,
                                                    QAVNotification* /*notification*/) {
  QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout();
  QAVFrmWindow* window = layout ? layout->GetCurrentWindow() : nullptr;
  if (!window) {
    RequestDelayedDestruction();
    return 0;
  }
  QAVRbaPanelManager* panels = QAVRbaPanelManager::GetPanelManager();
  if (panels && panels->IsPanelOpen(kPositionPanel, window)) {
    RequestDelayedDestruction();
    return 0;
  }
  QAVRbaContextBarManager* pContextBarManager = QAVRbaContextBarManager::GetContextBarManager();
  if (!QAV_CHECK_POINTER(pContextBarManager,
                         "QAVRbaContextBarManager is NULL "
                         "QAVRbaContextBarEditMatrixPositionCmd::Activate"))
    return 0;
  QAVBaseUnknown* related = pContextBarManager->GetRelatedObject();
  // A new dialog belongs to the host until it asks for its end (the panel
  // manager's ClosePanel asks for it), which the analyzer does not see.
  // NOLINTBEGIN(clang-analyzer-cplusplus.NewDeleteLeaks)
  QAVRbaEditMatrixDlg* dialog = nullptr;
  if (QAVRef<QAVIRbaMappingModelUpdater> updater = QAVQuery<QAVIRbaMappingModelUpdater>(related))
    dialog = new QAVRbaEditMatrixDlg(nullptr, "AbsoluteMatrixEditionPanel", updater.get());
  if (panels && dialog) panels->AddPanel(kPositionPanel, dialog, window);
  if (QAVCallbackManager* callbacks = layout->GetCallbackManager())
    callbacks->DispatchCallbacks(QAVRbaUIEvents::CONTEXT_BAR_END_ACTION(), nullptr, related);
  // NOLINTEND(clang-analyzer-cplusplus.NewDeleteLeaks)
  RequestDelayedDestruction();
  return 0;
}
