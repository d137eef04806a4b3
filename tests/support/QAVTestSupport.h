// Helpers shared by the tests: a scratch directory, environment variables set
// for one test, and a reset of every process-wide state.
#ifndef QAVTestSupport_h
#define QAVTestSupport_h

#include <gtest/gtest.h>
#include <locale.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "QAVHostDriver.h"

namespace qavtest {

// A fresh directory removed with everything in it at destruction.
class ScratchDir {
 public:
  ScratchDir();
  ~ScratchDir();
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;
  const std::filesystem::path& path() const { return _path; }
  std::string str() const { return _path.string(); }
  // Writes a file (creating parent directories) and returns its path.
  std::filesystem::path Write(const std::string& relative, const std::string& content) const;

 private:
  std::filesystem::path _path;
};

// Sets (or unsets, with nullopt) an environment variable until destruction.
class ScopedEnv {
 public:
  ScopedEnv(const char* name, std::optional<std::string> value);
  ~ScopedEnv();
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;

 private:
  std::string _name;
  std::optional<std::string> _old;
};

std::string ReadFile(const std::filesystem::path& path);

// The locale whose numbers have a decimal comma that the locale tests use.
inline constexpr const char* kCommaLocale = "de_DE.UTF-8";
// The numbers of kCommaLocale as a locale for the caller to free (freelocale),
// found installed or made with localedef under `dir`, which `locpath` then names
// as LOCPATH for as long as the caller keeps it. Null, with `why` saying what
// is missing, when neither works. The process's locale is left as it was.
locale_t CommaLocale(const std::string& dir, std::optional<ScopedEnv>& locpath, std::string& why);

// A test fixture with its own settings directory and its own session of the
// substitute host (a driver, recording its journal): every process-wide state of
// the host and of the library starts afresh for each test.
class HostTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;
  // The host as a new process finds it: re-reads what the library reads at
  // load (after changing the environment) and the stores on disk.
  static void ResetProcessState();
  QAVHostDriver& Driver() { return *_driver; }
  // The events dispatched through `manager` (every manager when null) since the
  // test began or the journal was cleared.
  std::vector<QAVJournalEntry> Dispatches(const void* manager = nullptr) const;
  // Sets (nullopt: unsets) an environment variable until the end of the test,
  // then re-reads what the library reads at load.
  void SetEnvAndReload(const char* name, std::optional<std::string> value);

  ScratchDir _scratch;
  std::optional<ScopedEnv> _settingsDir;
  std::optional<QAVHostDriver> _driver;
  std::vector<std::unique_ptr<ScopedEnv>> _env;  // restored last set first
};

// What a run of the built qavrba program printed, and its exit status.
struct ProgramRun {
  int status;
  std::string out;
  std::string err;
};
// The built qavrba program, or an empty path when it is not built.
std::filesystem::path QavrbaProgram();
// Runs qavrba with `arguments` (shell words) in `directory`, which also receives
// the captured output.
ProgramRun RunQavrba(const std::string& arguments, const ScratchDir& directory);

// A test of the built qavrba program, skipped when it is not built: a scratch
// directory to run it in, and the shipped showroom scene.
class ProgramTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (QavrbaProgram().empty()) GTEST_SKIP() << "qavrba is not built";
  }
  ProgramRun Run(const std::string& arguments) const { return RunQavrba(arguments, _scratch); }

  ScratchDir _scratch;
  const std::string _showroom = std::string(QAV_RESOURCES_DIR) + "/scenes/showroom/scene.json";
};

// The shared test data beside the project, or empty when it is missing.
std::filesystem::path SharedDir();

}  // namespace qavtest

#endif
