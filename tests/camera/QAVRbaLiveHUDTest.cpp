// The live renderer's heads-up display and information box: values pushed,
// shown at once or at the next idle moment, the resize followed, the texts of
// the catalog, and the box that restarts rendering.
#include <gtest/gtest.h>

#include <string>

#include "QAV3DViewer.h"
#include "QAVApplication.h"
#include "QAVCommandHeader.h"
#include "QAVFillDictionary.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVGraphicWindow.h"
#include "QAVRbaLiveHUDDlg.h"
#include "QAVRbaLiveHUDSingleton.h"
#include "QAVRbaLiveSimpleInfoDlg.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"
#include "QAVTestSupport.h"

namespace {

class LiveHUDTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    qavtest::HostTest::SetUp();
    SetEnvAndReload("QAVHOST_RESOURCE_PATH", QAV_RESOURCES_DIR);
    _layout = QAVMakeRef<QAVFrmLayout>();
    QAVFrmLayout::SetCurrentLayout(_layout.get());
    _window = QAVMakeRef<QAVFrmWindow>("3D");
    _viewer = QAVMakeRef<QAV3DViewer>("viewer");
    _window->SetViewer(_viewer.get());
    _layout->AddWindow(_window.get());
    _layout->SetCurrentWindow(_window.get());
  }
  std::string Text(const char* widget) const {
    QAVRbaLiveHUDDlg* hud = QAVRbaLiveHUDSingleton::Get()->GiveHUDDlg();
    QAVDlgWidget* found = hud ? hud->FindWidget(widget) : nullptr;
    return found ? found->GetTitle().ToString().str() : "<none>";
  }
  bool Shown(const char* widget) const {
    return QAVRbaLiveHUDSingleton::Get()->GiveHUDDlg()->FindWidget(widget)->IsShown();
  }
  int IdleSubscriptions() const {
    return QAVApplication::MainApplication()->GetSubscriptionCount(QAVApplication::Idle);
  }
  QAVRef<QAVFrmLayout> _layout;
  QAVRef<QAVFrmWindow> _window;
  QAVRef<QAV3DViewer> _viewer;
};

TEST_F(LiveHUDTest, PushesAreShownOnceAtTheNextIdleMoment) {
  QAVRbaLiveHUDSingleton* hud = QAVRbaLiveHUDSingleton::Get();
  EXPECT_EQ(hud, QAVRbaLiveHUDSingleton::Get());
  EXPECT_STREQ(hud->GetName().c_str(), "HUDSingleton");
  // No display yet: a flush does nothing and leaves no subscription.
  hud->PushHUDInfos(QAVUnicodeString("2 GPUs"), 64, QAVUnicodeString("kept"), QAVUnicodeString("3"),
                    true);
  hud->FlushHUDInfos(true);
  EXPECT_EQ(IdleSubscriptions(), 0);
  EXPECT_EQ(hud->GiveHUDDlg(), nullptr);

  // Made: the values pushed before, the progress part hidden.
  QAVRbaLiveHUDDlg* dialog = hud->CreateHUDDlg(320, 200);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(hud->CreateHUDDlg(1, 1), dialog) << "made once";
  EXPECT_EQ(dialog->GetName().str(), "hudDialog");
  EXPECT_EQ(dialog->GetViewer(), _viewer.get());
  EXPECT_EQ(dialog->GetWidth(), 320);
  for (const char* name : {"MainLayout", "LayerHUD", "BackGroundHUD", "ProgressLayout",
                           "resolutionLabel", "ambienceLabel", "backplateLabel"})
    EXPECT_NE(dialog->FindWidget(name), nullptr) << name;
  EXPECT_EQ(Text("renderingInProgress"), "Rendering in progress...");
  EXPECT_EQ(Text("InfosRenderingFrame"), "Rendering information");
  EXPECT_EQ(Text("resourcesLabel"), "Resources: 2 GPUs");
  EXPECT_EQ(Text("nbFrameLabel"), "Frames rendered: 3");
  EXPECT_EQ(Text("nbTotalLabel"), "Total: 64");
  EXPECT_FALSE(Shown("renderingInProgress"));
  EXPECT_FALSE(Shown("nbTotalLabel"));
  EXPECT_TRUE(Shown("resolutionLabel"));

  // Two pushes and flushes before the idle moment: one subscription, the last
  // values shown, the subscription ended.
  hud->PushHUDInfos(QAVUnicodeString("CPU"), 100, QAVUnicodeString(), QAVUnicodeString("10"), true);
  hud->FlushHUDInfos(true);
  hud->PushHUDInfos(QAVUnicodeString("CPU"), 100, QAVUnicodeString(), QAVUnicodeString("11"), true);
  hud->FlushHUDInfos(true);
  EXPECT_EQ(IdleSubscriptions(), 1);
  EXPECT_EQ(Text("nbFrameLabel"), "Frames rendered: 3") << "nothing shown before idle";
  Driver().Idle();
  EXPECT_EQ(Text("nbFrameLabel"), "Frames rendered: 11");
  EXPECT_EQ(Text("nbTotalLabel"), "Total: 100");
  EXPECT_TRUE(Shown("renderingInProgress"));
  EXPECT_EQ(IdleSubscriptions(), 0);
  Driver().ClearJournal();
  Driver().Idle();
  EXPECT_TRUE(Driver().GetJournal("widget").empty()) << "shown once";

  // A flush now while one waits for idle: the wait ends, shown at once.
  hud->PushHUDInfos(QAVUnicodeString("CPU"), 100, QAVUnicodeString(), QAVUnicodeString("12"),
                    false);
  hud->FlushHUDInfos(true);
  hud->FlushHUDInfos(false);
  EXPECT_EQ(IdleSubscriptions(), 0);
  EXPECT_EQ(Text("nbFrameLabel"), "Frames rendered: 12");
  EXPECT_FALSE(Shown("renderingInProgress"));

  // The viewer resized to a fraction of a pixel: whole pixels shown.
  Driver().Resize(_viewer.get(), 1023.7F, 767.2F);
  EXPECT_EQ(Text("resolutionLabel"), "Resolution: 1023 x 767");

  // Removed: the resize is no longer followed, the display ends at idle.
  hud->RemoveHUDDlg();
  EXPECT_EQ(hud->GiveHUDDlg(), nullptr);
  EXPECT_TRUE(dialog->IsDestructionRequested());
  Driver().Resize(_viewer.get(), 640, 480);
  Driver().Idle();
  EXPECT_TRUE(QAVDialog::GetOpenDialogs().empty());
  // A new one shows the values kept, with the progress part hidden again.
  hud->CreateHUDDlg(320, 200);
  EXPECT_EQ(Text("nbFrameLabel"), "Frames rendered: 12");
  hud->RemoveHUDDlg();
}

// A live render that stops after the user closed its 3D window: the window has
// dropped its viewer, yet the display is removed cleanly and the resize is no
// longer followed.
TEST_F(LiveHUDTest, RemovedAfterTheWindowDroppedItsViewer) {
  QAVRbaLiveHUDSingleton* hud = QAVRbaLiveHUDSingleton::Get();
  ASSERT_NE(hud->CreateHUDDlg(320, 200), nullptr);
  const QAVRef<QAVCallbackManager> resizes(_viewer->GetSupport()->GetCallbackManager());
  const char* resize = QAVGraphicWindow::GRAPHICWINDOW_RESIZE();
  ASSERT_EQ(resizes->GetCallbackCount(resize), 1);
  _window->SetViewer(nullptr);
  _viewer.Reset();  // the window held the last other reference
  hud->RemoveHUDDlg();
  EXPECT_EQ(resizes->GetCallbackCount(resize), 0);
  EXPECT_EQ(hud->GiveHUDDlg(), nullptr);
  Driver().Idle();
  EXPECT_TRUE(QAVDialog::GetOpenDialogs().empty());
}

TEST_F(LiveHUDTest, AmbienceAndBackplateLines) {
  QAVRbaLiveHUDDlg* dialog = QAVRbaLiveHUDSingleton::Get()->CreateHUDDlg(320, 200);
  dialog->SetAmbienceInfos(QAVUnicodeString("/studio/ambiences/sky.hdr"));
  EXPECT_EQ(Text("ambienceLabel"), "Ambience: sky") << "the file's name, without its folder";
  dialog->SetAmbienceInfos(QAVUnicodeString("C:\\studio\\dusk.v2.hdr"));
  EXPECT_EQ(Text("ambienceLabel"), "Ambience: dusk.v2");
  dialog->SetAmbienceInfos(QAVUnicodeString());
  EXPECT_EQ(Text("ambienceLabel"), "Ambience: ");
  // The ambience editor's temporary file shows the current ambience instead;
  // a name that begins with the marker is shown as it is.
  namespace Schema = QAVRbaRenderingSettings;
  QAVSettingRepository* live = Schema::Open(Schema::kLiveCurrentAmbience);
  ASSERT_NE(live, nullptr);
  ASSERT_EQ(Schema::Write(*live, Schema::kLiveCurrentAmbience, QAVUnicodeString("Evening studio")),
            S_OK);
  dialog->SetAmbienceInfos(QAVUnicodeString("/tmp/xAmbienceEditorTmp3.hdr"));
  EXPECT_EQ(Text("ambienceLabel"), "Ambience: Evening studio");
  dialog->SetAmbienceInfos(QAVUnicodeString("AmbienceEditorTmp3.hdr"));
  EXPECT_EQ(Text("ambienceLabel"), "Ambience: AmbienceEditorTmp3");

  dialog->SetBackplateInfos(QAVUnicodeString("plates/road.png"));
  EXPECT_EQ(Text("backplateLabel"), "Backplate: road");
  EXPECT_TRUE(Shown("backplateLabel"));
  dialog->SetBackplateInfos(QAVUnicodeString());
  EXPECT_FALSE(Shown("backplateLabel"));
  EXPECT_EQ(Text("backplateLabel"), "Backplate: road") << "hidden, not cleared";
  dialog->SetResolution(1920, 1080);
  EXPECT_EQ(Text("resolutionLabel"), "Resolution: 1920 x 1080");
  QAVRbaLiveHUDSingleton::Get()->RemoveHUDDlg();
}

// The renderer's pause command, counted.
int pauseStarts = 0;
class PauseCommand : public QAVCommand {
 public:
  PauseCommand() : QAVCommand(nullptr, "PauseRender") {}
  int Activate(QAVCommand*, QAVNotification*) override {
    ++pauseStarts;
    RequestDelayedDestruction();
    return 1;
  }
};

TEST_F(LiveHUDTest, TheInformationBoxRestartsRenderingOnce) {
  QAVRbaLiveHUDSingleton* hud = QAVRbaLiveHUDSingleton::Get();
  QAVUnicodeString text1("Rendering paused");
  QAVUnicodeString text2("Press to go on");
  QAVRbaLiveSimpleInfoDlg* info = hud->CreateInfoDlg(text1, text2, 3, 4, 0.5F);
  ASSERT_NE(info, nullptr);
  EXPECT_EQ(hud->CreateInfoDlg(text1, text2, 0, 0, 0), info) << "made once";
  EXPECT_STREQ(info->GetName().c_str(), "infoDialog");
  EXPECT_TRUE(info->IsActive());
  QAVDialog* box = info->GetDialogBox();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->GetTitle().ToString().str(), "Rendering paused");
  QAVDlgWidget* text = box->FindWidget("infoText");
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->GetTitle().ToString().str(), "Rendering paused\nPress to go on");
  EXPECT_EQ(text->GetIcon().str(), "QAVRdgLivePause.png");
  EXPECT_EQ(info->GetSecondValue(), 4);

  // The header of the pause command, its factory under the command's class.
  QAVCommandHeader::Create("PauseRender", "QAVTestPauseCommand");
  QAVFillDictionary::Register("QAVTestPauseCommand",
                              []() -> QAVCommand* { return new PauseCommand; });
  pauseStarts = 0;
  QAVCommand* restart = info->GetRestartCommand();
  ASSERT_NE(restart, nullptr);
  restart->Activate(nullptr, nullptr);  // the user presses the button
  EXPECT_EQ(pauseStarts, 1);
  EXPECT_FALSE(info->IsActive());
  EXPECT_EQ(info->GetDialogBox(), nullptr);
  EXPECT_FALSE(box->GetVisibility());
  EXPECT_FALSE(info->IsDestructionRequested()) << "the box itself stays";
  QAVRbaLiveSimpleInfoDlg::RestartCB(info, nullptr, nullptr);
  EXPECT_EQ(pauseStarts, 1) << "an inactive box restarts nothing";
  Driver().Idle();

  hud->RemoveInfoDlg();
  EXPECT_EQ(hud->GiveInfoDlg(), nullptr);
  Driver().Idle();
  EXPECT_EQ(Driver().FindCommand("infoDialog"), nullptr);
  // A new box after the removal; destroyed whole, children first.
  info = hud->CreateInfoDlg(text1, text2, 0, 0, 0);
  ASSERT_NE(info, nullptr);
  info->RequestDelayedDestruction();
  EXPECT_EQ(info->GetDialogBox(), nullptr);
  EXPECT_EQ(info->GetRestartCommand(), nullptr);
  Driver().Idle();
  EXPECT_EQ(Driver().FindCommand("restartButton"), nullptr);
  EXPECT_TRUE(QAVDialog::GetOpenDialogs().empty());
}

}  // namespace
