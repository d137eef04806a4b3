// The context bar's command: align the projection with the camera view.
#ifndef QAVRbaContextBarAlignWithCameraViewCmd_h
#define QAVRbaContextBarAlignWithCameraViewCmd_h

#include "QAVRbaContextBarCmd.h"

class QAVRBAUI_API QAVRbaContextBarAlignWithCameraViewCmd : public QAVRbaContextBarCmd {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarAlignWithCameraViewCmd();
  ~QAVRbaContextBarAlignWithCameraViewCmd() override;

 protected:
  void ActOnObject(QAVBaseUnknown* object) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarAlignWithCameraViewCmd();

#endif
