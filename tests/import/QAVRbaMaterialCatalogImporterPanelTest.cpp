#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QAVCallbackManager.h"
#include "QAVDlgWidget.h"
#include "QAVHostDriver.h"
#include "QAVISYPIntrospectable.h"
#include "QAVRbaMaterialCatalogImporterItem.h"
#include "QAVRbaMaterialCatalogImporterPanel.h"
#include "QAVSettingRepository.h"
#include "QAVTestSupport.h"
#include "QAVWidgetInput.h"

// A panel of its own class that publishes nothing: it has no introspection
// adapter.
class ImporterTestUnpublishedPanel : public QAVSYPWidget {
  QAV_DECLARE_CLASS
 public:
  ImporterTestUnpublishedPanel() : QAVSYPWidget(nullptr, "Unpublished", QAVDlgKind::Frame) {}
};
QAV_IMPLEMENT_CLASS(ImporterTestUnpublishedPanel, QAVSYPWidget, "Tests");

namespace {

using Item = QAVRbaMaterialCatalogImporterItem;
using Panel = QAVRbaMaterialCatalogImporterPanel;

class ImporterPanelTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    _dialog = new QAVDialog("ImportDialogBox");
  }
  void TearDown() override {
    _dialog->RequestDelayedDestruction();
    Driver().Idle();
    HostTest::TearDown();
  }

  // A panel with tiles; unavailable[i] marks tile i unavailable. Each tell of
  // the panel is recorded with the selected index at that moment.
  Panel* MakePanel(const std::vector<bool>& unavailable) {
    auto* panel = new Panel(_dialog, "ImporterPanel");
    for (std::size_t i = 0; i < unavailable.size(); ++i) {
      auto* item = new Item(panel->GetItemContainer(), ("Item" + std::to_string(i)).c_str());
      item->SetUnavailable(unavailable[i] ? 1 : 0);
      panel->AddItem(item);
    }
    for (const char* event : {Panel::SELECT_ITEM(), Panel::CANCEL()}) {
      panel->GetCallbackManager()->AddCallback(
          event, [this, panel](const char* name, void*, QAVNotification*, void*, QAVCallback) {
            _told.push_back(std::string(name) + "@" + std::to_string(panel->GetSelectedIndex()));
          });
    }
    return panel;
  }
  static Item* At(const Panel* panel, int index) {
    return dynamic_cast<Item*>(panel->GetItems()->GetItem(index));
  }
  static std::vector<int> Selected(const Panel* panel) {
    std::vector<int> states;
    states.reserve(static_cast<std::size_t>(panel->GetItems()->GetCount()));
    for (int i = 0; i < panel->GetItems()->GetCount(); ++i)
      states.push_back(At(panel, i)->GetBSelect());
    return states;
  }

  QAVDialog* _dialog = nullptr;
  std::vector<std::string> _told;
};

TEST_F(ImporterPanelTest, PropertiesArePublishedByNameAndType) {
  const QAVSYPMetaClass* item = QAVSYPMetaClass::Find("QAVRbaMaterialCatalogImporterItem");
  const QAVSYPMetaClass* panel = QAVSYPMetaClass::Find("QAVRbaMaterialCatalogImporterPanel");
  ASSERT_NE(item, nullptr);
  ASSERT_NE(panel, nullptr);
  std::vector<std::string> names;
  for (const QAVSYPProperty& p : item->GetProperties())
    names.push_back(p.name);
  EXPECT_EQ(names,
            (std::vector<std::string>{"BSelect", "BHighlight", "Title", "Description", "Picture"}));
  EXPECT_EQ(panel->FindProperty("Items")->type, QAVSYPType::Collection);
  EXPECT_EQ(panel->FindProperty("DoNotShowAgainCheck")->type, QAVSYPType::Int);
  EXPECT_EQ(panel->FindProperty("Info")->type, QAVSYPType::UnicodeString);

  // The accessors and the adapter see the same values; a name the class does
  // not publish, or another type, is refused and changes nothing.
  Panel* p = MakePanel({false});
  Item* tile = At(p, 0);
  tile->SetTitle(QAVUnicodeString("Chrome"));
  const auto adapter = QAVQuery<QAVISYPIntrospectable>(tile);
  ASSERT_TRUE(adapter);
  QAVUnicodeString title;
  ASSERT_EQ(adapter->GetStringProperty("Title", title), S_OK);
  EXPECT_EQ(title.ToString().str(), "Chrome");
  EXPECT_EQ(adapter->SetIntProperty("Title", 3), E_FAIL);
  EXPECT_EQ(adapter->SetIntProperty("BSelected", 1), E_FAIL);
  ASSERT_EQ(adapter->SetIntProperty("BHighlight", 1), S_OK);
  EXPECT_EQ(tile->GetBHighlight(), 1);
  EXPECT_EQ(tile->GetTitle().ToString().str(), "Chrome");
  EXPECT_EQ(p->GetItems()->GetCount(), 1);
  EXPECT_EQ(tile->GetLayoutConstraint(), "Stack");

  // Without an adapter the internal check fails, once per access.
  auto* unpublished = new ImporterTestUnpublishedPanel;
  EXPECT_FALSE(QAVQuery<QAVISYPIntrospectable>(unpublished));
  QAVSYPSetInt(unpublished, "DoNotShowAgainCheck", 1);
  EXPECT_EQ(QAVSYPGetInt(unpublished, "DoNotShowAgainCheck"), 0);
  const auto checks = Driver().GetJournal("check");
  ASSERT_EQ(checks.size(), 2U);
  EXPECT_EQ(checks[0].detail, "Check failed: Bad Introspectable implementation!");
  unpublished->RequestDelayedDestruction();
}

TEST_F(ImporterPanelTest, SelectionAndHighlightRules) {
  Panel* panel = MakePanel({false, false, true});
  Item* a = At(panel, 0);
  Item* b = At(panel, 1);
  Item* unavailable = At(panel, 2);
  QAVDlgWidget* create = panel->FindWidget("CreateButton");
  panel->SetPanelIcon("QAVRbaImportMatCatalog.png");
  EXPECT_EQ(panel->FindWidget("PanelIcon")->GetIcon(), "QAVRbaImportMatCatalog.png");
  EXPECT_FALSE(create->GetSensitivity());
  EXPECT_EQ(panel->GetSelectedIndex(), -1);

  // Hovering a tile highlights it; the click that selects it clears that.
  EXPECT_TRUE(QAVWidgetInput::Hover(a, true));
  EXPECT_EQ(a->GetBHighlight(), 1);
  QAVWidgetInput::Click(a);
  EXPECT_EQ(a->GetBHighlight(), 0);
  EXPECT_EQ(Selected(panel), (std::vector<int>{1, 0, 0}));
  EXPECT_TRUE(create->GetSensitivity());
  QAVWidgetInput::Click(b);
  EXPECT_EQ(Selected(panel), (std::vector<int>{0, 1, 0}));
  EXPECT_EQ(panel->GetSelectedIndex(), 1);
  QAVWidgetInput::Click(b);  // the selected tile stays selected
  EXPECT_EQ(panel->GetSelectedIndex(), 1);

  // The selected tile is never highlighted; leaving clears the highlight anyway.
  QAVWidgetInput::Hover(b, true);
  EXPECT_EQ(b->GetBHighlight(), 0);
  b->SetBHighlight(1);
  QAVWidgetInput::Hover(b, false);
  EXPECT_EQ(b->GetBHighlight(), 0);

  // An unavailable tile only clears the selection; double-clicked, it tells
  // the father with nothing selected.
  QAVWidgetInput::Click(unavailable);
  EXPECT_EQ(Selected(panel), (std::vector<int>{0, 0, 0}));
  EXPECT_EQ(panel->GetSelectedIndex(), -1);
  EXPECT_FALSE(create->GetSensitivity());
  EXPECT_TRUE(_told.empty());
  QAVWidgetInput::Click(unavailable, true);
  QAVWidgetInput::Click(a, true);
  EXPECT_EQ(_told, (std::vector<std::string>{Panel::SELECT_ITEM() + std::string("@-1"),
                                             Panel::SELECT_ITEM() + std::string("@0")}));

  // Create tells the father the selection; Cancel tells it to cancel.
  _told.clear();
  EXPECT_TRUE(QAVWidgetInput::PressButton(create));
  EXPECT_TRUE(QAVWidgetInput::PressButton(panel->FindWidget("CancelButton")));
  EXPECT_EQ(_told, (std::vector<std::string>{Panel::SELECT_ITEM() + std::string("@0"),
                                             Panel::CANCEL() + std::string("@0")}));
}

TEST_F(ImporterPanelTest, DoNotShowAgainWritesTheSettingOnlyOnAChange) {
  QAVSettingRepository* settings = QAVSettingRepository::GetRepository("RenderingLiveSettings");
  Panel* panel = MakePanel({});
  QAVDlgWidget* box = panel->FindWidget("CheckDoNoSHowAgain");
  // Nothing stored: the box starts checked.
  EXPECT_EQ(panel->GetDoNotShowAgainCheck(), 1);
  EXPECT_EQ(box->GetCheckState(), 1);
  const int writes = settings->GetWriteCount();

  QAVWidgetInput::SetCheckBox(box, 1);  // its state already: nothing written
  EXPECT_EQ(settings->GetWriteCount(), writes);
  QAVWidgetInput::SetCheckBox(box, 0);
  int show = -1;
  ASSERT_EQ(settings->ReadSetting("MaterialsorlixImporterPopUp", &show), S_OK);
  EXPECT_EQ(show, 1);
  EXPECT_EQ(panel->GetDoNotShowAgainCheck(), 0);
  QAVWidgetInput::SetCheckBox(box, 1);
  ASSERT_EQ(settings->ReadSetting("MaterialsorlixImporterPopUp", &show), S_OK);
  EXPECT_EQ(show, 0);
  EXPECT_EQ(settings->GetWriteCount(), writes + 2);

  // Saved: a new session's panel starts from it.
  show = 1;
  settings->WriteSetting("MaterialsorlixImporterPopUp", &show);
  settings->SaveRepository();
  Panel* next = MakePanel({});
  EXPECT_EQ(next->GetDoNotShowAgainCheck(), 0);

  // Without the repository the box keeps its state and nothing is saved.
  QAVSettingRepository::SetAvailable("RenderingLiveSettings", false);
  const int before = settings->GetWriteCount();
  QAVWidgetInput::SetCheckBox(next->FindWidget("CheckDoNoSHowAgain"), 1);
  EXPECT_EQ(next->GetDoNotShowAgainCheck(), 0);
  EXPECT_EQ(next->FindWidget("CheckDoNoSHowAgain")->GetCheckState(), 0);
  EXPECT_EQ(settings->GetWriteCount(), before);
  QAVSettingRepository::SetAvailable("RenderingLiveSettings", true);
}

}  // namespace
