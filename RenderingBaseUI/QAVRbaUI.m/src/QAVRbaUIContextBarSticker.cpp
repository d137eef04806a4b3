#include "QAVRbaUIContextBarSticker.h"

#include "QAVExtension.h"
#include "QAVIAfrCtxBar.h"

QAV_IMPLEMENT_CLASS(QAVRbaUIContextBarSticker, QAVRbaUIContextBar, "RenderingBaseUI");
QAV_REGISTER_EXTENSION(QAVRbaUIContextBarSticker, "QAVRbaUIContextBarStickerComponent",
                       QAVIAfrCtxBar);

QAVRbaUIContextBarSticker::QAVRbaUIContextBarSticker() = default;
QAVRbaUIContextBarSticker::~QAVRbaUIContextBarSticker() = default;

const QAVRbaUIContextBar::RowItem* QAVRbaUIContextBarSticker::GetRowItems(int& count) const {
  static const RowItem items[] = {
      {Item::Command, "QAVRbaContextBarDisplayDrawingZoneManipHdr"},
      {Item::Separator, "pRowSeparator0"},
      {Item::Command, "QAVRbaContextBarDisplayManipRepHdr"},
      {Item::Separator, "pRowSeparator1"},
      {Item::MappingContainer, "MappingCommandsContainer"},
      {Item::Separator, "pRowSeparator2"},
      {Item::Command, "QAVRbaContextBarMaterialSnapperHdr"},
      {Item::Separator, "pRowSeparator3"},
      {Item::Command, "QAVRbaContextBarFitToSupportScaleHdr"},
      {Item::Separator, "pRowSeparator4"},
      {Item::AlignWithCameraView, "QAVRbaContextBarAlignWithCameraViewHdr"},
      {Item::Command, "QAVRbaContextBarEditMatrixPositionHdr"},
  };
  count = static_cast<int>(sizeof(items) / sizeof(items[0]));
  return items;
}
