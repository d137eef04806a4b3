// Maps event names to ordered subscriber lists and dispatches events to them.
// The subscribers of an event are found by its name, so a dispatch costs the
// same whatever the number of other events subscribed to. While the host's
// journal records, every dispatch is written in it.
#ifndef QAVCallbackManager_h
#define QAVCallbackManager_h

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "QAVEventSubscriber.h"

class QAVNotification;

// Identifies one subscription; 0 is never a valid one.
using QAVCallback = std::uint64_t;

// A subscriber receives the event name, the dispatch's data, the notification
// (may be null), the client data given at subscription and its own callback id.
using QAVCallbackFunction =
    std::function<void(const char* event, void* data, QAVNotification* notification,
                       void* clientData, QAVCallback callback)>;

class QAVHOST_API QAVCallbackManager : public QAVEventSubscriber {
  QAV_DECLARE_CLASS
 public:
  QAVCallbackManager();
  ~QAVCallbackManager() override;
  QAVCallbackManager(const QAVCallbackManager&) = delete;
  QAVCallbackManager& operator=(const QAVCallbackManager&) = delete;

  // Subscribes to an event name (compared by text).
  QAVCallback AddCallback(const char* event, QAVCallbackFunction function,
                          void* clientData = nullptr);
  // Ends a subscription; true when it existed. Safe from inside a callback.
  bool RemoveCallback(QAVCallback callback);
  // Calls every subscriber of the event in subscription order. A subscriber
  // added during the dispatch is not called by it; one removed is not called.
  void DispatchCallbacks(const char* event, QAVNotification* notification, void* data);
  int GetCallbackCount(const char* event) const;

 private:
  struct Subscription {
    QAVCallback id;
    std::shared_ptr<const QAVCallbackFunction> function;  // shared while it runs
    void* clientData;
    bool removed;  // removed during a dispatch, erased once no dispatch runs
  };
  struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const noexcept {
      return std::hash<std::string_view>()(name);
    }
  };
  using Subscribers =
      std::unordered_map<std::string, std::vector<Subscription>, NameHash, std::equal_to<>>;
  void EraseRemoved();

  Subscribers _subscribers;
  std::unordered_map<QAVCallback, std::string> _eventOf;
  QAVCallback _nextId = 1;
  int _dispatching = 0;  // dispatches under way (they may nest)
  bool _removedDuringDispatch = false;
};

#endif
