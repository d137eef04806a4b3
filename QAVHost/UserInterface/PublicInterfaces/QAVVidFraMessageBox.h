// A message box: a dialog box with a title, a text, an informative text, an
// action icon and a set of standard buttons (the host's numbers, recorded as
// given), which the user accepts or rejects. Its window flags (close button,
// auto-closing, active, resizable, modal) are the creator's.
//
// There is no screen: each time a box is made visible it is recorded (name,
// title, text, informative text, icon, buttons), in order, for tests and tools
// to read back, and journaled ("message-box"). The user's answer
// (QAVWidgetInput::AnswerMessageBox) sends ACCEPT() or REJECT() through the
// box's callback manager; an auto-closing box then hides itself and asks for
// its destruction.
#ifndef QAVVidFraMessageBox_h
#define QAVVidFraMessageBox_h

#include <string>
#include <vector>

#include "QAVDlgWidget.h"
#include "QAVUnicodeString.h"

class QAVHOST_API QAVVidFraMessageBox : public QAVDialog {
  QAV_DECLARE_CLASS
 public:
  static const char* ACCEPT() { return "QAVVidFraMessageBoxAcceptNotification"; }
  static const char* REJECT() { return "QAVVidFraMessageBoxRejectNotification"; }

  struct Shown {
    std::string name;
    std::string title;
    std::string text;
    std::string informativeText;
    int actionIcon;
    int buttons;
  };

  // A hidden box.
  QAVVidFraMessageBox(const char* name, int actionIcon, int buttons);
  ~QAVVidFraMessageBox() override;

  void SetText(const QAVUnicodeString& text) { _text = text; }
  const QAVUnicodeString& GetText() const { return _text; }
  void SetInformativeText(const QAVUnicodeString& text) { _informativeText = text; }
  const QAVUnicodeString& GetInformativeText() const { return _informativeText; }
  int GetActionIcon() const { return _actionIcon; }
  int GetButtons() const { return _buttons; }

  void SetCloseButton(bool on) { _closeButton = on; }
  bool HasCloseButton() const { return _closeButton; }
  void SetAutoClose(bool on) { _autoClose = on; }
  bool IsAutoClose() const { return _autoClose; }
  void SetActive(bool on) { _active = on; }
  bool IsActive() const { return _active; }
  void SetResizable(bool on) { _resizable = on; }
  bool IsResizable() const { return _resizable; }
  void SetModal(bool on) { _modal = on; }
  bool IsModal() const { return _modal; }

  // Made visible: recorded as shown.
  void SetVisibility(bool visible) override;

  // The boxes shown since the last clear or the session's start, oldest first.
  static std::vector<Shown> GetShownBoxes();
  static void ClearShownBoxes();

 private:
  QAVUnicodeString _text;
  QAVUnicodeString _informativeText;
  int _actionIcon;
  int _buttons;
  bool _closeButton = true;
  bool _autoClose = false;
  bool _active = false;
  bool _resizable = true;
  bool _modal = false;
};

#endif
