// Dialogs and their widgets, held in memory where a real host would draw them:
// a tree of named widgets (layouts, frames with a title, labels with a text and
// an icon, buttons, check boxes, pictures, containers), each with a visibility
// and a sensitivity, under a dialog shown over a viewer or as a dialog box.
// Tests and the program read them back by name.
//
// The user's input reaches a widget as events sent through its callback
// manager (the driver plays the user): QAVDlgWidget::CLICK() and
// DOUBLE_CLICK() on a click, POINTER_ENTER() and POINTER_LEAVE() as the
// pointer crosses it, BUTTON_PRESS() on a button pressed, CHECK_CHANGE() on a
// check box whose state changed, and QAVDialog::WINDOW_CLOSE() on a dialog
// closed by the user.
//
// Widgets are commands (QAVCommand): the host holds each new widget until it
// asks for its destruction; a widget asking for its own destruction asks for
// its children's too. While the driver records, every change of a title or a
// visibility is journaled ("widget": name, "title=<text>" / "shown" / "hidden").
#ifndef QAVDlgWidget_h
#define QAVDlgWidget_h

#include <vector>

#include "QAVCommand.h"
#include "QAVRef.h"
#include "QAVString.h"
#include "QAVUnicodeString.h"

class QAVViewer;

enum class QAVDlgKind {
  Dialog,
  DialogBox,
  Layout,
  Frame,
  Label,
  Button,
  CheckBox,
  Picture,
  Container
};

class QAVHOST_API QAVDlgWidget : public QAVCommand {
  QAV_DECLARE_CLASS
 public:
  // A widget in `father` (null for a dialog), which holds a reference to it.
  QAVDlgWidget(QAVDlgWidget* father, const char* name, QAVDlgKind kind);
  QAVDlgWidget(const QAVDlgWidget&) = delete;
  QAVDlgWidget& operator=(const QAVDlgWidget&) = delete;
  ~QAVDlgWidget() override;

  static const char* CLICK() { return "QAVVidClickNotification"; }
  static const char* DOUBLE_CLICK() { return "QAVVidDoubleClickNotification"; }
  static const char* POINTER_ENTER() { return "QAVVidPointerEnterNotification"; }
  static const char* POINTER_LEAVE() { return "QAVVidPointerLeaveNotification"; }
  static const char* BUTTON_PRESS() { return "QAVVidButtonPressNotification"; }
  static const char* CHECK_CHANGE() { return "QAVVidCheckStateChangeNotification"; }

  QAVDlgKind GetKind() const { return _kind; }
  QAVDlgWidget* GetFatherWidget() const { return _fatherWidget; }
  int GetChildCount() const { return static_cast<int>(_children.size()); }
  QAVDlgWidget* GetChild(int index) const;  // 0-based; null out of range
  // The first widget of that name, depth first, this one included; or null.
  QAVDlgWidget* FindWidget(const char* name) const;

  void SetTitle(const QAVUnicodeString& title);
  const QAVUnicodeString& GetTitle() const { return _title; }
  void SetIcon(const char* icon) { _icon = QAVString(icon); }
  const QAVString& GetIcon() const { return _icon; }
  virtual void SetVisibility(bool visible);
  bool GetVisibility() const { return _visible; }
  // Shown on screen: visible, and so is every widget above it.
  bool IsShown() const;
  // An insensitive widget is shown greyed and takes no input.
  void SetSensitivity(bool sensitive);
  bool GetSensitivity() const { return _sensitive; }
  // A check box's state (0 unchecked, 1 checked), set by code or by the user.
  void SetCheckState(int state);
  int GetCheckState() const { return _checkState; }
  // How the widget's father lays it out ("Stack": one below the other).
  void SetLayoutConstraint(const char* constraint) { _constraint = QAVString(constraint); }
  const QAVString& GetLayoutConstraint() const { return _constraint; }

  void RequestDelayedDestruction() override;

 private:
  QAVDlgKind _kind;
  QAVDlgWidget* _fatherWidget;
  std::vector<QAVRef<QAVDlgWidget>> _children;
  QAVUnicodeString _title;
  QAVString _icon;
  QAVString _constraint;
  bool _visible = true;
  bool _sensitive = true;
  int _checkState = 0;
};

// A dialog: over a viewer (a heads-up display, sized in pixels) or a dialog box
// of the application.
class QAVHOST_API QAVDialog : public QAVDlgWidget {
  QAV_DECLARE_CLASS
 public:
  // A dialog laid over `viewer` (not owned; may be null), width x height pixels.
  QAVDialog(QAVViewer* viewer, const char* name, int width, int height);
  // A dialog box.
  explicit QAVDialog(const char* name);
  ~QAVDialog() override;

  static const char* WINDOW_CLOSE() { return "QAVDlgWindCloseNotification"; }

  QAVViewer* GetViewer() const { return _viewer; }
  int GetWidth() const { return _width; }
  int GetHeight() const { return _height; }

  // The dialogs alive whose destruction was not asked for, oldest first.
  static std::vector<QAVDialog*> GetOpenDialogs();

 private:
  QAVViewer* _viewer = nullptr;
  int _width = 0;
  int _height = 0;
};

#endif
