#include "QAVRbaContextBarMappingTypeCubicalCmd.h"

#include "QAVFillDictionary.h"
#include "QAVIRbaMappingModelUpdater.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarMappingTypeCubicalCmd, QAVRbaContextBarCmd, "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarMappingTypeCubicalCmd() {
  return new QAVRbaContextBarMappingTypeCubicalCmd;
}
[[maybe_unused]] static const bool registered = QAVFillDictionary::Register(
    "QAVRbaContextBarMappingTypeCubicalCmd", &fctCreateQAVRbaContextBarMappingTypeCubicalCmd);

QAVRbaContextBarMappingTypeCubicalCmd::QAVRbaContextBarMappingTypeCubicalCmd()
    : QAVRbaContextBarCmd("QAVRbaContextBarMappingTypeCubicalCmd") {}
QAVRbaContextBarMappingTypeCubicalCmd::~QAVRbaContextBarMappingTypeCubicalCmd() = default;

void QAVRbaContextBarMappingTypeCubicalCmd::ActOnObject(QAVBaseUnknown* object) {
  if (QAVRef<QAVIRbaMappingModelUpdater> mapping = QAVQuery<QAVIRbaMappingModelUpdater>(object))
    mapping->UpdateMappingType(QAVIRbaMappingModelUpdater::CtxBarCubical);
}

void QAVRbaContextBarMappingTypeCubicalCmd::ActOnManager(QAVRbaContextBarManager& manager) {
  manager.SetCurrentMappingType(QAVIRbaMappingObservable::Cubical);
}
