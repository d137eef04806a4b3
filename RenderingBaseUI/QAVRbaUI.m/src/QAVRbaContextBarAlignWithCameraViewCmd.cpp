#include "QAVRbaContextBarAlignWithCameraViewCmd.h"

#include "QAVFillDictionary.h"
#include "QAVIRbaMappingObservable.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarAlignWithCameraViewCmd, QAVRbaContextBarCmd, "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarAlignWithCameraViewCmd() {
  return new QAVRbaContextBarAlignWithCameraViewCmd;
}
[[maybe_unused]] static const bool registered = QAVFillDictionary::Register(
    "QAVRbaContextBarAlignWithCameraViewCmd", &fctCreateQAVRbaContextBarAlignWithCameraViewCmd);

QAVRbaContextBarAlignWithCameraViewCmd::QAVRbaContextBarAlignWithCameraViewCmd()
    : QAVRbaContextBarCmd("QAVRbaContextBarAlignWithCameraViewCmd") {}
QAVRbaContextBarAlignWithCameraViewCmd::~QAVRbaContextBarAlignWithCameraViewCmd() = default;

void QAVRbaContextBarAlignWithCameraViewCmd::ActOnObject(QAVBaseUnknown* object) {
  if (QAVRef<QAVIRbaMappingObservable> mapping = QAVQuery<QAVIRbaMappingObservable>(object))
    mapping->AlignWithCameraView();
}
