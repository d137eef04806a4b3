#include "QAVTestSupport.h"

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <sys/wait.h>
#include <unistd.h>

namespace qavtest {

namespace fs = std::filesystem;

ScratchDir::ScratchDir() {
  static std::atomic<int> counter{0};
  _path = fs::temp_directory_path() /
          ("qav-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
  fs::remove_all(_path);
  fs::create_directories(_path);
}

ScratchDir::~ScratchDir() {
  std::error_code ignored;
  fs::permissions(_path, fs::perms::owner_all, fs::perm_options::add, ignored);
  fs::remove_all(_path, ignored);
}

fs::path ScratchDir::Write(const std::string& relative, const std::string& content) const {
  fs::path file = _path / relative;
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << content;
  return file;
}

ScopedEnv::ScopedEnv(const char* name, std::optional<std::string> value) : _name(name) {
  if (const char* old = std::getenv(name)) _old = old;
  if (value)
    ::setenv(name, value->c_str(), 1);
  else
    ::unsetenv(name);
}

ScopedEnv::~ScopedEnv() {
  if (_old)
    ::setenv(_name.c_str(), _old->c_str(), 1);
  else
    ::unsetenv(_name.c_str());
}

std::string ReadFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

void HostTest::SetUp() {
  _settingsDir.emplace("QAVHOST_SETTINGS_DIR", (_scratch.path() / "settings").string());
  _driver.emplace();
  _driver->StartRecording();
}

void HostTest::TearDown() {
  while (!_env.empty())
    _env.pop_back();
  _driver.reset();
  _settingsDir.reset();
}

void HostTest::ResetProcessState() { QAVHostDriver::Current()->Restart(); }

std::vector<QAVJournalEntry> HostTest::Dispatches(const void* manager) const {
  std::vector<QAVJournalEntry> dispatches = _driver->GetJournal("dispatch");
  if (manager)
    std::erase_if(dispatches, [manager](const QAVJournalEntry& e) { return e.source != manager; });
  return dispatches;
}

void HostTest::SetEnvAndReload(const char* name, std::optional<std::string> value) {
  _env.push_back(std::make_unique<ScopedEnv>(name, std::move(value)));
  ResetProcessState();
}

fs::path QavrbaProgram() {
  const fs::path program = fs::path(QAV_BINARY_DIR) / "bin" / "qavrba";
  std::error_code ec;
  return fs::exists(program, ec) ? program : fs::path();
}

ProgramRun RunQavrba(const std::string& arguments, const ScratchDir& directory) {
  const fs::path out = directory.path() / "qavrba-out.txt";
  const fs::path err = directory.path() / "qavrba-err.txt";
  const std::string command = "cd '" + directory.str() + "' && '" + QavrbaProgram().string() +
                              "' " + arguments + " >'" + out.string() + "' 2>'" + err.string() +
                              "'";
  const int raw = std::system(command.c_str());
  return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, ReadFile(out), ReadFile(err)};
}

fs::path SharedDir() {
  const fs::path dir = QAV_SHARED_DIR;
  std::error_code ec;
  return fs::is_directory(dir, ec) ? fs::canonical(dir, ec) : fs::path();
}

}  // namespace qavtest
