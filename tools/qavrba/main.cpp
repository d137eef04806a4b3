// qavrba: the rendering UI services on the command line.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "QAVCli.h"

namespace qavcli {

namespace {

std::vector<std::pair<std::string, Setup>>& Registry() {
  static std::vector<std::pair<std::string, Setup>> groups;
  return groups;
}

int& Status() {
  static int status = 0;
  return status;
}

}  // namespace

bool Register(const char* name, Setup setup) {
  Registry().emplace_back(name, setup);
  return true;
}

void OnRun(CLI::App* command, std::function<int()> action) {
  command->callback([action = std::move(action)] { Status() = action(); });
}

int Fail(const std::string& message) {
  (void)std::fprintf(stderr, "qavrba: %s\n", message.c_str());
  return 1;
}

int UsageError(const std::string& message) {
  (void)std::fprintf(stderr, "qavrba: %s\nRun with --help for more information.\n",
                     message.c_str());
  return 2;
}

namespace {

std::string Shortest(double value) {
  char text[32];
  (void)std::snprintf(text, sizeof text, "%g", value);
  return text;
}

}  // namespace

CLI::Validator FiniteNumber(double low, double high) {
  const std::string range = "[" + Shortest(low) + " - " + Shortest(high) + "]";
  return CLI::Validator(
      [low, high, range](std::string& text) -> std::string {
        errno = 0;
        char* end = nullptr;
        const double value = std::strtod(text.c_str(), &end);
        if (text.empty() || *end != '\0' || errno == ERANGE || !std::isfinite(value))
          return "'" + text + "' is not a finite number";
        if (value < low || value > high) return "'" + text + "' is not in the range " + range;
        return {};
      },
      "NUMBER in " + range);
}

CLI::Validator FiniteFloat() {
  return CLI::Validator(
      [](std::string& text) -> std::string {
        errno = 0;
        char* end = nullptr;
        const double value = std::strtod(text.c_str(), &end);
        if (text.empty() || *end != '\0' || errno == ERANGE || !std::isfinite(value))
          return "'" + text + "' is not a finite number";
        if (std::abs(value) > static_cast<double>(std::numeric_limits<float>::max()))
          return "'" + text + "' is beyond the single-precision range (about 3.4e38)";
        return {};
      },
      "NUMBER");
}

std::string UnreadableFile(const std::string& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0)
    return "'" + path + "': " + (errno == ENOENT ? "no such file" : std::strerror(errno));
  if (S_ISDIR(st.st_mode)) return "'" + path + "' is a folder, not a file";
  if (!S_ISREG(st.st_mode))
    return "'" + path + "' is not a regular file (a FIFO, socket or device)";
  if (::access(path.c_str(), R_OK) != 0)
    return "'" + path + "' cannot be read: " + std::strerror(errno);
  return {};
}

std::string ResourcesDir() {
  if (const char* dir = std::getenv("QAVRBA_RESOURCES")) return dir;
  std::error_code ec;
  if (std::filesystem::is_directory(QAV_INSTALLED_RESOURCES_DIR, ec))
    return QAV_INSTALLED_RESOURCES_DIR;
  return QAV_SOURCE_RESOURCES_DIR;
}

}  // namespace qavcli

namespace {

int Run(int argc, char** argv) {
  CLI::App app("The rendering UI services on the command line.", "qavrba");
  app.require_subcommand(1);
  app.get_formatter()->column_width(36);
  app.footer("Errors go to standard error: status 1 for a failure, 2 for a usage error.\n");
  auto& groups = qavcli::Registry();
  std::sort(groups.begin(), groups.end());
  for (const auto& [name, setup] : groups)
    setup(app);
  const auto known = [&app](const char* name) {
    for (const CLI::App* command : app.get_subcommands({}))
      if (command->check_name(name)) return true;
    return false;
  };
  if (argc > 1 && argv[1][0] != '-' && !known(argv[1]))
    return qavcli::UsageError(std::string("unknown command '") + argv[1] + "'");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    if (e.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) return app.exit(e);
    return qavcli::UsageError(e.what());
  }
  return qavcli::Status();
}

}  // namespace

int main(int argc, char** argv) {
  // Nothing may end the program with an exception: what escapes the commands is
  // reported as an internal error.
  try {
    return Run(argc, argv);
  } catch (const std::exception& e) {
    return qavcli::Fail(std::string("internal error: ") + e.what());
  } catch (...) {
    return qavcli::Fail("internal error");
  }
}
