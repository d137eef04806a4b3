#include "QAVRbaLiveHUDSingleton.h"

#include "QAVApplication.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVGraphicWindow.h"
#include "QAVProcessState.h"
#include "QAVRbaLiveHUDDlg.h"
#include "QAVRbaLiveSimpleInfoDlg.h"
#include "QAVViewer.h"

QAV_IMPLEMENT_CLASS(QAVRbaLiveHUDSingleton, QAVCommand, "RenderingBaseUI");

QAVRbaLiveHUDSingleton* QAVRbaLiveHUDSingleton::_singleton = nullptr;

// A new session starts without an instance; the host releases the old one with
// its other commands.
struct QAVRbaLiveHUDSingletonAccess {
  static void Reset() { QAVRbaLiveHUDSingleton::_singleton = nullptr; }
};
QAV_REGISTER_RESET(QAVRbaLiveHUDSingleton, QAVRbaLiveHUDSingletonAccess::Reset);

QAVRbaLiveHUDSingleton::QAVRbaLiveHUDSingleton() : QAVCommand(nullptr, "HUDSingleton") {}

QAVRbaLiveHUDSingleton::~QAVRbaLiveHUDSingleton() {
  if (_singleton == this) _singleton = nullptr;
}

QAVRbaLiveHUDSingleton* QAVRbaLiveHUDSingleton::Get() {
  if (!_singleton) _singleton = new QAVRbaLiveHUDSingleton;
  return _singleton;
}

QAVRbaLiveHUDDlg* QAVRbaLiveHUDSingleton::CreateHUDDlg(const int& width, const int& height) {
  if (_hud) return _hud;
  QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout();
  QAVFrmWindow* window = layout ? layout->GetCurrentWindow() : nullptr;
  QAVViewer* viewer = window ? window->GetViewer() : nullptr;
  _hud = new QAVRbaLiveHUDDlg(viewer, "hudDialog", width, height);
  _hud->SetRenderInfos(_resources, _total, _third, _render, false);
  _viewer = QAVRef<QAVViewer>(viewer);
  if (_viewer && _viewer->GetSupport())
    _resizeCallback = _viewer->GetSupport()->GetCallbackManager()->AddCallback(
        QAVGraphicWindow::GRAPHICWINDOW_RESIZE(), WindowResizedCB);
  return _hud;
}

void QAVRbaLiveHUDSingleton::WindowResizedCB(const char* /*event*/, void* /*data*/,
                                             QAVNotification* /*notification*/,
                                             void* /*clientData*/, QAVCallback /*callback*/) {
  QAVRbaLiveHUDSingleton* self = _singleton;
  if (!self || !self->_hud || !self->_viewer) return;
  float width = 0.0F;
  float height = 0.0F;
  self->_viewer->GetGraphicSize(width, height);
  self->_hud->SetResolution(static_cast<int>(width), static_cast<int>(height));
}

void QAVRbaLiveHUDSingleton::PushHUDInfos(const QAVUnicodeString& resources, const int& total,
                                          const QAVUnicodeString& third,
                                          const QAVUnicodeString& render, bool inProgress) {
  _resources = resources;
  _total = total;
  _third = third;
  _render = render;
  _inProgress = inProgress;
  _further1 = QAVUnicodeString();
  _further2 = QAVUnicodeString();
}

void QAVRbaLiveHUDSingleton::FlushHUDInfos(bool atIdle) {
  if (!_hud) return;
  QAVApplication* application = QAVApplication::MainApplication();
  if (atIdle) {
    if (application && !_idleFlushPending) {
      application->Subscribe(QAVApplication::Idle, this, nullptr, DoWhenIdle);
      _idleFlushPending = true;
    }
    return;
  }
  if (_idleFlushPending) {
    if (application) application->RemoveSubscribe(QAVApplication::Idle, this);
    _idleFlushPending = false;
  }
  _hud->SetRenderInfos(_resources, _total, _third, _render, _inProgress);
}

void QAVRbaLiveHUDSingleton::DoWhenIdle(QAVCommand* command, int /*kind*/, void* /*data*/) {
  if (auto* self = dynamic_cast<QAVRbaLiveHUDSingleton*>(command)) self->FlushHUDInfos(false);
}

void QAVRbaLiveHUDSingleton::RemoveHUDDlg() {
  if (_hud) {
    _hud->RequestDelayedDestruction();
    _hud = nullptr;
  }
  if (_resizeCallback != 0 && _viewer) {
    if (QAVGraphicWindow* support = _viewer->GetSupport())
      support->GetCallbackManager()->RemoveCallback(_resizeCallback);
    _resizeCallback = 0;
  }
  _viewer.Reset();
}

void QAVRbaLiveHUDSingleton::RemoveInfoDlg() {
  if (_info) {
    _info->RequestDelayedDestruction();
    _info = nullptr;
  }
}

QAVRbaLiveSimpleInfoDlg* QAVRbaLiveHUDSingleton::CreateInfoDlg(QAVUnicodeString& text1,
                                                               QAVUnicodeString& text2, int first,
                                                               int second, float value) {
  if (!_info)
    _info = new QAVRbaLiveSimpleInfoDlg(nullptr, "infoDialog", text1, text2, first, second, value);
  return _info;
}
