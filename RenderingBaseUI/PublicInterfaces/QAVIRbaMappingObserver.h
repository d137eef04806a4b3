// Observes the texture mapping of an object under edition (an applied material,
// a decal, a sticker): the object's mapping observable calls its observers when
// the placement, the mapping type or another mapping attribute changes.
// Every operation answers 0 (done) or E_FAIL.
#ifndef QAVIRbaMappingObserver_h
#define QAVIRbaMappingObserver_h

#include "QAVBaseUnknown.h"
#include "QAVRbaUIExport.h"

class QAVRBAUI_API QAVIRbaMappingObserver : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  virtual HRESULT UpdatePosAndOrientation() = 0;
  virtual HRESULT UpdateMappingType() = 0;
  virtual HRESULT UpdateOtherMappingAttributes() = 0;
  virtual HRESULT UpdateInitialPos() = 0;
  virtual HRESULT UpdatePanel() = 0;
  virtual HRESULT ShowManipulatorRep() = 0;
  virtual HRESULT HideManipulatorRep() = 0;
  virtual HRESULT AlignWithCameraView() = 0;
};

#endif
