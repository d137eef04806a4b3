// The small information box of the live renderer that says rendering is paused
// and restarts it. It keeps a dialog box ("infoDialog": "MainLayout" with the
// label "infoText" and the icon "QAVRdgLivePause.png", titled by the key
// "Infos" of the catalog "QAVRbaLiveHUDDlg") and a restart command (the box's
// button, "restartButton"), both its children.
#ifndef QAVRbaLiveSimpleInfoDlg_h
#define QAVRbaLiveSimpleInfoDlg_h

#include "QAVCommand.h"
#include "QAVDlgWidget.h"
#include "QAVRbaUIExport.h"
#include "QAVUnicodeString.h"

class QAVNotification;

class QAVRBAUI_API QAVRbaLiveSimpleInfoDlg : public QAVCommand {
  QAV_DECLARE_CLASS
 public:
  // The box shows `text1`, and `text2` on a second line when it is not empty;
  // the two integers and the float are kept for the box's owner.
  QAVRbaLiveSimpleInfoDlg(QAVCommand* father, const char* name, const QAVUnicodeString& text1,
                          const QAVUnicodeString& text2, int first, int second, float value);
  ~QAVRbaLiveSimpleInfoDlg() override;

  // Ends the restart command and the dialog box (hidden first), clears the
  // active flag, then ends this command.
  void RequestDelayedDestruction() override;
  // The restart button's callback: for an active box, ends its children as
  // above (not the box itself) and runs the command of the header
  // "PauseRender" again, which resumes the paused renderer.
  static void RestartCB(QAVCommand* command, QAVNotification* notification, void* data);

  bool IsActive() const { return _active; }
  QAVDialog* GetDialogBox() const { return _box; }
  QAVCommand* GetRestartCommand() const { return _restart; }
  int GetFirstValue() const { return _first; }
  int GetSecondValue() const { return _second; }
  float GetFloatValue() const { return _value; }

 private:
  void EndChildren();

  QAVDialog* _box = nullptr;
  QAVCommand* _restart = nullptr;
  bool _active = false;
  int _first;
  int _second;
  float _value;
};

#endif
