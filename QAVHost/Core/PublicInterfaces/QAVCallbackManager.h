// Maps event names to ordered subscriber lists and dispatches events to them.
// Every dispatch is also recorded, so that a test can read back what was sent.
#ifndef QAVCallbackManager_h
#define QAVCallbackManager_h

#include <cstdint>
#include <functional>
#include <string>
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
  struct Dispatch {
    std::string event;
    std::string notificationClass;  // empty without a notification
    void* data;
  };

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
  const std::vector<Dispatch>& GetDispatches() const { return _dispatches; }
  void ClearDispatches() { _dispatches.clear(); }

 private:
  struct Subscription {
    QAVCallback id;
    std::string event;
    QAVCallbackFunction function;
    void* clientData;
  };
  std::vector<Subscription> _subscriptions;
  std::vector<Dispatch> _dispatches;
  QAVCallback _nextId = 1;
};

#endif
