// The context bar of a sticker: it also offers the drawing zone and, unless the mapping is UV or
// spherical, aligning with the camera view. Late type "QAVRbaUIContextBarStickerComponent".
#ifndef QAVRbaUIContextBarSticker_h
#define QAVRbaUIContextBarSticker_h

#include "QAVRbaUIContextBar.h"

class QAVRBAUI_API QAVRbaUIContextBarSticker : public QAVRbaUIContextBar {
  QAV_DECLARE_CLASS
 public:
  QAVRbaUIContextBarSticker();
  ~QAVRbaUIContextBarSticker() override;

 protected:
  const RowItem* GetRowItems(int& count) const override;
};

#endif
