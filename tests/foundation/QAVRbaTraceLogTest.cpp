#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "QAVRbaTraceLog.h"
#include "QAVTestSupport.h"

namespace {

class TraceLogTest : public qavtest::HostTest {
 protected:
  // Sets "LRE_TRACE_SEVERITY" (nullopt: unset) and re-reads it as at load.
  void Severity(std::optional<std::string> value) {
    _severity.reset();
    _severity.emplace("LRE_TRACE_SEVERITY", std::move(value));
    ResetProcessState();
  }
  // Which of error, warning, information and severity 3 print.
  std::string Printed() {
    testing::internal::CaptureStdout();
    for (unsigned char s = 0; s <= 3; ++s)
      QAVRbaTrace(s, "f", " ", 1, "x", "", "");
    const std::string out = testing::internal::GetCapturedStdout();
    std::string kinds;
    if (out.find("[ERROR]") != std::string::npos) kinds += 'E';
    if (out.find("[WARNING]") != std::string::npos) kinds += 'W';
    if (out.find("[INFO]") != std::string::npos) kinds += 'I';
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), static_cast<long>(kinds.size()));
    return kinds;
  }
  void TearDown() override {
    _severity.reset();
    HostTest::TearDown();
  }

 private:
  std::optional<qavtest::ScopedEnv> _severity;
};

}  // namespace

TEST_F(TraceLogTest, SeverityThreshold) {
  Severity(std::nullopt);
  EXPECT_EQ(Printed(), "E");
  Severity("");
  EXPECT_EQ(Printed(), "E");
  Severity("2");
  EXPECT_EQ(Printed(), "EW");
  Severity("3");
  EXPECT_EQ(Printed(), "EWI");
  Severity("200");  // severity 3 never prints
  EXPECT_EQ(Printed(), "EWI");
  Severity("-1");  // 255 as an unsigned 8-bit value
  EXPECT_EQ(Printed(), "EWI");
  Severity("256");  // 0 as an unsigned 8-bit value
  EXPECT_EQ(Printed(), "");
  Severity("0");
  EXPECT_EQ(Printed(), "");
  Severity("verbose");  // atoi gives 0
  EXPECT_EQ(Printed(), "");
  Severity("2 and more");  // atoi stops at the first non-digit
  EXPECT_EQ(Printed(), "EW");

  // The value is the one read at load: changing the environment alone does not
  // change the threshold.
  qavtest::ScopedEnv later("LRE_TRACE_SEVERITY", "3");
  EXPECT_EQ(Printed(), "EW");
}

TEST_F(TraceLogTest, LineFormat) {
  Severity("3");
  testing::internal::CaptureStdout();
  QAVRbaTrace(0, "QAVRbaDocImage.cpp", " ", 120, "!path.IsEmpty()", " is false.",
              "We didn't project anything on disk, this is weird!");
  QAVRbaTrace(1, "file", "#", 7, " | ", "a", "b", "c");
  QAVRbaTrace(2, nullptr, nullptr, -3, nullptr, "p", nullptr);
  const std::string out = testing::internal::GetCapturedStdout();
  const std::regex expected(
      "\\[ERROR\\]   : \\([0-9]+ ms\\) QAVRbaDocImage\\.cpp 120!path\\.IsEmpty\\(\\) is "
      "false\\.We didn't project anything on disk, this is weird!\n"
      "\\[WARNING\\] : \\([0-9]+ ms\\) file#7 \\| abc\n"
      "\\[INFO\\]    : \\([0-9]+ ms\\) -3p\n");
  EXPECT_TRUE(std::regex_match(out, expected)) << out;
}

TEST_F(TraceLogTest, ElapsedMillisecondsSinceLoad) {
  Severity("1");  // errors only; the reset restarts the clock as at load
  testing::internal::CaptureStdout();
  QAVRbaTrace(0, "f", " ", 1, "", "", "");
  std::this_thread::sleep_for(std::chrono::milliseconds(120));
  QAVRbaTrace(0, "f", " ", 2, "", "", "");
  const std::string out = testing::internal::GetCapturedStdout();
  std::smatch m;
  ASSERT_TRUE(std::regex_match(
      out, m,
      std::regex("\\[ERROR\\]   : \\(([0-9]+) ms\\) f 1\n\\[ERROR\\]   : \\(([0-9]+) ms\\) f 2\n")))
      << out;
  const long first = std::stol(m[1]);
  const long second = std::stol(m[2]);
  EXPECT_LT(first, 100);
  EXPECT_GE(second - first, 110);  // the sleep, less rounding of both readings
}

TEST_F(TraceLogTest, FailedCheckReport) {
  Severity(std::nullopt);
  const std::string empty;
  testing::internal::CaptureStdout();
  EXPECT_TRUE(QAVRBA_CHECK(empty.empty(), "never printed"));
  EXPECT_FALSE(QAVRBA_CHECK(!empty.empty(), "We didn't project anything on disk, this is weird!"));
  const std::string out = testing::internal::GetCapturedStdout();
  EXPECT_TRUE(
      std::regex_match(out, std::regex("\\[ERROR\\]   : \\([0-9]+ ms\\) "
                                       "QAVRbaTraceLogTest\\.cpp [0-9]+!empty\\.empty\\(\\) "
                                       "is false\\.We didn't project anything on disk, "
                                       "this is weird!\n")))
      << out;
  EXPECT_STREQ(QAVRbaTraceFileName("a/b\\c.cpp"), "c.cpp");
}

TEST_F(TraceLogTest, ConcurrentLinesStayWhole) {
  Severity("3");
  testing::internal::CaptureStdout();
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([t] {
      const std::string piece(40, static_cast<char>('a' + t));
      for (int i = 0; i < 200; ++i)
        QAVRbaTrace(2, "f", " ", t, piece.c_str(), piece.c_str(), "");
    });
  for (auto& t : threads)
    t.join();
  const std::string out = testing::internal::GetCapturedStdout();
  const std::regex line("\\[INFO\\]    : \\([0-9]+ ms\\) f ([0-3])(([a-d])\\3{79})");
  std::size_t lines = 0;
  std::size_t start = 0;
  for (std::size_t end; (end = out.find('\n', start)) != std::string::npos; start = end + 1) {
    const std::string text = out.substr(start, end - start);
    std::smatch m;
    ASSERT_TRUE(std::regex_match(text, m, line)) << text;
    EXPECT_EQ(m[1].str()[0] - '0', m[3].str()[0] - 'a');
    ++lines;
  }
  EXPECT_EQ(start, out.size());
  EXPECT_EQ(lines, 800u);
}
