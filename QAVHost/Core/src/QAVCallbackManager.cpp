#include "QAVCallbackManager.h"

#include <algorithm>

#include "QAVNotification.h"

QAV_IMPLEMENT_CLASS(QAVCallbackManager, QAVEventSubscriber, "System");

QAVCallbackManager::QAVCallbackManager() = default;
QAVCallbackManager::~QAVCallbackManager() = default;

QAVCallback QAVCallbackManager::AddCallback(const char* event, QAVCallbackFunction function,
                                            void* clientData) {
  if (!event || !function) return 0;
  const QAVCallback id = _nextId++;
  _subscriptions.push_back({id, event, std::move(function), clientData});
  return id;
}

bool QAVCallbackManager::RemoveCallback(QAVCallback callback) {
  const auto it = std::find_if(_subscriptions.begin(), _subscriptions.end(),
                               [callback](const Subscription& s) { return s.id == callback; });
  if (it == _subscriptions.end()) return false;
  _subscriptions.erase(it);
  return true;
}

void QAVCallbackManager::DispatchCallbacks(const char* event, QAVNotification* notification,
                                           void* data) {
  if (!event) return;
  _dispatches.push_back({event, notification ? notification->IsA() : "", data});
  // Subscriptions may come and go while callbacks run: take the ids first and
  // look each one up again before calling it.
  std::vector<QAVCallback> ids;
  for (const auto& s : _subscriptions)
    if (s.event == event) ids.push_back(s.id);
  for (const QAVCallback id : ids) {
    const auto it = std::find_if(_subscriptions.begin(), _subscriptions.end(),
                                 [id](const Subscription& s) { return s.id == id; });
    if (it == _subscriptions.end()) continue;
    const QAVCallbackFunction function = it->function;  // the callback may remove itself
    function(event, data, notification, it->clientData, id);
  }
}

int QAVCallbackManager::GetCallbackCount(const char* event) const {
  if (!event) return 0;
  return static_cast<int>(
      std::count_if(_subscriptions.begin(), _subscriptions.end(),
                    [event](const Subscription& s) { return s.event == event; }));
}
