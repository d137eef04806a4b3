// The context bar's command: mapping type spherical.
#ifndef QAVRbaContextBarMappingTypeSphericalCmd_h
#define QAVRbaContextBarMappingTypeSphericalCmd_h

#include "QAVRbaContextBarCmd.h"

class QAVRBAUI_API QAVRbaContextBarMappingTypeSphericalCmd : public QAVRbaContextBarCmd {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarMappingTypeSphericalCmd();
  ~QAVRbaContextBarMappingTypeSphericalCmd() override;

 protected:
  void ActOnObject(QAVBaseUnknown* object) override;
  void ActOnManager(QAVRbaContextBarManager& manager) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarMappingTypeSphericalCmd();

#endif
