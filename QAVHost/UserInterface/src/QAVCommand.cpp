#include "QAVCommand.h"

#include <algorithm>
#include <cstring>
#include "QAVApplication.h"

#include "QAVCallbackManager.h"
#include "QAVViewerEvent.h"

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
  for (const Analysis& analysis : _analyses)
    analysis.manager->RemoveCallback(analysis.id);
  // The application may already be gone when a module kept its own reference to
  // a command beyond a reset of the process state.
  if (QAVApplication* application = QAVApplication::_main) application->CommandDestroyed(this);
}

int QAVCommand::Activate(QAVCommand* /*from*/, QAVNotification* /*notification*/) { return 0; }

void QAVCommand::SendNotification(QAVCommand* target, QAVNotification* notification) {
  QAVApplication::MainApplication()->NotificationSent(this, target ? target : this, notification);
}

int QAVCommand::AnalyseNotification(QAVCommand* /*from*/, QAVNotification* /*notification*/) {
  return 0;
}

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

std::uint64_t QAVCommand::AddAnalyseNotificationCB(QAVCommand* sender, const char* event,
                                                   QAVCommandMethod method, void* data) {
  if (!sender || !event || !method) return 0;
  QAVCallbackManager* manager = sender->GetCallbackManager();
  const QAVCallback id = manager->AddCallback(
      event,
      [this, sender, method](const char* /*event*/, void* /*data*/, QAVNotification* notification,
                             void* clientData, QAVCallback /*callback*/) {
        (this->*method)(sender, notification, clientData);
      },
      data);
  _analyses.push_back({id, QAVRef<QAVCallbackManager>(manager)});
  return id;
}

bool QAVCommand::RemoveAnalyseNotificationCB(std::uint64_t registration) {
  const auto found =
      std::find_if(_analyses.begin(), _analyses.end(),
                   [registration](const Analysis& a) { return a.id == registration; });
  if (found == _analyses.end()) return false;
  found->manager->RemoveCallback(found->id);
  _analyses.erase(found);
  return true;
}

QAVBaseUnknown* QAVCommand::SendCommandSpecificObject(const char* className,
                                                      QAVNotification* notification) {
  const auto* vue = dynamic_cast<QAVVueNotification*>(notification);
  auto* event = vue ? dynamic_cast<QAVViewerEvent*>(vue->GetDataNotification()) : nullptr;
  if (!className || !event) return nullptr;
  if (std::strcmp(className, "QAVPathElement") == 0) return event->GetPathElement();
  if (std::strcmp(className, "QAVPickPath") == 0) return event->GetPickPathUnder();
  if (std::strcmp(className, "QAVViewerEvent") == 0) return event;
  return nullptr;
}

QAVCallbackManager* GetDefaultCallbackManager(QAVCommand* command) {
  return command ? command->GetCallbackManager() : nullptr;
}
