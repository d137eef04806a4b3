// The context bar's command: re-snap to the centre of the support.
#ifndef QAVRbaContextBarMaterialSnapperCmd_h
#define QAVRbaContextBarMaterialSnapperCmd_h

#include "QAVRbaContextBarCmd.h"

class QAVRBAUI_API QAVRbaContextBarMaterialSnapperCmd : public QAVRbaContextBarCmd {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarMaterialSnapperCmd();
  ~QAVRbaContextBarMaterialSnapperCmd() override;

 protected:
  void ActOnObject(QAVBaseUnknown* object) override;
  void ActOnManager(QAVRbaContextBarManager& manager) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarMaterialSnapperCmd();

#endif
