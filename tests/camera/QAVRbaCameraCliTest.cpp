// qavrba camera, run as a user runs it.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "QAVTestSupport.h"

namespace {

class CameraCliTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (qavtest::QavrbaProgram().empty()) GTEST_SKIP() << "qavrba is not built";
  }
  qavtest::ScratchDir _scratch;
};

TEST_F(CameraCliTest, LaddersAsTextAndJson) {
  qavtest::ProgramRun run = qavtest::RunQavrba("camera ladders", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  // Each block: a title line and one line per value with its index.
  std::istringstream lines(run.out);
  std::string line;
  int values = 0;
  while (std::getline(lines, line))
    if (line.rfind("  ", 0) == 0) ++values;
  EXPECT_EQ(values, 25 + 73 + 24 + 13);
  EXPECT_NE(run.out.find("Aperture (f-number), 25 values\n   0  f/1\n"), std::string::npos);
  EXPECT_NE(run.out.find("  12  f/8\n"), std::string::npos);
  EXPECT_NE(run.out.find("  41  250\n  42  266.667\n"), std::string::npos);
  EXPECT_NE(run.out.find("  33  66.666\n"), std::string::npos);
  EXPECT_NE(run.out.find("   2  0.00457125\n"), std::string::npos);
  EXPECT_NE(run.out.find("  12  1/4000\n"), std::string::npos);

  run = qavtest::RunQavrba("camera ladders --json", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  for (const char* key : {"\"aperture\": [", "\"iso\": [", "\"extraIso\": [", "\"speed\": ["})
    EXPECT_NE(run.out.find(key), std::string::npos) << key;
  // Floats written as their shortest text, not as their widened doubles.
  EXPECT_NE(run.out.find("    66.666,\n"), std::string::npos);
  EXPECT_NE(run.out.find("    0.00457125,\n"), std::string::npos);
  EXPECT_NE(run.out.find("    54.5,\n"), std::string::npos);
  EXPECT_EQ(run.out.find("66.66600"), std::string::npos);
  EXPECT_EQ(run.out.find("1.2000"), std::string::npos);
}

TEST_F(CameraCliTest, ExposureCorrectionOfApertures) {
  qavtest::ProgramRun run = qavtest::RunQavrba("camera ev 8 1 64 2.8 8.0001 nan inf 0", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "f/8\t0 EV\n"
            "f/1\t-6 EV\n"
            "f/64\t+6 EV\n"
            "f/2.8\t-3 EV\n"
            "f/8.0001\t+6.5 EV\t(not on the ladder)\n"
            "f/nan\t+6.5 EV\t(not on the ladder)\n"
            "f/inf\t0 EV\t(not on the ladder)\n"
            "f/0\t0 EV\t(not on the ladder)\n");

  run = qavtest::RunQavrba("camera ev --json 5.6 nan", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("\"aperture\": 5.6,\n    \"ev\": -1.0,\n    \"onLadder\": true"),
            std::string::npos)
      << run.out;
  // JSON has no NaN: the aperture is kept as its text.
  EXPECT_NE(run.out.find("\"aperture\": \"nan\",\n    \"ev\": 6.5,\n    \"onLadder\": false"),
            std::string::npos)
      << run.out;

  EXPECT_EQ(qavtest::RunQavrba("camera ev abc", _scratch).status, 2);
  EXPECT_EQ(qavtest::RunQavrba("camera ev", _scratch).status, 2);
  EXPECT_EQ(qavtest::RunQavrba("camera", _scratch).status, 2);
}

}  // namespace
