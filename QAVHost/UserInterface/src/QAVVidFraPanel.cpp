#include "QAVVidFraPanel.h"

QAV_IMPLEMENT_CLASS(QAVVidFraPanel, QAVCommand, "UserInterface");

QAVVidFraPanel::QAVVidFraPanel(QAVCommand* father, const char* name) : QAVCommand(father, name) {}

QAVVidFraPanel::~QAVVidFraPanel() = default;

void QAVVidFraPanel::AttachToWindow(QAVVidFraPanel* window, int snapArea, int flag) {
  _attachedTo = window;
  _snapArea = window ? snapArea : 0;
  _attachFlag = window ? flag : 0;
}
