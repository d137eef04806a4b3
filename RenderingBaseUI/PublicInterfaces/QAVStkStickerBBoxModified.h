// Sent when the bounding box of a sticker changed: an attribute modification of
// the sticker, with its path in the model tree.
#ifndef QAVStkStickerBBoxModified_h
#define QAVStkStickerBBoxModified_h

#include "QAVModifyAttribut.h"
#include "QAVRbaUIExport.h"

class QAVRBAUI_API QAVStkStickerBBoxModified : public QAVModifyAttribut {
  QAV_DECLARE_CLASS
 public:
  QAVStkStickerBBoxModified(QAVBaseUnknown* object, QAVBaseUnknown_var handle, const GUID& iid,
                            QAVAttributKind kind, QAVPathElement path);
  QAVStkStickerBBoxModified(const QAVStkStickerBBoxModified& other);
  ~QAVStkStickerBBoxModified() override;

  // A new record built from the same five values.
  QAVModelNotification* Clone() const override;
};

#endif
