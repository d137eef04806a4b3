#include "QAVRbaContextBarManager.h"

#include <new>

#include "QAVIAfrCtxBarManager.h"
#include "QAVProcessState.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarManager, QAVBaseUnknown, "RenderingBaseUI");

QAVRbaContextBarManager* QAVRbaContextBarManager::_contextBarManager = nullptr;

// The instance is process state: a module unloaded forgets it.
struct QAVRbaContextBarManagerAccess {
  static void Unload() { QAVRbaContextBarManager::DestroyContextBarManager(); }
};
QAV_REGISTER_RESET(QAVRbaContextBarManager, QAVRbaContextBarManagerAccess::Unload);

namespace {

// The host's context-bar manager, fetched afresh for each call.
QAVRef<QAVIAfrCtxBarManager> HostBars() {
  return QAVRef<QAVIAfrCtxBarManager>::Adopt(GetAfrCtxBarManager());
}

}  // namespace

QAVRbaContextBarManager::QAVRbaContextBarManager() { _tie.AggregateInto(this); }

QAVRbaContextBarManager::~QAVRbaContextBarManager() {
  if (_relatedObject) _relatedObject->Release();
  _relatedObject = nullptr;
  _contextBarManager = nullptr;
  // Released by the clean-up that runs before the deletion.
  _ownObserver = nullptr;
  _observable = nullptr;
  _tie.AggregateInto(nullptr);
}

QAVRbaContextBarManager* QAVRbaContextBarManager::GetContextBarManager() {
  if (!_contextBarManager) _contextBarManager = new (std::nothrow) QAVRbaContextBarManager;
  return _contextBarManager;
}

void QAVRbaContextBarManager::DestroyContextBarManager() {
  if (!_contextBarManager) return;
  _contextBarManager->CleanObserverDesignPattern();
  delete _contextBarManager;
  _contextBarManager = nullptr;
}

HRESULT QAVRbaContextBarManager::QueryInterface(const IID& iid, void** object) {
  if (object && iid == QAVIRbaMappingObserver::ClassId()) {
    AddRef();
    *object = static_cast<QAVBaseUnknown*>(&_tie);
    return S_OK;
  }
  return QAVBaseUnknown::QueryInterface(iid, object);
}

void QAVRbaContextBarManager::InitObserverDesignPattern() {
  _ownObserver = QAVQuery<QAVIRbaMappingObserver>(this).Detach();
  if (_relatedObject) _observable = QAVQuery<QAVIRbaMappingObservable>(_relatedObject).Detach();
  if (_ownObserver && _observable) _observable->AddObserver(_ownObserver);
}

void QAVRbaContextBarManager::CleanObserverDesignPattern() {
  if (!_observable) return;
  if (_ownObserver) {
    _observable->RemoveObserver(_ownObserver);
    _ownObserver->Release();
    _ownObserver = nullptr;
  }
  _observable->Release();
  _observable = nullptr;
}

void QAVRbaContextBarManager::SetRelatedObject(QAVBaseUnknown* object) {
  CleanObserverDesignPattern();
  if (_relatedObject) {
    _relatedObject->Release();
    _relatedObject = nullptr;
  }
  if (object) {
    _relatedObject = object;
    _relatedObject->AddRef();
  }
  // A second own observer replaces the first without releasing it when no
  // observable was held; both are references to this manager, which is
  // deleted directly, so nothing outlives it.
  if (_ownObserver) {
    _ownObserver->Release();
    _ownObserver = nullptr;
  }
  InitObserverDesignPattern();
  if (_observable) _mappingType = _observable->GetMappingType();
}

void QAVRbaContextBarManager::SetCurrentMappingType(int type) {
  switch (type) {
    case QAVIRbaMappingObservable::Spherical:
    case QAVIRbaMappingObservable::FiniteCylindrical:
    case QAVIRbaMappingObservable::Cubical:
    case QAVIRbaMappingObservable::UV:
    case QAVIRbaMappingObservable::InfiniteCylindrical:
      _mappingType = type;
      break;
    default:
      _mappingType = QAVIRbaMappingObservable::Planar;
  }
}

void QAVRbaContextBarManager::SetCurrentMappingType(MappingType type) {
  _mappingType = type;
  if (_observable) {
    const MappingType stored = GetCurrentMappingType();
    _observable->SetMappingType(stored);
    if (_ownObserver) _observable->UpdateAllObserversMappingType(_ownObserver);
  }
}

HRESULT QAVRbaContextBarManager::UpdateMappingType() {
  if (FAILED(UpdateMappingTypeNoRefreshDisplay())) return E_FAIL;
  if (auto bars = HostBars()) bars->RefreshCtxBars(QAVString(), true);
  return S_OK;
}

HRESULT QAVRbaContextBarManager::UpdateMappingTypeNoRefreshDisplay() {
  if (!_observable) return E_FAIL;
  _mappingType = _observable->GetMappingType();
  return S_OK;
}

void QAVRbaContextBarManager::makeUpdateAllObserversPosAndOrientation() {
  if (_observable && _ownObserver) _observable->UpdateAllObserversPosAndOrientation(_ownObserver);
}

void QAVRbaContextBarManager::makeUpdateAllObserversMappingType() {
  if (_observable && _ownObserver) _observable->UpdateAllObserversMappingType(_ownObserver);
}

void QAVRbaContextBarManager::makeUpdateAllObserversOtherMappingAttributes() {
  if (_observable && _ownObserver)
    _observable->UpdateAllObserversOtherMappingAttributes(_ownObserver);
}

void QAVRbaContextBarManager::InitContextualBar(QAVString barName) {
  if (auto bars = HostBars()) {
    bars->RegisterCtxBar(barName, QAVString("All_CtxId"));
    bars->RefreshCtxBars(QAVString(), false);
  }
}

void QAVRbaContextBarManager::DestroyContextualBar(QAVString barName) {
  if (auto bars = HostBars()) {
    bars->UnregisterCtxBar(barName, QAVString("All_CtxId"));
    bars->RefreshCtxBars(QAVString(), false);
  }
}

void QAVRbaContextBarManager::updateDisplay() {
  if (auto bars = HostBars()) bars->RefreshCtxBars(QAVString(), true);
}

void QAVRbaContextBarManager::SetFadeEffect(unsigned char fade) {
  if (auto bars = HostBars()) bars->SetFadeEffect(fade);
}
