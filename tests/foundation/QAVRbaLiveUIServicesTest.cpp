#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <span>
#include <string>

#include "QAVRbaLiveUIServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

namespace Schema = QAVRbaRenderingSettings;
constexpr const char* kLive = Schema::kLiveRepository;
constexpr const char* kBatch = Schema::kBatchRepository;
constexpr const char* kNetwork = Schema::kNetworkRepository;

// "key type [value]" for each key, in declaration order, each followed by "; ":
// of a repository as stored, or of a table of the schema.
std::string Describe(const char* name) {
  std::string out;
  QAVSettingRepository* repo = QAVSettingRepository::GetRepository(name);
  for (const QAVString& key : repo->GetKeys()) {
    out += key.str() + " " + QAVSettingRepository::GetTypeName(repo->GetSettingType(key.c_str()));
    for (const std::string& text : repo->GetSettingTexts(key.c_str()))
      out += " [" + text + "]";
    out += "; ";
  }
  return out;
}
std::string Describe(std::span<const Schema::Setting> settings) {
  std::string out;
  for (const Schema::Setting& setting : settings) {
    std::string value;
    switch (setting.type) {
      case Schema::Type::Int:
        out += setting.key + std::string(" int");
        value = std::to_string(setting.intValue);
        break;
      case Schema::Type::Float: {
        char text[32];
        const auto result = std::to_chars(text, text + sizeof text, setting.floatValue);
        out += setting.key + std::string(" float");
        value.assign(text, result.ptr);
        break;
      }
      case Schema::Type::String:
        out += setting.key + std::string(" string");
        value = setting.text;
        break;
      case Schema::Type::Text:
      case Schema::Type::TextList:
        out += setting.key + std::string(" text");
        value = setting.text;
        break;
    }
    out += " [" + value + "]; ";
  }
  return out;
}

// The settings the live and batch repositories share, around "FileSaveAllowed".
const std::string kRendererHead =
    "DomeImage string [studio_pure_white.hdr]; FNumber float [0]; ShutterTime float [0.006]; "
    "FilmISO float [100]; Autofocus int [1]; FocalDistance float [1000]; FocalPointX float [0]; "
    "FocalPointY float [0]; FocalPointZ float [0]; Width float [800]; Height float [600]; "
    "KeepRatio int [0]; Units string [pixels]; DPI int [150]; Resolution int [1]; "
    "SaveType int [11]; InsertLogo int [0]; ";
const std::string kRendererTail =
    "SaveLimit int [0]; SaveFrameLimit int [100]; SaveTimeLimit int [60]; SaveTimeUnit int [0]; "
    "SaveErrorThreshold float [0.5]; CrushBlacks float [0]; BurnHighlights float [1]; "
    "Saturation float [1]; Gamma float [2.2]; Vignetting float [0]; ";
const std::string kLiveSettings = kRendererHead + "FileSaveAllowed int [0]; " + kRendererTail +
                                  "RenderEngine int [1]; RollActivation int [0]; "
                                  "RollValue float [0]; ColorProfileSelectedIndex int [0]; ";
const std::string kBatchSettings =
    kRendererHead + kRendererTail +
    "RenderPassCount int [1]; CanvasArray text [result]; SaveBatchDirectory text []; "
    "CacheBatchDirectory text []; RenderEngine int [1]; RenderMode string [velun:cpu]; ";
const std::string kNetworkSettings =
    "RemoteAddress string []; RemotePort int [10001]; VCAAddress string []; VCAUser text []; "
    "VCAPassword text []; ";

class LiveUIServicesTest : public qavtest::HostTest {
 protected:
  fs::path SettingsDir() const { return _scratch.path() / "settings"; }
  static void MakeAvailable(std::initializer_list<const char*> names, bool available) {
    for (const char* name : names)
      QAVSettingRepository::SetAvailable(name, available);
  }
};

}  // namespace

TEST_F(LiveUIServicesTest, SchemaHoldsEveryRepositoryKeyTypeAndDefault) {
  ASSERT_EQ(Schema::kRenderingRepositoryCount, 3u);
  const std::string expected[] = {kLiveSettings, kBatchSettings, kNetworkSettings};
  const char* names[] = {"RenderingLiveSettings", "RenderingBatchSettings",
                         "RenderingNetworkSettings"};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_STREQ(Schema::kRepositories[i].name, names[i]);
    EXPECT_EQ(Describe(Schema::kRepositories[i].settings), expected[i]) << names[i];
  }
  // The float defaults are the float literals, bit for bit; the canvas list is
  // a list, the directories single texts.
  const Schema::Setting* shutter = Schema::Find(Schema::kLiveSettings, "ShutterTime");
  const Schema::Setting* gamma = Schema::Find(Schema::kBatchSettings, "Gamma");
  ASSERT_TRUE(shutter && gamma);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(shutter->floatValue), 0x3BC49BA6u);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(gamma->floatValue), 0x400CCCCDu);
  EXPECT_EQ(Schema::Find(Schema::kBatchSettings, "CanvasArray")->type, Schema::Type::TextList);
  EXPECT_EQ(Schema::Find(Schema::kBatchSettings, "SaveBatchDirectory")->type, Schema::Type::Text);
  EXPECT_EQ(Schema::Find(Schema::kBatchSettings, "FileSaveAllowed"), nullptr);
  EXPECT_EQ(Schema::Find(Schema::kNetworkSettings, "DomeImage"), nullptr);
}

TEST_F(LiveUIServicesTest, DeclaresEveryKeyInOrderWithItsTypeAndDefault) {
  EXPECT_EQ(QAVRbaLiveUIServices::InitSettings(), S_OK);
  EXPECT_EQ(Describe(kLive), kLiveSettings);
  EXPECT_EQ(Describe(kBatch), kBatchSettings);
  EXPECT_EQ(Describe(kNetwork), kNetworkSettings);

  // The float defaults are the float literals, bit for bit.
  QAVSettingRepository* live = QAVSettingRepository::GetRepository(kLive);
  float shutter = 0;
  float gamma = 0;
  ASSERT_EQ(live->ReadAttr("ShutterTime", &shutter), S_OK);
  ASSERT_EQ(live->ReadAttr("Gamma", &gamma), S_OK);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(shutter), 0x3BC49BA6u);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(gamma), 0x400CCCCDu);
  EXPECT_EQ(QAVSettingRepository::GetRepository(kBatch)->GetSettingCount("CanvasArray"), 1);

  // Declaring writes nothing, sends nothing and saves nothing; doing it again
  // changes nothing.
  EXPECT_EQ(QAVRbaLiveUIServices::InitSettings(), S_OK);
  EXPECT_EQ(Describe(kLive), kLiveSettings);
  for (const char* name : {kLive, kBatch, kNetwork}) {
    QAVSettingRepository* repo = QAVSettingRepository::GetRepository(name);
    EXPECT_EQ(repo->GetWriteCount(), 0) << name;
    EXPECT_TRUE(Dispatches(repo->GetCallbackManager()).empty()) << name;
  }
  EXPECT_FALSE(fs::exists(SettingsDir()));
}

TEST_F(LiveUIServicesTest, StoredValuesAreKept) {
  QAVSettingRepository* live = QAVSettingRepository::GetRepository(kLive);
  const int dpi = 300;
  const int width = 1024;  // stored with another type than the declared one
  const QAVString dome = "sunset.hdr";
  live->WriteSetting("DPI", &dpi);
  live->WriteSetting("Width", &width);
  live->WriteSetting("DomeImage", &dome);
  ASSERT_EQ(live->SaveRepository(), S_OK);
  ResetProcessState();

  EXPECT_EQ(QAVRbaLiveUIServices::InitSettings(), S_OK);
  // The stored values stay, ahead of the declared keys, as the repository read them.
  std::string declared = kLiveSettings;
  for (const std::string entry :
       {"DPI int [150]; ", "Width float [800]; ", "DomeImage string [studio_pure_white.hdr]; "})
    declared.erase(declared.find(entry), entry.size());
  EXPECT_EQ(Describe(kLive),
            "DPI int [300]; Width int [1024]; DomeImage string [sunset.hdr]; " + declared);
  EXPECT_EQ(Describe(kBatch), kBatchSettings);  // the batch repository has its own DPI
}

TEST_F(LiveUIServicesTest, MissingRepositoriesAreSkipped) {
  MakeAvailable({kLive, kBatch}, false);
  EXPECT_EQ(QAVRbaLiveUIServices::InitSettings(), S_OK);
  EXPECT_EQ(Describe(kNetwork), kNetworkSettings);
  MakeAvailable({kLive, kBatch}, true);
  EXPECT_TRUE(Describe(kLive).empty());
  EXPECT_TRUE(Describe(kBatch).empty());

  ResetProcessState();
  MakeAvailable({kNetwork}, false);
  EXPECT_EQ(QAVRbaLiveUIServices::InitSettings(), S_OK);
  EXPECT_EQ(Describe(kBatch), kBatchSettings);

  ResetProcessState();
  MakeAvailable({kLive, kBatch, kNetwork}, false);
  EXPECT_EQ(QAVRbaLiveUIServices::InitSettings(), E_FAIL);
  MakeAvailable({kLive, kBatch, kNetwork}, true);
  for (const char* name : {kLive, kBatch, kNetwork})
    EXPECT_TRUE(Describe(name).empty()) << name;
}
