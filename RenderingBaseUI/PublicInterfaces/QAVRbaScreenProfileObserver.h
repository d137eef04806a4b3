// Watches the rendering option settings ("RenderingOptionsSettings") and, when
// they change, checks the user's screen profile choice and asks its owner,
// through a callback, to refresh the screen profile of the current viewer.
//
// Settings read: "ProfileCombo" (int, 0 by default; 2 means a profile file
// chosen by the user) and "ProfileFileBrowse" (the path of that file). Problems
// are shown in a short notification ("notifFurtifMsg") over the application's
// document window, with the texts "MissingProfileMessage" and
// "WrongProfileMessage" of the message catalog "QAVRbaScreenProfileObserver".
#ifndef QAVRbaScreenProfileObserver_h
#define QAVRbaScreenProfileObserver_h

#include <functional>
#include <memory>

#include "QAVCallbackManager.h"
#include "QAVEventSubscriber.h"
#include "QAVRbaUIExport.h"
#include "QAVRef.h"
#include "QAVSettingRepository.h"
#include "QAVTypes.h"
#include "QAVViewer.h"

class QAVRBAUI_API QAVRbaScreenProfileObserver : public QAVEventSubscriber {
  QAV_DECLARE_CLASS
 public:
  // Refreshes the screen profile for a viewer; E_FAIL when the profile chosen
  // cannot be used.
  using Callback = std::function<HRESULT(QAVViewer* viewer)>;

  // Destroying the owner releases the observer (and ends its subscription).
  struct Releaser {
    void operator()(QAVRbaScreenProfileObserver* observer) const {
      if (observer) observer->Release();
    }
  };
  using Owner = std::unique_ptr<QAVRbaScreenProfileObserver, Releaser>;

  // A new observer holding the callback, subscribed to the modifications of
  // "RenderingOptionsSettings" when that repository exists.
  static Owner createScreenProfileObserver(Callback callback);

  // The reaction to a change of the settings: a fatal error of the host when the
  // observer has no repository; otherwise checks "ProfileCombo" and its file,
  // then calls the callback with the viewer of the current window of the current
  // layout (not at all without one).
  void updateProfile();

  QAVRbaScreenProfileObserver(const QAVRbaScreenProfileObserver&) = delete;
  QAVRbaScreenProfileObserver& operator=(const QAVRbaScreenProfileObserver&) = delete;
  ~QAVRbaScreenProfileObserver() override;

 private:
  QAVRbaScreenProfileObserver();

  Callback _callback;
  // Kept alive by the observer for as long as it is subscribed.
  QAVRef<QAVSettingRepository> _repository;
  QAVCallback _subscription = 0;
};

#endif
