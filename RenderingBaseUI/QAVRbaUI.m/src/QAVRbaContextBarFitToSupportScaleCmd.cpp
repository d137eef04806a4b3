#include "QAVRbaContextBarFitToSupportScaleCmd.h"

#include "QAVFillDictionary.h"
#include "QAVIRbaMappingModelUpdater.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarFitToSupportScaleCmd, QAVRbaContextBarCmd, "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarFitToSupportScaleCmd() {
  return new QAVRbaContextBarFitToSupportScaleCmd;
}
[[maybe_unused]] static const bool registered = QAVFillDictionary::Register(
    "QAVRbaContextBarFitToSupportScaleCmd", &fctCreateQAVRbaContextBarFitToSupportScaleCmd);

QAVRbaContextBarFitToSupportScaleCmd::QAVRbaContextBarFitToSupportScaleCmd()
    : QAVRbaContextBarCmd("QAVRbaContextBarFitToSupportScaleCmd") {}
QAVRbaContextBarFitToSupportScaleCmd::~QAVRbaContextBarFitToSupportScaleCmd() = default;

void QAVRbaContextBarFitToSupportScaleCmd::ActOnObject(QAVBaseUnknown* object) {
  if (QAVRef<QAVIRbaMappingModelUpdater> mapping = QAVQuery<QAVIRbaMappingModelUpdater>(object))
    mapping->RescaleToRelatedObjectSize(false);
}

void QAVRbaContextBarFitToSupportScaleCmd::ActOnManager(QAVRbaContextBarManager& manager) {
  manager.makeUpdateAllObserversOtherMappingAttributes();
}
