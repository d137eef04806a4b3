#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "QAVContentPackage.h"
#include "QAVDlgNotify.h"
#include "QAVFrmLayout.h"
#include "QAVHostDriver.h"
#include "QAVNotificationDialog.h"
#include "QAVPLMRepository.h"
#include "QAVRbaMaterialCatalogImporterCmd.h"
#include "QAVRbaMaterialCatalogImporterItem.h"
#include "QAVRbaMaterialCatalogImporterPanel.h"
#include "QAVRbaPanelManager.h"
#include "QAVSettingRepository.h"
#include "QAVTestSupport.h"
#include "QAVVidFraMessageBox.h"
#include "QAVWidgetInput.h"

namespace fs = std::filesystem;

// New commands belong to the host, which releases them; the analyzer cannot see
// that ownership and reports every `new` command as a leak.
// NOLINTBEGIN(clang-analyzer-cplusplus.NewDeleteLeaks)

namespace {

using Cmd = QAVRbaMaterialCatalogImporterCmd;
using Item = QAVRbaMaterialCatalogImporterItem;

// Presets of every case: 0 the sample, 1 found in two versions, 2 missing, 3
// created another way ("ORLIX"), 4 without a type, 5 an empty package.
constexpr const char* kCatalog = R"(NbMaterialPresets = 6
Preset_Mat_0_Name = Sample
Preset_Mat_0_File = Sample_Materials.orlix
Preset_Mat_1_Name = Lamp
Preset_Mat_1_Icon = Lamp.png
Preset_Mat_1_File = Lamp.orlix
Preset_Mat_1_Description = A lamp shade.
Preset_Mat_1_Type = MPM_material
Preset_Mat_2_Name = Gone
Preset_Mat_2_Icon = Gone.png
Preset_Mat_2_File = Gone.orlix
Preset_Mat_3_Name = Advanced
Preset_Mat_3_File = Lamp.orlix
Preset_Mat_3_Type = ORLIX
Preset_Mat_4_Name = Untyped
Preset_Mat_4_File = Lamp.orlix
Preset_Mat_5_Name = Empty
Preset_Mat_5_File = Empty.orlix
NbHumanPresets = 2
Preset_Hum_1_File = Walker.orlix
WarningDescription = Not installed
)";

class ImporterCmdTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    _scratch.Write("res/msgcatalog/QAVRbaMaterialCatalogImporterCmd.catalog", kCatalog);
    SetEnvAndReload("QAVHOST_RESOURCE_PATH", (_scratch.path() / "res").string());
    SetEnvAndReload("QAVStartupPath", (_scratch.path() / "startup").string());
    SetEnvAndReload("QAVTemp", (_scratch.path() / "reports").string());
    SetEnvAndReload("QAVHOST_PLM_DIR", (_scratch.path() / "plm").string());
    _content = _scratch.path() / "content";
    Package("startup/materials/Sample_Materials.orlix", 2);
    Package("content/startup/materials/Lamp_V03.orlix", 1);
    Package("content/startup/materials/Lamp_V07.orlix", 3);
    Package("content/startup/materials/Empty_V01.orlix", 0);
    std::string error;
    ASSERT_EQ(Driver().OpenScene(QAV_RESOURCES_DIR "/scenes/showroom/scene.json", error), S_OK);
    Driver().SetCollaborativeSpace("Design Studio");
  }

  // A package of `objects` objects at `relative` in the scratch directory.
  void Package(const std::string& relative, int objects) {
    const fs::path source = _scratch.path() / ("source" + std::to_string(++_sources));
    std::string manifest =
        R"({"format": "orlix", "version": 1, "kind": "Material", "title": "T", "objects": [)";
    for (int i = 0; i < objects; ++i)
      manifest += std::string(i ? ", " : "") + R"({"id": "o)" + std::to_string(i) +
                  R"(", "type": "Material", "name": "N)" + std::to_string(i) + R"("})";
    _scratch.Write(source.filename().string() + "/manifest.json", manifest + "]}");
    fs::create_directories((_scratch.path() / relative).parent_path());
    std::string error;
    ASSERT_EQ(
        QAVContentPackage::Pack(source.string(), (_scratch.path() / relative).string(), error),
        S_OK)
        << error;
  }

  static void SetInstallPath(const std::string& path) {
    const QAVUnicodeString value(path.c_str());
    QAVSettingRepository::GetRepository("ContentInstallPathRepo")
        ->WriteSetting("QAVContentInstallPath", &value);
  }

  // A command of that kind, activated by the host's loop.
  Cmd* Start(const char* kind) {
    auto* command = new Cmd(QAVUnicodeString(kind));
    EXPECT_EQ(command->GetPanel(), nullptr);  // built at the next loop pass
    Driver().Idle();
    return command;
  }
  static Item* Tile(Cmd* command, int n) {
    return dynamic_cast<Item*>(command->GetPanel()->GetItems()->GetItem(n));
  }
  // Selects tile n and presses Create.
  static void Choose(Cmd* command, int n) {
    QAVWidgetInput::Click(Tile(command, n));
    QAVWidgetInput::PressButton(command->GetPanel()->FindWidget("CreateButton"));
  }
  static std::vector<std::string> Furtive() {
    std::vector<std::string> texts;
    for (const auto& message : QAVNotificationDialog::GetShownMessages()) {
      EXPECT_EQ(message.dialogName, "notifFurtifMsg");
      EXPECT_EQ(message.parentName, "ApplicationDocument");
      texts.push_back(message.text);
    }
    return texts;
  }
  static std::vector<QAVPLMRepository::ObjectInfo> Objects(const char* repository) {
    QAVPLMRepository plm;
    std::string error;
    std::vector<QAVPLMRepository::ObjectInfo> objects;
    if (SUCCEEDED(plm.Open(repository, error))) {
      EXPECT_EQ(plm.CheckIntegrity(), "ok");
      plm.ListObjects(objects, error);
      for (auto& object : objects) {
        const std::string id = object.id;  // GetObject empties its output first
        EXPECT_EQ(plm.GetObject(id, object, error), S_OK) << error;
      }
    }
    return objects;
  }

  fs::path _content;
  int _sources = 0;
};

TEST_F(ImporterCmdTest, ContentFilesAreTheNewestVersionAndTheSampleComesFromStartUp) {
  const QAVUnicodeString root(_content.string().c_str());
  const auto find = [&root](const char* kind, const char* file) {
    return Cmd::FindContentFile(QAVUnicodeString(kind), root, QAVUnicodeString(file))
        .ToString()
        .str();
  };
  Package("content/startup/materials/Lamp_V10.orlix", 1);  // never a candidate
  EXPECT_EQ(find("Material", "Lamp.orlix"),
            (_content / "startup/materials/Lamp_V07.orlix").string());
  Package("content/startup/materials/Sample_Materials_V01.orlix", 1);
  EXPECT_EQ(find("Material", "Sample_Materials.orlix"),
            (_scratch.path() / "startup/materials/Sample_Materials.orlix").string());
  EXPECT_EQ(find("Material", "Gone.orlix"), "");
  // Each kind has its own folder; an unknown kind has none.
  Package("content/startup/humans/Walker_V02.orlix", 1);
  EXPECT_EQ(find("Human", "Walker.orlix"), (_content / "startup/humans/Walker_V02.orlix").string());
  EXPECT_EQ(find("Props", "Walker.orlix"), "");
  EXPECT_EQ(find("Shader", "Lamp.orlix"), "");
  EXPECT_EQ(Cmd::FindContentFile(QAVUnicodeString("Material"), QAVUnicodeString(),
                                 QAVUnicodeString("Lamp.orlix"))
                .ToString()
                .str(),
            "");
}

TEST_F(ImporterCmdTest, EveryPresetGetsTheTileOfItsNumber) {
  SetInstallPath(_content.string());
  Cmd* command = Start("Material");
  ASSERT_NE(command->GetPanel(), nullptr);
  QAVRbaMaterialCatalogImporterPanel* panel = command->GetPanel();
  ASSERT_EQ(panel->GetItems()->GetCount(), 6);
  EXPECT_EQ(command->GetItemCount(), 5);  // all but the missing one
  EXPECT_EQ(Tile(command, 0)->GetTitle().ToString().str(), "Sample");
  EXPECT_EQ(Tile(command, 0)->GetPicture().ToString().str(),
            "QAVRbaMaterialLibrary_Default_Thumbnail.png");
  EXPECT_EQ(Tile(command, 1)->GetDescription().ToString().str(), "A lamp shade.");
  EXPECT_EQ(Tile(command, 1)->GetPicture().ToString().str(),
            (_content / "resources/graphic/Lamp.png").string());
  EXPECT_EQ(Tile(command, 4)->GetDescription().ToString().str(), "Preset Description");
  // The missing one: a tile all the same, unavailable, with its teaser.
  Item* gone = Tile(command, 2);
  EXPECT_EQ(gone->GetUnavailable(), 1);
  EXPECT_EQ(gone->GetDescription().ToString().str(), "Not installed");
  EXPECT_EQ(gone->GetPicture().ToString().str(), "Gone_teaser.png");
  EXPECT_EQ(gone->GetStyleClass(), "QAVRbaMaterialCatalogImporterItem");
  // The dialog's texts, from the catalog or their fixed defaults.
  EXPECT_EQ(panel->GetFatherWidget()->GetName(), "ImportDialogBox");
  EXPECT_EQ(panel->GetFatherWidget()->GetTitle().ToString().str(),
            "Create a new covering material");
  EXPECT_EQ(panel->GetTitle().ToString().str(),
            "You are about to create a new covering material. Choose a preset or create an "
            "advanced material below.");
  EXPECT_EQ(panel->FindWidget("PanelIcon")->GetIcon(), "QAVRbaImportMatCatalog.png");
  EXPECT_TRUE(QAVDlgNotify::GetShownNotices().empty());
  EXPECT_TRUE(QAVRbaPanelManager::GetPanelManager()->IsPanelOpen(
      Cmd::kPanelId, QAVFrmLayout::GetCurrentLayout()->GetCurrentWindow()));

  // One importer per window: a second one ends at once, without a panel.
  const std::size_t dialogs = QAVDialog::GetOpenDialogs().size();
  new Cmd(QAVUnicodeString("Ambience"));
  Driver().Idle();
  EXPECT_EQ(QAVDialog::GetOpenDialogs().size(), dialogs);
  ASSERT_EQ(Driver().GetJournal("command-destroyed").size(), 1U);
  EXPECT_EQ(Driver().GetJournal("command-destroyed")[0].name, "QAVRbaMaterialCatalogImporterCmd");

  // The content path changes: the panel is made again from it.
  SetInstallPath((_scratch.path() / "nowhere").string());
  EXPECT_EQ(command->GetItemCount(), 1);
  ASSERT_EQ(QAVDlgNotify::GetShownNotices().size(), 1U);
  EXPECT_EQ(QAVDlgNotify::GetShownNotices()[0].text,
            "Cannot find any content to import.\nNo ressources found. Please check the "
            "installation path in Preferences.");
  QAVWidgetInput::PressButton(command->GetPanel()->FindWidget("CancelButton"));
  EXPECT_TRUE(command->IsDestructionRequested());
  EXPECT_FALSE(QAVRbaPanelManager::GetPanelManager()->IsPanelOpen(
      Cmd::kPanelId, QAVFrmLayout::GetCurrentLayout()->GetCurrentWindow()));
}

TEST_F(ImporterCmdTest, WithoutAnInstallPathTheUserIsToldAndTheSampleIsListed) {
  Cmd* command = Start("Human");
  ASSERT_EQ(QAVDlgNotify::GetShownNotices().size(), 1U);
  const auto notice = QAVDlgNotify::GetShownNotices()[0];
  EXPECT_EQ(notice.name, "ContentOrbelWarning");
  EXPECT_EQ(notice.title, "Import warning");
  EXPECT_EQ(notice.text,
            "Cannot find any content to import.\nPlease fill in content installation path in "
            "Preferences.");
  ASSERT_EQ(command->GetPanel()->GetItems()->GetCount(), 2);
  EXPECT_EQ(Tile(command, 0)->GetPicture().ToString().str(), "QAVRbaHuman_Default_Thumbnail.png");
  // A missing human without an icon shows the kind's thumbnail as misspelt there.
  EXPECT_EQ(Tile(command, 1)->GetPicture().ToString().str(), "QAVRbaHuman_Default_Tumbnail.png");
  EXPECT_EQ(Tile(command, 1)->GetTitle().ToString().str(), "Preset Name");
  EXPECT_EQ(command->GetPanel()->FindWidget("PanelIcon")->GetIcon(), "QAVRbaImportHuman.png");
  QAVWidgetInput::CloseDialog(dynamic_cast<QAVDialog*>(command->GetPanel()->GetFatherWidget()));
  EXPECT_TRUE(command->IsDestructionRequested());
}

TEST_F(ImporterCmdTest, AnAcceptedPresetIsImportedIntoThePrivateRepositoryOnce) {
  SetInstallPath(_content.string());
  Cmd* command = Start("Material");
  Choose(command, 1);
  QAVVidFraMessageBox* box = command->GetConfirmationBox();
  ASSERT_NE(box, nullptr);
  const auto shown = QAVVidFraMessageBox::GetShownBoxes();
  ASSERT_EQ(shown.size(), 1U);
  EXPECT_EQ(shown[0].name, "ImportOrbelWarning");
  EXPECT_EQ(shown[0].informativeText,
            "You are going to import data As Reference following collaborative space: Design "
            "Studio");
  EXPECT_EQ(shown[0].text, "To share these data, be careful to import them in a public location.");
  EXPECT_EQ(shown[0].actionIcon, 3);
  EXPECT_EQ(shown[0].buttons, 18);
  EXPECT_TRUE(box->IsModal() && box->IsActive() && box->IsAutoClose());
  EXPECT_FALSE(box->HasCloseButton() || box->IsResizable());

  ASSERT_TRUE(QAVWidgetInput::AnswerMessageBox(box, true));
  EXPECT_EQ(Furtive(), std::vector<std::string>{"Import successful"});
  const auto objects = Objects("PLM1");
  ASSERT_EQ(objects.size(), 3U);  // Lamp_V07's objects
  for (const auto& object : objects) {
    const auto has = [&object](const std::string& name, const std::string& value) {
      return std::find(object.attributes.begin(), object.attributes.end(),
                       std::pair<std::string, std::string>{name, value}) != object.attributes.end();
    };
    EXPECT_TRUE(has("Maturity", "PRIVATE"));
    EXPECT_TRUE(has("Report", (_scratch.path() / "reports").string()));
  }
  EXPECT_FALSE(fs::exists(QAVPLMRepository::FileOf("TST")));
  EXPECT_FALSE(fs::is_empty(_scratch.path() / "reports"));  // the import's report
  const auto progress = Driver().GetJournal("progress");
  ASSERT_GE(progress.size(), 4U);
  EXPECT_EQ(progress[1].detail, "range 0 100");
  EXPECT_EQ(progress[3].detail, "progress 10");
  EXPECT_EQ(progress[3].name, "Lamp");
  EXPECT_TRUE(command->IsDestructionRequested());
  Driver().Idle();
  EXPECT_FALSE(QAVRbaPanelManager::GetPanelManager()->IsPanelOpen(
      Cmd::kPanelId, QAVFrmLayout::GetCurrentLayout()->GetCurrentWindow()));
}

TEST_F(ImporterCmdTest, SelectionsThatImportNothing) {
  SetInstallPath(_content.string());
  Cmd* command = Start("Material");
  // Nothing selected: a double click on the missing tile.
  QAVWidgetInput::Click(Tile(command, 2), true);
  // Created another way: nothing happens.
  Choose(command, 3);
  EXPECT_EQ(command->GetConfirmationBox(), nullptr);
  // Without a type: the default one, so it is confirmed; the user rejects it.
  Choose(command, 4);
  ASSERT_NE(command->GetConfirmationBox(), nullptr);
  QAVWidgetInput::AnswerMessageBox(command->GetConfirmationBox(), false);
  EXPECT_TRUE(command->IsDestructionRequested());
  EXPECT_EQ(Furtive(), std::vector<std::string>{"No content selected"});
  EXPECT_TRUE(Objects("PLM1").empty());
  Driver().Idle();

  // A package without objects is a failure in both repositories.
  command = Start("Material");
  Choose(command, 5);
  QAVWidgetInput::AnswerMessageBox(command->GetConfirmationBox(), true);
  EXPECT_EQ(Furtive().back(), "Import failed");
  EXPECT_TRUE(Objects("PLM1").empty());
}

TEST_F(ImporterCmdTest, AFailedImportIsTriedOnceMoreInTheTestRepository) {
  SetInstallPath(_content.string());
  Driver().MakeRepositoryUnopenable("PLM1");
  Cmd* command = Start("Material");
  Choose(command, 0);
  QAVWidgetInput::AnswerMessageBox(command->GetConfirmationBox(), true);
  EXPECT_EQ(Furtive(), std::vector<std::string>{"Import successful"});
  EXPECT_EQ(Objects("TST").size(), 2U);  // the sample's objects
  bool retried = false;
  for (const auto& entry : Driver().GetJournal("progress"))
    retried |= entry.detail == "progress 60";
  EXPECT_TRUE(retried);
  Driver().Idle();

  // Neither opens: the user is told it failed.
  std::ofstream(QAVPLMRepository::FileOf("TST"), std::ios::trunc) << "not a database";
  command = Start("Material");
  Choose(command, 1);
  QAVWidgetInput::AnswerMessageBox(command->GetConfirmationBox(), true);
  EXPECT_EQ(Furtive().back(), "Import failed");
  Driver().MakeRepositoryUnopenable("");
}

}  // namespace

// NOLINTEND(clang-analyzer-cplusplus.NewDeleteLeaks)
