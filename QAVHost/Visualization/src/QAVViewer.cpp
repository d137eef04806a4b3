#include "QAVViewer.h"

#include "QAVCallbackManager.h"

QAV_IMPLEMENT_CLASS(QAVViewer, QAVEventSubscriber, "System");

QAVViewer::QAVViewer(const char* name)
    : _name(name), _callbacks(QAVMakeRef<QAVCallbackManager>()) {}

QAVViewer::~QAVViewer() = default;
