#include "QAVRbaUIContextBarUVManipulator.h"

#include "QAVExtension.h"
#include "QAVIAfrCtxBar.h"

QAV_IMPLEMENT_CLASS(QAVRbaUIContextBarUVManipulator, QAVRbaUIContextBar, "RenderingBaseUI");
QAV_REGISTER_EXTENSION(QAVRbaUIContextBarUVManipulator, "QAVRbaUIContextBarUVManipulatorComponent",
                       QAVIAfrCtxBar);

QAVRbaUIContextBarUVManipulator::QAVRbaUIContextBarUVManipulator() = default;
QAVRbaUIContextBarUVManipulator::~QAVRbaUIContextBarUVManipulator() = default;

const QAVRbaUIContextBar::RowItem* QAVRbaUIContextBarUVManipulator::GetRowItems(int& count) const {
  static const RowItem items[] = {
      {Item::Command, "QAVRbaContextBarEnableCropModeHdr"},    {Item::Separator, "pRowSeparator1"},
      {Item::MappingContainer, "MappingCommandsContainer"},    {Item::Separator, "pRowSeparator2"},
      {Item::Command, "QAVRbaContextBarFitToSupportScaleHdr"},
  };
  count = static_cast<int>(sizeof(items) / sizeof(items[0]));
  return items;
}
