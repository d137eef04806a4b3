// The context bar's command: crop mode of a decal's UV placement: the same toggle as the enable
// command.
#ifndef QAVRbaContextBarDisableCropModeCmd_h
#define QAVRbaContextBarDisableCropModeCmd_h

#include "QAVRbaContextBarCmd.h"

class QAVRBAUI_API QAVRbaContextBarDisableCropModeCmd : public QAVRbaContextBarCmd {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarDisableCropModeCmd();
  ~QAVRbaContextBarDisableCropModeCmd() override;

 protected:
  void ActOnObject(QAVBaseUnknown* object) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarDisableCropModeCmd();

#endif
