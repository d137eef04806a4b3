// A short notification of the host: a message shown for a moment over a window,
// without buttons and without blocking the user, then fading away.
//
// There is no screen here: every message shown is recorded, in order, with the
// dialog's name, its parent window's name and its text, so that tests and tools
// can read back what the user would have seen.
#ifndef QAVNotificationDialog_h
#define QAVNotificationDialog_h

#include <string>
#include <vector>

#include "QAVEventSubscriber.h"
#include "QAVFrmWindow.h"
#include "QAVRef.h"
#include "QAVUnicodeString.h"

class QAVHOST_API QAVNotificationDialog : public QAVEventSubscriber {
  QAV_DECLARE_CLASS
 public:
  struct ShownMessage {
    std::string dialogName;
    std::string parentName;  // empty without a parent
    std::string text;
    int style;
  };

  // The application's document window: the parent of the messages that concern
  // the application rather than one 3D window. Created on first use, named
  // "ApplicationDocument", and kept until the process state is reset.
  static QAVFrmWindow* GetApplicationDocument();

  // A dialog without parent or name.
  QAVNotificationDialog();
  // A dialog over `parent` (it holds a reference; may be null). `style` holds
  // the host's presentation flags, recorded as given.
  QAVNotificationDialog(QAVFrmWindow* parent, const char* name, int style = 0);
  QAVNotificationDialog(const QAVNotificationDialog&) = delete;
  QAVNotificationDialog& operator=(const QAVNotificationDialog&) = delete;
  ~QAVNotificationDialog() override;

  const std::string& GetName() const { return _name; }
  QAVFrmWindow* GetParent() const { return _parent.get(); }
  void SetText(const QAVUnicodeString& text) { _text = text; }
  const QAVUnicodeString& GetText() const { return _text; }
  // Shows the current text (records it).
  void Show();

  // Every message shown since the last clear or reset, oldest first.
  static std::vector<ShownMessage> GetShownMessages();
  static void ClearShownMessages();

 private:
  QAVRef<QAVFrmWindow> _parent;
  std::string _name;
  int _style = 0;
  QAVUnicodeString _text;
};

#endif
