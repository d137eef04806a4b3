// The panel registry and its window rules, the propagated events and their
// listeners, the ambience updater, the viewer's background and destruction,
// the virtual navigation objects and the one-way flags.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVCallbackManager.h"
#include "QAVCommandHeader.h"
#include "QAVFillDictionary.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVRbaPanelManager.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVRbaUIEvents.h"
#include "QAVRbaUIFileDropNotification.h"
#include "QAVRdgAmbienceUpdate.h"
#include "QAVSettingRepository.h"
#include "QAVTestSupport.h"
#include "QAVVidFraPanel.h"
#include "QAVVirtualNavigation.h"
#include "QAVVizViewer.h"

namespace fs = std::filesystem;

namespace {

int selectStarts = 0;
class SelectCmd : public QAVCommand {
 public:
  SelectCmd() : QAVCommand(nullptr, "Select") {}
  int Activate(QAVCommand*, QAVNotification*) override {
    ++selectStarts;
    RequestDelayedDestruction();
    return 0;
  }
};

class PanelManagerTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    _layout = QAVMakeRef<QAVFrmLayout>();
    QAVFrmLayout::SetCurrentLayout(_layout.get());
    _w1 = QAVMakeRef<QAVFrmWindow>("w1");
    _w2 = QAVMakeRef<QAVFrmWindow>("w2");
    _layout->AddWindow(_w1.get());
    _layout->AddWindow(_w2.get());
  }
  // A floating panel, kept alive by the test (the host keeps its own reference
  // until it asks for its destruction).
  QAVVidFraPanel* Panel(const char* name) {
    auto* panel = new QAVVidFraPanel(nullptr, name);
    _panels.emplace_back(panel);
    return panel;
  }
  // The events sent through the layout's callback manager since the last call.
  std::vector<std::string> Sent() {
    std::vector<std::string> names;
    for (const QAVJournalEntry& entry : Dispatches(_layout->GetCallbackManager()))
      names.push_back(entry.name);
    Driver().ClearJournal();
    return names;
  }
  // A 3D viewer with a viz viewer, shown in the current window w1.
  QAVVizViewer* ShowViewer() {
    auto viewer = QAVMakeRef<QAV3DViewer>("3D");
    auto viz = QAVMakeRef<QAVVizViewer>("viz");
    viewer->SetVizViewer(viz.get());
    _w1->SetViewer(viewer.get());
    _layout->SetCurrentWindow(_w1.get());
    return viz.get();
  }

  QAVRef<QAVFrmLayout> _layout;
  QAVRef<QAVFrmWindow> _w1;
  QAVRef<QAVFrmWindow> _w2;
  std::vector<QAVRef<QAVVidFraPanel>> _panels;
};

TEST_F(PanelManagerTest, RegistryAndItsWindowRules) {
  QAVRbaPanelManager* manager = QAVRbaPanelManager::GetPanelManager();
  ASSERT_NE(manager, nullptr);
  EXPECT_EQ(QAVRbaPanelManager::GetPanelManager(), manager);
  QAVVidFraPanel* camera = Panel("camera");
  EXPECT_EQ(manager->AddPanel(54, camera, _w1.get()), E_FAIL);
  EXPECT_EQ(manager->AddPanel(53, camera, _w1.get()), S_OK);
  EXPECT_EQ(manager->AddPanel(5, nullptr, _w1.get()), E_FAIL);
  EXPECT_EQ(manager->AddPanel(5, camera, nullptr), E_FAIL);
  ASSERT_EQ(manager->AddPanel(5, camera, _w1.get()), S_OK);
  QAVVidFraPanel* p25 = Panel("p25");
  ASSERT_EQ(manager->AddPanel(25, p25, _w1.get()), S_OK);
  QAVVidFraPanel* ambience = Panel("ambience");
  ASSERT_EQ(manager->AddPanel(2, ambience, _w1.get()), S_OK);

  // The camera panel matches every window; the others only their own.
  EXPECT_EQ(manager->GetPanel(5, _w2.get()), camera);
  EXPECT_EQ(manager->GetPanel(25, _w2.get()), nullptr);
  EXPECT_EQ(manager->GetPanel(25, _w1.get()), p25);
  EXPECT_EQ(manager->GetPanel(54, _w1.get()), nullptr);
  EXPECT_EQ(manager->GetPanel(25, nullptr), nullptr);
  // Open anywhere once registered, except the window-bound ids.
  EXPECT_TRUE(manager->IsPanelOpen(25, _w2.get()));
  EXPECT_FALSE(manager->IsPanelOpen(2, _w2.get()));
  EXPECT_TRUE(manager->IsPanelOpen(2, _w1.get()));
  EXPECT_FALSE(manager->IsPanelOpen(5, _w2.get())) << "5 is window-bound here";
  EXPECT_FALSE(manager->IsPanelOpen(7, _w1.get()));
  EXPECT_FALSE(manager->IsPanelOpen(25, nullptr));

  // RemovePanel considers the first registration of the id only.
  QAVVidFraPanel* other25 = Panel("other25");
  ASSERT_EQ(manager->AddPanel(25, other25, _w2.get()), S_OK);
  EXPECT_EQ(manager->RemovePanel(25, _w2.get()), S_OK);
  EXPECT_EQ(manager->GetPanel(25, _w2.get()), other25) << "nothing was removed";
  EXPECT_EQ(manager->RemovePanel(25, _w1.get()), S_OK);
  EXPECT_EQ(manager->GetPanel(25, _w1.get()), nullptr);
  EXPECT_EQ(manager->RemovePanel(30, _w1.get()), E_FAIL);
  EXPECT_FALSE(other25->IsDestructionRequested()) << "removing never closes";

  // CloseAllPanels closes the first registration only.
  QAVVidFraPanel* a = Panel("a");
  QAVVidFraPanel* b = Panel("b");
  manager->AddPanel(40, a, _w2.get());
  manager->AddPanel(40, b, _w1.get());
  EXPECT_EQ(manager->CloseAllPanels(40), S_OK);
  EXPECT_TRUE(a->IsDestructionRequested());
  EXPECT_FALSE(b->IsDestructionRequested());
  EXPECT_EQ(manager->GetPanel(40, _w1.get()), b);
  EXPECT_EQ(manager->CloseAllPanels(41), E_FAIL);

  // ClosePanel finds as GetPanel does: the camera panel from any window.
  EXPECT_EQ(manager->ClosePanel(25, _w1.get()), E_FAIL);
  EXPECT_EQ(manager->ChangeVoodooWindow(_w1.get(), _w2.get()), S_OK);
  EXPECT_TRUE(manager->IsPanelOpen(5, _w2.get()));
  EXPECT_FALSE(manager->IsPanelOpen(5, _w1.get()));
  EXPECT_EQ(manager->ClosePanel(5, _w1.get()), S_OK);
  EXPECT_TRUE(camera->IsDestructionRequested());
  EXPECT_EQ(manager->GetPanel(5, _w2.get()), nullptr);
  EXPECT_EQ(Driver().Idle(), 2) << "the host destroys the two closed panels";
}

// A panel that unregisters itself when it is asked to go, as a panel may from
// its own destruction path.
class SelfRemovingPanel : public QAVVidFraPanel {
 public:
  SelfRemovingPanel(int id, QAVFrmWindow* window)
      : QAVVidFraPanel(nullptr, "self-removing"), _id(id), _window(window) {}
  void RequestDelayedDestruction() override {
    QAVRbaPanelManager::GetPanelManager()->RemovePanel(_id, _window);
    QAVVidFraPanel::RequestDelayedDestruction();
  }

 private:
  int _id;
  QAVFrmWindow* _window;
};

TEST_F(PanelManagerTest, APanelUnregisteringItselfWhileClosedLeavesTheOthers) {
  QAVRbaPanelManager* manager = QAVRbaPanelManager::GetPanelManager();
  // As Panel(): the host holds one reference until the destruction it is asked for.
  const QAVRef<SelfRemovingPanel> first(new SelfRemovingPanel(25, _w1.get()));
  QAVVidFraPanel* after = Panel("after");
  ASSERT_EQ(manager->AddPanel(25, first.get(), _w1.get()), S_OK);
  ASSERT_EQ(manager->AddPanel(26, after, _w1.get()), S_OK);
  EXPECT_EQ(manager->ClosePanel(25, _w1.get()), S_OK);
  EXPECT_TRUE(first->IsDestructionRequested());
  EXPECT_EQ(manager->GetPanel(25, _w1.get()), nullptr);
  EXPECT_EQ(manager->GetPanel(26, _w1.get()), after) << "the registration after it is kept";

  // The only registration of its id, closed by id alone.
  const QAVRef<SelfRemovingPanel> only(new SelfRemovingPanel(40, _w2.get()));
  ASSERT_EQ(manager->AddPanel(40, only.get(), _w2.get()), S_OK);
  EXPECT_EQ(manager->CloseAllPanels(40), S_OK);
  EXPECT_TRUE(only->IsDestructionRequested());
  EXPECT_FALSE(manager->IsPanelOpen(40, _w2.get()));
  EXPECT_EQ(manager->GetPanel(26, _w1.get()), after);
  EXPECT_FALSE(after->IsDestructionRequested());
  EXPECT_EQ(Driver().Idle(), 2);
}

TEST_F(PanelManagerTest, EventsGoToTheirListeners) {
  QAVRbaPanelManager* manager = QAVRbaPanelManager::GetPanelManager();
  QAVRdgAmbienceUpdate::GetCalls(true);
  EXPECT_EQ(manager->PropagateAmbienceChange(nullptr), E_FAIL);
  EXPECT_EQ(manager->PropagateAmbienceChange(_w1.get()), S_OK);
  EXPECT_TRUE(Sent().empty()) << "no ambience panel on the window";
  manager->AddPanel(2, Panel("ambience"), _w1.get());
  manager->PropagateAmbienceChange(_w2.get());
  EXPECT_TRUE(Sent().empty()) << "the ambience panel is another window's";
  for (auto propagate : {&QAVRbaPanelManager::PropagateAmbienceChange,
                         &QAVRbaPanelManager::PropagateAmbienceCreation,
                         &QAVRbaPanelManager::PropagateAmbienceDelete,
                         &QAVRbaPanelManager::PropagateAmbienceModification,
                         &QAVRbaPanelManager::PropagateAmbienceWorkbenchStacking,
                         &QAVRbaPanelManager::PropagateSceneChange})
    EXPECT_EQ((manager->*propagate)(_w1.get()), S_OK);
  EXPECT_EQ(Sent(),
            (std::vector<std::string>{
                QAVRbaUIEvents::AMBIENCE_CHANGED(), QAVRbaUIEvents::AMBIENCE_CREATED(),
                QAVRbaUIEvents::AMBIENCE_DELETED(), QAVRbaUIEvents::AMBIENCE_MODIFIED(),
                QAVRbaUIEvents::AMBIENCE_WORKBENCH_STACKED(), QAVRbaUIEvents::SCENE_CHANGED()}));

  // A camera panel on the window and a listener anywhere: the change twice.
  manager->AddPanel(5, Panel("camera"), _w1.get());
  EXPECT_EQ(manager->PropagateCameraParameterModification(5, 3, _w1.get()), S_OK);
  EXPECT_TRUE(Sent().empty());
  EXPECT_TRUE(QAVRdgAmbienceUpdate::GetCalls().empty()) << "zoom mode: the updater is not told";
  manager->AddPanel(47, Panel("listener"), _w2.get());
  manager->PropagateCameraParameterModification(1, 7, _w1.get());
  EXPECT_EQ(Sent(), (std::vector<std::string>{QAVRbaUIEvents::CAMERA_APERTURE_MODIFIED(),
                                              QAVRbaUIEvents::CAMERA_APERTURE_MODIFIED()}));
  manager->PropagateCameraParameterModification(6, 2, _w2.get());
  manager->PropagateCameraParameterModification(5, 2, _w2.get());
  EXPECT_EQ(Sent(), (std::vector<std::string>{QAVRbaUIEvents::EXPOSURE_APERTURE_MODIFIED(),
                                              QAVRbaUIEvents::CAMERA_ZOOM_MODE_MODIFIED()}));
  EXPECT_EQ(QAVRdgAmbienceUpdate::GetCalls(true),
            (std::vector<std::string>{"OnCameraChange(7)", "OnCameraChange(2)"}));
  EXPECT_EQ(QAVRdgAmbienceUpdate::GetAliveCount(), 0) << "released after each call";
  EXPECT_EQ(manager->PropagateCameraParameterModification(1, 1, nullptr), E_FAIL);

  // Live camera panels: the updater first, then the event.
  manager->PropagateVoodooEVModification(_w1.get());
  EXPECT_TRUE(Sent().empty());
  manager->AddPanel(44, Panel("voodoo"), _w2.get());
  manager->PropagateVoodooEVModification(_w1.get());
  manager->PropagateVoodooParameterModification(_w1.get());
  EXPECT_EQ(Sent(), (std::vector<std::string>{QAVRbaUIEvents::VOODOO_EV_MODIFIED(),
                                              QAVRbaUIEvents::VOODOO_MODIFIED()}));
  manager->PropagateApertureModification(nullptr);
  manager->PropagateDOF();
  EXPECT_EQ(QAVRdgAmbienceUpdate::GetCalls(true),
            (std::vector<std::string>{"OnCameraChange(1)", "OnCameraChange(1)", "OnCameraChange(1)",
                                      "OnDepthOfFieldChange()"}));
  // Without the component, the step is skipped.
  QAVRdgAmbienceUpdate::SetAvailable(false);
  EXPECT_EQ(manager->PropagateDOF(), S_OK);
  EXPECT_TRUE(QAVRdgAmbienceUpdate::GetCalls().empty());

  // A dropped file: the record, with the callback manager as data.
  EXPECT_EQ(manager->PropagateDragAndDropAction("/maps/stone.hdr", _w1.get()), S_OK);
  EXPECT_TRUE(Sent().empty()) << "no drop target";
  manager->AddPanel(14, Panel("drop"), _w2.get());
  std::string dropped;
  _layout->GetCallbackManager()->AddCallback(
      QAVRbaUIEvents::TEXTURE_DROPPED(),
      [&dropped](const char*, void*, QAVNotification* notification, void*, QAVCallback) {
        if (auto* drop = dynamic_cast<QAVRbaUIFileDropNotification*>(notification))
          dropped = drop->FilePath.str();
      });
  EXPECT_EQ(manager->PropagateDragAndDropAction("/maps/stone.hdr", nullptr), S_OK);
  manager->StartDragAndDropAction(nullptr);
  manager->PropagateDragAndDropAction("/maps/stone.hdr", _w1.get());
  const auto drops = Dispatches(_layout->GetCallbackManager());
  ASSERT_EQ(drops.size(), 2U);
  EXPECT_EQ(drops[0].name, QAVRbaUIEvents::TEXTURE_DROPPED_BEGIN());
  EXPECT_EQ(drops[1].detail, "QAVRbaUIFileDropNotification");
  EXPECT_EQ(drops[1].data, _layout->GetCallbackManager());
  EXPECT_EQ(dropped, "/maps/stone.hdr");
  Driver().ClearJournal();

  // No layout: nothing is sent, nothing else is done, and all is well.
  QAVFrmLayout::SetCurrentLayout(nullptr);
  EXPECT_EQ(manager->PropagateCameraParameterModification(1, 1, _w1.get()), S_OK);
  EXPECT_EQ(manager->PropagateAmbienceChange(_w1.get()), S_OK);
  QAVRdgAmbienceUpdate::SetAvailable(true);
  EXPECT_EQ(manager->PropagateCameraParameterModification(2, 1, _w1.get()), S_OK);
  EXPECT_TRUE(QAVRdgAmbienceUpdate::GetCalls().empty());
  EXPECT_TRUE(Driver().GetJournal("dispatch").empty());
}

TEST_F(PanelManagerTest, TheViewersBackgroundAndDestruction) {
  // A graphic path with a studio folder, so that presets resolve to a path.
  const fs::path studio = _scratch.path() / "g/AmbienceStudio/ambiences";
  fs::create_directories(studio);
  std::ofstream(studio / "Ambience_default_HQ.png") << "x";
  SetEnvAndReload("QAVGraphicPath", (_scratch.path() / "g").string() + ":" + _scratch.str());
  QAVFrmLayout::SetCurrentLayout(_layout.get());  // the reload restarted the host
  QAVFillDictionary::Register("SelectCmd", [] { return static_cast<QAVCommand*>(new SelectCmd); });
  QAVCommandHeader::Create("QAVRdgAmbienceEditorSelectCmd", "SelectCmd");
  selectStarts = 0;

  QAVVizViewer* viz = ShowViewer();
  QAVRbaPanelManager* manager = QAVRbaPanelManager::GetPanelManager();
  EXPECT_EQ(viz->GetCallbackManager()->GetCallbackCount(QAVVizViewer::VIEWER_BACKGROUND_CHANGED()),
            1);
  QAVVidFraPanel* custom[3] = {Panel("40"), Panel("41"), Panel("42")};
  for (int i = 0; i < 3; ++i)
    manager->AddPanel(40 + i, custom[i], _w1.get());

  // Without the ambience panel, only the dome image follows.
  viz->SetInfiniteEnvironmentRootName("City");
  QAVSettingRepository* live =
      QAVSettingRepository::GetRepository(QAVRbaRenderingSettings::kLiveRepository);
  QAVString dome;
  QAVRbaRenderingSettings::Read(*live, QAVRbaRenderingSettings::kLiveDomeImage, dome);
  EXPECT_EQ(dome.str(), studio.string() + "/exterior_plaza_1_4K.hdr");
  EXPECT_TRUE(custom[0]->GetVisibleFlag());
  EXPECT_EQ(selectStarts, 0);

  // With it, the custom background's panels are hidden and the editor selected.
  manager->AddPanel(2, Panel("ambience"), _w1.get());
  viz->SetInfiniteEnvironmentRootName("Studio");
  for (QAVVidFraPanel* panel : custom)
    EXPECT_FALSE(panel->GetVisibleFlag());
  EXPECT_EQ(selectStarts, 1);
  // "Custom" keeps them; an image that resolves to nothing leaves the setting.
  for (QAVVidFraPanel* panel : custom)
    panel->SetVisibleFlag(true);
  viz->SetInfiniteEnvironmentRootName("Custom");
  EXPECT_TRUE(custom[1]->GetVisibleFlag());
  EXPECT_EQ(selectStarts, 1);
  QAVRbaRenderingSettings::Read(*live, QAVRbaRenderingSettings::kLiveDomeImage, dome);
  EXPECT_EQ(dome.str(), studio.string() + "/studio_spot_1_2K.hdr");
  EXPECT_EQ(QAVSettingRepository::GetRepository(QAVRbaRenderingSettings::kLiveRepository)
                ->GetSettingTexts("DomeImage"),
            std::vector<std::string>{studio.string() + "/studio_spot_1_2K.hdr"})
      << "saved";

  // Virtual navigation objects: the entry after a removed one is passed over.
  auto nav1 = QAVMakeRef<QAVVirtualNavigation>();
  auto nav2 = QAVMakeRef<QAVVirtualNavigation>();
  auto nav3 = QAVMakeRef<QAVVirtualNavigation>();
  manager->AddVNav(nav1.get(), _w1.get());
  manager->AddVNav(nav2.get(), _w2.get());
  manager->AddVNav(nav3.get(), _w1.get());
  EXPECT_EQ(manager->GetVNav(_w2.get()), nav2.get());
  EXPECT_EQ(nav1->GetRefCount(), 2UL);
  manager->ViewUnificationInstantiate();
  manager->ViewUnificationInstantiate();

  _w1->SetViewer(nullptr);  // the viewers die
  EXPECT_EQ(nav1->GetResetCount(), 1);
  EXPECT_EQ(nav2->GetResetCount(), 0) << "passed over";
  EXPECT_EQ(nav3->GetResetCount(), 1);
  EXPECT_EQ(nav1->GetRefCount(), 1UL) << "released";
  EXPECT_EQ(manager->GetVNav(_w2.get()), nav2.get());
  EXPECT_EQ(manager->GetViewsUnificationInstantiation(), 0);
  EXPECT_EQ(manager->CloseVNav(_w1.get()), E_FAIL);
  EXPECT_EQ(manager->CloseVNav(_w2.get()), S_OK);
  EXPECT_EQ(nav2->GetResetCount(), 1);
  EXPECT_EQ(nav2->GetRefCount(), 1UL);
  EXPECT_EQ(manager->CloseVNav(_w2.get()), E_FAIL);

  // The next request observes the new viewer of the current window.
  QAVVizViewer* next = ShowViewer();
  EXPECT_EQ(QAVRbaPanelManager::GetPanelManager(), manager);
  EXPECT_EQ(next->GetCallbackManager()->GetCallbackCount(QAVVizViewer::VIEWER_DESTROYED()), 1);
}

TEST_F(PanelManagerTest, FlagsAttachmentAndAManagerMadeBeforeAnyViewer) {
  QAVRbaPanelManager* manager = QAVRbaPanelManager::GetPanelManager();
  EXPECT_FALSE(manager->HdrDropInfoPanelDisplayed());
  EXPECT_FALSE(manager->InfosPanelDisplayed());
  EXPECT_TRUE(manager->IsItCamSelectPanelFirstOpen());
  manager->SetHdrDropInfoPanelDisplayState();
  manager->SetInfosPanelDisplayState();
  manager->SetCamSelectPanelFirstOpen();
  EXPECT_TRUE(manager->HdrDropInfoPanelDisplayed());
  EXPECT_TRUE(manager->InfosPanelDisplayed());
  EXPECT_FALSE(manager->IsItCamSelectPanelFirstOpen());

  // Made before any viewer: it observes none, even once one is shown.
  QAVVizViewer* viz = ShowViewer();
  EXPECT_EQ(QAVRbaPanelManager::GetPanelManager(), manager);
  EXPECT_EQ(viz->GetCallbackManager()->GetCallbackCount(QAVVizViewer::VIEWER_DESTROYED()), 0);

  // The ambience general panel carries the panel attached to it.
  _layout->SetCurrentWindow(_w2.get());
  QAVVidFraPanel* general = Panel("general");
  QAVVidFraPanel* attached = Panel("attached");
  manager->AddPanel(28, attached, _w2.get());
  manager->AttachToAmbianceGeneralPanel();
  EXPECT_EQ(attached->GetAttachedWindow(), nullptr);
  manager->AddPanel(21, general, _w1.get());
  manager->AttachToAmbianceGeneralPanel();
  EXPECT_EQ(attached->GetAttachedWindow(), nullptr) << "the general panel is another window's";
  manager->AddPanel(21, general, _w2.get());
  manager->AttachToAmbianceGeneralPanel();
  EXPECT_EQ(attached->GetAttachedWindow(), general);
  EXPECT_EQ(attached->GetSnapArea(), 6);
  EXPECT_EQ(attached->GetAttachFlag(), 0);
}

}  // namespace
