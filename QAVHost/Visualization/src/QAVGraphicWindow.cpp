#include "QAVGraphicWindow.h"

QAV_IMPLEMENT_CLASS(QAVGraphicWindow, QAVEventSubscriber, "Visualization");

const char* QAVGraphicWindow::GRAPHICWINDOW_RESIZE() {
  return "QAVGraphicWindowGRAPHICWINDOW_RESIZEEvt";
}

QAVGraphicWindow::QAVGraphicWindow() : _callbacks(QAVMakeRef<QAVCallbackManager>()) {}

QAVGraphicWindow::~QAVGraphicWindow() = default;

void QAVGraphicWindow::GetSize(float& width, float& height) const {
  width = _width;
  height = _height;
}

void QAVGraphicWindow::Resize(float width, float height) {
  _width = width;
  _height = height;
  _callbacks->DispatchCallbacks(GRAPHICWINDOW_RESIZE(), nullptr, this);
}
