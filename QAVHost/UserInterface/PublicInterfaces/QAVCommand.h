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

#include "QAVEventSubscriber.h"
#include "QAVRef.h"
#include "QAVString.h"

class QAVCallbackManager;
class QAVNotification;
class QAVApplication;

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

  // Asks the host to destroy the command once the current event is handled. A
  // second request is ignored.
  virtual void RequestDelayedDestruction();
  bool IsDestructionRequested() const { return _destructionRequested; }

  // The command's own callback manager, created on first use, through which it
  // sends its notifications to its subscribers.
  QAVCallbackManager* GetCallbackManager();

 private:
  friend class QAVApplication;

  QAVString _name;
  int _mode;
  QAVCommand* _father;
  bool _destructionRequested = false;
  bool _hostReference = true;  // the host still holds the reference it started with
  QAVRef<QAVCallbackManager> _callbacks;
};

#endif
