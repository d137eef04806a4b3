#include "QAVRbaScreenProfileObserver.h"

#include <utility>

#include "QAVDiagnostics.h"
#include "QAVFileServices.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVMsgCatalog.h"
#include "QAVNotificationDialog.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVUnicodeString.h"

QAV_IMPLEMENT_CLASS(QAVRbaScreenProfileObserver, QAVEventSubscriber, "RenderingBaseUI");

namespace {

constexpr const char* kCatalog = "QAVRbaScreenProfileObserver";

// Shows the catalog text of `key` in a short notification over the
// application's document window.
void ShowMessage(const char* key, const char* defaultText) {
  const QAVUnicodeString text =
      QAVMsgCatalog::BuildMessage(kCatalog, key, nullptr, 0, QAVUnicodeString(defaultText));
  const auto dialog = QAVMakeRef<QAVNotificationDialog>(
      QAVNotificationDialog::GetApplicationDocument(), "notifFurtifMsg");
  dialog->SetText(text);
  dialog->Show();
}

// The path of the profile file chosen by the user; empty when there is none.
QAVUnicodeString ProfileFile(const QAVSettingRepository& repository) {
  QAVUnicodeString path;
  QAVRbaRenderingSettings::ReadAttr(repository, QAVRbaRenderingSettings::kOptionsProfileFileBrowse,
                                    path);
  return path;
}

}  // namespace

QAVRbaScreenProfileObserver::QAVRbaScreenProfileObserver() = default;

QAVRbaScreenProfileObserver::~QAVRbaScreenProfileObserver() {
  if (_repository && _subscription != 0)
    if (QAVCallbackManager* callbacks = _repository->GetCallbackManager())
      callbacks->RemoveCallback(_subscription);
}

QAVRbaScreenProfileObserver::Owner QAVRbaScreenProfileObserver::createScreenProfileObserver(
    Callback callback) {
  Owner observer(new QAVRbaScreenProfileObserver);
  observer->_callback = std::move(callback);
  observer->_repository = QAVRef<QAVSettingRepository>(
      QAVRbaRenderingSettings::Open(QAVRbaRenderingSettings::kOptionsProfileCombo));
  if (observer->_repository) {
    if (QAVCallbackManager* callbacks = observer->_repository->GetCallbackManager()) {
      QAVRbaScreenProfileObserver* self = observer.get();
      observer->_subscription = callbacks->AddCallback(
          QAVSettingRepository::ModifiedEvent(), [self](const char*, void*, QAVNotification*, void*,
                                                        QAVCallback) { self->updateProfile(); });
    }
  }
  return observer;
}

void QAVRbaScreenProfileObserver::updateProfile() {
  if (!_repository) QAVFatalError("AssertionFailed:_repository", "QAVRbaScreenProfileObserver", 68);

  int combo = 0;
  QAVRbaRenderingSettings::ReadAttr(*_repository, QAVRbaRenderingSettings::kOptionsProfileCombo,
                                    combo);
  if (combo == 2) {
    const QAVUnicodeString path = ProfileFile(*_repository);
    if (_QAVFileAccess(path, QAV_ACCESS_READ, 0) != 0) {
      ShowMessage("MissingProfileMessage", "The screen profile file cannot be found.");
      return;
    }
  }

  QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout();
  QAVFrmWindow* window = layout ? layout->GetCurrentWindow() : nullptr;
  QAVViewer* viewer = window ? window->GetViewer() : nullptr;
  if (!viewer) return;

  if (_callback && _callback(viewer) == E_FAIL)
    ShowMessage("WrongProfileMessage", "The screen profile cannot be used.");
}
