// The host's dictionary of command factories, by command class name. Modules
// register their factories when they are loaded; command headers create their
// commands through it.
//
// Registrations are made at load and kept for the life of the process, like
// meta-classes: resetting the process state leaves them in place.
#ifndef QAVFillDictionary_h
#define QAVFillDictionary_h

#include "QAVHostExport.h"

class QAVCommand;

class QAVHOST_API QAVFillDictionary {
 public:
  // A factory returns a new command, owned by the host (see QAVCommand.h), or null.
  using Factory = QAVCommand* (*)();

  // Registers a factory under a class name; false for a null argument or a name
  // already registered (the first registration is kept).
  static bool Register(const char* className, Factory factory);
  // The factory registered under the name, or null.
  static Factory Find(const char* className);
  // A new command of the class: through its registered factory, else through the
  // factory of the meta-class of that name when it makes a command. Null when
  // neither gives one.
  static QAVCommand* CreateCommand(const char* className);
  static int GetCount();
};

#endif
