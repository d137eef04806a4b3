// The context bar's command that opens the position and orientation panel
// (panel 25 of the current window) on the object under edition, unless the
// panel is open already; it then announces CONTEXT_BAR_END_ACTION only.
#ifndef QAVRbaContextBarEditMatrixPositionCmd_h
#define QAVRbaContextBarEditMatrixPositionCmd_h

#include "QAVCommand.h"
#include "QAVRbaUIExport.h"

class QAVRBAUI_API QAVRbaContextBarEditMatrixPositionCmd : public QAVCommand {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarEditMatrixPositionCmd();
  ~QAVRbaContextBarEditMatrixPositionCmd() override;
  // Always 0.
  int Activate(QAVCommand* from, QAVNotification* notification) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarEditMatrixPositionCmd();

#endif
