#include "QAVFrmWindow.h"

#include <atomic>

#include "QAVViewer.h"

QAV_IMPLEMENT_CLASS(QAVFrmWindow, QAVEventSubscriber, "System");

namespace {
QAVNativeWindowHandle NextNativeHandle() {
  static std::atomic<QAVNativeWindowHandle> next{0x1000};
  return next.fetch_add(0x10);
}
}  // namespace

QAVFrmWindow::QAVFrmWindow(const char* name) : _name(name), _nativeHandle(NextNativeHandle()) {}

QAVFrmWindow::~QAVFrmWindow() { SetViewer(nullptr); }

void QAVFrmWindow::SetViewer(QAVViewer* viewer) {
  if (viewer == _viewer.get()) return;
  if (_viewer && _viewer->_window == this) _viewer->_window = nullptr;
  // Keep the old viewer until the new one is in place: its destruction may send
  // events whose receivers look at this window.
  QAVRef<QAVViewer> old = std::move(_viewer);
  _viewer = QAVRef<QAVViewer>(viewer);
  if (viewer) viewer->_window = this;
}
