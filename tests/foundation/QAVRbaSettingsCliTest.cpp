// Runs the built qavrba program on a scratch settings directory.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "QAVSettingRepository.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

class SettingsCliTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    qavtest::HostTest::SetUp();
    _program = fs::path(QAV_BINARY_DIR) / "bin" / "qavrba";
    if (!fs::exists(_program)) GTEST_SKIP() << "qavrba is not built";
  }

  struct Run {
    int status;
    std::string out;
    std::string err;
  };
  Run Qavrba(const std::string& arguments) const {
    const fs::path out = _scratch.path() / "out.txt";
    const fs::path err = _scratch.path() / "err.txt";
    const std::string command = "'" + _program.string() + "' settings " + arguments + " >'" +
                                out.string() + "' 2>'" + err.string() + "'";
    const int raw = std::system(command.c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, qavtest::ReadFile(out), qavtest::ReadFile(err)};
  }
  fs::path LiveFile() const {
    return _scratch.path() / "settings" / "RenderingLiveSettings.settings";
  }

  fs::path _program;
};

}  // namespace

TEST_F(SettingsCliTest, InitThenTypedGetAndSet) {
  Run run = Qavrba("set RenderingLiveSettings DPI 300");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("qavrba settings init"), std::string::npos) << run.err;
  EXPECT_FALSE(fs::exists(LiveFile()));

  run = Qavrba("init");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("RenderingLiveSettings: " + LiveFile().string()), std::string::npos);
  EXPECT_TRUE(fs::exists(_scratch.path() / "settings" / "RenderingNetworkSettings.settings"));
  const std::string initial = qavtest::ReadFile(LiveFile());

  const std::pair<const char*, const char*> refused[] = {
      {"DPI abc", "\"abc\" is not an int"},
      {"Gamma 1.5x", "\"1.5x\" is not a finite float"},
      {"DPI 99999999999", "out of range for an int"},
      {"Units", "needs a repository, a key and at least one value"},
      {"NoSuchKey 1", "is not declared"},
  };
  for (const auto& [arguments, says] : refused) {
    run = Qavrba(std::string("set RenderingLiveSettings ") + arguments);
    EXPECT_NE(run.status, 0) << arguments;
    EXPECT_NE(run.err.find(says), std::string::npos) << run.err;
    EXPECT_EQ(qavtest::ReadFile(LiveFile()), initial) << arguments;
  }

  run = Qavrba("set RenderingLiveSettings DPI 300");
  ASSERT_EQ(run.status, 0) << run.err;
  run = Qavrba("set RenderingBatchSettings CanvasArray result 'two words'");
  ASSERT_EQ(run.status, 0) << run.err;
  run = Qavrba("get RenderingLiveSettings DPI");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "300\n");
  run = Qavrba("get RenderingBatchSettings CanvasArray");
  EXPECT_EQ(run.out, "result\ntwo words\n");
  run = Qavrba("show RenderingLiveSettings");
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.out.find("DPI                    int    300\n"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("DomeImage              string \"studio_pure_white.hdr\"\n"),
            std::string::npos);

  // What the program saved is what the library reads.
  ResetProcessState();
  int dpi = 0;
  EXPECT_EQ(QAVSettingRepository::GetRepository("RenderingLiveSettings")->ReadAttr("DPI", &dpi),
            S_OK);
  EXPECT_EQ(dpi, 300);

  // Init again keeps the stored value.
  ASSERT_EQ(Qavrba("init").status, 0);
  EXPECT_EQ(Qavrba("get RenderingLiveSettings DPI").out, "300\n");

  EXPECT_EQ(Qavrba("frobnicate").status, 2);
  EXPECT_EQ(Qavrba("get RenderingLiveSettings").status, 2);
  EXPECT_EQ(Qavrba("--help").status, 0);
}
