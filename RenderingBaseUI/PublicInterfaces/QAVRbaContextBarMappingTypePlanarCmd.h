// The context bar's command: mapping type planar.
#ifndef QAVRbaContextBarMappingTypePlanarCmd_h
#define QAVRbaContextBarMappingTypePlanarCmd_h

#include "QAVRbaContextBarCmd.h"

class QAVRBAUI_API QAVRbaContextBarMappingTypePlanarCmd : public QAVRbaContextBarCmd {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarMappingTypePlanarCmd();
  ~QAVRbaContextBarMappingTypePlanarCmd() override;

 protected:
  void ActOnObject(QAVBaseUnknown* object) override;
  void ActOnManager(QAVRbaContextBarManager& manager) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarMappingTypePlanarCmd();

#endif
