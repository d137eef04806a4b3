#include "QAV3DViewer.h"

QAV_IMPLEMENT_CLASS(QAV3DViewer, QAVViewer, "System");

QAV3DViewer::QAV3DViewer(const char* name)
    : QAVViewer(name), _mainViewpoint(QAVMakeRef<QAV3DViewpoint>()) {}

QAV3DViewer::~QAV3DViewer() = default;

void QAV3DViewer::SetVizViewer(QAVVizViewer* vizViewer) { _vizViewer = QAVRef(vizViewer); }

QAVString QAV3DViewer::GetInfiniteEnvironmentRootName() const {
  return _vizViewer ? _vizViewer->GetInfiniteEnvironmentRootName() : QAVString();
}
