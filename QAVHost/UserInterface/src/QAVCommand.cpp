#include "QAVCommand.h"

#include "QAVApplication.h"
#include "QAVCallbackManager.h"

QAV_IMPLEMENT_CLASS(QAVCommand, QAVEventSubscriber, "System");

QAVCommand::QAVCommand(QAVCommand* father, const char* name, int mode)
    : _name(name), _mode(mode), _father(father) {
  QAVApplication::MainApplication()->CommandCreated(this);
}

QAVCommand::QAVCommand(const QAVCommand& other)
    : QAVEventSubscriber(other), _name(other._name), _mode(other._mode), _father(other._father) {
  QAVApplication::MainApplication()->CommandCreated(this);
}

QAVCommand& QAVCommand::operator=(const QAVCommand& other) {
  if (this != &other) {
    _name = other._name;
    _mode = other._mode;
    _father = other._father;
  }
  return *this;
}

QAVCommand::~QAVCommand() {
  // The application may already be gone when a module kept its own reference to
  // a command beyond a reset of the process state.
  if (QAVApplication* application = QAVApplication::_main) application->CommandDestroyed(this);
}

int QAVCommand::Activate(QAVCommand* /*from*/, QAVNotification* /*notification*/) { return 0; }

int QAVCommand::Desactivate(QAVCommand* /*from*/, QAVNotification* /*notification*/) { return 0; }

int QAVCommand::Cancel(QAVCommand* /*from*/, QAVNotification* /*notification*/) {
  RequestDelayedDestruction();
  return 0;
}

void QAVCommand::RequestDelayedDestruction() {
  if (_destructionRequested) return;
  _destructionRequested = true;
  QAVApplication::MainApplication()->DestructionRequested(this);
}

QAVCallbackManager* QAVCommand::GetCallbackManager() {
  if (!_callbacks) _callbacks = QAVMakeRef<QAVCallbackManager>();
  return _callbacks.get();
}
