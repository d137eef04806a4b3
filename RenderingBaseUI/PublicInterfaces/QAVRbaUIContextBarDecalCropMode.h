// The context bar of a decal in crop mode: leaving crop mode and the position panel. Late type
// "QAVRbaUIContextBarDecalCropModeComponent".
#ifndef QAVRbaUIContextBarDecalCropMode_h
#define QAVRbaUIContextBarDecalCropMode_h

#include "QAVRbaUIContextBar.h"

class QAVRBAUI_API QAVRbaUIContextBarDecalCropMode : public QAVRbaUIContextBar {
  QAV_DECLARE_CLASS
 public:
  QAVRbaUIContextBarDecalCropMode();
  ~QAVRbaUIContextBarDecalCropMode() override;

 protected:
  const RowItem* GetRowItems(int& count) const override;
};

#endif
