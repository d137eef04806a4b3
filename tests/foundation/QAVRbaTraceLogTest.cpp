#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "QAVRbaTraceLog.h"
#include "QAVTestSupport.h"

namespace {

// The output with every elapsed time "(<digits> ms)" written "(T ms)"; the times
// read are appended to `times`.
std::string WithoutTimes(std::string out, std::vector<long>* times = nullptr) {
  for (std::size_t at = 0; (at = out.find(": (", at)) != std::string::npos;) {
    at += 3;
    const std::size_t end = out.find_first_not_of("0123456789", at);
    if (end == at || end == std::string::npos || out.compare(end, 4, " ms)") != 0) continue;
    if (times) times->push_back(std::stol(out.substr(at, end - at)));
    out.replace(at, end - at, "T");
  }
  return out;
}

class TraceLogTest : public qavtest::HostTest {
 protected:
  // Sets "LRE_TRACE_SEVERITY" (nullopt: unset) and re-reads it as at load.
  void Severity(std::optional<std::string> value) {
    SetEnvAndReload("LRE_TRACE_SEVERITY", std::move(value));
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
};

}  // namespace

TEST_F(TraceLogTest, SeverityThreshold) {
  Severity(std::nullopt);
  EXPECT_EQ(Printed(), "E");
  // The value is read with atoi and kept as an unsigned 8-bit number.
  const std::pair<const char*, const char*> cases[] = {
      {"2", "EW"}, {"3", "EWI"}, {"-1", "EWI"}, {"256", ""}, {"verbose", ""}, {"2 and more", "EW"}};
  for (const auto& [value, printed] : cases) {
    Severity(value);
    EXPECT_EQ(Printed(), printed) << value;
  }
  // The value is the one read at load: changing the environment alone does not
  // change the threshold.
  qavtest::ScopedEnv later("LRE_TRACE_SEVERITY", "3");
  EXPECT_EQ(Printed(), "EW");
}

TEST_F(TraceLogTest, LineFormatAndElapsedTime) {
  Severity("3");  // the reset restarts the clock, as at load
  testing::internal::CaptureStdout();
  QAVRbaTrace(0, "QAVRbaDocImage.cpp", " ", 120, "!path.IsEmpty()", " is false.",
              "We didn't project anything on disk, this is weird!");
  QAVRbaTrace(1, "file", "#", 7, " | ", "a", "b", "c");
  std::this_thread::sleep_for(std::chrono::milliseconds(120));
  QAVRbaTrace(2, nullptr, nullptr, -3, nullptr, "p", nullptr);
  const std::string empty;
  const int checkLine = __LINE__ + 1;
  EXPECT_FALSE(QAVRBA_CHECK(!empty.empty(), "Nothing to draw."));
  EXPECT_TRUE(QAVRBA_CHECK(empty.empty(), "never printed"));
  std::vector<long> times;
  EXPECT_EQ(WithoutTimes(testing::internal::GetCapturedStdout(), &times),
            "[ERROR]   : (T ms) QAVRbaDocImage.cpp 120!path.IsEmpty() is false.We didn't project "
            "anything on disk, this is weird!\n"
            "[WARNING] : (T ms) file#7 | abc\n"
            "[INFO]    : (T ms) -3p\n"
            "[ERROR]   : (T ms) QAVRbaTraceLogTest.cpp " +
                std::to_string(checkLine) + "!empty.empty() is false.Nothing to draw.\n");
  ASSERT_EQ(times.size(), 4u);
  EXPECT_LT(times[0], 100);
  EXPECT_GE(times[2] - times[1], 110);  // the sleep, less the truncation of both readings
}

TEST_F(TraceLogTest, ConcurrentLinesStayWhole) {
  Severity("3");
  testing::internal::CaptureStdout();
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([t] {
      const std::string piece(40, static_cast<char>('a' + t));
      for (int i = 0; i < 200; ++i)
        QAVRbaTrace(2, "f", " ", t, piece.c_str(), piece.c_str(), "");
    });
  for (auto& t : threads)
    t.join();
  const std::string out = WithoutTimes(testing::internal::GetCapturedStdout());
  int lines[4] = {0, 0, 0, 0};
  std::size_t start = 0;
  for (std::size_t end; (end = out.find('\n', start)) != std::string::npos; start = end + 1) {
    const std::string text = out.substr(start, end - start);
    const int t = text.size() > 21 ? text[21] - '0' : -1;
    ASSERT_TRUE(t >= 0 && t < 4) << text;
    EXPECT_EQ(text, "[INFO]    : (T ms) f " + std::to_string(t) +
                        std::string(80, static_cast<char>('a' + t)));
    ++lines[t];
  }
  EXPECT_EQ(start, out.size());
  for (int count : lines)
    EXPECT_EQ(count, 200);
}
