// The frame context: the workbench the user works in. There is none until the
// host opens a workbench (a scene opened by the driver sets its workbench).
#ifndef QAVFrmContext_h
#define QAVFrmContext_h

#include "QAVBaseUnknown.h"
#include "QAVString.h"

class QAVHOST_API QAVFrmContext : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  explicit QAVFrmContext(const char* workbench = nullptr) : _workbench(workbench) {}
  ~QAVFrmContext() override;

  // The current context (borrowed), or null.
  static QAVFrmContext* GetContext();
  // Makes a context current (a reference is held); null: none.
  static void SetContext(QAVFrmContext* context);

  const QAVString& GetWorkbenchName() const { return _workbench; }
  void SetWorkbenchName(const char* workbench) { _workbench = workbench; }

 private:
  QAVString _workbench;
};

#endif
