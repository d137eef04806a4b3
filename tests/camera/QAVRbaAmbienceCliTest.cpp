// qavrba ambience and qavrba dof, run as a user runs them.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

class AmbienceCliTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (qavtest::QavrbaProgram().empty()) GTEST_SKIP() << "qavrba is not built";
    const fs::path studio = _scratch.path() / "g/AmbienceStudio/ambiences";
    fs::create_directories(studio);
    std::ofstream(studio / "Ambience_default_HQ.png") << "x";
    fs::create_directories(_scratch.path() / "g/dof");
    std::ofstream(_scratch.path() / "g/dof/Circle_15_25_progressive.dds") << "x";
    _graphic.emplace("QAVGraphicPath", (_scratch.path() / "g").string() + ":/unused");
    _temp.emplace("QAVTemp", _scratch.str());
  }
  qavtest::ScratchDir _scratch;
  std::optional<qavtest::ScopedEnv> _graphic;
  std::optional<qavtest::ScopedEnv> _temp;
};

TEST_F(AmbienceCliTest, ResolveShooterAndIblPath) {
  const std::string studio = (_scratch.path() / "g/AmbienceStudio/ambiences").string();
  qavtest::ProgramRun run = qavtest::RunQavrba("ambience resolve PureWhite None Custom", _scratch);
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "PureWhite\tstudio_pure_white_2K\t" + studio +
                         "/studio_pure_white_2K.hdr\nNone\tneo_pure_white_2K\t" + studio +
                         "/neo_pure_white_2K.hdr\nCustom\t-\t-\n");

  run = qavtest::RunQavrba("ambience shooter City --count 2 --hdr", _scratch);
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "NewVisu_Shot_1City\t" + studio +
                         "/NewVisu_Shot_1City.hdr\nNewVisu_Shot_2City\t" + studio +
                         "/NewVisu_Shot_2City.hdr\n");
  EXPECT_EQ(qavtest::RunQavrba("ambience shooter City --count 0", _scratch).status, 2);
  EXPECT_EQ(qavtest::RunQavrba("ambience shooter City --count=x", _scratch).status, 2);

  run = qavtest::RunQavrba("ambience ibl-path", _scratch);
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, _scratch.str() + "/.ibl\n");
  EXPECT_TRUE(fs::is_directory(_scratch.path() / ".ibl"));

  // A graphic path of one entry is not searched: the program says why.
  qavtest::ScopedEnv single("QAVGraphicPath", (_scratch.path() / "g").string());
  run = qavtest::RunQavrba("ambience resolve City", _scratch);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "City\texterior_plaza_1_4K\t-\n");
  EXPECT_NE(run.err.find("last entry is never searched"), std::string::npos) << run.err;
}

TEST_F(AmbienceCliTest, BokehTexturesAndBadApertures) {
  qavtest::ProgramRun run = qavtest::RunQavrba("dof bokeh 8 9", _scratch);
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "f/8\t" + (_scratch.path() / "g/dof/Circle_15_25_progressive.dds").string() +
                         "\nf/9\t" +
                         (_scratch.path() / "g/dof/Circle_15_25_progressive.dds").string() + "\n");
  run = qavtest::RunQavrba("dof bokeh 64 -1", _scratch);
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("f/64: no bokeh texture"), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("f/-1: an aperture must be a number above 0"), std::string::npos);
  EXPECT_EQ(qavtest::RunQavrba("dof bokeh abc", _scratch).status, 2);
  EXPECT_EQ(qavtest::RunQavrba("dof bokeh", _scratch).status, 2);
}

}  // namespace
