#include "QAVTestSupport.h"

#include <atomic>
#include <clocale>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <fcntl.h>
#include <langinfo.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

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

namespace {

bool HasComma(locale_t locale) {
  return locale != static_cast<locale_t>(nullptr) &&
         std::string(nl_langinfo_l(RADIXCHAR, locale)) == ",";
}

// Runs localedef, its output discarded; true when it ran and exited.
bool RunLocaledef(const std::string& output) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  std::string program = "localedef", inputFlag = "-i", input = "de_DE", charmapFlag = "-f",
              charmap = "UTF-8", target = output;
  char* argv[] = {program.data(), inputFlag.data(), input.data(), charmapFlag.data(),
                  charmap.data(), target.data(),    nullptr};
  pid_t pid = 0;
  const int spawned = posix_spawnp(&pid, "localedef", &actions, nullptr, argv, environ);
  posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0) return false;
  int status = 0;
  return waitpid(pid, &status, 0) == pid && WIFEXITED(status);
}

// The process's locale with the numbers of kCommaLocale, or null when that
// cannot be loaded. The process's locale is left as it was. (setlocale and
// duplocale rather than newlocale, which leaks its copy of LOCPATH.)
locale_t LoadCommaLocale() {
  const std::string original = std::setlocale(LC_NUMERIC, nullptr);
  if (!std::setlocale(LC_NUMERIC, kCommaLocale)) return static_cast<locale_t>(nullptr);
  const locale_t comma = duplocale(LC_GLOBAL_LOCALE);
  (void)std::setlocale(LC_NUMERIC, original.c_str());
  return comma;
}

}  // namespace

locale_t CommaLocale(const std::string& dir, std::optional<ScopedEnv>& locpath, std::string& why) {
  locale_t comma = LoadCommaLocale();
  if (HasComma(comma)) return comma;
  if (comma != static_cast<locale_t>(nullptr)) freelocale(comma);
  fs::create_directories(dir);
  const bool ran = RunLocaledef(dir + "/" + kCommaLocale);
  locpath.emplace("LOCPATH", dir);
  comma = LoadCommaLocale();
  if (HasComma(comma)) return comma;
  if (comma != static_cast<locale_t>(nullptr)) freelocale(comma);
  why = std::string("no decimal-comma locale: ") + kCommaLocale + " is not installed, and " +
        (ran ? "localedef could not make it (the locale sources of Debian's 'locales' package, "
               "/usr/share/i18n/locales/de_DE, are missing?)"
             : "localedef could not be run");
  return static_cast<locale_t>(nullptr);
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
