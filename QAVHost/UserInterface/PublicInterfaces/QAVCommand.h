// The host's command: a named, one-shot unit of interactive work (a button's
// action, a dialog, a manipulator).
//
// Ownership: the reference a new command starts with belongs to the host, not to
// the code that wrote `new`. The host keeps the command alive until the command
// asks for its own end with RequestDelayedDestruction; the reference is released
// the next time the host's loop processes pending work
// (QAVApplication::ProcessPendingWork), so a command may safely finish the event
// it is handling after asking. Never adopt a new command into a QAVRef and never
// put one on the stack; share it with QAVRef(command) when it must outlive the
// host's reference.
#ifndef QAVCommand_h
#define QAVCommand_h

#include <cstdint>
#include <type_traits>
#include <vector>

#include "QAVEventSubscriber.h"
#include "QAVRef.h"
#include "QAVString.h"

class QAVCallbackManager;
class QAVNotification;
class QAVApplication;
class QAVBaseUnknown;
class QAVCommand;

// A command's method called back for an event another command sends:
// (the sender, the notification, the client data given at registration).
using QAVCommandMethod = void (QAVCommand::*)(QAVCommand* sender, QAVNotification* notification,
                                              void* data);

class QAVHOST_API QAVCommand : public QAVEventSubscriber {
  QAV_DECLARE_CLASS
 public:
  // father is not owned and may be null; name may be null (empty name). The mode
  // value is the creator's (the host does not interpret it).
  explicit QAVCommand(QAVCommand* father = nullptr, const char* name = nullptr, int mode = 0);
  // A copy is a new command with the same name, mode and father, owned by the
  // host like any new command; it has no subscribers and no pending destruction.
  QAVCommand(const QAVCommand& other);
  QAVCommand& operator=(const QAVCommand& other);
  ~QAVCommand() override;

  const QAVString& GetName() const { return _name; }
  int GetMode() const { return _mode; }
  QAVCommand* GetFather() const { return _father; }

  // Hooks called by the host. The defaults do nothing and return 0, except
  // Cancel, which ends the command with a delayed destruction.
  virtual int Activate(QAVCommand* from, QAVNotification* notification);
  virtual int Desactivate(QAVCommand* from, QAVNotification* notification);
  virtual int Cancel(QAVCommand* from, QAVNotification* notification);

  // Sends `notification` to `target` (this command when null): the host
  // delivers it at its next loop pass by calling target->AnalyseNotification(
  // this, notification), unless the target asked for its destruction by then.
  void SendNotification(QAVCommand* target, QAVNotification* notification);
  // A notification delivered; the default does nothing and returns 0.
  virtual int AnalyseNotification(QAVCommand* from, QAVNotification* notification);

  // Asks the host to destroy the command once the current event is handled. A
  // second request is ignored.
  virtual void RequestDelayedDestruction();
  bool IsDestructionRequested() const { return _destructionRequested; }

  // The command's own callback manager, created on first use, through which it
  // sends its notifications to its subscribers.
  QAVCallbackManager* GetCallbackManager();

  // Calls `method` on this command whenever `sender` sends `event` through its
  // callback manager, until removed or this command dies. Returns the
  // registration (0 for a null argument).
  std::uint64_t AddAnalyseNotificationCB(QAVCommand* sender, const char* event,
                                         QAVCommandMethod method, void* data);
  // The same for a method of a derived command, called on this command.
  template <class Derived>
  std::uint64_t AddAnalyseNotificationCB(QAVCommand* sender, const char* event,
                                         void (Derived::*method)(QAVCommand*, QAVNotification*,
                                                                 void*),
                                         void* data) {
    static_assert(std::is_base_of_v<QAVCommand, Derived>, "a method of a command");
    return AddAnalyseNotificationCB(sender, event, static_cast<QAVCommandMethod>(method), data);
  }
  // False when the registration is not one of this command's.
  bool RemoveAnalyseNotificationCB(std::uint64_t registration);

  // The object of a class that a notification carries (borrowed), or null: a
  // viewer's notification (QAVVueNotification of a QAVViewerEvent) carries
  // its QAVPathElement, its QAVPickPath and its QAVViewerEvent.
  QAVBaseUnknown* SendCommandSpecificObject(const char* className, QAVNotification* notification);

 private:
  friend class QAVApplication;

  QAVString _name;
  int _mode;
  QAVCommand* _father;
  bool _destructionRequested = false;
  bool _hostReference = true;  // the host still holds the reference it started with
  QAVRef<QAVCallbackManager> _callbacks;
  struct Analysis {
    std::uint64_t id;
    QAVRef<QAVCallbackManager> manager;  // the sender's
  };
  std::vector<Analysis> _analyses;
};

// The callback manager of a command, through which it sends its events.
QAVHOST_API QAVCallbackManager* GetDefaultCallbackManager(QAVCommand* command);

#endif
