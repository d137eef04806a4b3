#include "QAVRbaContextBarFitToTextureScaleCmd.h"

#include "QAVFillDictionary.h"

QAV_IMPLEMENT_CLASS(QAVRbaContextBarFitToTextureScaleCmd, QAVCommand, "RenderingBaseUI");

QAVCommand* fctCreateQAVRbaContextBarFitToTextureScaleCmd() {
  return new QAVRbaContextBarFitToTextureScaleCmd;
}
[[maybe_unused]] static const bool registered = QAVFillDictionary::Register(
    "QAVRbaContextBarFitToTextureScaleCmd", &fctCreateQAVRbaContextBarFitToTextureScaleCmd);

QAVRbaContextBarFitToTextureScaleCmd::QAVRbaContextBarFitToTextureScaleCmd()
    : QAVCommand(nullptr, "QAVRbaContextBarFitToTextureScaleCmd", 1) {}
QAVRbaContextBarFitToTextureScaleCmd::~QAVRbaContextBarFitToTextureScaleCmd() = default;

int QAVRbaContextBarFitToTextureScaleCmd::Activate(QAVCommand* /*from*/,
                                                   QAVNotification* /*notification*/) {
  RequestDelayedDestruction();
  return 0;
}
