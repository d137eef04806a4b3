#include "QAVRbaContextBarEnableCropModeCmd.h"

#include "QAVFillDictionary.h"
#include "QAVIRbaMappingObservable.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarEnableCropModeCmd, QAVRbaContextBarCmd, "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarEnableCropModeCmd() {
  return new QAVRbaContextBarEnableCropModeCmd;
}
[[maybe_unused]] static const bool registered = QAVFillDictionary::Register(
    "QAVRbaContextBarEnableCropModeCmd", &fctCreateQAVRbaContextBarEnableCropModeCmd);

QAVRbaContextBarEnableCropModeCmd::QAVRbaContextBarEnableCropModeCmd()
    : QAVRbaContextBarCmd("QAVRbaContextBarEnableCropModeCmd") {}
QAVRbaContextBarEnableCropModeCmd::~QAVRbaContextBarEnableCropModeCmd() = default;

void QAVRbaContextBarEnableCropModeCmd::ActOnObject(QAVBaseUnknown* object) {
  if (QAVRef<QAVIRbaMappingObservable> mapping = QAVQuery<QAVIRbaMappingObservable>(object))
    mapping->ToggleDecalUVCropMode();
}
