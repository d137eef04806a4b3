// The context bar's command: mapping type UV (5 on the bar, 6 on the model).
#ifndef QAVRbaContextBarMappingTypeUVCmd_h
#define QAVRbaContextBarMappingTypeUVCmd_h

#include "QAVRbaContextBarCmd.h"

class QAVRBAUI_API QAVRbaContextBarMappingTypeUVCmd : public QAVRbaContextBarCmd {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarMappingTypeUVCmd();
  ~QAVRbaContextBarMappingTypeUVCmd() override;

 protected:
  void ActOnObject(QAVBaseUnknown* object) override;
  void ActOnManager(QAVRbaContextBarManager& manager) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarMappingTypeUVCmd();

#endif
