// The command line of the qavrba program, parsed with CLI11. Each command group
// lives in its own file and adds its subcommands to the program's app with
// QAV_CLI_COMMAND(name, setup). A subcommand's action (OnRun) returns the exit
// status: 0 success, 1 failure (Fail), 2 usage error (UsageError). CLI11 reports
// the usage errors it finds itself (unknown options, missing or malformed
// arguments, numbers out of range) with status 2 too.
#ifndef QAVCli_h
#define QAVCli_h

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

namespace qavcli {

using Setup = void (*)(CLI::App& program);

// Adds a command group; the groups are set up in the order of their names.
bool Register(const char* name, Setup setup);
// Runs `action` when `command` is the subcommand chosen; its result is the exit
// status of the program.
void OnRun(CLI::App* command, std::function<int()> action);

// Prints "qavrba: <message>" on standard error and returns 1.
int Fail(const std::string& message);
// Prints "qavrba: <message>" and the pointer to --help on standard error and
// returns 2.
int UsageError(const std::string& message);

// A validator of finite numbers (no infinity, no NaN) within [low, high].
CLI::Validator FiniteNumber(double low, double high);
// A validator of numbers a float holds: finite and within its range.
CLI::Validator FiniteFloat();

// Why `path` cannot be read as an input file: it is missing, a folder, a FIFO
// or another file that is not a regular one, or unreadable; empty when it can
// be. Checked before the file is opened, so that a FIFO never blocks.
std::string UnreadableFile(const std::string& path);

// The shipped resources directory: QAVRBA_RESOURCES if set, else the installed
// copy, else the source tree's.
std::string ResourcesDir();

}  // namespace qavcli

#define QAV_CLI_COMMAND(Name, Setup) \
  [[maybe_unused]] static const bool qavCliRegistered = ::qavcli::Register(Name, Setup)

#endif
