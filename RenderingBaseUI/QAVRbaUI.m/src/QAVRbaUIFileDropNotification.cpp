#include "QAVRbaUIFileDropNotification.h"

#include <utility>

QAV_IMPLEMENT_CLASS(QAVRbaUIFileDropNotification, QAVNotification, "RenderingBaseUI");

QAVRbaUIFileDropNotification::QAVRbaUIFileDropNotification(QAVUnicodeString filePath)
    : QAVNotification(0), FilePath(std::move(filePath)) {}

QAVRbaUIFileDropNotification::QAVRbaUIFileDropNotification(
    const QAVRbaUIFileDropNotification& other) = default;

QAVRbaUIFileDropNotification& QAVRbaUIFileDropNotification::operator=(
    const QAVRbaUIFileDropNotification& other) = default;

QAVRbaUIFileDropNotification::~QAVRbaUIFileDropNotification() = default;
