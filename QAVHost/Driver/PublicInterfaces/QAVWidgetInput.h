// Simulated input to dialog widgets: the user clicks a widget, moves the
// pointer onto or off it, presses a button, changes a check box or closes a
// dialog. Each sends the widget's event (QAVDlgWidget.h) through its callback
// manager with a new notification, as the host does. Input to a null, hidden
// or insensitive widget is ignored and the call returns false.
#ifndef QAVWidgetInput_h
#define QAVWidgetInput_h

#include "QAVHostDriverExport.h"

class QAVDialog;
class QAVDlgWidget;
class QAVVidFraMessageBox;

class QAVHOSTDRIVER_API QAVWidgetInput {
 public:
  // CLICK(), or DOUBLE_CLICK() for a double click (which the host sends alone).
  static bool Click(QAVDlgWidget* widget, bool doubleClick = false);
  // POINTER_ENTER() when `entering`, else POINTER_LEAVE().
  static bool Hover(QAVDlgWidget* widget, bool entering);
  // BUTTON_PRESS() on a button.
  static bool PressButton(QAVDlgWidget* widget);
  // The user sets a check box to `state` (0 or 1): its state becomes that,
  // then CHECK_CHANGE() is sent, even when the state was already that.
  static bool SetCheckBox(QAVDlgWidget* widget, int state);
  // The user accepts or rejects a shown message box: ACCEPT() or REJECT(); an
  // auto-closing box then hides itself and asks for its destruction.
  static bool AnswerMessageBox(QAVVidFraMessageBox* box, bool accept);
  // WINDOW_CLOSE() on the dialog, which the user closed with its title bar.
  static bool CloseDialog(QAVDialog* dialog);

  QAVWidgetInput() = delete;
};

#endif
