// The qavrba ies command: info, sample, grid and plot on the test files.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>

#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

class LightProfileCliTest : public ::testing::Test {
 protected:
  void SetUp() override {
    _program = fs::path(QAV_BINARY_DIR) / "bin" / "qavrba";
    if (!fs::exists(_program)) GTEST_SKIP() << "qavrba is not built";
  }
  struct Run {
    int status;
    std::string out;
    std::string err;
  };
  Run Ies(const std::string& arguments) const {
    const fs::path out = _scratch.path() / "out.txt";
    const fs::path err = _scratch.path() / "err.txt";
    const std::string command = "'" + _program.string() + "' ies " + arguments + " >'" +
                                out.string() + "' 2>'" + err.string() + "'";
    const int raw = std::system(command.c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, qavtest::ReadFile(out), qavtest::ReadFile(err)};
  }
  static std::string Data(const std::string& name) {
    return "'" + std::string(QAV_TEST_DATA_DIR) + "/ies/" + name + "'";
  }

  qavtest::ScratchDir _scratch;
  fs::path _program;
};

bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

std::size_t Count(const std::string& text, const std::string& part) {
  std::size_t n = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
    ++n;
  return n;
}

TEST_F(LightProfileCliTest, InfoAndRejectedFiles) {
  Run run = Ies("info " + Data("tilt_include.ies"));
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(Has(run.out, "lamps                3\n")) << run.out;
  EXPECT_TRUE(Has(run.out, "vertical angles      2 (0 to 90)\n")) << run.out;
  EXPECT_TRUE(Has(run.out, "horizontal symmetry  rotational")) << run.out;
  EXPECT_TRUE(Has(run.out, "peak intensity       100 cd raw at H 0 V 0; 100 cd scaled")) << run.out;

  run = Ies("info " + Data("reject_not_a_number.ies"));
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(Has(run.err, "line 5: token 'abc' (vertical angle 2 of 3): not a number")) << run.err;
  EXPECT_TRUE(run.out.empty());

  EXPECT_EQ(Ies("info").status, 2);
  EXPECT_EQ(Ies("frobnicate x").status, 2);
}

TEST_F(LightProfileCliTest, SampleAndGrid) {
  Run run = Ies("sample " + Data("sym_h90_quadrant.ies") + " 135 30 22.5 15 0 95");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "135 30 210\n22.5 15 155\n0 95 0\n");
  EXPECT_EQ(Ies("sample " + Data("sym_h90_quadrant.ies") + " 135").status, 2);
  EXPECT_EQ(Ies("sample " + Data("sym_h90_quadrant.ies") + " 135 north").status, 2);

  run = Ies("grid " + Data("sym_h0_v90.ies") + " --step 90");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "h,v,candela\n0,0,1000\n0,90,100\n0,180,0\n90,0,1000\n90,90,100\n90,180,0\n"
            "180,0,1000\n180,90,100\n180,180,0\n270,0,1000\n270,90,100\n270,180,0\n");
  EXPECT_EQ(Ies("grid " + Data("sym_h0_v90.ies") + " --step 0").status, 2);
}

TEST_F(LightProfileCliTest, PlotWritesAPolarDiagram) {
  const fs::path svg = _scratch.path() / "plot.svg";
  Run run = Ies("plot " + Data("sym_h180_bilateral.ies") + " -o '" + svg.string() + "'");
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string text = qavtest::ReadFile(svg);
  EXPECT_EQ(text.rfind("<?xml", 0), 0u);
  EXPECT_TRUE(Has(text, ">sym_h180_bilateral.ies</text>"));
  EXPECT_TRUE(Has(text, "C0 - C180 plane"));
  EXPECT_TRUE(Has(text, "stroke-dasharray"));
  // Peak 504 cd: the scale ends on 1000 cd in rings of 200.
  EXPECT_TRUE(Has(text, ">200 cd</text>"));
  EXPECT_TRUE(Has(text, ">1000 cd</text>"));
  EXPECT_TRUE(Has(text, "</svg>"));
  // Two curves of 2 x 361 points each: a move and 721 line segments.
  EXPECT_EQ(Count(text, "<path d=\"M"), 2u);
  EXPECT_EQ(Count(text, " L"), 2u * 721);
  EXPECT_EQ(Ies("plot " + Data("sym_h0_v90.ies")).status, 2);
}

}  // namespace
