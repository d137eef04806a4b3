#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <dirent.h>

#include "QAVRbaPathAndFileServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

class PathAndFileServicesTest : public qavtest::HostTest {
 protected:
  // Sets "QAVGraphicPath" and re-reads it as at load.
  void GraphicPath(std::optional<std::string> value) {
    SetEnvAndReload("QAVGraphicPath", std::move(value));
  }
  // A directory of the scratch area (created).
  std::string Dir(const std::string& name) {
    const fs::path dir = _scratch.path() / name;
    fs::create_directories(dir);
    return dir.string();
  }
  void Touch(const std::string& path) {
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path) << "x";
  }
  static void LiveSetting(const QAVRbaRenderingSettings::Key<QAVUnicodeString>& key,
                          const std::string& value) {
    QAVSettingRepository* live = QAVRbaRenderingSettings::Open(key);
    ASSERT_NE(live, nullptr);
    ASSERT_EQ(QAVRbaRenderingSettings::Write(*live, key, QAVUnicodeString(value)), S_OK);
  }
  static std::string Backplate(const char* name) {
    QAVUnicodeString found("<none>");
    QAVRbaPathAndFileServices::RetreiveBackplatePath(name, found);
    return found.str();
  }
  static std::string Texture(const char* name) {
    QAVUnicodeString found("<none>");
    QAVRbaPathAndFileServices::RetreiveTexturePath(name, found);
    return found.str();
  }
};

std::vector<std::string> Listed(const char* directory, QAVListValQAVUnicodeString extensions) {
  std::unique_ptr<QAVListValQAVUnicodeString> list(
      QAVRbaPathAndFileServices::GetListOfDirectoryFile(directory, extensions));
  EXPECT_NE(list, nullptr);
  std::vector<std::string> names;
  if (list)
    for (const QAVUnicodeString& name : *list)
      names.push_back(name.str());
  return names;
}

// The system's order of the entries of a directory, restricted to `names`.
std::vector<std::string> InReaderOrder(const std::string& directory,
                                       const std::vector<std::string>& names) {
  std::vector<std::string> ordered;
  DIR* dir = ::opendir(directory.c_str());
  while (const dirent* entry = ::readdir(dir))
    for (const std::string& name : names)
      if (name == entry->d_name) ordered.push_back(name);
  ::closedir(dir);
  return ordered;
}

}  // namespace

TEST_F(PathAndFileServicesTest, ListingFiltersByExtensionCase) {
  const std::string dir = Dir("list");
  for (const char* name : {"a.jpg", "b.JPG", "c.Jpg", "e.jpg.bak", "f.png", "sp \xc3\xa9.jpg"})
    Touch(dir + "/" + name);
  Dir("list/d.jpg");
  int isDirectory = 7;
  EXPECT_EQ(QAVRbaPathAndFileServices::GetFileInfo(QAVUnicodeString(dir), "d.jpg", isDirectory),
            S_OK);
  EXPECT_EQ(isDirectory, 1);
  EXPECT_EQ(QAVRbaPathAndFileServices::GetFileInfo(QAVUnicodeString(dir), "x", isDirectory),
            E_FAIL);
  EXPECT_EQ(isDirectory, 0);

  const std::vector<std::string> jpg = Listed(dir.c_str(), {"jpg"});
  EXPECT_EQ(jpg, InReaderOrder(dir, {"a.jpg", "b.JPG", "sp \xc3\xa9.jpg"}));
  // With or without the dot, given in either case: the same files.
  EXPECT_EQ(Listed(dir.c_str(), {".JPG"}), jpg);
  // A name matching several extensions is listed once, in the reader's order.
  EXPECT_EQ(Listed(dir.c_str(), {"png", "jpg", ".jpg"}),
            InReaderOrder(dir, {"a.jpg", "b.JPG", "f.png", "sp \xc3\xa9.jpg"}));
  // No extension: every file, no directory ("." and ".." included).
  EXPECT_EQ(Listed(dir.c_str(), {}), InReaderOrder(dir, {"a.jpg", "b.JPG", "c.Jpg", "e.jpg.bak",
                                                         "f.png", "sp \xc3\xa9.jpg"}));
  // Names shorter than four characters are searched from their start.
  const std::string shortNames = Dir("short");
  Touch(shortNames + "/jpg");
  Touch(shortNames + "/jp");
  EXPECT_EQ(Listed(shortNames.c_str(), {"jpg"}), std::vector<std::string>{"jpg"});

  // A directory that cannot be read gives an empty list, never null.
  EXPECT_TRUE(Listed((dir + "/missing").c_str(), {}).empty());
  EXPECT_TRUE(Listed((dir + "/a.jpg").c_str(), {}).empty());
  EXPECT_TRUE(Listed(nullptr, {"jpg"}).empty());
}

TEST_F(PathAndFileServicesTest, BackplateSearchOrder) {
  const std::string g1 = Dir("g1"), g2 = Dir("g2"), g3 = Dir("g3"), fallback = Dir("fallback");
  GraphicPath(g1 + ":" + g2 + ":" + g3);

  // Present only as sky.hdr in the second of three directories: found in lower case.
  Touch(g2 + "/sky.hdr");
  EXPECT_EQ(Backplate("sky.HDR"), g2 + "/sky.hdr");
  // The upper-case form is the second candidate of a graphic directory.
  Touch(g1 + "/road.PNG");
  EXPECT_EQ(Backplate("road.png"), g1 + "/road.PNG");
  Touch(g1 + "/road.png");
  EXPECT_EQ(Backplate("road.Png"), g1 + "/road.png");
  // The backplates subdirectory takes the name as given, after both case forms.
  Touch(g1 + "/backplates/Floor.Jpg");
  EXPECT_EQ(Backplate("Floor.Jpg"), g1 + "/backplates/Floor.Jpg");
  Touch(g2 + "/floor.jpg");
  EXPECT_EQ(Backplate("Floor.Jpg"), g1 + "/backplates/Floor.Jpg");  // earlier directory first
  // Only the base keeps its case.
  EXPECT_EQ(Backplate("SKY.hdr"), "<none>");
  // The last directory of the list is not searched.
  Touch(g3 + "/last.hdr");
  EXPECT_EQ(Backplate("last.hdr"), "<none>");
  // Nothing found and nothing stored: untouched; an empty name is not searched.
  EXPECT_EQ(Backplate("nowhere.hdr"), "<none>");
  EXPECT_EQ(Backplate(""), "<none>");

  // The fallback directory, tried after the graphic directories.
  LiveSetting(QAVRbaRenderingSettings::kLiveBackplatePath, fallback);
  Touch(fallback + "/last.hdr");
  EXPECT_EQ(Backplate("last.HDR"), fallback + "/last.hdr");
  Touch(fallback + "/sky.hdr");
  EXPECT_EQ(Backplate("sky.hdr"), g2 + "/sky.hdr");
  // There only the lower-case form is tested.
  Touch(fallback + "/base.HDR");
  EXPECT_EQ(Backplate("base.hdr"), "<none>");
  EXPECT_EQ(Backplate("base.HDR"), "<none>");
}

TEST_F(PathAndFileServicesTest, BackplateWithOneGraphicDirectoryGoesToTheFallback) {
  const std::string only = Dir("only"), fallback = Dir("fb");
  Touch(only + "/plate.png");
  Touch(only + "/backplates/plate.png");
  GraphicPath(only);
  EXPECT_EQ(Backplate("plate.png"), "<none>");
  LiveSetting(QAVRbaRenderingSettings::kLiveBackplatePath, fallback);
  Touch(fallback + "/plate.png");
  EXPECT_EQ(Backplate("plate.png"), fallback + "/plate.png");
  // A name without a dot is looked for with a trailing dot.
  Touch(fallback + "/noext.");
  EXPECT_EQ(Backplate("noext"), fallback + "/noext.");

  // Without "QAVGraphicPath", and without the live repository, nothing breaks.
  GraphicPath(std::nullopt);  // resets the settings too
  LiveSetting(QAVRbaRenderingSettings::kLiveBackplatePath, fallback);
  EXPECT_EQ(Backplate("plate.png"), fallback + "/plate.png");
  QAVSettingRepository::SetAvailable(QAVRbaRenderingSettings::kLiveRepository, false);
  EXPECT_EQ(Backplate("plate.png"), "<none>");
  QAVSettingRepository::SetAvailable(QAVRbaRenderingSettings::kLiveRepository, true);
}

TEST_F(PathAndFileServicesTest, TextureSearchOrder) {
  const std::string g1 = Dir("t1"), g2 = Dir("t2"), g3 = Dir("t3"), fallback = Dir("amb");
  GraphicPath(g1 + "::" + g2 + ":" + g3);  // the empty entry is dropped
  Touch(g2 + "/ambiences/studio.hdr");
  EXPECT_EQ(Texture("studio.hdr"), g2 + "/ambiences/studio.hdr");
  Touch(g2 + "/studio.hdr");
  EXPECT_EQ(Texture("studio.hdr"), g2 + "/studio.hdr");  // the directory itself first
  Touch(g1 + "/ambiences/studio.hdr");
  EXPECT_EQ(Texture("studio.hdr"), g1 + "/ambiences/studio.hdr");  // earlier directory first
  // Texture names are taken as given: no case forms.
  EXPECT_EQ(Texture("STUDIO.hdr"), "<none>");
  Touch(g3 + "/sky.hdr");
  EXPECT_EQ(Texture("sky.hdr"), "<none>");
  EXPECT_EQ(Texture(""), "<none>");

  LiveSetting(QAVRbaRenderingSettings::kLiveAmbiencePath, fallback);
  Touch(fallback + "/sky.hdr");
  EXPECT_EQ(Texture("sky.hdr"), fallback + "/sky.hdr");
  Touch(fallback + "/ambiences/cloud.hdr");
  EXPECT_EQ(Texture("cloud.hdr"), "<none>");  // no subdirectory in the fallback
  // The backplate fallback is a separate setting.
  EXPECT_EQ(Backplate("sky.hdr"), "<none>");
}
