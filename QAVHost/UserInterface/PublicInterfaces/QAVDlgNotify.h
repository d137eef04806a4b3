// The notify dialog: a dialog box with a title and a text that the user
// acknowledges. DisplayBlocked shows it and returns once the user closed it;
// with no screen here it is recorded (name, title, text), in order, and
// journaled ("notify"), and it returns at once.
#ifndef QAVDlgNotify_h
#define QAVDlgNotify_h

#include <string>
#include <vector>

#include "QAVDlgWidget.h"
#include "QAVUnicodeString.h"

class QAVHOST_API QAVDlgNotify : public QAVDialog {
  QAV_DECLARE_CLASS
 public:
  struct Shown {
    std::string name;
    std::string title;
    std::string text;
  };

  // `style` holds the host's presentation flags (warning, information...),
  // recorded as given.
  QAVDlgNotify(const char* name, int style = 0);
  ~QAVDlgNotify() override;

  void SetText(const QAVUnicodeString& text) { _text = text; }
  const QAVUnicodeString& GetText() const { return _text; }
  int GetStyle() const { return _style; }

  // Shows the dialog until the user closes it; returns 0.
  int DisplayBlocked();

  // The dialogs shown since the last clear or the session's start, oldest first.
  static std::vector<Shown> GetShownNotices();
  static void ClearShownNotices();

 private:
  QAVUnicodeString _text;
  int _style;
};

#endif
