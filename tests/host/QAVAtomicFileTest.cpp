#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "QAVAtomicFile.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

class AtomicFileTest : public qavtest::HostTest {
 protected:
  std::vector<std::string> Entries(const fs::path& dir) const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(dir))
      names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }
};

}  // namespace

TEST_F(AtomicFileTest, ReplacesWholeFilesCreatingDirectoriesAndKeepingPermissions) {
  const fs::path file = _scratch.path() / "a" / "b" / "store.txt";
  std::string error;
  // A new file has the permissions of any file the process makes: 0666 less
  // the umask.
  const mode_t previous = ::umask(027);
  const bool written = QAVAtomicFile::Write(file.string(), "first", &error);
  (void)::umask(022);
  const bool other = QAVAtomicFile::Write((file.parent_path() / "other.txt").string(), "", &error);
  (void)::umask(previous);
  ASSERT_TRUE(written && other) << error;
  EXPECT_EQ(qavtest::ReadFile(file), "first");
  EXPECT_EQ(fs::status(file).permissions(),
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  EXPECT_EQ(fs::status(file.parent_path() / "other.txt").permissions(),
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read |
                fs::perms::others_read);
  fs::remove(file.parent_path() / "other.txt");

  // A replaced file keeps its own, whatever the umask.
  fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
  ASSERT_TRUE(QAVAtomicFile::Write(file.string(), std::string(100000, 'x') + "end", &error));
  EXPECT_EQ(qavtest::ReadFile(file), std::string(100000, 'x') + "end");
  EXPECT_EQ(fs::status(file).permissions(),
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
  EXPECT_EQ(Entries(file.parent_path()), std::vector<std::string>{"store.txt"});
}

TEST_F(AtomicFileTest, AnInterruptedSaveLeavesTheOldContentAndNoTemporary) {
  const fs::path dir = _scratch.path() / "dir";
  const fs::path file = dir / "store.txt";
  const std::string old = "old content\n";
  ASSERT_TRUE(QAVAtomicFile::Write(file.string(), old));

  struct Interruption {
    QAVAtomicFile::Stage stage;
    std::size_t afterBytes;
    const char* says;
  };
  const Interruption interruptions[] = {
      {QAVAtomicFile::Stage::Open, 0, "cannot create a temporary file"},
      {QAVAtomicFile::Stage::WriteData, 0, "cannot write"},
      {QAVAtomicFile::Stage::WriteData, 5, "cannot write"},
      {QAVAtomicFile::Stage::Sync, 0, "cannot flush"},
      {QAVAtomicFile::Stage::Rename, 0, "cannot rename"},
  };
  for (const Interruption& at : interruptions) {
    Driver().FailAtomicWrites(at.stage, at.afterBytes);
    std::string error;
    EXPECT_FALSE(QAVAtomicFile::Write(file.string(), "the new and longer content\n", &error));
    EXPECT_NE(error.find(at.says), std::string::npos) << error;
    EXPECT_EQ(qavtest::ReadFile(file), old);
    EXPECT_EQ(Entries(dir), std::vector<std::string>{"store.txt"});
  }

  // A first save that fails leaves no file at all.
  const fs::path fresh = dir / "fresh.txt";
  EXPECT_FALSE(QAVAtomicFile::Write(fresh.string(), "content"));
  EXPECT_FALSE(fs::exists(fresh));

  // The switch holds across a restart of the host, until it is turned off.
  ResetProcessState();
  EXPECT_FALSE(QAVAtomicFile::Write(file.string(), "new"));
  Driver().FailAtomicWrites(QAVAtomicFile::Stage::None);
  EXPECT_TRUE(QAVAtomicFile::Write(file.string(), "new"));
  EXPECT_EQ(qavtest::ReadFile(file), "new");
}
