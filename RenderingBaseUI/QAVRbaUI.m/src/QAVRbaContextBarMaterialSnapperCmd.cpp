#include "QAVRbaContextBarMaterialSnapperCmd.h"

#include "QAVFillDictionary.h"
#include "QAVIRbaMappingModelUpdater.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarMaterialSnapperCmd, QAVRbaContextBarCmd, "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarMaterialSnapperCmd() {
  return new QAVRbaContextBarMaterialSnapperCmd;
}
[[maybe_unused]] static const bool registered = QAVFillDictionary::Register(
    "QAVRbaContextBarMaterialSnapperCmd", &fctCreateQAVRbaContextBarMaterialSnapperCmd);

QAVRbaContextBarMaterialSnapperCmd::QAVRbaContextBarMaterialSnapperCmd()
    : QAVRbaContextBarCmd("QAVRbaContextBarMaterialSnapperCmd") {}
QAVRbaContextBarMaterialSnapperCmd::~QAVRbaContextBarMaterialSnapperCmd() = default;

void QAVRbaContextBarMaterialSnapperCmd::ActOnObject(QAVBaseUnknown* object) {
  if (QAVRef<QAVIRbaMappingModelUpdater> mapping = QAVQuery<QAVIRbaMappingModelUpdater>(object))
    mapping->ReSnapToApplicationCenterpoint();
}

void QAVRbaContextBarMaterialSnapperCmd::ActOnManager(QAVRbaContextBarManager& manager) {
  manager.makeUpdateAllObserversPosAndOrientation();
}
