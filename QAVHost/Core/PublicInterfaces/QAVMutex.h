// The host's mutex: non-recursive; a thread that locks it twice deadlocks.
#ifndef QAVMutex_h
#define QAVMutex_h

#include <memory>

#include "QAVHostExport.h"

class QAVHOST_API QAVMutex {
 public:
  // The three arguments are the host's creation options (the modules pass 0, 1,
  // 0); they do not change the behaviour here.
  QAVMutex(int option1, int option2, int option3);
  ~QAVMutex();
  QAVMutex(const QAVMutex&) = delete;
  QAVMutex& operator=(const QAVMutex&) = delete;

  // A new mutex, or null when it cannot be created. The caller deletes it.
  static QAVMutex* Create(int option1, int option2, int option3);

  // Blocks until the mutex is held; returns 0.
  int LockF();
  // Releases a mutex held by this thread; returns 0.
  int UnlockF();

 private:
  friend class QAVHostDriver;
  // Makes Create fail (return null) until called again with false.
  static void SetCreationFails(bool fails);

  struct Impl;
  std::unique_ptr<Impl> _impl;
};

#endif
