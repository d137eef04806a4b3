// An object under edition for the context bar tests: it answers the mapping
// observable and the mapping model updater, and writes every call it receives
// in a log, in order ("SetMappingType 3", "UpdateMappingType 4", ...). Its
// observable calls every observer, as the real ones do.
#ifndef QAVMappingRecorder_h
#define QAVMappingRecorder_h

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "QAVIRbaMappingModelUpdater.h"
#include "QAVIRbaMappingObservable.h"
#include "QAVIRbaMappingObserver.h"

class QAVMappingRecorder : public QAVBaseUnknown {
 public:
  // `withObservable`/`withUpdater` false: the object lacks that interface.
  explicit QAVMappingRecorder(bool withObservable = true, bool withUpdater = true)
      : _hasObservable(withObservable), _hasUpdater(withUpdater) {
    _observable.AggregateInto(this);
    _updater.AggregateInto(this);
  }
  ~QAVMappingRecorder() override {
    _observable.AggregateInto(nullptr);
    _updater.AggregateInto(nullptr);
  }

  HRESULT QueryInterface(const IID& iid, void** object) override {
    QAVBaseUnknown* answer = nullptr;
    if (_hasObservable && iid == QAVIRbaMappingObservable::ClassId()) answer = &_observable;
    if (_hasUpdater && iid == QAVIRbaMappingModelUpdater::ClassId()) answer = &_updater;
    if (!answer || !object) return QAVBaseUnknown::QueryInterface(iid, object);
    AddRef();
    *object = answer;
    return S_OK;
  }

  std::vector<std::string> log;
  std::vector<QAVIRbaMappingObserver*> observers;
  std::vector<QAVIRbaMappingObserver*> senders;
  QAVIRbaMappingObservable::MappingType type = QAVIRbaMappingObservable::Cubical;
  bool cropMode = false;

  QAVIRbaMappingObservable* GetObservable() { return &_observable; }
  QAVIRbaMappingModelUpdater* GetUpdater() { return &_updater; }
  // The log since the last call.
  std::vector<std::string> Take() { return std::exchange(log, {}); }

 private:
  class Observable : public QAVIRbaMappingObservable {
   public:
    explicit Observable(QAVMappingRecorder& r) : _r(r) {}
    HRESULT AddObserver(QAVIRbaMappingObserver* o) override {
      _r.log.push_back("AddObserver");
      _r.observers.push_back(o);
      return S_OK;
    }
    HRESULT RemoveObserver(QAVIRbaMappingObserver* o) override {
      _r.log.push_back("RemoveObserver");
      const auto it = std::find(_r.observers.begin(), _r.observers.end(), o);
      if (it == _r.observers.end()) return E_FAIL;
      _r.observers.erase(it);
      return S_OK;
    }
    int GetObserverCount() const override { return static_cast<int>(_r.observers.size()); }
    MappingType GetMappingType() const override { return _r.type; }
    HRESULT SetMappingType(const MappingType& t) override {
      _r.log.push_back("SetMappingType " + std::to_string(t));
      _r.type = t;
      return S_OK;
    }
    HRESULT UpdateAllObserversPosAndOrientation(QAVIRbaMappingObserver* s) override {
      return Tell("UpdateAllObserversPosAndOrientation", s,
                  &QAVIRbaMappingObserver::UpdatePosAndOrientation);
    }
    HRESULT UpdateAllObserversMappingType(QAVIRbaMappingObserver* s) override {
      return Tell("UpdateAllObserversMappingType", s, &QAVIRbaMappingObserver::UpdateMappingType);
    }
    HRESULT UpdateAllObserversOtherMappingAttributes(QAVIRbaMappingObserver* s) override {
      return Tell("UpdateAllObserversOtherMappingAttributes", s,
                  &QAVIRbaMappingObserver::UpdateOtherMappingAttributes);
    }
    HRESULT DisplayManipulatorRep(int mode) override {
      _r.log.push_back("DisplayManipulatorRep " + std::to_string(mode));
      return S_OK;
    }
    bool IsManipulatorRepDisplayed() const override { return false; }
    HRESULT DisplayDrawingZoneManipulator(int mode) override {
      _r.log.push_back("DisplayDrawingZoneManipulator " + std::to_string(mode));
      return S_OK;
    }
    bool IsDecalUVCropMode() const override { return _r.cropMode; }
    HRESULT ToggleDecalUVCropMode() override {
      _r.log.push_back("ToggleDecalUVCropMode");
      _r.cropMode = !_r.cropMode;
      return S_OK;
    }
    HRESULT AlignWithCameraView() override {
      _r.log.push_back("AlignWithCameraView");
      return S_OK;
    }

   private:
    HRESULT Tell(const char* what, QAVIRbaMappingObserver* sender,
                 HRESULT (QAVIRbaMappingObserver::*update)()) {
      _r.log.emplace_back(what);
      _r.senders.push_back(sender);
      for (QAVIRbaMappingObserver* o : std::vector<QAVIRbaMappingObserver*>(_r.observers))
        (o->*update)();
      return S_OK;
    }
    QAVMappingRecorder& _r;
  };
  class Updater : public QAVIRbaMappingModelUpdater {
   public:
    explicit Updater(QAVMappingRecorder& r) : _r(r) {}
    HRESULT UpdateMappingType(CtxBarMappingType t) override {
      _r.log.push_back("UpdateMappingType " + std::to_string(t));
      return S_OK;
    }
    HRESULT ReSnapToApplicationCenterpoint() override {
      _r.log.emplace_back("ReSnapToApplicationCenterpoint");
      return S_OK;
    }
    HRESULT RescaleToRelatedObjectSize(bool keepRatio) override {
      _r.log.push_back(std::string("RescaleToRelatedObjectSize ") + (keepRatio ? "true" : "false"));
      return S_OK;
    }
    HRESULT RescaleToOriginalTextureSize() override {
      _r.log.emplace_back("RescaleToOriginalTextureSize");
      return S_OK;
    }
    HRESULT GetIsometryMatrix(QAVMathTransformation& m) override {
      m = isometry;
      return S_OK;
    }
    HRESULT SetIsometryMatrix(const QAVMathTransformation& m) override {
      isometry = m;
      return S_OK;
    }
    QAVMathTransformation isometry;

   private:
    QAVMappingRecorder& _r;
  };

  bool _hasObservable;
  bool _hasUpdater;
  Observable _observable{*this};
  Updater _updater{*this};
};

#endif
