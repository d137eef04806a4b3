// The process-wide owner of the live renderer's heads-up display and of its
// information box: a host command named "HUDSingleton". The live-rendering
// modules push the latest values whenever they like; the values are shown at
// once or at the host's next idle moment, and several pushes before that
// moment are shown once.
#ifndef QAVRbaLiveHUDSingleton_h
#define QAVRbaLiveHUDSingleton_h

#include "QAVCallbackManager.h"
#include "QAVCommand.h"
#include "QAVRbaUIExport.h"
#include "QAVRef.h"
#include "QAVUnicodeString.h"
#include "QAVViewer.h"

class QAVNotification;
class QAVRbaLiveHUDDlg;
class QAVRbaLiveSimpleInfoDlg;

class QAVRBAUI_API QAVRbaLiveHUDSingleton : public QAVCommand {
  QAV_DECLARE_CLASS
 public:
  // The instance, made on the first call (owned by the host like every command).
  static QAVRbaLiveHUDSingleton* Get();

  // Makes the display once, "hudDialog" over the viewer of the current window
  // (width x height pixels), showing the stored values with the progress part
  // hidden, and follows the viewer's resizes; later calls return it as it is.
  QAVRbaLiveHUDDlg* CreateHUDDlg(const int& width, const int& height);
  QAVRbaLiveHUDDlg* GiveHUDDlg() { return _hud; }
  // Stores the values to show (the two further texts are cleared); nothing is
  // shown yet.
  void PushHUDInfos(const QAVUnicodeString& resources, const int& total,
                    const QAVUnicodeString& third, const QAVUnicodeString& render, bool inProgress);
  // Shows the stored values now (atIdle false, ending a pending idle flush) or
  // at the host's next idle moment (once, however many calls come before it).
  // Nothing without a display.
  void FlushHUDInfos(bool atIdle);
  // The idle function: flushes now.
  static void DoWhenIdle(QAVCommand* command, int kind, void* data);
  void RemoveHUDDlg();
  void RemoveInfoDlg();
  // Makes the information box once, "infoDialog"; later calls return it.
  QAVRbaLiveSimpleInfoDlg* CreateInfoDlg(QAVUnicodeString& text1, QAVUnicodeString& text2,
                                         int first, int second, float value);
  QAVRbaLiveSimpleInfoDlg* GiveInfoDlg() { return _info; }
  // The viewer's resize: the display shows the new size in whole pixels.
  static void WindowResizedCB(const char* event, void* data, QAVNotification* notification,
                              void* clientData, QAVCallback callback);

  ~QAVRbaLiveHUDSingleton() override;

 private:
  QAVRbaLiveHUDSingleton();
  friend struct QAVRbaLiveHUDSingletonAccess;

  QAVRbaLiveHUDDlg* _hud = nullptr;
  QAVRbaLiveSimpleInfoDlg* _info = nullptr;
  QAVCallback _resizeCallback = 0;
  // Held until the display is removed: the window may drop its viewer first.
  QAVRef<QAVViewer> _viewer;
  QAVUnicodeString _resources;
  int _total = 0;
  QAVUnicodeString _third;
  QAVUnicodeString _render;
  QAVUnicodeString _further1;
  QAVUnicodeString _further2;
  bool _inProgress = false;
  bool _idleFlushPending = false;

  static QAVRbaLiveHUDSingleton* _singleton;
};

#endif
