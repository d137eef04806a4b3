#include "QAVRbaContextBarDisplayDrawingZoneManipCmd.h"

#include "QAVFillDictionary.h"
#include "QAVIRbaMappingObservable.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarDisplayDrawingZoneManipCmd, QAVRbaContextBarCmd,
                    "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarDisplayDrawingZoneManipCmd() {
  return new QAVRbaContextBarDisplayDrawingZoneManipCmd;
}
[[maybe_unused]] static const bool registered =
    QAVFillDictionary::Register("QAVRbaContextBarDisplayDrawingZoneManipCmd",
                                &fctCreateQAVRbaContextBarDisplayDrawingZoneManipCmd);

QAVRbaContextBarDisplayDrawingZoneManipCmd::QAVRbaContextBarDisplayDrawingZoneManipCmd()
    : QAVRbaContextBarCmd("QAVRbaContextBarDisplayDrawingZoneManipCmd") {}
QAVRbaContextBarDisplayDrawingZoneManipCmd::~QAVRbaContextBarDisplayDrawingZoneManipCmd() = default;

void QAVRbaContextBarDisplayDrawingZoneManipCmd::ActOnObject(QAVBaseUnknown* object) {
  if (QAVRef<QAVIRbaMappingObservable> mapping = QAVQuery<QAVIRbaMappingObservable>(object))
    mapping->DisplayDrawingZoneManipulator(0);
}
