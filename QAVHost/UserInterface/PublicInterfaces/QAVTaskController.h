// The host's task controller: runs a progress task with the host's progress
// bar. Every report of the task is journaled ("progress": the title, then
// "range <low> <high>" or "progress <value>") and handed to the driver's
// progress display, if any.
#ifndef QAVTaskController_h
#define QAVTaskController_h

#include "QAVIProgressTask.h"
#include "QAVTypes.h"

class QAVHOST_API QAVTaskController {
 public:
  // Runs `task` now, to its end, and returns its result; E_FAIL for a null
  // task. The flags, the delay and the interrupt mode are the host's
  // scheduling options, recorded in the journal as given.
  static HRESULT Schedule(QAVIProgressTask* task, int modal, void* data, int showProgress,
                          int background, double delay, int interruptMode);

  QAVTaskController() = delete;
};

#endif
