#include "QAVViewer.h"

#include <algorithm>

#include "QAV3DRep.h"
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

HRESULT QAVViewer::AddRep(QAV3DRep* rep) {
  if (!rep) return E_INVALIDARG;
  if (std::find(_reps.begin(), _reps.end(), QAVRef(rep)) != _reps.end()) return S_FALSE;
  _reps.emplace_back(rep);
  return S_OK;
}

HRESULT QAVViewer::RemoveRep(QAV3DRep* rep) {
  const auto found = std::find(_reps.begin(), _reps.end(), QAVRef(rep));
  if (!rep || found == _reps.end()) return E_FAIL;
  _reps.erase(found);
  return S_OK;
}

QAV3DRep* QAVViewer::GetRep(int index) const {
  if (index < 0 || index >= GetRepCount()) return nullptr;
  return _reps[static_cast<std::size_t>(index)].get();
}
