#include "QAVRbaUIContextBarMaterial.h"

#include "QAVExtension.h"
#include "QAVIAfrCtxBar.h"

QAV_IMPLEMENT_CLASS(QAVRbaUIContextBarMaterial, QAVRbaUIContextBar, "RenderingBaseUI");
QAV_REGISTER_EXTENSION(QAVRbaUIContextBarMaterial, "QAVRbaUIContextBarMaterialComponent",
                       QAVIAfrCtxBar);

QAVRbaUIContextBarMaterial::QAVRbaUIContextBarMaterial() = default;
QAVRbaUIContextBarMaterial::~QAVRbaUIContextBarMaterial() = default;

const QAVRbaUIContextBar::RowItem* QAVRbaUIContextBarMaterial::GetRowItems(int& count) const {
  static const RowItem items[] = {
      {Item::Command, "QAVRbaContextBarDisplayManipRepHdr"},    {Item::Separator, "pRowSeparator1"},
      {Item::MappingContainer, "MappingCommandsContainer"},     {Item::Separator, "pRowSeparator2"},
      {Item::Command, "QAVRbaContextBarMaterialSnapperHdr"},    {Item::Separator, "pRowSeparator3"},
      {Item::Command, "QAVRbaContextBarFitToSupportScaleHdr"},  {Item::Separator, "pRowSeparator4"},
      {Item::Command, "QAVRbaContextBarEditMatrixPositionHdr"},
  };
  count = static_cast<int>(sizeof(items) / sizeof(items[0]));
  return items;
}
