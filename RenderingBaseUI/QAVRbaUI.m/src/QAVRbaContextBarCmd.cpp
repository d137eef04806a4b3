#include "QAVRbaContextBarCmd.h"

#include <string>

#include "QAVCallbackManager.h"
#include "QAVDiagnostics.h"
#include "QAVFrmLayout.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRbaUIEvents.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarCmd, QAVCommand, "RenderingBaseUI");

QAVRbaContextBarCmd::QAVRbaContextBarCmd(const char* className)
    : QAVCommand(nullptr, className, 1) {}

QAVRbaContextBarCmd::~QAVRbaContextBarCmd() = default;

int QAVRbaContextBarCmd::Activate(QAVCommand* /*from*/, QAVNotification* /*notification*/) {
  QAVRbaContextBarManager* pContextBarManager = QAVRbaContextBarManager::GetContextBarManager();
  if (!pContextBarManager) {
    const std::string message =
        std::string("QAVRbaContextBarManager is NULL ") + IsA() + "::Activate";
    QAV_CHECK_POINTER(pContextBarManager, message.c_str());
    return 0;
  }
  QAVBaseUnknown* related = pContextBarManager->GetRelatedObject();
  QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout();
  QAVCallbackManager* callbacks = layout ? layout->GetCallbackManager() : nullptr;
  if (callbacks)
    callbacks->DispatchCallbacks(QAVRbaUIEvents::CONTEXT_BAR_BEGIN_ACTION(), nullptr, related);
  if (related) ActOnObject(related);
  ActOnManager(*pContextBarManager);
  if (callbacks)
    callbacks->DispatchCallbacks(QAVRbaUIEvents::CONTEXT_BAR_END_ACTION(), nullptr, related);
  RequestDelayedDestruction();
  return 0;
}
