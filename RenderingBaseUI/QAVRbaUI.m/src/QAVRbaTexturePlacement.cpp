#include "QAVRbaTexturePlacement.h"

#include <algorithm>
#include <cmath>

#include "QAV3DViewer.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVIRbaMappingObserver.h"
#include "QAVOmbObjectInContext.h"
#include "QAVRbaManipulatorServices.h"

// The placement's own observable: it keeps the observers and the toggles in
// the placement.
class QAVRbaTexturePlacement::Observable : public QAVIRbaMappingObservable {
 public:
  explicit Observable(QAVRbaTexturePlacement& placement) : _p(placement) {}

  HRESULT AddObserver(QAVIRbaMappingObserver* observer) override {
    if (!observer) return E_FAIL;
    if (std::find(_p._observers.begin(), _p._observers.end(), observer) == _p._observers.end())
      _p._observers.push_back(observer);
    return S_OK;
  }
  HRESULT RemoveObserver(QAVIRbaMappingObserver* observer) override {
    const auto it = std::find(_p._observers.begin(), _p._observers.end(), observer);
    if (it == _p._observers.end()) return E_FAIL;
    _p._observers.erase(it);
    return S_OK;
  }
  int GetObserverCount() const override { return static_cast<int>(_p._observers.size()); }
  MappingType GetMappingType() const override { return _p._type; }
  HRESULT SetMappingType(const MappingType& type) override {
    _p._type = type;
    return S_OK;
  }
  HRESULT UpdateAllObserversPosAndOrientation(QAVIRbaMappingObserver* /*sender*/) override {
    return Tell(&QAVIRbaMappingObserver::UpdatePosAndOrientation);
  }
  HRESULT UpdateAllObserversMappingType(QAVIRbaMappingObserver* /*sender*/) override {
    return Tell(&QAVIRbaMappingObserver::UpdateMappingType);
  }
  HRESULT UpdateAllObserversOtherMappingAttributes(QAVIRbaMappingObserver* /*sender*/) override {
    return Tell(&QAVIRbaMappingObserver::UpdateOtherMappingAttributes);
  }
  HRESULT DisplayManipulatorRep(int mode) override {
    _p._manipulatorShown = mode == 0;
    return S_OK;
  }
  bool IsManipulatorRepDisplayed() const override { return _p._manipulatorShown; }
  HRESULT DisplayDrawingZoneManipulator(int mode) override {
    _p._drawingZoneShown = mode == 0;
    return S_OK;
  }
  bool IsDecalUVCropMode() const override { return _p._cropMode; }
  HRESULT ToggleDecalUVCropMode() override {
    _p._cropMode = !_p._cropMode;
    return S_OK;
  }
  // Turns the projection so that its Z axis points at the eye of the current
  // window's viewer, keeping its origin; X stays as horizontal as it can. The
  // eye and the up direction are taken into the support's own space, where the
  // placement is.
  HRESULT AlignWithCameraView() override {
    QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout();
    QAVFrmWindow* window = layout ? layout->GetCurrentWindow() : nullptr;
    auto* viewer = window ? dynamic_cast<QAV3DViewer*>(window->GetViewer()) : nullptr;
    if (!viewer) return E_FAIL;
    QAV4x4Matrix toScene;
    if (const auto support = QAVQuery<QAVOmbObjectInContext>(_p._support.get()))
      QAVRbaManipulatorServices::GetSupportToScene(support.get(), toScene);
    const QAV4x4Matrix fromScene = toScene.AffineInverse();
    const QAVMathPoint eye = fromScene * viewer->GetMain3DViewpoint()->GetOrigin();
    const QAVMathVector up = fromScene.Rotate(viewer->GetMain3DViewpoint()->GetUpDirection());
    const QAVMathPoint origin = _p._isometry.GetOrigin();
    const QAVMathVector z = Unit(eye - origin);
    QAVMathVector x = Unit(Cross(up, z));
    if (x == QAVMathVector()) x = Unit(Cross({0, 0, 1}, z));
    if (x == QAVMathVector()) x = {1, 0, 0};
    _p._isometry = {x, Cross(z, x), z, _p._isometry.translation};
    ++_p._alignments;
    return Tell(&QAVIRbaMappingObserver::UpdatePosAndOrientation);
  }

 private:
  static QAVMathVector Cross(const QAVMathVector& a, const QAVMathVector& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
  }
  static QAVMathVector Unit(const QAVMathVector& v) {
    const double n = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    if (!(n > 1e-12)) return {};
    return {v.x / n, v.y / n, v.z / n};
  }
  // Calls every observer; an observer may remove itself (or another) meanwhile.
  HRESULT Tell(HRESULT (QAVIRbaMappingObserver::*update)()) {
    const std::vector<QAVIRbaMappingObserver*> observers = _p._observers;
    for (QAVIRbaMappingObserver* observer : observers)
      if (std::find(_p._observers.begin(), _p._observers.end(), observer) != _p._observers.end())
        (observer->*update)();
    return S_OK;
  }

  QAVRbaTexturePlacement& _p;
};

const char* QAVRbaTexturePlacement::ClassOf(Kind kind) {
  switch (kind) {
    case Kind::Decal:
      return "QAVRbaDecal";
    case Kind::Sticker:
      return "QAVStkSticker";
    default:
      return "QAVRbaAppliedMaterial";
  }
}

QAVRbaTexturePlacement::QAVRbaTexturePlacement(Kind kind, QAVBaseUnknown* support,
                                               const QAVUnicodeString& name)
    : QAVModelObject(ClassOf(kind), name),
      _kind(kind),
      _support(support),
      _observable(new Observable(*this)) {
  _observable->AggregateInto(this);
}

QAVRbaTexturePlacement::~QAVRbaTexturePlacement() {
  _observable->AggregateInto(nullptr);
  delete _observable;
}

void QAVRbaTexturePlacement::SetTextureSize(double width, double height) {
  if (width > 0 && height > 0) {
    _textureWidth = width;
    _textureHeight = height;
  }
}

HRESULT QAVRbaTexturePlacement::QueryInterface(const IID& iid, void** object) {
  if (object && iid == QAVIRbaMappingObservable::ClassId()) {
    AddRef();
    *object = static_cast<QAVBaseUnknown*>(_observable);
    return S_OK;
  }
  return QAVModelObject::QueryInterface(iid, object);
}
