#include "QAVVizViewer.h"

#include "QAVCallbackManager.h"

QAV_IMPLEMENT_CLASS(QAVVizViewer, QAVViewer, "System");

const char* QAVVizViewer::VIEWER_BACKGROUND_CHANGED() {
  return "QAVVizViewerVIEWER_BACKGROUND_CHANGEDEvt";
}

const char* QAVVizViewer::VIEWER_DESTROYED() { return "QAVVizViewerVIEWER_DESTROYEDEvt"; }

QAVVizViewer::QAVVizViewer(const char* name) : QAVViewer(name) {}

QAVVizViewer::~QAVVizViewer() {
  GetCallbackManager()->DispatchCallbacks(VIEWER_DESTROYED(), nullptr, this);
}

void QAVVizViewer::SetInfiniteEnvironmentRootName(const QAVString& name) {
  _environmentRoot = name;
  GetCallbackManager()->DispatchCallbacks(VIEWER_BACKGROUND_CHANGED(), nullptr, this);
}

void QAVVizViewer::GetUsableArea(float& width, float& height) const {
  if (!_hasUsableArea) return;
  width = _usableWidth;
  height = _usableHeight;
}

void QAVVizViewer::SetUsableArea(float width, float height) {
  _hasUsableArea = true;
  _usableWidth = width;
  _usableHeight = height;
}
