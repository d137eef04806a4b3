// The host's main loop, as far as modules see it: the commands the host keeps
// alive, their delayed destruction, and subscriptions to idle processing.
//
// There is no real loop here: the substitute's driver (QAVHostDriver::Idle) runs
// one pass of it at the moments the loop would reach an idle point.
#ifndef QAVApplication_h
#define QAVApplication_h

#include <string>
#include <vector>

#include "QAVEventSubscriber.h"
#include "QAVRef.h"

class QAVCommand;
class QAVNotification;

// An idle subscriber: the command it was subscribed for, the subscription kind
// and the data given at subscription.
using QAVIdleFunction = void (*)(QAVCommand* command, int kind, void* data);

class QAVHOST_API QAVApplication : public QAVEventSubscriber {
  QAV_DECLARE_CLASS
 public:
  // The subscription kind of idle processing.
  static constexpr int Idle = 2;

  // The application of the process, created on first use (never null).
  static QAVApplication* MainApplication();

  // Subscribes a function to the idle moments of the loop; it is called at every
  // ProcessPendingWork until removed. command may be null. Subscribing twice
  // makes two subscriptions. E_INVALIDARG for another kind or a null function.
  HRESULT Subscribe(int kind, QAVCommand* command, void* data, QAVIdleFunction function);
  // Removes every subscription of this kind made for this command; returns how
  // many were removed. Safe from inside an idle function.
  int RemoveSubscribe(int kind, QAVCommand* command);
  int GetSubscriptionCount(int kind) const;
  bool IsSubscribed(int kind, const QAVCommand* command) const;

  QAVApplication(const QAVApplication&) = delete;
  QAVApplication& operator=(const QAVApplication&) = delete;
  ~QAVApplication() override;

  // Releases every command the host still keeps and forgets the application.
  static void ResetMainApplication();

 private:
  QAVApplication();
  friend class QAVCommand;
  friend class QAVHostDriver;
  // One pass of the loop: first the notifications sent between commands so far
  // (those sent meanwhile wait for the next pass; none reaches a command that
  // asked for its destruction), then the delayed destructions requested so far
  // (including those that destructors request while this runs), then one call of
  // every idle subscriber (those added meanwhile wait for the next pass, those
  // removed are skipped). Returns the number of deliveries, destructions and
  // idle calls.
  int ProcessPendingWork();

  // Inspection by the driver.
  int GetCommandCount() const { return static_cast<int>(_commands.size()); }  // alive
  QAVCommand* FindCommand(const char* name) const;  // first alive command of that name
  int GetPendingDestructionCount() const { return static_cast<int>(_pending.size()); }

  void CommandCreated(QAVCommand* command);
  void CommandDestroyed(QAVCommand* command);
  void DestructionRequested(QAVCommand* command);
  void NotificationSent(QAVCommand* from, QAVCommand* to, QAVNotification* notification);
  static void ReleaseHostReference(QAVCommand* command);

  static QAVApplication* _main;

  struct IdleSubscription {
    unsigned long id;
    int kind;
    QAVCommand* command;
    void* data;
    QAVIdleFunction function;
  };
  std::vector<QAVCommand*> _commands;
  std::vector<QAVCommand*> _pending;
  std::vector<IdleSubscription> _idle;
  struct Sent {
    QAVRef<QAVCommand> from;
    QAVRef<QAVCommand> to;
    QAVRef<QAVNotification> notification;
  };
  std::vector<Sent> _sent;
  unsigned long _nextSubscription = 1;
};

#endif
