// Process-wide state of the host and of its modules (singletons, caches, values
// read at load) registers a reset here, so that tests can put the process back to
// its start-up condition. Production code never calls ResetAll.
#ifndef QAVProcessState_h
#define QAVProcessState_h

#include "QAVHostExport.h"

class QAVHOST_API QAVProcessState {
 public:
  using Reset = void (*)();
  // Registers a reset function under a name; registering the same name twice
  // keeps the first.
  static void RegisterReset(const char* name, Reset reset);
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
