// The context bar's command: mapping type infinite cylindrical (3 on the bar, 8 on the model).
#ifndef QAVRbaContextBarMappingTypeInfiniteCylindricalCmd_h
#define QAVRbaContextBarMappingTypeInfiniteCylindricalCmd_h

#include "QAVRbaContextBarCmd.h"

class QAVRBAUI_API QAVRbaContextBarMappingTypeInfiniteCylindricalCmd : public QAVRbaContextBarCmd {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarMappingTypeInfiniteCylindricalCmd();
  ~QAVRbaContextBarMappingTypeInfiniteCylindricalCmd() override;

 protected:
  void ActOnObject(QAVBaseUnknown* object) override;
  void ActOnManager(QAVRbaContextBarManager& manager) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarMappingTypeInfiniteCylindricalCmd();

#endif
