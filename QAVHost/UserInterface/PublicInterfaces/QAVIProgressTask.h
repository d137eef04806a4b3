// Progress tasks: long work run by the host's task controller
// (QAVTaskController) with a progress user interface the task reports to.
#ifndef QAVIProgressTask_h
#define QAVIProgressTask_h

#include "QAVBaseUnknown.h"
#include "QAVTypes.h"
#include "QAVUnicodeString.h"

// What a running task reports to: its range, title and progress.
class QAVHOST_API QAVIProgressTaskUI : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVIProgressTaskUI() = default;
  ~QAVIProgressTaskUI() override;
  virtual void SetRange(int low, int high) = 0;
  virtual void SetTitle(const QAVUnicodeString& title) = 0;
  virtual void SetProgress(int value) = 0;
};

// A task: PerformTask runs it, reporting to `ui` (valid only during the call),
// with the client data given to Schedule.
class QAVHOST_API QAVIProgressTask : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVIProgressTask() = default;
  ~QAVIProgressTask() override;
  virtual HRESULT PerformTask(QAVIProgressTaskUI* ui, void* data) = 0;
};

#endif
