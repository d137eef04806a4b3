#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cfloat>
#include <climits>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <type_traits>
#include <vector>

#include "QAVAtomicFile.h"
#include "QAVSettingRepository.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

class SettingRepositoryTest : public qavtest::HostTest {
 protected:
  fs::path SettingsDir() const { return _scratch.path() / "settings"; }
  // Forgets every loaded repository, as a new process would.
  static QAVSettingRepository* Reopen(const char* name) {
    ResetProcessState();
    return QAVSettingRepository::GetRepository(name);
  }
};

// Numbers compare by their bits, so that -0 and NaN payloads count.
template <typename T>
auto Bits(const T& v) {
  if constexpr (std::is_same_v<T, float>)
    return std::bit_cast<std::uint32_t>(v);
  else if constexpr (std::is_same_v<T, double>)
    return std::bit_cast<std::uint64_t>(v);
  else
    return v;
}

// Reads a key back and compares it with what was written.
template <typename T, std::size_t N>
void ExpectStored(QAVSettingRepository* repo, const char* key, const T (&written)[N]) {
  std::vector<T> back(N);
  ASSERT_EQ(repo->ReadSetting(key, back.data(), static_cast<int>(N)), S_OK) << key;
  for (std::size_t k = 0; k < N; ++k)
    EXPECT_EQ(Bits(back[k]), Bits(written[k])) << key << " " << k;
}

}  // namespace

TEST_F(SettingRepositoryTest, SavedValuesComeBackExactly) {
  auto* repo = QAVSettingRepository::GetRepository("RoundTrip");
  ASSERT_NE(repo, nullptr);
  const short shorts[] = {SHRT_MIN, -1, 0, SHRT_MAX};
  const int ints[] = {INT_MIN, 0, 150, INT_MAX};
  const float floats[] = {0.006f,
                          -0.0f,
                          std::numeric_limits<float>::denorm_min(),
                          FLT_MAX,
                          -std::numeric_limits<float>::infinity(),
                          std::bit_cast<float>(0x7FA00001u)};  // a NaN with a payload
  const double doubles[] = {0.1, -0.0, std::numeric_limits<double>::denorm_min(), DBL_MAX,
                            std::bit_cast<double>(0xFFF8000000000123ull)};
  const QAVString strings[] = {"",
                               "tab\there",
                               "line\nbreak\r\n",
                               "back\\slash\\t",
                               "#not a comment",
                               QAVString(std::string("nul\0byte\x01\x7f", 10))};
  const QAVUnicodeString texts[] = {"été 日本 😀", " leading and trailing blanks "};
  ASSERT_EQ(repo->WriteSetting("shorts", shorts, 4), S_OK);
  ASSERT_EQ(repo->WriteSetting("ints", ints, 4), S_OK);
  ASSERT_EQ(repo->WriteSetting("floats", floats, 6), S_OK);
  ASSERT_EQ(repo->WriteSetting("doubles", doubles, 5), S_OK);
  ASSERT_EQ(repo->WriteSetting("strings", strings, 6), S_OK);
  ASSERT_EQ(repo->WriteSetting("#odd\tkey\\", texts, 2), S_OK);
  ASSERT_EQ(repo->WriteSetting("empty list", texts, 0), S_OK);
  ASSERT_EQ(repo->SaveRepository(), S_OK);

  testing::internal::CaptureStderr();
  repo = Reopen("RoundTrip");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(repo->GetKeys(), (std::vector<QAVString>{"shorts", "ints", "floats", "doubles",
                                                     "strings", "#odd\tkey\\", "empty list"}));
  ExpectStored(repo, "shorts", shorts);
  ExpectStored(repo, "ints", ints);
  ExpectStored(repo, "floats", floats);
  ExpectStored(repo, "doubles", doubles);
  ExpectStored(repo, "strings", strings);
  ExpectStored(repo, "#odd\tkey\\", texts);
  EXPECT_EQ(repo->GetSettingType("empty list"), QAVSettingType::Text);
  EXPECT_EQ(repo->GetSettingCount("empty list"), 0);
}

TEST_F(SettingRepositoryTest, ReadingDeclaresAndTypesAreKept) {
  auto* repo = QAVSettingRepository::GetRepository("Declare");
  std::vector<void*> events;
  repo->GetCallbackManager()->AddCallback(
      QAVSettingRepository::ModifiedEvent(),
      [&](const char*, void* d, QAVNotification*, void*, QAVCallback) { events.push_back(d); });

  // An absent key takes the preset values, and keeps them against later presets.
  int pair[2] = {7, 8};
  EXPECT_EQ(repo->ReadSetting("Pair", pair, 2), S_OK);
  int other[3] = {1, 2, 3};
  EXPECT_EQ(repo->ReadSetting("Pair", other, 3), S_OK);
  EXPECT_EQ(std::vector<int>(other, other + 3), (std::vector<int>{7, 8, 3}));  // rest untouched

  // Another type is refused both ways and leaves everything as it was.
  float asFloat = 4.5f;
  EXPECT_EQ(repo->ReadSetting("Pair", &asFloat), E_FAIL);
  EXPECT_EQ(asFloat, 4.5f);
  EXPECT_EQ(repo->WriteSetting("Pair", &asFloat), E_FAIL);
  QAVString asString = "x";
  EXPECT_EQ(repo->ReadSetting("Pair", &asString), E_FAIL);
  EXPECT_EQ(asString, "x");
  EXPECT_EQ(repo->GetSettingType("Pair"), QAVSettingType::Int);

  EXPECT_EQ(repo->ReadSetting(nullptr, pair), E_FAIL);
  EXPECT_EQ(repo->ReadSetting("", pair), E_FAIL);
  EXPECT_EQ(repo->ReadSetting("Zero", pair, 0), E_FAIL);
  EXPECT_EQ(repo->GetSettingType("Zero"), QAVSettingType::None);

  // Declarations change no value anyone read: no event, no write, no file.
  EXPECT_TRUE(events.empty());
  EXPECT_EQ(repo->GetWriteCount(), 0);
  EXPECT_FALSE(fs::exists(repo->GetFilePath()));

  // The reads of the system view do not declare.
  QAVSysSettingRepository* sys = QAVSysSettingRepository::GetRepository("Declare");
  int attr = -1;
  EXPECT_EQ(sys->ReadAttr("Missing", &attr), E_FAIL);
  EXPECT_EQ(attr, -1);
  EXPECT_EQ(repo->GetSettingType("Missing"), QAVSettingType::None);
  EXPECT_EQ(sys->ReadAttr("Pair", &asFloat), E_FAIL);
  QAVUnicodeString text = "untouched";
  EXPECT_EQ(sys->ReadAttribute("Missing", text), E_FAIL);
  EXPECT_EQ(text, "untouched");
  EXPECT_EQ(sys->ReadAttribute("Pair", text), S_OK);
  EXPECT_EQ(text, "7;8");

  // Only real changes raise the modified event: -0 differs from 0, a longer list differs.
  const float zeros[] = {0.0f, 0.0f, -0.0f};
  for (const float& z : zeros)
    EXPECT_EQ(repo->WriteSetting("F", &z), S_OK);
  const int two[2] = {1, 2};
  for (const int count : {1, 2, 2})
    repo->WriteSetting("I", two, count);
  EXPECT_EQ(events, std::vector<void*>(4, repo));
  EXPECT_EQ(repo->GetWriteCount(), 4);
}

TEST_F(SettingRepositoryTest, TextWritesFollowTheStoredType) {
  auto* repo = QAVSettingRepository::GetRepository("Text");
  int dpi = 150;
  short flag = 0;
  float gamma = 2.2f;
  double scale = 1.0;
  QAVUnicodeString canvas[1] = {"result"};
  repo->ReadSetting("DPI", &dpi);
  repo->ReadSetting("Flag", &flag);
  repo->ReadSetting("Gamma", &gamma);
  repo->ReadSetting("Scale", &scale);
  repo->ReadSetting("Canvas", canvas, 1);

  struct Refused {
    const char* key;
    std::vector<std::string> texts;
    const char* says;
  };
  const Refused refused[] = {
      {"DPI", {"abc"}, "\"abc\" is not an int"},
      {"DPI", {"12abc"}, "is not an int"},
      {"DPI", {"1.5"}, "is not an int"},
      {"DPI", {"2147483648"}, "is out of range for an int"},
      {"Flag", {"40000"}, "is out of range for a short"},
      {"Gamma", {"1.5x"}, "\"1.5x\" is not a finite float"},
      {"Gamma", {"1e39"}, "is out of range for a float"},
      {"Gamma", {"nan"}, "is not a finite float"},
      {"Gamma", {""}, "is not a finite float"},
      {"Scale", {"1e400"}, "is out of range for a double"},
      {"DPI", {}, "no value"},
      {"Undeclared", {"1"}, "\"Undeclared\" is not declared"},
  };
  for (const Refused& r : refused) {
    std::string error;
    EXPECT_EQ(repo->WriteSettingFromText(r.key, r.texts, &error), E_FAIL) << r.key;
    EXPECT_NE(error.find(r.says), std::string::npos) << error;
  }
  EXPECT_EQ(repo->GetWriteCount(), 0);
  EXPECT_EQ(repo->GetSettingTexts("DPI"), std::vector<std::string>{"150"});

  EXPECT_EQ(repo->WriteSettingFromText("DPI", {"+300"}), S_OK);
  EXPECT_EQ(repo->WriteSettingFromText("Flag", {"-32768"}), S_OK);
  EXPECT_EQ(repo->WriteSettingFromText("Gamma", {"0.006"}), S_OK);
  EXPECT_EQ(repo->WriteSettingFromText("Canvas", {"a;b", "c\td"}), S_OK);
  EXPECT_EQ(repo->GetSettingTexts("DPI"), std::vector<std::string>{"300"});
  EXPECT_EQ(repo->GetSettingTexts("Flag"), std::vector<std::string>{"-32768"});
  EXPECT_EQ(repo->GetSettingTexts("Gamma"), std::vector<std::string>{"0.006"});
  EXPECT_EQ(repo->ReadAttr("Gamma", &gamma), S_OK);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(gamma), 0x3BC49BA6u);
  EXPECT_EQ(repo->GetSettingTexts("Canvas"), (std::vector<std::string>{"a;b", "c\td"}));
}

TEST_F(SettingRepositoryTest, RepositoriesAreKeptUntilResetAndCanBeMadeUnavailable) {
  auto* live = QAVSettingRepository::GetRepository("RenderingLiveSettings");
  ASSERT_NE(live, nullptr);
  EXPECT_EQ(QAVSysSettingRepository::GetSettingRepository("RenderingLiveSettings"), live);
  EXPECT_EQ(QAVSettingRepository::GetRepository(""), nullptr);

  const int value = 5;
  live->WriteSetting("Unsaved", &value);
  QAVSettingRepository::SetAvailable("RenderingBatchSettings", false);
  EXPECT_EQ(QAVSettingRepository::GetRepository("RenderingBatchSettings"), nullptr);
  EXPECT_EQ(QAVSysSettingRepository::GetRepository("RenderingBatchSettings"), nullptr);
  QAVSettingRepository::SetAvailable("RenderingLiveSettings", false);
  QAVSettingRepository::SetAvailable("RenderingLiveSettings", true);
  EXPECT_EQ(QAVSettingRepository::GetRepository("RenderingLiveSettings"), live);

  // A reset forgets loaded repositories (and what was not saved) and availability.
  live = Reopen("RenderingLiveSettings");
  EXPECT_EQ(live->GetSettingType("Unsaved"), QAVSettingType::None);
  EXPECT_NE(QAVSettingRepository::GetRepository("RenderingBatchSettings"), nullptr);

  // Names are safe file names.
  auto* odd = QAVSettingRepository::GetRepository("../a b");
  EXPECT_EQ(fs::path(odd->GetFilePath()), SettingsDir() / "%2E.%2Fa%20b.settings");

  // The directory comes from the environment.
  EXPECT_EQ(QAVSettingRepository::GetSettingsDirectory(), SettingsDir().string());
  qavtest::ScopedEnv noDir("QAVHOST_SETTINGS_DIR", std::nullopt);
  {
    qavtest::ScopedEnv xdg("XDG_CONFIG_HOME", "/x/config");
    EXPECT_EQ(QAVSettingRepository::GetSettingsDirectory(), "/x/config/qavhost");
  }
  qavtest::ScopedEnv noXdg("XDG_CONFIG_HOME", std::nullopt);
  qavtest::ScopedEnv home("HOME", "/home/someone");
  EXPECT_EQ(QAVSettingRepository::GetSettingsDirectory(), "/home/someone/.config/qavhost");
}

TEST_F(SettingRepositoryTest, BadFilesAreReportedReadAsEmptyAndKeptAside) {
  const std::string good = "QAVHostSettings 1\nA\tint\t1\t5\n";
  const std::pair<std::string, std::string> cases[] = {
      {"", "the file is empty"},
      {"QAVHostSettings 2\n", "line 1: the first line is not"},
      {good + "B\tlong\t1\t5\n", "line 3: unknown type \"long\""},
      {good + "B\tint\t2\t5\n", "line 3: 2 values expected, 1 found"},
      {good + "B\tint\t-1\n", "line 3: bad count"},
      {good + "B\tint\t1\t5.0\n", "line 3: \"5.0\" is not an int"},
      {good + "B\tshort\t1\t32768\n", "line 3: \"32768\" is out of range for a short"},
      {good + "B\tstring\t1\tbad\\q\n", "line 3: bad escape"},
      {good + "A\tint\t1\t6\n", "line 3: the key \"A\" is given twice"},
      {good + "just text\n", "line 3: expected KEY, TYPE and COUNT"},
  };
  for (const auto& [content, reason] : cases) {
    ResetProcessState();
    fs::remove_all(SettingsDir());
    const fs::path file = _scratch.Write("settings/Bad.settings", content);
    testing::internal::CaptureStderr();
    auto* repo = QAVSettingRepository::GetRepository("Bad");
    const std::string report = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(repo->GetKeys().empty()) << reason;
    EXPECT_NE(report.find(file.string()), std::string::npos) << report;
    EXPECT_NE(report.find(reason), std::string::npos) << report;
    EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 1) << report;
  }

  // The last bad file is moved aside by the first save, and only by that one.
  auto* repo = QAVSettingRepository::GetRepository("Bad");
  const int value = 1;
  repo->WriteSetting("New", &value);
  testing::internal::CaptureStderr();
  ASSERT_EQ(repo->SaveRepository(), S_OK);
  ASSERT_EQ(repo->SaveRepository(), S_OK);
  const std::string report = testing::internal::GetCapturedStderr();
  const fs::path aside = SettingsDir() / "Bad.settings.corrupt";
  EXPECT_NE(report.find("aside as " + aside.string()), std::string::npos) << report;
  EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 1) << report;
  EXPECT_EQ(qavtest::ReadFile(aside), good + "just text\n");
  EXPECT_EQ(qavtest::ReadFile(SettingsDir() / "Bad.settings"),
            "QAVHostSettings 1\nNew\tint\t1\t1\n");

  // A second bad file later does not replace the first one kept aside.
  ResetProcessState();
  _scratch.Write("settings/Bad.settings", "garbage");
  testing::internal::CaptureStderr();
  EXPECT_EQ(QAVSettingRepository::GetRepository("Bad")->SaveRepository(), S_OK);
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(qavtest::ReadFile(aside), good + "just text\n");
  EXPECT_EQ(qavtest::ReadFile(SettingsDir() / "Bad.settings.corrupt.2"), "garbage");

  // A directory where the file should be cannot be read, even by root; it is
  // moved aside rather than overwritten.
  fs::create_directories(SettingsDir() / "Odd.settings" / "inside");
  testing::internal::CaptureStderr();
  repo = QAVSettingRepository::GetRepository("Odd");
  EXPECT_NE(testing::internal::GetCapturedStderr().find("Odd.settings cannot be read"),
            std::string::npos);
  EXPECT_TRUE(repo->GetKeys().empty());
  repo->WriteSetting("K", &value);
  testing::internal::CaptureStderr();
  EXPECT_EQ(repo->SaveRepository(), S_OK);
  testing::internal::GetCapturedStderr();
  EXPECT_TRUE(fs::is_directory(SettingsDir() / "Odd.settings.corrupt" / "inside"));
  EXPECT_TRUE(fs::is_regular_file(SettingsDir() / "Odd.settings"));
}

TEST_F(SettingRepositoryTest, FailedSaveKeepsTheOldFile) {
  auto* repo = QAVSettingRepository::GetRepository("Save");
  int value = 1;
  repo->WriteSetting("K", &value);
  ASSERT_EQ(repo->SaveRepository(), S_OK);
  const std::string before = qavtest::ReadFile(repo->GetFilePath());

  value = 2;
  repo->WriteSetting("K", &value);
  Driver().FailAtomicWrites(QAVAtomicFile::Stage::WriteData, 10);
  testing::internal::CaptureStderr();
  EXPECT_EQ(repo->SaveRepository(), E_FAIL);
  const std::string report = testing::internal::GetCapturedStderr();
  EXPECT_NE(report.find("cannot save the settings file " + repo->GetFilePath()), std::string::npos)
      << report;
  EXPECT_EQ(qavtest::ReadFile(repo->GetFilePath()), before);

  Driver().FailAtomicWrites(QAVAtomicFile::Stage::None);
  EXPECT_EQ(repo->SaveRepository(), S_OK);
  EXPECT_EQ(Reopen("Save")->GetSettingTexts("K"), std::vector<std::string>{"2"});
}
