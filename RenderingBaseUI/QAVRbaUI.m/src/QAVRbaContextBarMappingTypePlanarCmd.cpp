#include "QAVRbaContextBarMappingTypePlanarCmd.h"

#include "QAVFillDictionary.h"
#include "QAVIRbaMappingModelUpdater.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarMappingTypePlanarCmd, QAVRbaContextBarCmd, "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarMappingTypePlanarCmd() {
  return new QAVRbaContextBarMappingTypePlanarCmd;
}
[[maybe_unused]] static const bool registered = QAVFillDictionary::Register(
    "QAVRbaContextBarMappingTypePlanarCmd", &fctCreateQAVRbaContextBarMappingTypePlanarCmd);

QAVRbaContextBarMappingTypePlanarCmd::QAVRbaContextBarMappingTypePlanarCmd()
    : QAVRbaContextBarCmd("QAVRbaContextBarMappingTypePlanarCmd") {}
QAVRbaContextBarMappingTypePlanarCmd::~QAVRbaContextBarMappingTypePlanarCmd() = default;

void QAVRbaContextBarMappingTypePlanarCmd::ActOnObject(QAVBaseUnknown* object) {
  if (QAVRef<QAVIRbaMappingModelUpdater> mapping = QAVQuery<QAVIRbaMappingModelUpdater>(object))
    mapping->UpdateMappingType(QAVIRbaMappingModelUpdater::CtxBarPlanar);
}

void QAVRbaContextBarMappingTypePlanarCmd::ActOnManager(QAVRbaContextBarManager& manager) {
  manager.SetCurrentMappingType(QAVIRbaMappingObservable::Planar);
}
