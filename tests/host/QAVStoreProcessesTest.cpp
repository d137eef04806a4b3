// Several processes saving the same setting repository, preference repository or
// rendering configuration at once: nothing one of them saved may be lost. The
// processes are real (fork); their order is set by pipes, never by sleeping.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "QAVRbaConfiguration.h"
#include "QAVSettingRepository.h"
#include "QAVSysPreferenceRepository.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

// A one-way channel between two processes, used to hold a process until another
// tells it to go on, and to report progress.
class Pipe {
 public:
  Pipe() {
    if (::pipe(_fd) != 0) _fd[0] = _fd[1] = -1;
  }
  ~Pipe() {
    CloseRead();
    CloseWrite();
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  bool Valid() const { return _fd[0] >= 0; }
  void CloseRead() { Close(_fd[0]); }
  void CloseWrite() { Close(_fd[1]); }
  bool Send(int value) const { return ::write(_fd[1], &value, sizeof value) == sizeof value; }
  // The next value sent, or false once every writer has closed its end.
  bool Receive(int& value) const {
    for (;;) {
      const ssize_t n = ::read(_fd[0], &value, sizeof value);
      if (n == sizeof value) return true;
      if (n < 0 && errno == EINTR) continue;
      return false;
    }
  }

 private:
  static void Close(int& fd) {
    if (fd >= 0) ::close(fd);
    fd = -1;
  }
  int _fd[2];
};

// Runs `body` in a new process; the child's exit status is 0 when it returns
// true. The child ends with _exit, so that it runs none of the parent's cleanup.
pid_t Spawn(const std::function<bool()>& body) {
  (void)std::fflush(nullptr);
  const pid_t pid = ::fork();
  if (pid == 0) ::_exit(body() ? 0 : 1);
  return pid;
}

// The exit status of a child, or -1 when it did not exit normally.
int Wait(pid_t pid) {
  int status = 0;
  if (::waitpid(pid, &status, 0) != pid) return -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool SetInt(QAVSettingRepository* repo, const std::string& key, int value) {
  return repo && SUCCEEDED(repo->WriteSetting(key.c_str(), &value)) &&
         SUCCEEDED(repo->SaveRepository());
}

class StoreProcessesTest : public qavtest::HostTest {
 protected:
  fs::path SettingsDir() const { return _scratch.path() / "settings"; }

  // The repository as a new process reads it.
  static QAVSettingRepository* Reopen(const char* name) {
    ResetProcessState();
    return QAVSettingRepository::GetRepository(name);
  }

  static int StoredInt(QAVSettingRepository* repo, const std::string& key) {
    int value = -1;
    return SUCCEEDED(repo->ReadAttr(key.c_str(), &value)) ? value : -1;
  }

  // Files other than the stores themselves and their lock files: temporary files
  // of interrupted saves, corrupt files kept aside.
  std::vector<std::string> Leftovers() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(SettingsDir())) {
      const std::string name = entry.path().filename().string();
      if (name.find(".tmp.") != std::string::npos || name.find(".corrupt") != std::string::npos)
        names.push_back(name);
    }
    return names;
  }
};

}  // namespace

// Rounds of eight processes that open the repository together, each then saving
// its own key; then two long-lived processes saving turn about, a new key each
// time and one key both write.
TEST_F(StoreProcessesTest, ConcurrentSavesOfOtherKeysAreAllKept) {
  constexpr int kProcesses = 8;
  constexpr int kRounds = 5;
  for (int round = 1; round <= kRounds; ++round) {
    Pipe opened, gate;
    ASSERT_TRUE(opened.Valid() && gate.Valid());
    std::vector<pid_t> children(kProcesses);
    for (int i = 0; i < kProcesses; ++i) {
      children[i] = Spawn([&, i] {
        gate.CloseWrite();
        // Every process has read the file before any of them saves.
        QAVSettingRepository* repo = QAVSettingRepository::GetRepository("RenderingLiveSettings");
        opened.Send(i);
        int go = 0;
        gate.Receive(go);
        return SetInt(repo, "Key" + std::to_string(i), round);
      });
    }
    opened.CloseWrite();
    for (int i = 0, who = 0; i < kProcesses; ++i)
      ASSERT_TRUE(opened.Receive(who));
    gate.CloseWrite();  // releases them all at once
    for (const pid_t child : children)
      EXPECT_EQ(Wait(child), 0);
    QAVSettingRepository* repo = Reopen("RenderingLiveSettings");
    for (int i = 0; i < kProcesses; ++i)
      EXPECT_EQ(StoredInt(repo, "Key" + std::to_string(i)), round) << "round " << round;
  }

  // Two processes saving turn about, each after reading what the other saved
  // before: A saves, then B, then A...
  constexpr int kTurns = 100;
  Pipe toA, toB;
  const auto player = [&](const char* name, Pipe& mine, Pipe& other, bool first) {
    return Spawn([&, name, first] {
      // Only the other process may write to this one: if it fails, this one
      // reads the end of the pipe and stops instead of waiting for ever.
      mine.CloseWrite();
      other.CloseRead();
      QAVSettingRepository* repo = QAVSettingRepository::GetRepository("RenderingLiveSettings");
      int turn = 0;
      for (int n = 1; n <= kTurns; ++n) {
        if ((n > 1 || !first) && !mine.Receive(turn)) return false;
        const std::string own = std::string(name) + "." + std::to_string(n);
        const QAVString shared(std::string(name) + std::to_string(n));
        if (!SetInt(repo, own, n) || FAILED(repo->WriteSetting("Shared", &shared)) ||
            FAILED(repo->SaveRepository()))
          return false;
        // The second player's last turn ends the game: nobody reads any more.
        if ((first || n < kTurns) && !other.Send(n)) return false;
      }
      return true;
    });
  };
  const pid_t a = player("A", toA, toB, true);
  const pid_t b = player("B", toB, toA, false);
  toA.CloseRead();
  toB.CloseRead();
  toA.CloseWrite();
  toB.CloseWrite();
  EXPECT_EQ(Wait(a), 0);
  EXPECT_EQ(Wait(b), 0);

  QAVSettingRepository* repo = Reopen("RenderingLiveSettings");
  int lost = 0;
  for (const char* name : {"A", "B"})
    for (int n = 1; n <= kTurns; ++n)
      lost += StoredInt(repo, std::string(name) + "." + std::to_string(n)) != n;
  for (int i = 0; i < kProcesses; ++i)
    lost += StoredInt(repo, "Key" + std::to_string(i)) != kRounds;
  EXPECT_EQ(lost, 0) << "updates lost out of " << 2 * kTurns + kProcesses;
  QAVString shared;
  EXPECT_EQ(repo->ReadAttr("Shared", &shared), S_OK);
  EXPECT_EQ(shared.str(), "B100") << "the last save of a key wins";
  EXPECT_EQ(Leftovers(), std::vector<std::string>());
}

// A process killed while it saves in a loop loses nothing it had saved, leaves
// the file readable, and does not stop the next process from saving.
TEST_F(StoreProcessesTest, ConcurrentSaverKilledAnywhereLosesNothingSaved) {
  for (int round = 0; round < 8; ++round) {
    Pipe progress;
    const std::string counter = "Counter" + std::to_string(round);
    // A process that keeps saving other keys while the first one is killed.
    const pid_t neighbour = Spawn([&] {
      progress.CloseWrite();
      QAVSettingRepository* repo = QAVSettingRepository::GetRepository("RenderingLiveSettings");
      for (int n = 1; n <= 20; ++n)
        if (!SetInt(repo, "Neighbour" + std::to_string(round) + "." + std::to_string(n), n))
          return false;
      return true;
    });
    const pid_t saver = Spawn([&] {
      progress.CloseRead();
      QAVSettingRepository* repo = QAVSettingRepository::GetRepository("RenderingLiveSettings");
      for (int n = 1;; ++n)
        if (!SetInt(repo, counter, n) || !progress.Send(n)) return false;
    });
    progress.CloseWrite();
    // Kill it after a different number of saves each round, wherever it is then.
    int saved = 0;
    const int target = 3 + 7 * round;
    while (saved < target && progress.Receive(saved)) {
    }
    ASSERT_EQ(saved, target);
    ASSERT_EQ(::kill(saver, SIGKILL), 0);
    EXPECT_EQ(Wait(saver), -1);
    EXPECT_EQ(Wait(neighbour), 0);

    // Everything reported saved is there, and the file is still whole.
    QAVSettingRepository* repo = Reopen("RenderingLiveSettings");
    EXPECT_GE(StoredInt(repo, counter), saved) << "round " << round;
    for (int n = 1; n <= 20; ++n)
      EXPECT_EQ(StoredInt(repo, "Neighbour" + std::to_string(round) + "." + std::to_string(n)), n);
    // The next save goes through and clears what the killed save left behind.
    EXPECT_TRUE(SetInt(repo, "After" + std::to_string(round), 1));
    EXPECT_EQ(Leftovers(), std::vector<std::string>());
  }
}

// Preference repositories and the rendering configuration are shared the same way.
TEST_F(StoreProcessesTest, ConcurrentPreferenceCommitsAndConfigurationSetsAreAllKept) {
  constexpr int kProcesses = 6;
  Pipe opened, gate;
  std::vector<pid_t> children(kProcesses);
  for (int i = 0; i < kProcesses; ++i) {
    children[i] = Spawn([&, i] {
      gate.CloseWrite();
      QAVSysPreferenceRepository* prefs = QAVSysPreferenceRepository::GetPreferenceRepository("UI");
      QAVString before;  // load the configuration before the others write it
      QAVRbaConfiguration::GetHierarchicalValue("Rendering", "Nothing", before);
      opened.Send(i);
      int go = 0;
      gate.Receive(go);
      bool ok = prefs != nullptr;
      for (int n = 1; ok && n <= 10; ++n) {
        const int value = 100 * i + n;
        ok = prefs->WritePreference(("P" + std::to_string(i)).c_str(), &value, 1) == 1 &&
             SUCCEEDED(prefs->Commit()) &&
             SUCCEEDED(QAVRbaConfiguration::SetHierarchicalValue(
                 QAVString("Rendering/Process" + std::to_string(i)), "Value",
                 QAVString(std::to_string(value))));
      }
      return ok;
    });
  }
  opened.CloseWrite();
  for (int i = 0, who = 0; i < kProcesses; ++i)
    ASSERT_TRUE(opened.Receive(who));
  gate.CloseWrite();
  for (const pid_t child : children)
    EXPECT_EQ(Wait(child), 0);

  ResetProcessState();
  QAVSysPreferenceRepository* prefs = QAVSysPreferenceRepository::GetPreferenceRepository("UI");
  for (int i = 0; i < kProcesses; ++i) {
    int value = 0;
    EXPECT_EQ(prefs->ReadPreference(("P" + std::to_string(i)).c_str(), &value, 1), 1);
    EXPECT_EQ(value, 100 * i + 10);
    QAVString text;
    EXPECT_EQ(QAVRbaConfiguration::GetHierarchicalValue(
                  QAVString("Rendering/Process" + std::to_string(i)), "Value", text),
              S_OK);
    EXPECT_EQ(text.str(), std::to_string(100 * i + 10));
  }
  EXPECT_EQ(Leftovers(), std::vector<std::string>());
}
