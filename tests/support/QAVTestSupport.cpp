#include "QAVTestSupport.h"

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <unistd.h>

#include "QAVProcessState.h"

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
  const fs::path file = _path / relative;
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
  ResetProcessState();
}

void HostTest::TearDown() {
  while (!_env.empty())
    _env.pop_back();
  ResetProcessState();
  _settingsDir.reset();
}

void HostTest::ResetProcessState() { QAVProcessState::ResetAll(); }

void HostTest::SetEnvAndReload(const char* name, std::optional<std::string> value) {
  _env.push_back(std::make_unique<ScopedEnv>(name, std::move(value)));
  ResetProcessState();
}

fs::path SharedDir() {
  const fs::path dir = QAV_SHARED_DIR;
  std::error_code ec;
  return fs::is_directory(dir, ec) ? fs::canonical(dir, ec) : fs::path();
}

}  // namespace qavtest
