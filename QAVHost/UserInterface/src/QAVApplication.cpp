#include "QAVApplication.h"

#include <algorithm>

#include "QAVCommand.h"
#include "QAVHostJournal.h"
#include "QAVNotification.h"
#include "QAVProcessState.h"

QAV_IMPLEMENT_CLASS(QAVApplication, QAVEventSubscriber, "System");

QAVApplication* QAVApplication::_main = nullptr;

QAVApplication::QAVApplication() = default;
QAVApplication::~QAVApplication() = default;

QAVApplication* QAVApplication::MainApplication() {
  if (!_main) _main = new QAVApplication;
  return _main;
}

void QAVApplication::ResetMainApplication() {
  QAVApplication* application = _main;
  if (!application) return;
  // Destructors may create or end other commands: go on until the host holds
  // no reference any more. Commands that others still hold stay alive, unknown
  // to the next application.
  for (;;) {
    const auto held = std::find_if(application->_commands.rbegin(), application->_commands.rend(),
                                   [](const QAVCommand* c) { return c->_hostReference; });
    if (held == application->_commands.rend()) break;
    ReleaseHostReference(*held);
  }
  application->_commands.clear();
  application->_pending.clear();
  application->_idle.clear();
  _main = nullptr;
  application->Release();
}

QAV_REGISTER_RESET(QAVApplication, &QAVApplication::ResetMainApplication);

void QAVApplication::CommandCreated(QAVCommand* command) { _commands.push_back(command); }

void QAVApplication::CommandDestroyed(QAVCommand* command) {
  const auto known = std::find(_commands.begin(), _commands.end(), command);
  if (known == _commands.end()) return;
  _commands.erase(known);
  std::erase(_pending, command);
  std::erase_if(_idle, [command](const IdleSubscription& s) { return s.command == command; });
  qavjournal::Record({"command-destroyed", command->GetName().str(), {}, command});
}

void QAVApplication::DestructionRequested(QAVCommand* command) {
  if (!command->_hostReference) return;
  if (std::find(_commands.begin(), _commands.end(), command) == _commands.end()) return;
  if (std::find(_pending.begin(), _pending.end(), command) == _pending.end())
    _pending.push_back(command);
}

void QAVApplication::ReleaseHostReference(QAVCommand* command) {
  if (!command->_hostReference) return;
  command->_hostReference = false;
  command->Release();
}

HRESULT QAVApplication::Subscribe(int kind, QAVCommand* command, void* data,
                                  QAVIdleFunction function) {
  if (kind != Idle || !function) return E_INVALIDARG;
  _idle.push_back({_nextSubscription++, kind, command, data, function});
  return S_OK;
}

int QAVApplication::RemoveSubscribe(int kind, QAVCommand* command) {
  return static_cast<int>(std::erase_if(_idle, [kind, command](const IdleSubscription& s) {
    return s.kind == kind && s.command == command;
  }));
}

int QAVApplication::GetSubscriptionCount(int kind) const {
  return static_cast<int>(std::count_if(
      _idle.begin(), _idle.end(), [kind](const IdleSubscription& s) { return s.kind == kind; }));
}

bool QAVApplication::IsSubscribed(int kind, const QAVCommand* command) const {
  return std::any_of(_idle.begin(), _idle.end(), [kind, command](const IdleSubscription& s) {
    return s.kind == kind && s.command == command;
  });
}

void QAVApplication::NotificationSent(QAVCommand* from, QAVCommand* to,
                                      QAVNotification* notification) {
  _sent.push_back(
      {QAVRef<QAVCommand>(from), QAVRef<QAVCommand>(to), QAVRef<QAVNotification>(notification)});
}

int QAVApplication::ProcessPendingWork() {
  int work = 0;
  std::vector<Sent> sent;
  sent.swap(_sent);
  for (const Sent& s : sent) {
    if (s.to->IsDestructionRequested()) continue;
    s.to->AnalyseNotification(s.from.get(), s.notification.get());
    ++work;
  }
  while (!_pending.empty()) {
    QAVCommand* command = _pending.front();
    _pending.erase(_pending.begin());
    ReleaseHostReference(command);
    ++work;
  }
  // Idle functions may subscribe, unsubscribe or destroy commands: call only
  // the subscriptions present at the start that still exist when their turn
  // comes.
  std::vector<unsigned long> ids;
  ids.reserve(_idle.size());
  for (const IdleSubscription& s : _idle)
    ids.push_back(s.id);
  for (const unsigned long id : ids) {
    const auto it = std::find_if(_idle.begin(), _idle.end(),
                                 [id](const IdleSubscription& s) { return s.id == id; });
    if (it == _idle.end()) continue;
    const IdleSubscription call = *it;
    call.function(call.command, call.kind, call.data);
    ++work;
  }
  return work;
}

QAVCommand* QAVApplication::FindCommand(const char* name) const {
  if (!name) return nullptr;
  const auto it = std::find_if(_commands.begin(), _commands.end(),
                               [name](const QAVCommand* c) { return c->GetName() == name; });
  return it == _commands.end() ? nullptr : *it;
}
