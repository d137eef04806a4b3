#include "QAVRbaContextBarMappingTypeSphericalCmd.h"

#include "QAVFillDictionary.h"
#include "QAVIRbaMappingModelUpdater.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarMappingTypeSphericalCmd, QAVRbaContextBarCmd,
                    "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarMappingTypeSphericalCmd() {
  return new QAVRbaContextBarMappingTypeSphericalCmd;
}
[[maybe_unused]] static const bool registered = QAVFillDictionary::Register(
    "QAVRbaContextBarMappingTypeSphericalCmd", &fctCreateQAVRbaContextBarMappingTypeSphericalCmd);

QAVRbaContextBarMappingTypeSphericalCmd::QAVRbaContextBarMappingTypeSphericalCmd()
    : QAVRbaContextBarCmd("QAVRbaContextBarMappingTypeSphericalCmd") {}
QAVRbaContextBarMappingTypeSphericalCmd::~QAVRbaContextBarMappingTypeSphericalCmd() = default;

void QAVRbaContextBarMappingTypeSphericalCmd::ActOnObject(QAVBaseUnknown* object) {
  if (QAVRef<QAVIRbaMappingModelUpdater> mapping = QAVQuery<QAVIRbaMappingModelUpdater>(object))
    mapping->UpdateMappingType(QAVIRbaMappingModelUpdater::CtxBarSpherical);
}

void QAVRbaContextBarMappingTypeSphericalCmd::ActOnManager(QAVRbaContextBarManager& manager) {
  manager.SetCurrentMappingType(QAVIRbaMappingObservable::Spherical);
}
