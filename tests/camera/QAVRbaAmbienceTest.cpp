// Ambience presets resolved to images, the studio folder search, the user's own
// image and where it went, the shooter's names, the model's ambiences and the
// IBL storage folder.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>

#include "QAVIAlias.h"
#include "QAVModelObject.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVRbaPLMServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

class AmbienceTest : public qavtest::HostTest {
 protected:
  // Graphic directories A, B, ... and a last one, never searched, that holds
  // every thumbnail and image: finding something there would be a fault.
  void GraphicDirs(const std::string& names) {
    std::string list;
    for (char name : names)
      list += Dir(std::string(1, name)) + ":";
    const std::string last = Dir("Last");
    for (const char* sub : {"AmbienceStudio/ambiences/Ambience_default_HQ.png",
                            "ambiences/Ambience_default.png", "moved.hdr"})
      Touch(last + "/" + sub);
    SetEnvAndReload("QAVGraphicPath", list + last);
  }
  std::string Dir(const std::string& name) {
    const fs::path dir = _scratch.path() / name;
    fs::create_directories(dir);
    return dir.string();
  }
  void Touch(const std::string& path) {
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path) << "x";
  }
  std::string Studio(char dir) { return Dir(std::string(1, dir)) + "/AmbienceStudio/ambiences"; }
  void Thumbnail(char dir) { Touch(Studio(dir) + "/Ambience_default_HQ.png"); }

  static void DomeImage(const std::string& path) {
    namespace Schema = QAVRbaRenderingSettings;
    QAVSettingRepository* live = Schema::Open(Schema::kLiveDomeImage);
    ASSERT_NE(live, nullptr);
    ASSERT_EQ(Schema::Write(*live, Schema::kLiveDomeImage, QAVString(path)), S_OK);
  }

  struct Resolved {
    std::string name;
    std::string path;
  };
  static Resolved Resolve(const char* preset) {
    QAVString name("stale");
    QAVString path("stale");
    EXPECT_EQ(QAVRbaLiveUIServices::RetrieveAssociatedAmbience(preset, name, path), S_OK);
    return {name.str(), path.str()};
  }
};

TEST_F(AmbienceTest, PresetTableAndTheStudioFolderSearch) {
  // Only A is examined: the folder is A's, even though B holds a thumbnail too.
  GraphicDirs("AB");
  Thumbnail('A');
  Thumbnail('B');
  Resolved r = Resolve("PureWhite");
  EXPECT_EQ(r.name, "studio_pure_white_2K");
  EXPECT_EQ(r.path, Studio('A') + "/studio_pure_white_2K.hdr");

  const std::map<std::string, std::string> table = {{"PureWhite", "studio_pure_white_2K"},
                                                    {"WhiteMirror", "studio_white_mirror_2K"},
                                                    {"WhiteReview", "studio_white_review_2K"},
                                                    {"DarkMirror", "studio_panel_2_4K"},
                                                    {"DarkReview", "studio_dark_review_2K"},
                                                    {"WhiteDesign", "studio_white_design_2K"},
                                                    {"BlueDesign", "studio_blue_design_2K"},
                                                    {"DarkDesign", "studio_dark_design_2K"},
                                                    {"Outdoor", "outdoor"},
                                                    {"Studio", "studio_spot_1_2K"},
                                                    {"Indoor", "interior_hall_3_a_4K"},
                                                    {"Road", "exterior_road_2_2K"},
                                                    {"City", "exterior_plaza_1_4K"},
                                                    {"None", "neo_pure_white_2K"},
                                                    {"purewhite", "neo_pure_white_2K"},
                                                    {"Unknown", "neo_pure_white_2K"}};
  for (const auto& [preset, image] : table) {
    r = Resolve(preset.c_str());
    EXPECT_EQ(r.name, image) << preset;
    EXPECT_EQ(r.path, Studio('A') + "/" + image + ".hdr") << preset;
  }
  r = Resolve("");
  EXPECT_EQ(r.name, "");
  EXPECT_EQ(r.path, "") << "an empty preset clears both outputs";

  // The folder is assigned before the test of its thumbnail: with the
  // thumbnail only in E, the search goes on to it; with none, the last searched
  // directory's folder stays.
  GraphicDirs("CDE");
  Thumbnail('E');
  QAVString folder("untouched");
  EXPECT_EQ(QAVRbaLiveUIServices::RetrieveAssociatedDefaultFilePath(folder), S_OK);
  EXPECT_EQ(folder.str(), Studio('E'));
  GraphicDirs("FG");
  EXPECT_EQ(QAVRbaLiveUIServices::RetrieveAssociatedDefaultFilePath(folder), S_OK);
  EXPECT_EQ(folder.str(), Studio('G'));

  // One directory: nothing is searched, the name comes without a path.
  GraphicDirs("");
  r = Resolve("PureWhite");
  EXPECT_EQ(r.name, "studio_pure_white_2K");
  EXPECT_EQ(r.path, "");
  folder = "untouched";
  QAVRbaLiveUIServices::RetrieveAssociatedDefaultFilePath(folder);
  EXPECT_EQ(folder.str(), "");

  // No graphic path at all: the default folder is left as it was.
  SetEnvAndReload("QAVGraphicPath", std::nullopt);
  folder = "untouched";
  EXPECT_EQ(QAVRbaLiveUIServices::RetrieveAssociatedDefaultFilePath(folder), S_OK);
  EXPECT_EQ(folder.str(), "untouched");
  EXPECT_EQ(Resolve("City").path, "");
}

TEST_F(AmbienceTest, TheLevelComesFromTheSessionRecorder) {
  GraphicDirs("A");
  Thumbnail('A');
  Touch(Dir("A") + "/ambiences/Ambience_default.png");

  // Capturing: the current level is used and recorded.
  Driver().CaptureSession();
  EXPECT_EQ(Resolve("None").name, "neo_pure_white_2K");
  EXPECT_EQ(Driver().GetSessionValues(),
            (std::map<std::string, int>{{"AMBST_Ver_RetrieveAmb", 2}}));

  // Replaying a level 1 session: unknown names give "outdoor".
  Driver().ReplaySession({{"AMBST_Ver_RetrieveAmb", 1}});
  Resolved r = Resolve("Bogus");
  EXPECT_EQ(r.name, "outdoor");
  EXPECT_EQ(r.path, Studio('A') + "/outdoor.hdr");
  EXPECT_EQ(Resolve("DarkMirror").name, "studio_panel_2_4K");

  // Level 0: names without their resolution, the folder "ambiences", renamed
  // "ambiencesTST" while a session is recorded or replayed...
  Driver().ReplaySession({{"AMBST_Ver_RetrieveAmb", 0}});
  r = Resolve("DarkMirror");
  EXPECT_EQ(r.name, "studio_panel_2");
  EXPECT_EQ(r.path, Dir("A") + "/ambiencesTST/studio_panel_2.hdr");
  EXPECT_EQ(Resolve("None").name, "outdoor");
  // ... unless AMBCR_Force_NewHqHDRIs is set, whatever its value.
  SetEnvAndReload("AMBCR_Force_NewHqHDRIs", "");
  Driver().ReplaySession({{"AMBST_Ver_RetrieveAmb", 0}});
  EXPECT_EQ(Resolve("Studio").path, Dir("A") + "/ambiences/studio_spot_1.hdr");

  // A replayed session without the key, or the recorder off: the current level.
  Driver().ReplaySession({});
  EXPECT_EQ(Resolve("None").name, "neo_pure_white_2K");
  Driver().StopSession();
  EXPECT_EQ(Resolve("None").name, "neo_pure_white_2K");
}

TEST_F(AmbienceTest, TheUsersImageIsFoundWhereItWent) {
  GraphicDirs("AB");
  // Stored and present: returned unchanged, with no name.
  const std::string here = Dir("images") + "/sky.hdr";
  Touch(here);
  DomeImage(here);
  Resolved r = Resolve("Custom");
  EXPECT_EQ(r.name, "");
  EXPECT_EQ(r.path, here);

  // Moved: looked for as D/name, then D/AmbienceStudio/ambiences/name, in the
  // searched directories only (the last one holds "moved.hdr" in vain).
  DomeImage("/gone/away/moved.hdr");
  EXPECT_EQ(Resolve("Custom").path, "");
  Touch(Studio('B') + "/moved.hdr");
  EXPECT_EQ(Resolve("Custom").path, Studio('B') + "/moved.hdr");
  Touch(Dir("B") + "/moved.hdr");
  EXPECT_EQ(Resolve("Custom").path, Dir("B") + "/moved.hdr");
  Touch(Studio('A') + "/moved.hdr");
  EXPECT_EQ(Resolve("Custom").path, Studio('A') + "/moved.hdr");

  // Then in the system setting "AmbiencePath".
  DomeImage("C:\\old\\place\\kept.hdr");
  EXPECT_EQ(Resolve("Custom").path, "");
  const std::string fallback = Dir("fallback");
  Touch(fallback + "/kept.hdr");
  QAVSettingRepository* live =
      QAVSettingRepository::GetRepository(QAVRbaRenderingSettings::kLiveRepository);
  ASSERT_EQ(QAVRbaRenderingSettings::Write(*live, QAVRbaRenderingSettings::kLiveAmbiencePath,
                                           QAVUnicodeString(fallback)),
            S_OK);
  EXPECT_EQ(Resolve("Custom").path, fallback + "/kept.hdr");

  // The old shipped image is found under its new name at level 1 only.
  DomeImage("/elsewhere/studio_pure_white.hdr");
  Touch(Studio('A') + "/studio_pure_white_2K.hdr");
  EXPECT_EQ(Resolve("Custom").path, "");
  Driver().ReplaySession({{"AMBST_Ver_RetrieveAmb", 1}});
  EXPECT_EQ(Resolve("Custom").path, Studio('A') + "/studio_pure_white_2K.hdr");

  // An empty setting is returned as it is.
  Driver().StopSession();
  DomeImage("");
  EXPECT_EQ(Resolve("Custom").path, "");
}

TEST_F(AmbienceTest, ShooterNamesShareOneCounter) {
  GraphicDirs("A");
  Thumbnail('A');
  QAVString name;
  QAVString path;
  QAVRbaLiveUIServices::RetrieveAssociatedAmbienceForShooter("City", name, path);
  // The counter lives for the process: read where it stands, then count on.
  const std::string first = name.str();
  ASSERT_EQ(first.rfind("NewVisu_Shot_", 0), 0U) << first;
  const int n = std::stoi(first.substr(13));
  EXPECT_EQ(first, "NewVisu_Shot_" + std::to_string(n) + "City");
  EXPECT_EQ(path.str(), Studio('A') + "/" + first + ".dds");

  QAVRbaLiveUIServices::RetrieveAssociatedAmbienceForShooterHDR("City", name, path);
  EXPECT_EQ(name.str(), "NewVisu_Shot_" + std::to_string(n + 1) + "City");
  EXPECT_EQ(path.str(), Studio('A') + "/" + name.str() + ".hdr");
  // An empty preset consumes a number and gives nothing.
  QAVRbaLiveUIServices::RetrieveAssociatedAmbienceForShooter("", name, path);
  EXPECT_EQ(name.str(), "");
  EXPECT_EQ(path.str(), "");
  ResetProcessState();  // not even a new session resets it
  GraphicDirs("");
  QAVRbaLiveUIServices::RetrieveAssociatedAmbienceForShooter("City", name, path);
  EXPECT_EQ(name.str(), "NewVisu_Shot_" + std::to_string(n + 3) + "City");
  EXPECT_EQ(path.str(), "") << "no folder, no path";
}

TEST_F(AmbienceTest, AmbiencesOfTheActiveProductByTheirName) {
  EXPECT_EQ(QAVRbaLiveUIServices::RetrieveCurrentModelAmbience("Sky"), nullptr) << "no product";
  auto product = QAVMakeRef<QAVModelObject>("QAVProduct", "Car");
  QAVRbaPLMServices::SetUIActiveProduct(QAVQuery<QAVIPrdObject>(product.get()).get());
  EXPECT_EQ(QAVRbaLiveUIServices::RetrieveCurrentModelAmbience("Sky"), nullptr)
      << "no ambience container";

  QAVModelObject* ambiences = product->GetContainer("QAVRamAmbienceContainer", true);
  auto unnamed = QAVMakeRef<QAVModelObject>("QAVRamAmbience");
  auto sky = QAVMakeRef<QAVModelObject>("QAVRamAmbience", "Sky");
  auto twin = QAVMakeRef<QAVModelObject>("QAVRamAmbience", "Sky");
  ambiences->AddMember(unnamed.get());
  ambiences->AddMember(sky.get());
  ambiences->AddMember(twin.get());
  // A member elsewhere does not count.
  product->GetContainer("QAVOtherContainer", true)
      ->AddMember(QAVMakeRef<QAVModelObject>("QAVRamAmbience", "Studio").get());

  const unsigned long before = sky->GetRefCount();
  QAVISpecObject* found = QAVRbaLiveUIServices::RetrieveCurrentModelAmbience("Sky");
  EXPECT_EQ(found, sky.get()) << "the first match";
  EXPECT_EQ(sky->GetRefCount(), before + 1) << "one reference for the caller, none kept";
  if (found) found->Release();
  EXPECT_EQ(twin->GetRefCount(), 2UL) << "the member list released its references";
  EXPECT_EQ(QAVRbaLiveUIServices::RetrieveCurrentModelAmbience("sky"), nullptr) << "exact";
  EXPECT_EQ(QAVRbaLiveUIServices::RetrieveCurrentModelAmbience("Studio"), nullptr);
  EXPECT_EQ(QAVRbaLiveUIServices::RetrieveCurrentModelAmbience(""), nullptr);
}

TEST_F(AmbienceTest, IblStorageFolder) {
  const std::string temp = Dir("temp");
  SetEnvAndReload("QAVTemp", temp);
  EXPECT_EQ(QAVRbaLiveUIServices::GetIBLMapStoragePath().str(), temp + "/.ibl");
  EXPECT_TRUE(fs::is_directory(temp + "/.ibl"));
  EXPECT_EQ(QAVRbaLiveUIServices::GetIBLMapStoragePath().str(), temp + "/.ibl")
      << "an existing folder is fine";

  // A file in the way: the folder cannot be made.
  const std::string blocked = Dir("blocked");
  Touch(blocked + "/.ibl");
  SetEnvAndReload("QAVTemp", blocked);
  EXPECT_EQ(QAVRbaLiveUIServices::GetIBLMapStoragePath().str(), "");

  // Without QAVTemp, the host's temporary directory.
  SetEnvAndReload("QAVTemp", std::nullopt);
  qavtest::ScopedEnv tmpdir("TMPDIR", Dir("hosttemp"));
  EXPECT_EQ(QAVRbaLiveUIServices::GetIBLMapStoragePath().str(), Dir("hosttemp") + "/.ibl");
}

}  // namespace
