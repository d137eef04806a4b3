// The context bar's command: mapping type cubical (4 on the bar, 3 on the model).
#ifndef QAVRbaContextBarMappingTypeCubicalCmd_h
#define QAVRbaContextBarMappingTypeCubicalCmd_h

#include "QAVRbaContextBarCmd.h"

class QAVRBAUI_API QAVRbaContextBarMappingTypeCubicalCmd : public QAVRbaContextBarCmd {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarMappingTypeCubicalCmd();
  ~QAVRbaContextBarMappingTypeCubicalCmd() override;

 protected:
  void ActOnObject(QAVBaseUnknown* object) override;
  void ActOnManager(QAVRbaContextBarManager& manager) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarMappingTypeCubicalCmd();

#endif
