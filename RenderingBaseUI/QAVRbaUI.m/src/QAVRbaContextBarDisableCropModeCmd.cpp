#include "QAVRbaContextBarDisableCropModeCmd.h"

#include "QAVFillDictionary.h"
#include "QAVIRbaMappingObservable.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarDisableCropModeCmd, QAVRbaContextBarCmd, "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarDisableCropModeCmd() {
  return new QAVRbaContextBarDisableCropModeCmd;
}
[[maybe_unused]] static const bool registered = QAVFillDictionary::Register(
    "QAVRbaContextBarDisableCropModeCmd", &fctCreateQAVRbaContextBarDisableCropModeCmd);

QAVRbaContextBarDisableCropModeCmd::QAVRbaContextBarDisableCropModeCmd()
    : QAVRbaContextBarCmd("QAVRbaContextBarDisableCropModeCmd") {}
QAVRbaContextBarDisableCropModeCmd::~QAVRbaContextBarDisableCropModeCmd() = default;

void QAVRbaContextBarDisableCropModeCmd::ActOnObject(QAVBaseUnknown* object) {
  if (QAVRef<QAVIRbaMappingObservable> mapping = QAVQuery<QAVIRbaMappingObservable>(object))
    mapping->ToggleDecalUVCropMode();
}
