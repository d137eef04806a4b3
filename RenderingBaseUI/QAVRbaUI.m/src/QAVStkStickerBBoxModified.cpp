#include "QAVStkStickerBBoxModified.h"

#include <utility>

QAV_IMPLEMENT_CLASS(QAVStkStickerBBoxModified, QAVModifyAttribut, "RenderingBaseUI");

QAVStkStickerBBoxModified::QAVStkStickerBBoxModified(QAVBaseUnknown* object,
                                                     QAVBaseUnknown_var handle, const GUID& iid,
                                                     QAVAttributKind kind, QAVPathElement path)
    : QAVModifyAttribut(object, std::move(handle), iid, kind, path) {}

QAVStkStickerBBoxModified::QAVStkStickerBBoxModified(const QAVStkStickerBBoxModified& other) =
    default;

QAVStkStickerBBoxModified::~QAVStkStickerBBoxModified() = default;

QAVModelNotification* QAVStkStickerBBoxModified::Clone() const {
  return new QAVStkStickerBBoxModified(GetObject(), GetHandle(), GetInterfaceIID(),
                                       GetAttributKind(), GetPathElement());
}
