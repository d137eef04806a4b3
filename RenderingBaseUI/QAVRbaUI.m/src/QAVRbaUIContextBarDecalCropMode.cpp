#include "QAVRbaUIContextBarDecalCropMode.h"

#include "QAVExtension.h"
#include "QAVIAfrCtxBar.h"

QAV_IMPLEMENT_CLASS(QAVRbaUIContextBarDecalCropMode, QAVRbaUIContextBar, "RenderingBaseUI");
QAV_REGISTER_EXTENSION(QAVRbaUIContextBarDecalCropMode, "QAVRbaUIContextBarDecalCropModeComponent",
                       QAVIAfrCtxBar);

QAVRbaUIContextBarDecalCropMode::QAVRbaUIContextBarDecalCropMode() = default;
QAVRbaUIContextBarDecalCropMode::~QAVRbaUIContextBarDecalCropMode() = default;

const QAVRbaUIContextBar::RowItem* QAVRbaUIContextBarDecalCropMode::GetRowItems(int& count) const {
  static const RowItem items[] = {
      {Item::Command, "QAVRbaContextBarDisableCropModeHdr"},
      {Item::Separator, "pRowSeparator4"},
      {Item::Command, "QAVRbaContextBarEditMatrixPositionHdr"},
  };
  count = static_cast<int>(sizeof(items) / sizeof(items[0]));
  return items;
}
