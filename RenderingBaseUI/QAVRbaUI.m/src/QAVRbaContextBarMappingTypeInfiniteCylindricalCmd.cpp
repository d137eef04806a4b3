#include "QAVRbaContextBarMappingTypeInfiniteCylindricalCmd.h"

#include "QAVFillDictionary.h"
#include "QAVIRbaMappingModelUpdater.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarMappingTypeInfiniteCylindricalCmd, QAVRbaContextBarCmd,
                    "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarMappingTypeInfiniteCylindricalCmd() {
  return new QAVRbaContextBarMappingTypeInfiniteCylindricalCmd;
}
[[maybe_unused]] static const bool registered =
    QAVFillDictionary::Register("QAVRbaContextBarMappingTypeInfiniteCylindricalCmd",
                                &fctCreateQAVRbaContextBarMappingTypeInfiniteCylindricalCmd);

QAVRbaContextBarMappingTypeInfiniteCylindricalCmd::
    QAVRbaContextBarMappingTypeInfiniteCylindricalCmd()
    : QAVRbaContextBarCmd("QAVRbaContextBarMappingTypeInfiniteCylindricalCmd") {}
QAVRbaContextBarMappingTypeInfiniteCylindricalCmd::
    ~QAVRbaContextBarMappingTypeInfiniteCylindricalCmd() = default;

void QAVRbaContextBarMappingTypeInfiniteCylindricalCmd::ActOnObject(QAVBaseUnknown* object) {
  if (QAVRef<QAVIRbaMappingModelUpdater> mapping = QAVQuery<QAVIRbaMappingModelUpdater>(object))
    mapping->UpdateMappingType(QAVIRbaMappingModelUpdater::CtxBarInfiniteCylindrical);
}

void QAVRbaContextBarMappingTypeInfiniteCylindricalCmd::ActOnManager(
    QAVRbaContextBarManager& manager) {
  manager.SetCurrentMappingType(QAVIRbaMappingObservable::InfiniteCylindrical);
}
