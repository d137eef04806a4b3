#include "QAVViewer.h"

#include "QAVCallbackManager.h"
#include "QAVGraphicWindow.h"
#include "QAVPickPath.h"

QAV_IMPLEMENT_CLASS(QAVViewer, QAVEventSubscriber, "System");

QAVViewer::QAVViewer(const char* name)
    : _name(name),
      _callbacks(QAVMakeRef<QAVCallbackManager>()),
      _support(QAVMakeRef<QAVGraphicWindow>()) {}

QAVViewer::~QAVViewer() = default;

void QAVViewer::GetGraphicSize(float& width, float& height) const {
  _support->GetSize(width, height);
}

HRESULT QAVViewer::Pick(int /*x*/, int /*y*/, int /*boxWidth*/, int /*boxHeight*/, int /*style*/,
                        std::vector<QAVRef<QAVPickPath>>& paths) {
  paths.clear();
  return E_FAIL;
}
