// qavrba content and plm as a user runs them: a folder packed, checked and
// imported, and the failures' messages and exit statuses.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <zip.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kLampManifest = R"({"format":"orlix","version":1,"kind":"Props",
    "title":"Lamps","objects":[{"id":"lamp","type":"Prop","name":"Desk lamp",
    "files":["lamp.obj"],"attributes":{"Height":"0.4"}}]})";

class PLMCliTest : public qavtest::ProgramTest {
 protected:
  void SetUp() override {
    ProgramTest::SetUp();
    _plm.emplace("QAVHOST_PLM_DIR", (_scratch.path() / "plm").string());
  }
  // Runs the program as Run does, ended after `seconds` (status 124) should it
  // wait for ever.
  qavtest::ProgramRun RunWithin(int seconds, const std::string& arguments) const {
    const fs::path out = _scratch.path() / "qavrba-out.txt";
    const fs::path err = _scratch.path() / "qavrba-err.txt";
    const std::string command = "cd '" + _scratch.str() + "' && timeout -s KILL " +
                                std::to_string(seconds) + " '" + qavtest::QavrbaProgram().string() +
                                "' " + arguments + " >'" + out.string() + "' 2>'" + err.string() +
                                "'";
    const int raw = std::system(command.c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, qavtest::ReadFile(out), qavtest::ReadFile(err)};
  }
  // The files of a folder (none when it does not exist).
  static std::vector<std::string> Files(const fs::path& dir) {
    std::vector<std::string> names;
    std::error_code ec;
    for (fs::directory_iterator it(dir, ec), end; !ec && it != end; it.increment(ec))
      names.push_back(it->path().filename().string());
    return names;
  }
  std::optional<qavtest::ScopedEnv> _plm;
};

TEST_F(PLMCliTest, PackCheckImportListShow) {
  _scratch.Write("lamp/manifest.json", kLampManifest);
  _scratch.Write("lamp/lamp.obj", "v 0 0 0\n");
  qavtest::ProgramRun run = Run("content pack lamp -o lamp.orlix");
  ASSERT_EQ(run.status, 0) << run.err;
  run = Run("content check lamp.orlix");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("kind\tProps\ntitle\tLamps\nobjects\t1\nfiles\t1\n"), std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("  lamp\tProp\tDesk lamp\n    lamp.obj\t8 bytes\n"), std::string::npos);

  run = Run("plm import lamp.orlix --repository TST --report reports");
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string id = run.out.substr(0, run.out.find('\n'));
  ASSERT_EQ(id.size(), 32u) << run.out;
  EXPECT_NE(run.out.find("imported 1 object(s) into TST\nreport: reports/plm-import-"),
            std::string::npos)
      << run.out;
  run = Run("plm list --repository TST");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out.rfind(id + "\tProp\tDesk lamp\t", 0), 0u) << run.out;
  run = Run("plm show " + id + " --repository TST");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("attribute\tHeight = 0.4\nattribute\tMaturity = PRIVATE\n"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("file\tlamp.obj\t8 bytes\n"), std::string::npos);
}

TEST_F(PLMCliTest, FailuresSayWhyAndExitWithOne) {
  _scratch.Write("junk.orlix", "junk");
  qavtest::ProgramRun run = Run("content check junk.orlix");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "qavrba: junk.orlix: not a zip archive\n");
  run = Run("plm import junk.orlix");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "qavrba: junk.orlix: not a zip archive\n");
  _scratch.Write("lamp/manifest.json", kLampManifest);
  _scratch.Write("lamp/lamp.obj", "v 0 0 0\n");
  ASSERT_EQ(Run("content pack lamp -o lamp.orlix").status, 0);
  ASSERT_EQ(Run("plm import lamp.orlix").status, 0);
  run = Run("plm show 0123");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "qavrba: no object '0123' in the repository 'PLM1'\n");
  run = Run("content pack nowhere -o x.orlix");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "qavrba: nowhere: no such folder\n");
  fs::create_directories(_scratch.path() / "bare");
  run = Run("content pack bare -o x.orlix");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err,
            "qavrba: bare: no readable manifest.json in the folder (manifest.json cannot be read: "
            "No such file or directory)\n");
  run = Run("content pack");
  EXPECT_EQ(run.status, 2);
  // An empty value is not the default: a usage error.
  for (const char* empty :
       {"plm list --repository ''", "plm show 0123 --repository ''", "plm import ''",
        "plm import lamp.orlix --report ''", "content check ''", "content pack '' -o x.orlix",
        "content pack lamp -o ''"}) {
    run = Run(empty);
    EXPECT_EQ(run.status, 2) << empty;
    EXPECT_NE(run.err.find("may not be empty"), std::string::npos) << empty << ": " << run.err;
  }
  run = Run("plm list --repository " + std::string(129, 'x'));
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("is invalid (1 to 128 bytes)"), std::string::npos) << run.err;
}

TEST_F(PLMCliTest, CommandsThatOnlyReadCreateNoRepository) {
  const fs::path plm = _scratch.path() / "plm";
  qavtest::ProgramRun run = Run("plm list --repository typo");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err,
            "qavrba: the repository 'typo' does not exist (no " + plm.string() + "/typo.plmdb)\n");
  run = Run("plm show 0123 --repository typo");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err,
            "qavrba: the repository 'typo' does not exist (no " + plm.string() + "/typo.plmdb)\n");
  run = Run("plm list");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("the repository 'PLM1' does not exist"), std::string::npos) << run.err;
  EXPECT_EQ(Files(plm), std::vector<std::string>{});

  // What lies where a repository should be is not one, and is left as it is.
  fs::create_directories(plm);
  _scratch.Write("plm/junk.plmdb", "not a database at all, just some text of some length");
  run = Run("plm list --repository junk");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("the repository 'junk' (" + plm.string() + "/junk.plmdb): cannot be read"),
            std::string::npos)
      << run.err;
  ASSERT_EQ(::mkfifo((plm / "fifo.plmdb").c_str(), 0600), 0);
  for (const char* command : {"plm list --repository fifo", "plm import x --repository fifo"}) {
    run = RunWithin(20, command);
    EXPECT_EQ(run.status, 1) << command;
  }
  _scratch.Write("lamp/manifest.json", kLampManifest);
  _scratch.Write("lamp/lamp.obj", "v 0 0 0\n");
  ASSERT_EQ(Run("content pack lamp -o lamp.orlix").status, 0);
  run = RunWithin(20, "plm import lamp.orlix --repository fifo");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "qavrba: the repository 'fifo' (" + plm.string() +
                         "/fifo.plmdb) is not a regular file\n");
  EXPECT_EQ(qavtest::ReadFile(plm / "junk.plmdb"),
            "not a database at all, just some text of some length");
}

TEST_F(PLMCliTest, OnlyARegularFileIsReadAsAPackage) {
  ASSERT_EQ(::mkfifo((_scratch.path() / "fifo.orlix").c_str(), 0600), 0);
  fs::create_directories(_scratch.path() / "folder.orlix");
  _scratch.Write("empty.orlix", "");
  const std::vector<std::pair<std::string, std::string>> cases{
      {"fifo.orlix", "fifo.orlix: is a FIFO, not a regular file"},
      {"folder.orlix", "folder.orlix: is a folder, not a package"},
      {"empty.orlix", "empty.orlix: not a zip archive (the file is empty)"},
      {"missing.orlix", "missing.orlix: cannot be read: No such file or directory"}};
  for (const auto& [file, reason] : cases) {
    for (const std::string command : {"content check ", "plm import "}) {
      const qavtest::ProgramRun run = RunWithin(20, command + file);
      EXPECT_EQ(run.status, 1) << command << file;
      EXPECT_EQ(run.err, "qavrba: " + reason + "\n") << command << file;
    }
  }
  // The folder to pack must be one; the package written is not one.
  qavtest::ProgramRun run = Run("content pack empty.orlix -o out.orlix");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "qavrba: empty.orlix: is not a folder\n");
  run = Run("content pack nowhere -o out.orlix");
  EXPECT_EQ(run.err, "qavrba: nowhere: no such folder\n");
  _scratch.Write("lamp/lamp.obj", "v 0 0 0\n");
  ASSERT_EQ(::mkfifo((_scratch.path() / "lamp/manifest.json").c_str(), 0600), 0);
  run = RunWithin(20, "content pack lamp -o out.orlix");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("manifest.json is a FIFO"), std::string::npos) << run.err;
  EXPECT_EQ(Files(_scratch.path() / "plm"), std::vector<std::string>{});
}

TEST_F(PLMCliTest, APackageListingAFolderAsAFileImportsNothing) {
  // The manifest lists "lamp.obj"; the archive holds only the folder "lamp.obj/".
  const fs::path path = _scratch.path() / "lying.orlix";
  int code = 0;
  zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &code);
  ASSERT_NE(archive, nullptr);
  zip_source_t* manifest =
      zip_source_buffer(archive, kLampManifest, std::char_traits<char>::length(kLampManifest), 0);
  ASSERT_GE(zip_file_add(archive, "manifest.json", manifest, ZIP_FL_ENC_UTF_8), 0);
  ASSERT_GE(zip_dir_add(archive, "lamp.obj", ZIP_FL_ENC_UTF_8), 0);
  ASSERT_EQ(zip_close(archive), 0);

  const std::string reason =
      "lying.orlix: object 'lamp' lists 'lamp.obj', which the archive holds as a folder, not a "
      "file";
  qavtest::ProgramRun run = Run("content check lying.orlix");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "qavrba: " + reason + "\n");
  // The failed import names its reason and its report.
  run = Run("plm import lying.orlix --report reports");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err.rfind("qavrba: " + reason + " (report: reports/plm-import-", 0), 0u) << run.err;
  const std::vector<std::string> reports = Files(_scratch.path() / "reports");
  ASSERT_EQ(reports.size(), 1u);
  EXPECT_NE(run.err.find(reports[0] + ")"), std::string::npos) << run.err;
  EXPECT_NE(qavtest::ReadFile(_scratch.path() / "reports" / reports[0])
                .find("Result: failed, nothing imported\nReason: " + reason),
            std::string::npos);
  EXPECT_EQ(Files(_scratch.path() / "plm"), std::vector<std::string>{});

  // A report folder that is a file is refused before anything is imported.
  _scratch.Write("lamp/manifest.json", kLampManifest);
  _scratch.Write("lamp/lamp.obj", "v 0 0 0\n");
  ASSERT_EQ(Run("content pack lamp -o lamp.orlix").status, 0);
  run = Run("plm import lamp.orlix --report lamp.orlix");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "qavrba: the report folder lamp.orlix is not a folder\n");
  EXPECT_EQ(Files(_scratch.path() / "plm"), std::vector<std::string>{});
}

TEST_F(PLMCliTest, FilesMadeForPeopleHaveTheUsualPermissions) {
  _scratch.Write("lamp/manifest.json", kLampManifest);
  _scratch.Write("lamp/lamp.obj", "v 0 0 0\n");
  const qavtest::ScopedEnv settings("QAVHOST_SETTINGS_DIR",
                                    (_scratch.path() / "settings").string());
  const mode_t previous = ::umask(022);
  const qavtest::ProgramRun pack = Run("content pack lamp -o lamp.orlix");
  const qavtest::ProgramRun import = Run("plm import lamp.orlix --report reports");
  const qavtest::ProgramRun set = Run("settings init");
  struct stat packed {};
  (void)::stat((_scratch.path() / "lamp.orlix").c_str(), &packed);
  // A package replaced keeps its permissions, whatever the umask.
  fs::permissions(_scratch.path() / "lamp.orlix",
                  fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  (void)::umask(077);
  const qavtest::ProgramRun repack = Run("content pack lamp -o lamp.orlix");
  (void)::umask(previous);
  ASSERT_EQ(pack.status, 0) << pack.err;
  ASSERT_EQ(import.status, 0) << import.err;
  ASSERT_EQ(set.status, 0) << set.err;
  ASSERT_EQ(repack.status, 0) << repack.err;

  const auto mode = [](const fs::path& file) {
    struct stat info {};
    return ::stat(file.c_str(), &info) == 0 ? info.st_mode & 0777 : 01000;
  };
  EXPECT_EQ(packed.st_mode & 0777, 0644u);
  EXPECT_EQ(mode(_scratch.path() / "lamp.orlix"), 0640u);
  const std::vector<std::string> reports = Files(_scratch.path() / "reports");
  ASSERT_EQ(reports.size(), 1u);
  EXPECT_EQ(mode(_scratch.path() / "reports" / reports[0]), 0644u);
  int checked = 0;
  for (const std::string& name : Files(_scratch.path() / "settings")) {
    if (name.size() > 5 && name.compare(name.size() - 5, 5, ".lock") == 0) continue;
    EXPECT_EQ(mode(_scratch.path() / "settings" / name), 0644u) << name;
    ++checked;
  }
  EXPECT_GT(checked, 0);
}

}  // namespace
