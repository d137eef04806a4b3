// The context bar's command "fit to texture scale": it does nothing but end.
// Its button is on no bar; the command is kept as it is.
#ifndef QAVRbaContextBarFitToTextureScaleCmd_h
#define QAVRbaContextBarFitToTextureScaleCmd_h

#include "QAVCommand.h"
#include "QAVRbaUIExport.h"

class QAVRBAUI_API QAVRbaContextBarFitToTextureScaleCmd : public QAVCommand {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarFitToTextureScaleCmd();
  ~QAVRbaContextBarFitToTextureScaleCmd() override;
  // Asks for its end and returns 0; no manager, no event, no change.
  int Activate(QAVCommand* from, QAVNotification* notification) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarFitToTextureScaleCmd();

#endif
