// The command registry of the qavrba program. A command group registers itself
// with QAV_CLI_COMMAND; main dispatches on the first argument.
#ifndef QAVCli_h
#define QAVCli_h

#include <string>
#include <vector>

namespace qavcli {

using Args = std::vector<std::string>;
// Runs a command group with the arguments that follow its name; returns the exit
// status (0 success, 1 failure, 2 usage error).
using Handler = int (*)(const Args& args);

struct Command {
  const char* name;
  const char* usage;  // the lines printed by --help, one per form
  Handler handler;
};

bool Register(const Command& command);
const std::vector<Command>& Commands();

// Prints "qavrba: <message>" on standard error and returns 1.
int Fail(const std::string& message);
// Prints "qavrba <name>: <message>" and the command's usage on standard error,
// and returns 2.
int UsageError(const char* command, const std::string& message);
bool WantsHelp(const Args& args);
void PrintUsage(const char* command);

// The shipped resources directory: QAVRBA_RESOURCES if set, else the installed
// copy, else the source tree's.
std::string ResourcesDir();

}  // namespace qavcli

#define QAV_CLI_COMMAND(Name, Usage, Handler)           \
  [[maybe_unused]] static const bool qavCliRegistered = \
      ::qavcli::Register(::qavcli::Command{Name, Usage, Handler})

#endif
