// Light profiles read under a decimal-comma locale: numbers are still read with
// a point, whether the comma is the reading thread's locale or the process's,
// and the reads leave the locale of every other thread alone.
//
// The comma locale is one the machine has, or one made for the test with
// localedef from the locale sources of Debian's `locales` package into a scratch
// directory (found through LOCPATH). Without either the tests are skipped.
#include <gtest/gtest.h>

#include <atomic>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <langinfo.h>
#include <locale.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "QAVRbaLightProfile.h"
#include "QAVRef.h"
#include "QAVTestSupport.h"

extern char** environ;

namespace {

using qavtest::kCommaLocale;

// A file whose numbers all have a fractional part; "0.5x" is not a plain
// number, so it goes through sscanf, which follows the thread's locale.
const std::string kFile =
    "IESNA:LM-63-2002\nTILT=NONE\n1 1000.5 0.5x 2 1 1 2 0.25 0.5 0.75\n"
    "0.9 1.0 12.5\n0 90.5\n0\n100.25 50.75\n";

// Finds the comma locale kCommaLocale, or makes it under a scratch directory
// named by LOCPATH for the rest of the test.
class CommaLocaleTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string why;
    _comma = qavtest::CommaLocale(_scratch.str() + "/locales", _locpath, why);
    if (_comma == static_cast<locale_t>(nullptr)) GTEST_SKIP() << why;
    _profile = QAVMakeRef<QAVRbaLightProfile>();
    _path = _scratch.Write("comma.ies", kFile).string();
  }
  void TearDown() override {
    if (_comma != static_cast<locale_t>(nullptr)) freelocale(_comma);
  }

  // Reads the file and checks every number of it.
  void ExpectReadWithPoints(QAVRbaLightProfile& profile) const {
    ASSERT_TRUE(profile.ReadIESFile(QAVUnicodeString(_path))) << profile.GetLastError().str();
    EXPECT_EQ(profile.GetLumensPerLamp(), 1000.5);
    EXPECT_EQ(profile.GetCandelaMultiplier(), 0.5);
    EXPECT_EQ(profile.GetWidth(), 0.25);
    EXPECT_EQ(profile.GetBallastFactor(), 0.9);
    EXPECT_EQ(profile.GetInputWatts(), 12.5);
    EXPECT_EQ(profile.GetCandelaValue(0, 0), 100.25);
    EXPECT_EQ(profile.GetCandelaValue(0, 1), 50.75);
  }

  qavtest::ScratchDir _scratch;
  std::optional<qavtest::ScopedEnv> _locpath;
  locale_t _comma = static_cast<locale_t>(nullptr);
  QAVRef<QAVRbaLightProfile> _profile;
  std::string _path;
};

TEST_F(CommaLocaleTest, ReadsPointsUnderTheCommaLocaleOfItsThreadOrOfTheProcess) {
  // The thread's own locale.
  ASSERT_NE(uselocale(_comma), static_cast<locale_t>(nullptr));
  ExpectReadWithPoints(*_profile);
  EXPECT_EQ(uselocale(static_cast<locale_t>(nullptr)), _comma) << "the thread's locale is back";
  char text[16];
  (void)std::snprintf(text, sizeof text, "%.2f", 0.25);
  EXPECT_STREQ(text, "0,25");
  (void)uselocale(LC_GLOBAL_LOCALE);

  // The process's locale, which this thread follows again.
  const std::string original = std::setlocale(LC_NUMERIC, nullptr);
  ASSERT_NE(std::setlocale(LC_NUMERIC, kCommaLocale), nullptr);
  ExpectReadWithPoints(*_profile);
  const std::string after = std::setlocale(LC_NUMERIC, nullptr);
  (void)std::snprintf(text, sizeof text, "%.2f", 0.25);
  (void)std::setlocale(LC_NUMERIC, original.c_str());
  EXPECT_EQ(after, kCommaLocale);
  EXPECT_STREQ(text, "0,25");
}

// A thread of the host formats and parses numbers under the process's comma
// locale while another reads profiles: it always sees commas.
TEST_F(CommaLocaleTest, ThreadsFormattingNumbersAreUndisturbedByReads) {
  const std::string original = std::setlocale(LC_NUMERIC, nullptr);
  ASSERT_NE(std::setlocale(LC_NUMERIC, kCommaLocale), nullptr);

  std::atomic<bool> reading{true};
  std::atomic<int> rounds{0};
  std::atomic<int> wrong{0};
  std::thread host([&] {
    char text[32];
    for (int round = 0; reading.load() || round < 1000; ++round) {
      (void)std::snprintf(text, sizeof text, "%.1f", 1.5);
      char* end = nullptr;
      const double parsed = std::strtod("2,5", &end);
      if (std::string(text) != "1,5" || parsed != 2.5 || *end != '\0') ++wrong;
      ++rounds;
    }
  });
  std::thread reader([&] {
    for (int i = 0; i < 300; ++i)
      ExpectReadWithPoints(*_profile);
    reading = false;
  });
  reader.join();
  host.join();
  (void)std::setlocale(LC_NUMERIC, original.c_str());

  EXPECT_GE(rounds.load(), 1000);
  EXPECT_EQ(wrong.load(), 0) << "of " << rounds.load() << " rounds";
}

}  // namespace
