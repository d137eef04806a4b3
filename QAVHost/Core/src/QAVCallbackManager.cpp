#include "QAVCallbackManager.h"

#include <algorithm>
#include <utility>

#include "QAVHostJournal.h"
#include "QAVNotification.h"

QAV_IMPLEMENT_CLASS(QAVCallbackManager, QAVEventSubscriber, "System");

QAVCallbackManager::QAVCallbackManager() = default;
QAVCallbackManager::~QAVCallbackManager() = default;

QAVCallback QAVCallbackManager::AddCallback(const char* event, QAVCallbackFunction function,
                                            void* clientData) {
  if (!event || !function) return 0;
  const QAVCallback id = _nextId++;
  auto it = _subscribers.find(std::string_view(event));
  if (it == _subscribers.end()) it = _subscribers.emplace(event, std::vector<Subscription>()).first;
  it->second.push_back(
      {id, std::make_shared<const QAVCallbackFunction>(std::move(function)), clientData, false});
  _eventOf.emplace(id, it->first);
  return id;
}

bool QAVCallbackManager::RemoveCallback(QAVCallback callback) {
  const auto event = _eventOf.find(callback);
  if (event == _eventOf.end()) return false;
  auto& list = _subscribers.find(event->second)->second;
  const auto it = std::find_if(list.begin(), list.end(),
                               [callback](const Subscription& s) { return s.id == callback; });
  _eventOf.erase(event);
  if (_dispatching > 0) {
    // A dispatch may be walking this list: mark the entry, erase it afterwards.
    it->removed = true;
    _removedDuringDispatch = true;
  } else {
    list.erase(it);
  }
  return true;
}

void QAVCallbackManager::DispatchCallbacks(const char* event, QAVNotification* notification,
                                           void* data) {
  if (!event) return;
  if (qavjournal::Recording())
    qavjournal::Record({"dispatch", event, notification ? notification->IsA() : "", this, data});
  const auto found = _subscribers.find(std::string_view(event));
  if (found == _subscribers.end()) return;
  // The list's node is stable; its vector may grow while callbacks run, so
  // entries are reached by index, and only those present at the start are called.
  std::vector<Subscription>& list = found->second;
  const std::size_t count = list.size();
  ++_dispatching;
  for (std::size_t i = 0; i < count; ++i) {
    if (list[i].removed) continue;
    // Held here, since the callback may subscribe others (moving the entries).
    const std::shared_ptr<const QAVCallbackFunction> function = list[i].function;
    (*function)(event, data, notification, list[i].clientData, list[i].id);
  }
  if (--_dispatching == 0 && _removedDuringDispatch) EraseRemoved();
}

void QAVCallbackManager::EraseRemoved() {
  _removedDuringDispatch = false;
  for (auto& [event, list] : _subscribers)
    std::erase_if(list, [](const Subscription& s) { return s.removed; });
}

int QAVCallbackManager::GetCallbackCount(const char* event) const {
  if (!event) return 0;
  const auto found = _subscribers.find(std::string_view(event));
  if (found == _subscribers.end()) return 0;
  return static_cast<int>(std::count_if(found->second.begin(), found->second.end(),
                                        [](const Subscription& s) { return !s.removed; }));
}
