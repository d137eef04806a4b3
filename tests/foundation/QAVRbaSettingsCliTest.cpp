// Runs the built qavrba program on a scratch settings directory.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "QAVSettingRepository.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

class SettingsCliTest : public qavtest::HostTest {
 protected:
  using Run = qavtest::ProgramRun;
  void SetUp() override {
    qavtest::HostTest::SetUp();
    if (qavtest::QavrbaProgram().empty()) GTEST_SKIP() << "qavrba is not built";
  }
  Run Qavrba(const std::string& arguments) const {
    return qavtest::RunQavrba("settings " + arguments, _scratch);
  }
  fs::path LiveFile() const {
    return _scratch.path() / "settings" / "RenderingLiveSettings.settings";
  }
};

}  // namespace

TEST_F(SettingsCliTest, InitThenTypedGetAndSet) {
  // Before anything is declared, a key of the schema is set with its type; a
  // key that only reads creates nothing.
  Run run = Qavrba("get RenderingLiveSettings Gamma");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "2.2\n");
  EXPECT_FALSE(fs::exists(LiveFile()));
  run = Qavrba("set RenderingLiveSettings DPI 300");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(qavtest::ReadFile(LiveFile()), "QAVHostSettings 1\nDPI\tint\t1\t300\n");

  run = Qavrba("init");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("RenderingLiveSettings: " + LiveFile().string()), std::string::npos);
  EXPECT_TRUE(fs::exists(_scratch.path() / "settings" / "RenderingNetworkSettings.settings"));
  const std::string initial = qavtest::ReadFile(LiveFile());

  const std::pair<const char*, const char*> refused[] = {
      {"DPI abc", "\"abc\" is not an int"},
      {"Gamma 1.5x", "\"1.5x\" is not a finite float"},
      {"DPI 99999999999", "out of range for an int"},
      {"Units", "values is required"},
      {"NoSuchKey 1", "unknown key 'NoSuchKey'"},
  };
  for (const auto& [arguments, says] : refused) {
    run = Qavrba(std::string("set RenderingLiveSettings ") + arguments);
    EXPECT_NE(run.status, 0) << arguments;
    EXPECT_NE(run.err.find(says), std::string::npos) << run.err;
    EXPECT_EQ(qavtest::ReadFile(LiveFile()), initial) << arguments;
  }

  run = Qavrba("set RenderingLiveSettings DPI 300");
  ASSERT_EQ(run.status, 0) << run.err;
  // A key keeps its number of values unless a list is asked for.
  for (const char* arguments :
       {"RenderingLiveSettings Gamma 2.4 2.5", "RenderingBatchSettings CanvasArray a b"}) {
    run = Qavrba(std::string("set ") + arguments);
    EXPECT_EQ(run.status, 1) << arguments;
    EXPECT_NE(run.err.find("give --list"), std::string::npos) << run.err;
  }
  EXPECT_EQ(Qavrba("get RenderingLiveSettings Gamma").out, "2.2\n");
  run = Qavrba("set --list RenderingBatchSettings CanvasArray result 'two words'");
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
  EXPECT_EQ(QAVSettingRepository::GetRepository("RenderingLiveSettings")->ReadAttr("DPI", &dpi, 1),
            S_OK);
  EXPECT_EQ(dpi, 300);

  // Init again keeps the stored value.
  ASSERT_EQ(Qavrba("init").status, 0);
  EXPECT_EQ(Qavrba("get RenderingLiveSettings DPI").out, "300\n");

  for (const char* usage : {"frobnicate", "get RenderingLiveSettings", "", "show a b",
                            "set --list RenderingLiveSettings", "init --force"})
    EXPECT_EQ(Qavrba(usage).status, 2) << usage;
  EXPECT_EQ(qavtest::RunQavrba("frobnicate", _scratch).status, 2);
  for (const char* help : {"--help", "set --help"}) {
    run = Qavrba(help);
    EXPECT_EQ(run.status, 0) << help;
    EXPECT_NE(run.out.find("Usage: qavrba settings"), std::string::npos) << run.out;
  }
}
