// The context bar's command: fit to the support's size (never keeping the texture's ratio).
#ifndef QAVRbaContextBarFitToSupportScaleCmd_h
#define QAVRbaContextBarFitToSupportScaleCmd_h

#include "QAVRbaContextBarCmd.h"

class QAVRBAUI_API QAVRbaContextBarFitToSupportScaleCmd : public QAVRbaContextBarCmd {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarFitToSupportScaleCmd();
  ~QAVRbaContextBarFitToSupportScaleCmd() override;

 protected:
  void ActOnObject(QAVBaseUnknown* object) override;
  void ActOnManager(QAVRbaContextBarManager& manager) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarFitToSupportScaleCmd();

#endif
