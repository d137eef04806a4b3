// qavrba ruler, run as a user runs it: the rulers of a placement command over
// the showroom, a value typed, the values read back and the view with them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QAVTestScenes.h"
#include "QAVTestSupport.h"

namespace {

using RulerCliTest = qavtest::ProgramTest;

TEST_F(RulerCliTest, ValuesReadBackAndTheViewWithTheRulers) {
  qavtest::ProgramRun run = qavtest::RunQavrba(
      "ruler " + _showroom + " --from -40 -73 200 --to 60 -73 200 --direction 0 0 0 --angle 30 " +
          "--type 120 -o rulers.png",
      _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("typed into myRuler\t120\n"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("length\t100\ndirection\t1 0 0\noffset\t34.7 mm\n"), std::string::npos)
      << "a null direction measures along x: " << run.out;
  EXPECT_NE(run.out.find("translation ruler\t120\nrotation ruler\t30\n"
                         "translation ruler after the angle read\t30\n"),
            std::string::npos)
      << run.out;
  run = qavtest::RunQavrba("scene view " + _showroom + " -o bare.png", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  int width = 0;
  int height = 0;
  std::vector<unsigned char> rulers;
  std::vector<unsigned char> bare;
  ASSERT_TRUE(
      qavtest::DecodePng(qavtest::ReadFile(_scratch.path() / "rulers.png"), width, height, rulers));
  ASSERT_TRUE(
      qavtest::DecodePng(qavtest::ReadFile(_scratch.path() / "bare.png"), width, height, bare));
  ASSERT_EQ(rulers.size(), bare.size());
  int orange = 0;
  int changed = 0;
  for (std::size_t i = 0; i + 2 < rulers.size(); i += 3) {
    changed += rulers[i] != bare[i] || rulers[i + 1] != bare[i + 1] ? 1 : 0;
    orange += rulers[i] == 235 && rulers[i + 1] == 92 && rulers[i + 2] == 18 ? 1 : 0;
  }
  EXPECT_GT(orange, 150) << "the length ruler, its ticks and its number";
  EXPECT_LT(changed, width * height / 20) << "drawn over the view, not instead of it";

  // Bad input: a clear message and a non-zero status.
  run = qavtest::RunQavrba("ruler missing.json --from 0 0 0 --to 1 0 0", _scratch);
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("missing.json"), std::string::npos) << run.err;
  run = qavtest::RunQavrba("ruler " + _showroom + " --from 0 0 x --to 1 0 0", _scratch);
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("not a finite number"), std::string::npos) << run.err;
  EXPECT_EQ(qavtest::RunQavrba("ruler " + _showroom + " --from 0 0 0 --to 1 0", _scratch).status,
            2);
  EXPECT_EQ(qavtest::RunQavrba(
                "ruler " + _showroom + " --from 0 0 0 --to 1 0 0 --plane 0 0 0 " + "1 0 0 0 1 0",
                _scratch)
                .status,
            2)
      << "a plane without an angle";
}

}  // namespace
