// The interface of the live renderer's ambience updater, which follows camera
// and depth-of-field changes. Its implementation is a component of the
// rendering dialogs, instantiated by name ("QAVRdgAmbienceUpdate").
#ifndef QAVIRbaAmbienceUpdate_h
#define QAVIRbaAmbienceUpdate_h

#include "QAVBaseUnknown.h"
#include "QAVRbaSiblingsExport.h"

class QAVRBASIBLINGS_API QAVIRbaAmbienceUpdate : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  ~QAVIRbaAmbienceUpdate() override;
  virtual HRESULT OnCameraChange(unsigned char flag) = 0;
  virtual HRESULT OnDepthOfFieldChange() = 0;
};

#define IID_QAVIRbaAmbienceUpdate QAVIRbaAmbienceUpdate::ClassId()

#endif
