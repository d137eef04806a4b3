#include "QAVRbaContextBarDisplayManipRepCmd.h"

#include "QAVFillDictionary.h"
#include "QAVIRbaMappingObservable.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarDisplayManipRepCmd, QAVRbaContextBarCmd, "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarDisplayManipRepCmd() {
  return new QAVRbaContextBarDisplayManipRepCmd;
}
[[maybe_unused]] static const bool registered = QAVFillDictionary::Register(
    "QAVRbaContextBarDisplayManipRepCmd", &fctCreateQAVRbaContextBarDisplayManipRepCmd);

QAVRbaContextBarDisplayManipRepCmd::QAVRbaContextBarDisplayManipRepCmd()
    : QAVRbaContextBarCmd("QAVRbaContextBarDisplayManipRepCmd") {}
QAVRbaContextBarDisplayManipRepCmd::~QAVRbaContextBarDisplayManipRepCmd() = default;

void QAVRbaContextBarDisplayManipRepCmd::ActOnObject(QAVBaseUnknown* object) {
  if (QAVRef<QAVIRbaMappingObservable> mapping = QAVQuery<QAVIRbaMappingObservable>(object))
    mapping->DisplayManipulatorRep(0);
}
