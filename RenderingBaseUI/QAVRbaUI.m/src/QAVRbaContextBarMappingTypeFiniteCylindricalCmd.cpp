#include "QAVRbaContextBarMappingTypeFiniteCylindricalCmd.h"

#include "QAVFillDictionary.h"
#include "QAVIRbaMappingModelUpdater.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarMappingTypeFiniteCylindricalCmd, QAVRbaContextBarCmd,
                    "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarMappingTypeFiniteCylindricalCmd() {
  return new QAVRbaContextBarMappingTypeFiniteCylindricalCmd;
}
[[maybe_unused]] static const bool registered =
    QAVFillDictionary::Register("QAVRbaContextBarMappingTypeFiniteCylindricalCmd",
                                &fctCreateQAVRbaContextBarMappingTypeFiniteCylindricalCmd);

QAVRbaContextBarMappingTypeFiniteCylindricalCmd::QAVRbaContextBarMappingTypeFiniteCylindricalCmd()
    : QAVRbaContextBarCmd("QAVRbaContextBarMappingTypeFiniteCylindricalCmd") {}
QAVRbaContextBarMappingTypeFiniteCylindricalCmd::
    ~QAVRbaContextBarMappingTypeFiniteCylindricalCmd() = default;

void QAVRbaContextBarMappingTypeFiniteCylindricalCmd::ActOnObject(QAVBaseUnknown* object) {
  if (QAVRef<QAVIRbaMappingModelUpdater> mapping = QAVQuery<QAVIRbaMappingModelUpdater>(object))
    mapping->UpdateMappingType(QAVIRbaMappingModelUpdater::CtxBarFiniteCylindrical);
}

void QAVRbaContextBarMappingTypeFiniteCylindricalCmd::ActOnManager(
    QAVRbaContextBarManager& manager) {
  manager.SetCurrentMappingType(QAVIRbaMappingObservable::FiniteCylindrical);
}
