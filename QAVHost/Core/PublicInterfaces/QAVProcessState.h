// Process-wide state of the host and of its modules (singletons, caches, values
// read at load) registers a reset here: what a module forgets when the host
// unloads it. The substitute's driver (QAVHostDriver) runs the resets when a
// session ends, so that the next one starts as a new process would.
#ifndef QAVProcessState_h
#define QAVProcessState_h

#include "QAVHostExport.h"

class QAVHOST_API QAVProcessState {
 public:
  using Reset = void (*)();
  // Registers a reset function under a name; registering the same name twice
  // keeps the first.
  static void RegisterReset(const char* name, Reset reset);

 private:
  friend class QAVHostDriver;
  // Runs every registered reset, the most recently registered first, so that a
  // module's state goes before the host state it was built on.
  static void ResetAll();
};

// Registers a reset when the module loads.
#define QAV_REGISTER_RESET(Name, Function)                           \
  [[maybe_unused]] static const bool qavResetRegistered##Name = [] { \
    QAVProcessState::RegisterReset(#Name, Function);                 \
    return true;                                                     \
  }()

#endif
