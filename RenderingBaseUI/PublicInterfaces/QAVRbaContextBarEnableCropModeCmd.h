// The context bar's command: crop mode of a decal's UV placement: a toggle, like the disable
// command.
#ifndef QAVRbaContextBarEnableCropModeCmd_h
#define QAVRbaContextBarEnableCropModeCmd_h

#include "QAVRbaContextBarCmd.h"

class QAVRBAUI_API QAVRbaContextBarEnableCropModeCmd : public QAVRbaContextBarCmd {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarEnableCropModeCmd();
  ~QAVRbaContextBarEnableCropModeCmd() override;

 protected:
  void ActOnObject(QAVBaseUnknown* object) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarEnableCropModeCmd();

#endif
