#include "QAVManipulatorOnPath.h"

#include "QAVI3DGeoVisu.h"
#include "QAVManipulator.h"
#include "QAVPathElement.h"

QAV_IMPLEMENT_CLASS(QAVAddManipulatorOnPath, QAVNotification, "UserInterface");
QAV_IMPLEMENT_CLASS(QAVRemoveManipulatorOnPath, QAVAddManipulatorOnPath, "UserInterface");

QAVAddManipulatorOnPath::QAVAddManipulatorOnPath(QAVPathElement* path, QAVManipulator* manipulator,
                                                 const IID& visu)
    : _path(path), _manipulator(manipulator), _visu(&visu) {}

QAVAddManipulatorOnPath::~QAVAddManipulatorOnPath() = default;

HRESULT QAVAddManipulatorOnPath::SendTo(QAVBaseUnknown* receiver, int* count) const {
  return Deliver(receiver, true, count);
}

HRESULT QAVAddManipulatorOnPath::Deliver(QAVBaseUnknown* receiver, bool attach, int* count) const {
  if (count) *count = 0;
  if (!receiver || !_path || !_manipulator) return E_INVALIDARG;
  int done = 0;
  for (int i = 0; i < _path->GetSize(); ++i) {
    void* found = nullptr;
    if (FAILED(_path->GetElement(i)->QueryInterface(*_visu, &found)) || !found) continue;
    const auto visu = QAVRef<QAVBaseUnknown>::Adopt(static_cast<QAVBaseUnknown*>(found));
    const auto* geoVisu = dynamic_cast<const QAVI3DGeoVisu*>(visu.get());
    QAV3DRep* rep = geoVisu ? geoVisu->GiveRep() : nullptr;
    if (!rep) continue;
    if (attach)
      _manipulator->AttachTo(rep);
    else
      _manipulator->DetachFrom(rep);
    ++done;
  }
  if (count) *count = done;
  return S_OK;
}

QAVRemoveManipulatorOnPath::QAVRemoveManipulatorOnPath(QAVPathElement* path,
                                                       QAVManipulator* manipulator, const IID& visu)
    : QAVAddManipulatorOnPath(path, manipulator, visu) {}

QAVRemoveManipulatorOnPath::~QAVRemoveManipulatorOnPath() = default;

HRESULT QAVRemoveManipulatorOnPath::SendTo(QAVBaseUnknown* receiver, int* count) const {
  return Deliver(receiver, false, count);
}
