// qavrba: the rendering UI services on the command line.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "QAVCli.h"

namespace qavcli {

namespace {
std::vector<Command>& Registry() {
  static std::vector<Command> commands;
  return commands;
}

void PrintHelp() {
  std::printf(
      "usage: qavrba COMMAND [ARGS...]\n"
      "The rendering UI services on the command line.\n\n"
      "Commands:\n");
  for (const Command& c : Registry())
    std::printf("%s\n", c.usage);
  std::printf(
      "\nEach command takes --help. Errors go to standard error with a non-zero "
      "exit status.\n");
}
}  // namespace

bool Register(const Command& command) {
  auto& commands = Registry();
  auto at = commands.begin();
  while (at != commands.end() && std::strcmp(at->name, command.name) < 0)
    ++at;
  commands.insert(at, command);
  return true;
}

const std::vector<Command>& Commands() { return Registry(); }

int Fail(const std::string& message) {
  (void)std::fprintf(stderr, "qavrba: %s\n", message.c_str());
  return 1;
}

void PrintUsage(const char* command) {
  for (const Command& c : Registry())
    if (std::strcmp(c.name, command) == 0) (void)std::fprintf(stderr, "usage:\n%s\n", c.usage);
}

int UsageError(const char* command, const std::string& message) {
  (void)std::fprintf(stderr, "qavrba %s: %s\n", command, message.c_str());
  PrintUsage(command);
  return 2;
}

bool WantsHelp(const Args& args) {
  for (const std::string& a : args)
    if (a == "--help" || a == "-h") return true;
  return false;
}

std::string ResourcesDir() {
  if (const char* dir = std::getenv("QAVRBA_RESOURCES")) return dir;
  std::error_code ec;
  if (std::filesystem::is_directory(QAV_INSTALLED_RESOURCES_DIR, ec))
    return QAV_INSTALLED_RESOURCES_DIR;
  return QAV_SOURCE_RESOURCES_DIR;
}

}  // namespace qavcli

int main(int argc, char** argv) {
  if (argc < 2) {
    qavcli::PrintHelp();
    return 2;
  }
  const std::string name = argv[1];
  if (name == "--help" || name == "-h" || name == "help") {
    qavcli::PrintHelp();
    return 0;
  }
  for (const qavcli::Command& c : qavcli::Commands()) {
    if (name != c.name) continue;
    const qavcli::Args args(argv + 2, argv + argc);
    if (qavcli::WantsHelp(args)) {
      std::printf("usage:\n%s\n", c.usage);
      return 0;
    }
    return c.handler(args);
  }
  (void)std::fprintf(stderr, "qavrba: unknown command '%s' (try qavrba --help)\n", name.c_str());
  return 2;
}
