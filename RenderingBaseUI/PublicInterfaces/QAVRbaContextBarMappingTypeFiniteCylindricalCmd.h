// The context bar's command: mapping type finite cylindrical.
#ifndef QAVRbaContextBarMappingTypeFiniteCylindricalCmd_h
#define QAVRbaContextBarMappingTypeFiniteCylindricalCmd_h

#include "QAVRbaContextBarCmd.h"

class QAVRBAUI_API QAVRbaContextBarMappingTypeFiniteCylindricalCmd : public QAVRbaContextBarCmd {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarMappingTypeFiniteCylindricalCmd();
  ~QAVRbaContextBarMappingTypeFiniteCylindricalCmd() override;

 protected:
  void ActOnObject(QAVBaseUnknown* object) override;
  void ActOnManager(QAVRbaContextBarManager& manager) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarMappingTypeFiniteCylindricalCmd();

#endif
