// QAVRbaLiveUIServices: ambience presets resolved to environment images, the
// shooter's image names, the model's ambiences and the IBL storage folder.
#include <array>
#include <atomic>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "QAVFileServices.h"
#include "QAVIAlias.h"
#include "QAVModelObject.h"
#include "QAVRbaEnvironment.h"
#include "QAVRbaGraphicPath.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVRbaPLMServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVRbaTPServices.h"
#include "QAVSessionRecorder.h"
#include "QAVSettingRepository.h"

namespace {

using qavrba::Exists;

constexpr const char* kLevelKey = "AMBST_Ver_RetrieveAmb";
constexpr int kCurrentLevel = 2;

struct Preset {
  const char* name;
  const char* image;   // levels 2 and 1
  const char* level0;  // level 0: without the resolution suffix
};

// Keep this table exactly: "DarkMirror" is the panel studio on purpose.
constexpr std::array<Preset, 13> kPresets = {{
    {"PureWhite", "studio_pure_white_2K", "studio_pure_white"},
    {"WhiteMirror", "studio_white_mirror_2K", "studio_white_mirror"},
    {"WhiteReview", "studio_white_review_2K", "studio_white_review"},
    {"DarkMirror", "studio_panel_2_4K", "studio_panel_2"},
    {"DarkReview", "studio_dark_review_2K", "studio_dark_review"},
    {"WhiteDesign", "studio_white_design_2K", "studio_white_design"},
    {"BlueDesign", "studio_blue_design_2K", "studio_blue_design"},
    {"DarkDesign", "studio_dark_design_2K", "studio_dark_design"},
    {"Outdoor", "outdoor", "outdoor"},
    {"Studio", "studio_spot_1_2K", "studio_spot_1"},
    {"Indoor", "interior_hall_3_a_4K", "interior_hall_3_a"},
    {"Road", "exterior_road_2_2K", "exterior_road_2"},
    {"City", "exterior_plaza_1_4K", "exterior_plaza_1"},
}};

const char* ImageOf(const QAVString& preset, int level) {
  for (const Preset& entry : kPresets)
    if (preset.str() == entry.name) return level == 0 ? entry.level0 : entry.image;
  return level == 2 ? "neo_pure_white_2K" : "outdoor";
}

// The behaviour level in force, recorded while the session recorder captures,
// taken from the session while it replays.
int AmbienceLevel() {
  QAVSessionRecorder* recorder = QAVSessionRecorder::GetRecorder();
  int level = kCurrentLevel;
  if (!recorder) return level;
  if (recorder->IsReplaying()) {
    int recorded = level;
    if (SUCCEEDED(recorder->GetRecordedValue(kLevelKey, recorded)) && recorded >= 0 &&
        recorded <= kCurrentLevel)
      level = recorded;
  } else if (recorder->IsCapturing()) {
    recorder->RecordValue(kLevelKey, level);
  }
  return level;
}

// The studio folder search: every searched directory D in turn becomes the
// output before its thumbnail is tested. Untouched without "QAVGraphicPath".
void SearchStudioFolder(int level, QAVString& folder) {
  if (!qavrba::HasGraphicPath()) return;
  std::string sub = "AmbienceStudio/ambiences";
  const char* thumbnail = "Ambience_default_HQ.png";
  if (level == 0) {
    const QAVSessionRecorder* recorder = QAVSessionRecorder::GetRecorder();
    const bool recording = recorder && (recorder->IsCapturing() || recorder->IsReplaying());
    sub = recording && !QAVRbaEnvironment::ForceNewHqHDRIs() ? "ambiencesTST" : "ambiences";
    thumbnail = "Ambience_default.png";
  }
  folder = QAVString();
  for (const QAVUnicodeString& directory : qavrba::SearchedGraphicDirectories()) {
    const QAVUnicodeString candidate = qavrba::Join(directory, sub.c_str());
    folder = candidate.ToString();
    if (Exists(qavrba::Join(candidate, thumbnail))) return;
  }
}

// The user's image ("Custom"), looked for again when it was moved.
QAVString CustomImagePath(int level) {
  QAVSettingRepository* settings =
      QAVRbaRenderingSettings::Open(QAVRbaRenderingSettings::kLiveDomeImage);
  if (!settings) return {};
  QAVString image;
  QAVRbaRenderingSettings::Read(*settings, QAVRbaRenderingSettings::kLiveDomeImage, image);
  const QAVUnicodeString stored(image);
  if (stored.IsEmpty() || Exists(stored)) return image;

  QAVUnicodeString folder;
  QAVUnicodeString name;
  QAVSplitPath(stored, folder, name);
  if (level == 1 && name.str() == "studio_pure_white.hdr") name = "studio_pure_white_2K.hdr";
  for (const QAVUnicodeString& directory : qavrba::SearchedGraphicDirectories()) {
    for (const QAVUnicodeString& candidate :
         {qavrba::Join(directory, name),
          qavrba::Join(qavrba::Join(directory, "AmbienceStudio/ambiences"), name)}) {
      if (Exists(candidate)) return candidate.ToString();
    }
  }
  const QAVUnicodeString fallback =
      qavrba::LiveSystemSetting(QAVRbaRenderingSettings::kLiveAmbiencePath);
  if (!fallback.IsEmpty() && Exists(qavrba::Join(fallback, name)))
    return qavrba::Join(fallback, name).ToString();
  return {};
}

// The one counter of both shooter operations, for the life of the process.
std::atomic<int> shooterCount{0};

HRESULT ShooterImage(const QAVString& preset, const char* extension, QAVString& o_imageName,
                     QAVString& o_imagePath) {
  o_imageName = QAVString();
  o_imagePath = QAVString();
  const int number = ++shooterCount;
  if (preset.IsEmpty()) return S_OK;
  QAVRbaLiveUIServices::RetrieveAssociatedDefaultFilePath(o_imagePath);
  o_imageName = QAVString(("NewVisu_Shot_" + std::to_string(number)).c_str()) + preset;
  if (!o_imagePath.IsEmpty()) o_imagePath = o_imagePath + "/" + o_imageName + extension;
  return S_OK;
}

}  // namespace

HRESULT QAVRbaLiveUIServices::RetrieveAssociatedAmbience(QAVString preset, QAVString& o_imageName,
                                                         QAVString& o_imagePath) {
  o_imageName = QAVString();
  o_imagePath = QAVString();
  if (preset.IsEmpty()) return S_OK;
  const int level = AmbienceLevel();
  if (preset.str() == "Custom") {
    o_imagePath = CustomImagePath(level);
    return S_OK;
  }
  SearchStudioFolder(level, o_imagePath);
  o_imageName = ImageOf(preset, level);
  if (!o_imagePath.IsEmpty()) o_imagePath = o_imagePath + "/" + o_imageName + ".hdr";
  return S_OK;
}

HRESULT QAVRbaLiveUIServices::RetrieveAssociatedAmbienceForShooter(QAVString preset,
                                                                   QAVString& o_imageName,
                                                                   QAVString& o_imagePath) {
  return ShooterImage(preset, ".dds", o_imageName, o_imagePath);
}

HRESULT QAVRbaLiveUIServices::RetrieveAssociatedAmbienceForShooterHDR(QAVString preset,
                                                                      QAVString& o_imageName,
                                                                      QAVString& o_imagePath) {
  return ShooterImage(preset, ".hdr", o_imageName, o_imagePath);
}

HRESULT QAVRbaLiveUIServices::RetrieveAssociatedDefaultFilePath(QAVString& o_folder) {
  SearchStudioFolder(kCurrentLevel, o_folder);
  return S_OK;
}

QAVISpecObject* QAVRbaLiveUIServices::RetrieveCurrentModelAmbience(QAVUnicodeString name) {
  if (name.IsEmpty()) return nullptr;
  QAVIPrdObject* activeProduct = nullptr;
  if (FAILED(QAVRbaPLMServices::GetUIActiveProduct(activeProduct)) || !activeProduct)
    return nullptr;
  // The product's containers are those of the model object that it is.
  const auto product = QAVQuery<QAVModelObject>(activeProduct);
  activeProduct->Release();
  std::vector<QAVRef<QAVBaseUnknown>> members;
  QAVRbaTPServices::ListMembers(product.get(), "QAVRamAmbienceContainer", QAVISpecObject::ClassId(),
                                members);
  for (const QAVRef<QAVBaseUnknown>& member : members) {
    void* answer = nullptr;
    if (FAILED(member->QueryInterface(QAVIAlias::ClassId(), &answer))) continue;
    const auto alias = QAVRef<QAVIAlias>::Adopt(static_cast<QAVIAlias*>(answer));
    if (alias->GetAlias() == name) {
      member->AddRef();
      return static_cast<QAVISpecObject*>(member.get());
    }
  }
  return nullptr;
}

QAVUnicodeString QAVRbaLiveUIServices::GetIBLMapStoragePath() {
  const char* temp = QAVRbaEnvironment::TempPath();
  QAVUnicodeString directory = temp ? QAVUnicodeString(temp) : QAVGetTempDirectory();
  if (directory.IsEmpty()) return directory;
  directory = qavrba::Join(directory, ".ibl");
  return SUCCEEDED(QAVMkdir(directory)) ? directory : QAVUnicodeString();
}
