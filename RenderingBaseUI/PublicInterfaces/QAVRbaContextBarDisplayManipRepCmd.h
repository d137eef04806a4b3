// The context bar's command: show the mapping's manipulator.
#ifndef QAVRbaContextBarDisplayManipRepCmd_h
#define QAVRbaContextBarDisplayManipRepCmd_h

#include "QAVRbaContextBarCmd.h"

class QAVRBAUI_API QAVRbaContextBarDisplayManipRepCmd : public QAVRbaContextBarCmd {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarDisplayManipRepCmd();
  ~QAVRbaContextBarDisplayManipRepCmd() override;

 protected:
  void ActOnObject(QAVBaseUnknown* object) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarDisplayManipRepCmd();

#endif
