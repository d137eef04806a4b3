#include "QAVRbaContextBarMappingTypeUVCmd.h"

#include "QAVFillDictionary.h"
#include "QAVIRbaMappingModelUpdater.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarMappingTypeUVCmd, QAVRbaContextBarCmd, "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarMappingTypeUVCmd() {
  return new QAVRbaContextBarMappingTypeUVCmd;
}
[[maybe_unused]] static const bool registered = QAVFillDictionary::Register(
    "QAVRbaContextBarMappingTypeUVCmd", &fctCreateQAVRbaContextBarMappingTypeUVCmd);

QAVRbaContextBarMappingTypeUVCmd::QAVRbaContextBarMappingTypeUVCmd()
    : QAVRbaContextBarCmd("QAVRbaContextBarMappingTypeUVCmd") {}
QAVRbaContextBarMappingTypeUVCmd::~QAVRbaContextBarMappingTypeUVCmd() = default;

void QAVRbaContextBarMappingTypeUVCmd::ActOnObject(QAVBaseUnknown* object) {
  if (QAVRef<QAVIRbaMappingModelUpdater> mapping = QAVQuery<QAVIRbaMappingModelUpdater>(object))
    mapping->UpdateMappingType(QAVIRbaMappingModelUpdater::CtxBarUV);
}

void QAVRbaContextBarMappingTypeUVCmd::ActOnManager(QAVRbaContextBarManager& manager) {
  manager.SetCurrentMappingType(QAVIRbaMappingObservable::UV);
}
