// The texture mapping of an object under edition, as its observers and the
// context bar commands see it: the mapping type, the observers to tell of a
// change, and the display toggles of its manipulators.
#ifndef QAVIRbaMappingObservable_h
#define QAVIRbaMappingObservable_h

#include "QAVBaseUnknown.h"
#include "QAVRbaUIExport.h"

class QAVIRbaMappingObserver;

class QAVRBAUI_API QAVIRbaMappingObservable : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // The projection of the texture onto its support. Only these values occur;
  // Planar is also the reading of any unknown value.
  enum MappingType : int {
    Planar = 0,
    Spherical = 1,
    FiniteCylindrical = 2,
    Cubical = 3,
    UV = 6,
    InfiniteCylindrical = 8,
  };

  // Observers are not counted references: an observer removes itself before
  // it dies. Adding one twice keeps one entry; removing an absent one is E_FAIL.
  virtual HRESULT AddObserver(QAVIRbaMappingObserver* observer) = 0;
  virtual HRESULT RemoveObserver(QAVIRbaMappingObserver* observer) = 0;
  virtual int GetObserverCount() const = 0;
  virtual MappingType GetMappingType() const = 0;
  virtual HRESULT SetMappingType(const MappingType& type) = 0;
  // Tell every observer of a change; `sender` is the observer that made it.
  virtual HRESULT UpdateAllObserversPosAndOrientation(QAVIRbaMappingObserver* sender) = 0;
  virtual HRESULT UpdateAllObserversMappingType(QAVIRbaMappingObserver* sender) = 0;
  virtual HRESULT UpdateAllObserversOtherMappingAttributes(QAVIRbaMappingObserver* sender) = 0;
  // Shows (mode 0) or hides (any other mode) the manipulator of the mapping.
  virtual HRESULT DisplayManipulatorRep(int mode) = 0;
  virtual bool IsManipulatorRepDisplayed() const = 0;
  // Shows (mode 0) or hides the manipulator of the drawing zone (stickers).
  virtual HRESULT DisplayDrawingZoneManipulator(int mode) = 0;
  virtual bool IsDecalUVCropMode() const = 0;
  // Turns the crop mode of a decal's UV placement on or off.
  virtual HRESULT ToggleDecalUVCropMode() = 0;
  // Turns the projection to face the eye of the current viewer.
  virtual HRESULT AlignWithCameraView() = 0;
};

#endif
