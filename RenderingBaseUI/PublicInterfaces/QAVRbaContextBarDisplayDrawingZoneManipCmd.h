// The context bar's command: show the drawing-zone manipulator of a sticker.
#ifndef QAVRbaContextBarDisplayDrawingZoneManipCmd_h
#define QAVRbaContextBarDisplayDrawingZoneManipCmd_h

#include "QAVRbaContextBarCmd.h"

class QAVRBAUI_API QAVRbaContextBarDisplayDrawingZoneManipCmd : public QAVRbaContextBarCmd {
  QAV_DECLARE_CLASS
 public:
  QAVRbaContextBarDisplayDrawingZoneManipCmd();
  ~QAVRbaContextBarDisplayDrawingZoneManipCmd() override;

 protected:
  void ActOnObject(QAVBaseUnknown* object) override;
};

// The factory registered under the class name.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaContextBarDisplayDrawingZoneManipCmd();

#endif
