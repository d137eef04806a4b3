// Ties the floating context bar to the object whose texture is being placed
// (an applied material, a decal, a sticker): it holds that object, observes its
// mapping, mirrors its mapping type for the bar, relays update requests on the
// commands' behalf, and asks the host's context-bar manager to show, refresh,
// fade or remove the bar. One per process, made on first use and ended only
// by DestroyContextBarManager.
#ifndef QAVRbaContextBarManager_h
#define QAVRbaContextBarManager_h

#include "QAVBaseUnknown.h"
#include "QAVIRbaMappingObservable.h"
#include "QAVIRbaMappingObserver.h"
#include "QAVRbaUIExport.h"
#include "QAVString.h"

class QAVRBAUI_API QAVRbaContextBarManager : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  using MappingType = QAVIRbaMappingObservable::MappingType;

  // The instance (borrowed; callers never keep it), made on the first call with
  // no mapping type known (-1) and no object.
  static QAVRbaContextBarManager* GetContextBarManager();
  // Stops observing, deletes the instance; nothing when there is none.
  static void DestroyContextBarManager();

  // Changes the object under edition (null: none); a reference is held. The
  // mapping type is read from the new object's observable, when it has one.
  void SetRelatedObject(QAVBaseUnknown* object);
  QAVBaseUnknown* GetRelatedObject() const { return _relatedObject; }  // borrowed

  // The mapping type, or -1 when none is known yet.
  MappingType GetCurrentMappingType() const { return static_cast<MappingType>(_mappingType); }
  // Stores a plain integer as a mapping type (1, 2, 3, 6, 8 kept; anything else
  // Planar) and nothing else.
  void SetCurrentMappingType(int type);
  // Stores the type unchecked, sets it on the observable and has it tell every
  // observer.
  void SetCurrentMappingType(MappingType type);
  // Reads the type from the observable and refreshes the bars: 0; E_FAIL without
  // an observable.
  HRESULT UpdateMappingType();

  // Relays to the observable on the commands' behalf, with this manager as the
  // sender; nothing without an observable.
  void makeUpdateAllObserversPosAndOrientation();
  void makeUpdateAllObserversMappingType();
  void makeUpdateAllObserversOtherMappingAttributes();

  // The bar, through the host's context-bar manager (nothing without one).
  void InitContextualBar(QAVString barName);
  void DestroyContextualBar(QAVString barName);
  void updateDisplay();
  void SetFadeEffect(unsigned char fade);

  // What the manager answers as a mapping observer: it follows mapping-type
  // changes only. The E_FAIL answers are deliberate.
  HRESULT UpdatePosAndOrientation() { return S_OK; }
  HRESULT UpdateInitialPos() { return S_OK; }
  HRESULT AlignWithCameraView() { return S_OK; }
  HRESULT ShowManipulatorRep() { return S_OK; }
  HRESULT HideManipulatorRep() { return S_OK; }
  HRESULT ShowManipulatorRepWithRobot() { return S_OK; }
  HRESULT HideManipulatorRepWithRobot() { return S_OK; }
  HRESULT UpdateOtherMappingAttributes() { return E_FAIL; }
  HRESULT UpdatePanel() { return E_FAIL; }
  HRESULT ToggleDecalUVCropMode() { return E_FAIL; }

  // Answers QAVIRbaMappingObserver through an interface object that forwards
  // to the manager and shares its references.
  HRESULT QueryInterface(const IID& iid, void** object) override;

  QAVRbaContextBarManager(const QAVRbaContextBarManager&) = delete;
  QAVRbaContextBarManager& operator=(const QAVRbaContextBarManager&) = delete;

 private:
  QAVRbaContextBarManager();
  ~QAVRbaContextBarManager() override;
  void InitObserverDesignPattern();
  void CleanObserverDesignPattern();
  HRESULT UpdateMappingTypeNoRefreshDisplay();

  class ObserverTie : public QAVIRbaMappingObserver {
   public:
    explicit ObserverTie(QAVRbaContextBarManager& manager) : _manager(manager) {}
    HRESULT UpdatePosAndOrientation() override { return _manager.UpdatePosAndOrientation(); }
    HRESULT UpdateMappingType() override { return _manager.UpdateMappingType(); }
    HRESULT UpdateOtherMappingAttributes() override {
      return _manager.UpdateOtherMappingAttributes();
    }
    HRESULT UpdateInitialPos() override { return _manager.UpdateInitialPos(); }
    HRESULT UpdatePanel() override { return _manager.UpdatePanel(); }
    HRESULT ShowManipulatorRep() override { return _manager.ShowManipulatorRep(); }
    HRESULT HideManipulatorRep() override { return _manager.HideManipulatorRep(); }
    HRESULT AlignWithCameraView() override { return _manager.AlignWithCameraView(); }

   private:
    QAVRbaContextBarManager& _manager;
  };

  int _mappingType = -1;
  QAVBaseUnknown* _relatedObject = nullptr;         // one reference
  QAVIRbaMappingObserver* _ownObserver = nullptr;   // one reference (the manager's)
  QAVIRbaMappingObservable* _observable = nullptr;  // one reference
  ObserverTie _tie{*this};

  static QAVRbaContextBarManager* _contextBarManager;
  friend struct QAVRbaContextBarManagerAccess;
};

#endif
