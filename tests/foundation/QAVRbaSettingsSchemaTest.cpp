// Every setting the library touches, walked against the one schema: set by the
// program as a user sets it, then read by the library with its declared type;
// and the sources hold no setting read or written by a name of their own.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "QAVRbaLiveUIServices.h"
#include "QAVRbaPanelManager.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;
namespace Schema = QAVRbaRenderingSettings;

namespace {

class SettingsSchemaTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    if (qavtest::QavrbaProgram().empty()) GTEST_SKIP() << "qavrba is not built";
  }
  qavtest::ProgramRun Qavrba(const std::string& arguments) const {
    return qavtest::RunQavrba(arguments, _scratch);
  }
};

// A value of the setting's type, different from its default, as the program
// takes it, and as the settings file shows it.
std::string ValueFor(const Schema::Setting& setting) {
  switch (setting.type) {
    case Schema::Type::Int:
      return std::to_string(setting.intValue + 7);
    case Schema::Type::Float:
      return "2.5";
    default:
      return "set-by-user";
  }
}

QAVSettingType HostType(Schema::Type type) {
  switch (type) {
    case Schema::Type::Int:
      return QAVSettingType::Int;
    case Schema::Type::Float:
      return QAVSettingType::Float;
    case Schema::Type::String:
      return QAVSettingType::String;
    default:
      return QAVSettingType::Text;
  }
}

TEST_F(SettingsSchemaTest, EveryKeyTheLibraryTouchesIsSetByTheProgramAndReadWithItsType) {
  // Each key is in the schema once, as the key says; no repository lists a key twice.
  for (const Schema::AnyKey& key : Schema::kKeys) {
    const Schema::Setting* found = Schema::Find(key.repository, key.setting.key);
    ASSERT_NE(found, nullptr) << key.repository << " " << key.setting.key;
    EXPECT_EQ(found->type, key.setting.type) << key.setting.key;
  }
  for (const Schema::Repository& repository : Schema::kRepositories) {
    std::set<std::string> keys;
    for (const auto& part : {repository.settings, repository.others})
      for (const Schema::Setting& setting : part)
        EXPECT_TRUE(keys.insert(setting.key).second) << repository.name << " " << setting.key;
  }

  // Without `settings init` first: every key can be set, and is stored with
  // its declared type.
  for (const Schema::AnyKey& key : Schema::kKeys) {
    const std::string words =
        std::string(key.repository) + " " + key.setting.key + " " + ValueFor(key.setting);
    const qavtest::ProgramRun run = Qavrba("settings set " + words);
    EXPECT_EQ(run.status, 0) << words << ": " << run.err;
  }
  // The library then reads each with its own type, in a process that loads
  // the files the program saved.
  Driver().Restart();
  for (const Schema::AnyKey& key : Schema::kKeys) {
    QAVSettingRepository* repository = QAVSettingRepository::GetRepository(key.repository);
    ASSERT_NE(repository, nullptr) << key.repository;
    EXPECT_EQ(repository->GetSettingType(key.setting.key), HostType(key.setting.type))
        << key.setting.key;
    const std::vector<std::string> texts = repository->GetSettingTexts(key.setting.key);
    EXPECT_EQ(texts, std::vector<std::string>{ValueFor(key.setting)}) << key.setting.key;
  }
  int mode = 0;
  EXPECT_EQ(Schema::Read(Schema::kOptionsLightManipMode, mode), S_OK);
  EXPECT_EQ(mode, 7);
  QAVString dome;
  EXPECT_EQ(Schema::Read(Schema::kLiveDomeImage, dome), S_OK);
  EXPECT_EQ(dome.str(), "set-by-user");

  // A misspelt repository is refused (the table of bad input checks the
  // message), and no file is created for it.
  EXPECT_EQ(Qavrba("settings set RenderingLiveSetings DPI 300").status, 1);
  EXPECT_FALSE(fs::exists(_scratch.path() / "settings/RenderingLiveSetings.settings"));
}

// The user's own environment image, chosen after the settings were declared
// as the initialisation declares them.
TEST_F(SettingsSchemaTest, TheUsersImageIsFoundForCustom) {
  const fs::path image = _scratch.Write("images/my sky.hdr", "x");
  ASSERT_EQ(Qavrba("settings init").status, 0);
  qavtest::ProgramRun run =
      Qavrba("settings set RenderingLiveSettings DomeImage '" + image.string() + "'");
  ASSERT_EQ(run.status, 0) << run.err;
  run = Qavrba("ambience resolve Custom");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "Custom\t-\t" + image.string() + "\n");
}

// "Custom" resolved before anything declared the image: the read declares it
// with its type and default, so the panel manager's later write of the image
// of a preset is kept and saved.
TEST_F(SettingsSchemaTest, CustomResolvedFirstDoesNotSpoilTheSetting) {
  QAVString name;
  QAVString path;
  ASSERT_EQ(QAVRbaLiveUIServices::RetrieveAssociatedAmbience("Custom", name, path), S_OK);
  QAVSettingRepository* live = Schema::Open(Schema::kLiveDomeImage);
  ASSERT_NE(live, nullptr);
  EXPECT_EQ(live->GetSettingType("DomeImage"), QAVSettingType::String);
  EXPECT_EQ(live->GetSettingTexts("DomeImage"), std::vector<std::string>{"studio_pure_white.hdr"});
  EXPECT_EQ(Schema::Write(*live, Schema::kLiveDomeImage, QAVString("/images/dusk.hdr")), S_OK);
  ASSERT_EQ(live->SaveRepository(), S_OK);
  const qavtest::ProgramRun run = Qavrba("settings get RenderingLiveSettings DomeImage");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "/images/dusk.hdr\n");
}

// No source of the library or of the program reads, writes or opens a setting
// by a name of its own: each goes through a key of the schema, which carries
// its declared type.
TEST(SettingsSchemaSources, NoSettingIsReadOrWrittenByALiteralName) {
  const std::regex literal(
      R"((ReadSetting|WriteSetting|ReadAttr|ReadAttribute|GetRepository|GetSettingRepository)\s*\(\s*")");
  const std::regex rawCall(R"((->|\.)(ReadSetting|WriteSetting|ReadAttr|ReadAttribute)\s*\()");
  int files = 0;
  for (const char* folder : {"RenderingBaseUI/QAVRbaUI.m/src", "tools/qavrba"}) {
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(QAV_SOURCE_DIR) / folder)) {
      if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h") continue;
      ++files;
      std::ifstream in(entry.path());
      std::string line;
      for (int number = 1; std::getline(in, line); ++number) {
        EXPECT_FALSE(std::regex_search(line, literal))
            << entry.path() << ":" << number << ": " << line;
        EXPECT_FALSE(std::regex_search(line, rawCall))
            << entry.path() << ":" << number
            << ": a setting read or written without its key: " << line;
      }
    }
  }
  EXPECT_GT(files, 50);
}

}  // namespace
