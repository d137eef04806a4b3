// The context bar's commands: their factories, the common shape (begin and end
// events around the model call and the manager call), the asymmetric type
// pairs, the crop-mode toggle pair, fit to texture that does nothing, the
// position panel opened once, and a bar button pressed end to end.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QAVCommandHeader.h"
#include "QAVFillDictionary.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVIAfrCtxBarManager.h"
#include "QAVMappingRecorder.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRbaEditMatrixDlg.h"
#include "QAVRbaPanelManager.h"
#include "QAVRbaUIEvents.h"
#include "QAVRef.h"
#include "QAVTestSupport.h"

namespace {

using MT = QAVIRbaMappingObservable;

const char* const kCommands[] = {"QAVRbaContextBarMappingTypePlanarCmd",
                                 "QAVRbaContextBarMappingTypeSphericalCmd",
                                 "QAVRbaContextBarMappingTypeFiniteCylindricalCmd",
                                 "QAVRbaContextBarMappingTypeInfiniteCylindricalCmd",
                                 "QAVRbaContextBarMappingTypeCubicalCmd",
                                 "QAVRbaContextBarMappingTypeUVCmd",
                                 "QAVRbaContextBarFitToSupportScaleCmd",
                                 "QAVRbaContextBarFitToTextureScaleCmd",
                                 "QAVRbaContextBarMaterialSnapperCmd",
                                 "QAVRbaContextBarAlignWithCameraViewCmd",
                                 "QAVRbaContextBarEnableCropModeCmd",
                                 "QAVRbaContextBarDisableCropModeCmd",
                                 "QAVRbaContextBarDisplayManipRepCmd",
                                 "QAVRbaContextBarDisplayDrawingZoneManipCmd",
                                 "QAVRbaContextBarEditMatrixPositionCmd"};

class ContextBarCmdTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    _layout = QAVMakeRef<QAVFrmLayout>();
    QAVFrmLayout::SetCurrentLayout(_layout.get());
    _window = QAVMakeRef<QAVFrmWindow>("w1");
    _layout->SetCurrentWindow(_window.get());
  }
  // Runs a command as its button would; true when it asked for its end.
  static bool Run(const char* name) {
    QAVCommand* command = QAVFillDictionary::CreateCommand(name);
    EXPECT_NE(command, nullptr) << name;
    if (!command) return false;
    EXPECT_EQ(command->Activate(nullptr, nullptr), 0);
    return command->IsDestructionRequested();
  }
  // The context bar events sent since the last call, with their data.
  std::vector<std::pair<std::string, void*>> Events() {
    std::vector<std::pair<std::string, void*>> events;
    for (const QAVJournalEntry& e : Dispatches(_layout->GetCallbackManager()))
      events.emplace_back(e.name, e.data);
    Driver().ClearJournal();
    return events;
  }
  static QAVRbaContextBarManager& Manager() {
    return *QAVRbaContextBarManager::GetContextBarManager();
  }

  QAVRef<QAVFrmLayout> _layout;
  QAVRef<QAVFrmWindow> _window;
};

TEST_F(ContextBarCmdTest, FactoriesAreRegisteredUnderTheClassNames) {
  for (const char* name : kCommands) {
    ASSERT_NE(QAVFillDictionary::Find(name), nullptr) << name;
    QAVCommand* command = QAVFillDictionary::CreateCommand(name);
    ASSERT_NE(command, nullptr) << name;
    EXPECT_STREQ(command->IsA(), name);
    EXPECT_EQ(command->GetName(), name);
    EXPECT_EQ(command->GetMode(), 1);
    command->RequestDelayedDestruction();
  }
  EXPECT_EQ(Driver().Idle(), 15);
}

TEST_F(ContextBarCmdTest, EachCommandBracketsItsCallsWithTheBeginAndEndEvents) {
  auto object = QAVMakeRef<QAVMappingRecorder>();
  Manager().SetRelatedObject(object.get());
  object->Take();
  const std::string begin = QAVRbaUIEvents::CONTEXT_BAR_BEGIN_ACTION();
  const std::string end = QAVRbaUIEvents::CONTEXT_BAR_END_ACTION();
  struct Case {
    const char* command;
    std::vector<std::string> calls;
    int storedType;  // -2: the manager's type is not touched
  };
  const std::vector<Case> cases = {
      {"QAVRbaContextBarMappingTypePlanarCmd",
       {"UpdateMappingType 0", "SetMappingType 0", "UpdateAllObserversMappingType"},
       MT::Planar},
      {"QAVRbaContextBarMappingTypeSphericalCmd",
       {"UpdateMappingType 1", "SetMappingType 1", "UpdateAllObserversMappingType"},
       1},
      {"QAVRbaContextBarMappingTypeFiniteCylindricalCmd",
       {"UpdateMappingType 2", "SetMappingType 2", "UpdateAllObserversMappingType"},
       2},
      {"QAVRbaContextBarMappingTypeInfiniteCylindricalCmd",
       {"UpdateMappingType 3", "SetMappingType 8", "UpdateAllObserversMappingType"},
       8},
      {"QAVRbaContextBarMappingTypeCubicalCmd",
       {"UpdateMappingType 4", "SetMappingType 3", "UpdateAllObserversMappingType"},
       3},
      {"QAVRbaContextBarMappingTypeUVCmd",
       {"UpdateMappingType 5", "SetMappingType 6", "UpdateAllObserversMappingType"},
       6},
      {"QAVRbaContextBarFitToSupportScaleCmd",
       {"RescaleToRelatedObjectSize false", "UpdateAllObserversOtherMappingAttributes"},
       -2},
      {"QAVRbaContextBarMaterialSnapperCmd",
       {"ReSnapToApplicationCenterpoint", "UpdateAllObserversPosAndOrientation"},
       -2},
      {"QAVRbaContextBarAlignWithCameraViewCmd", {"AlignWithCameraView"}, -2},
      {"QAVRbaContextBarDisplayManipRepCmd", {"DisplayManipulatorRep 0"}, -2},
      {"QAVRbaContextBarDisplayDrawingZoneManipCmd", {"DisplayDrawingZoneManipulator 0"}, -2},
  };
  Events();
  for (const Case& c : cases) {
    Manager().SetCurrentMappingType(7);  // plain store, no call
    EXPECT_TRUE(Run(c.command)) << c.command;
    EXPECT_EQ(object->Take(), c.calls) << c.command;
    EXPECT_EQ(Events(), (std::vector<std::pair<std::string, void*>>{{begin, object.get()},
                                                                    {end, object.get()}}))
        << c.command;
    EXPECT_EQ(static_cast<int>(Manager().GetCurrentMappingType()),
              c.storedType == -2 ? 0 : c.storedType)
        << c.command;
  }

  // The two crop-mode buttons are one toggle.
  EXPECT_TRUE(Run("QAVRbaContextBarEnableCropModeCmd"));
  EXPECT_TRUE(object->cropMode);
  EXPECT_TRUE(Run("QAVRbaContextBarEnableCropModeCmd"));
  EXPECT_FALSE(object->cropMode);
  EXPECT_TRUE(Run("QAVRbaContextBarDisableCropModeCmd"));
  EXPECT_TRUE(object->cropMode);
  EXPECT_EQ(object->Take(), std::vector<std::string>(3, "ToggleDecalUVCropMode"));
  Events();

  // Fit to texture does nothing but end.
  EXPECT_TRUE(Run("QAVRbaContextBarFitToTextureScaleCmd"));
  EXPECT_TRUE(object->Take().empty());
  EXPECT_TRUE(Events().empty());

  // An object without the interface: no model call, the rest happens.
  auto plain = QAVMakeRef<QAVMappingRecorder>(true, false);
  Manager().SetRelatedObject(plain.get());
  plain->Take();
  EXPECT_TRUE(Run("QAVRbaContextBarMappingTypeCubicalCmd"));
  EXPECT_EQ(plain->Take(),
            (std::vector<std::string>{"SetMappingType 3", "UpdateAllObserversMappingType"}));
  EXPECT_EQ(Events().size(), 2u);
}

TEST_F(ContextBarCmdTest, WithoutAnObjectOrALayoutTheRestStillHappens) {
  // No object: both events (with null data) and the manager's type.
  Events();
  EXPECT_TRUE(Run("QAVRbaContextBarMappingTypeInfiniteCylindricalCmd"));
  EXPECT_EQ(Manager().GetCurrentMappingType(), MT::InfiniteCylindrical);
  const auto events = Events();
  ASSERT_EQ(events.size(), 2u);
  EXPECT_EQ(events[0].second, nullptr);
  // No layout: no event, the command still works and ends.
  QAVFrmLayout::SetCurrentLayout(nullptr);
  EXPECT_TRUE(Run("QAVRbaContextBarMappingTypeUVCmd"));
  EXPECT_EQ(Manager().GetCurrentMappingType(), MT::UV);
  EXPECT_TRUE(Dispatches().empty());
  // No window: the position command only ends.
  EXPECT_TRUE(Run("QAVRbaContextBarEditMatrixPositionCmd"));
  EXPECT_EQ(QAVRbaPanelManager::GetPanelManager()->GetPanel(25, _window.get()), nullptr);
}

TEST_F(ContextBarCmdTest, PositionPanelOpensOncePerWindowAndFollowsTheMapping) {
  auto object = QAVMakeRef<QAVMappingRecorder>();
  Manager().SetRelatedObject(object.get());
  Events();
  EXPECT_TRUE(Run("QAVRbaContextBarEditMatrixPositionCmd"));
  EXPECT_EQ(Events(), (std::vector<std::pair<std::string, void*>>{
                          {QAVRbaUIEvents::CONTEXT_BAR_END_ACTION(), object.get()}}))
      << "the end event only";
  auto* panel = dynamic_cast<QAVRbaEditMatrixDlg*>(
      QAVRbaPanelManager::GetPanelManager()->GetPanel(25, _window.get()));
  ASSERT_NE(panel, nullptr);
  EXPECT_EQ(panel->GetName(), "AbsoluteMatrixEditionPanel");
  EXPECT_EQ(panel->GetUpdater(), object->GetUpdater());
  EXPECT_EQ(object->observers.size(), 2u) << "the manager and the panel";

  // The panel shows the placement and follows its changes.
  QAVMathTransformation moved;
  moved.translation = {10, 20, 30};
  object->GetUpdater()->SetIsometryMatrix(moved);
  const int refreshes = panel->GetRefreshCount();
  Manager().makeUpdateAllObserversPosAndOrientation();
  EXPECT_EQ(panel->GetRefreshCount(), refreshes + 1);
  EXPECT_EQ(panel->FindWidget("originValue")->GetTitle(), "Origin: 10, 20, 30");
  QAVRef<QAVIRbaMappingObserver> observer = QAVQuery<QAVIRbaMappingObserver>(panel);
  ASSERT_TRUE(observer);
  EXPECT_EQ(observer->AlignWithCameraView(), E_FAIL);
  observer.Reset();

  // Open already: nothing opened, no event.
  EXPECT_TRUE(Run("QAVRbaContextBarEditMatrixPositionCmd"));
  EXPECT_TRUE(Events().empty());
  EXPECT_EQ(object->observers.size(), 2u);

  // Closed, the panel stops observing.
  QAVRbaPanelManager::GetPanelManager()->ClosePanel(25, _window.get());
  Driver().Idle();
  EXPECT_EQ(object->observers.size(), 1u);

  // An object without an updater: no panel, the end event still goes.
  auto plain = QAVMakeRef<QAVMappingRecorder>(true, false);
  Manager().SetRelatedObject(plain.get());
  Events();
  EXPECT_TRUE(Run("QAVRbaContextBarEditMatrixPositionCmd"));
  EXPECT_FALSE(QAVRbaPanelManager::GetPanelManager()->IsPanelOpen(25, _window.get()));
  EXPECT_EQ(Events().size(), 1u);
}

TEST_F(ContextBarCmdTest, PressingABarButtonRunsItsCommandAndRefillsTheBar) {
  std::string error;
  ASSERT_EQ(
      Driver().LoadCommandHeaders(QAV_RESOURCES_DIR "/headers/RenderingContextBars.headers", error),
      15)
      << error;
  auto object = QAVMakeRef<QAVMappingRecorder>();
  object->type = MT::Planar;
  Manager().SetRelatedObject(object.get());
  Manager().InitContextualBar("QAVRbaUIContextBarStickerComponent");
  auto bars = QAVRef<QAVIAfrCtxBarManager>::Adopt(GetAfrCtxBarManager());
  QAVAfrCtxBarFrame* frame = bars->FindFrame(QAVString("QAVRbaUIContextBarStickerComponent"));
  ASSERT_NE(frame, nullptr);
  EXPECT_EQ(frame->GetFillCount(), 1);
  auto firstOfContainer = [&] {
    return frame->FindRow(QAVString("AfrContextBarRow1"))
        ->GetComponent(4)
        ->GetComponent(0)
        ->GetComponentName()
        .str();
  };
  EXPECT_EQ(firstOfContainer(), "QAVRbaContextBarTypePlanarHdr");

  // A button inside the mapping container: the command runs, the observable
  // tells the manager, which refreshes the bar: cubical now shows first.
  QAVCommand* started = nullptr;
  ASSERT_EQ(Driver().PressContextBarButton("QAVRbaContextBarTypeCubicalHdr", started, error), S_OK)
      << error;
  ASSERT_NE(started, nullptr);
  EXPECT_STREQ(started->IsA(), "QAVRbaContextBarMappingTypeCubicalCmd");
  EXPECT_EQ(object->type, MT::Cubical);
  EXPECT_EQ(frame->GetFillCount(), 2);
  EXPECT_EQ(firstOfContainer(), "QAVRbaContextBarTypeCubicalHdr");

  // UV: the align button leaves the sticker bar.
  ASSERT_EQ(Driver().PressContextBarButton("QAVRbaContextBarTypeUVHdr", started, error), S_OK);
  EXPECT_EQ(
      Driver().PressContextBarButton("QAVRbaContextBarAlignWithCameraViewHdr", started, error),
      E_FAIL);
  EXPECT_NE(error.find("no context bar shown has a button"), std::string::npos) << error;
  // A button that is on no bar, a header that does not exist.
  EXPECT_EQ(Driver().PressContextBarButton("QAVRbaContextBarFitToTextureScaleHdr", started, error),
            E_FAIL);
  EXPECT_EQ(Driver().PressContextBarButton("NoSuchHdr", started, error), E_FAIL);

  Manager().DestroyContextualBar("QAVRbaUIContextBarStickerComponent");
  EXPECT_TRUE(bars->GetFrames().empty());
  Driver().Idle();
}

TEST_F(ContextBarCmdTest, HeaderFilesAreCheckedWhole) {
  std::string error;
  const auto bad = _scratch.Write("bad.headers", "# fine\nAHdr = ACmd\nBHdr =\n");
  EXPECT_EQ(Driver().LoadCommandHeaders(bad.string(), error), -1);
  EXPECT_NE(error.find("bad.headers:3"), std::string::npos) << error;
  EXPECT_EQ(QAVCommandHeader::GetHeaderFromList("AHdr"), nullptr) << "nothing created";
  EXPECT_EQ(Driver().LoadCommandHeaders((_scratch.path() / "missing").string(), error), -1);
  const auto clash = _scratch.Write("clash.headers", "AHdr = ACmd\n");
  EXPECT_EQ(Driver().LoadCommandHeaders(clash.string(), error), 1);
  EXPECT_EQ(Driver().LoadCommandHeaders(clash.string(), error), 1) << "the same again is fine";
  const auto other = _scratch.Write("other.headers", "AHdr = OtherCmd\n");
  EXPECT_EQ(Driver().LoadCommandHeaders(other.string(), error), -1);
  EXPECT_NE(error.find("already starts ACmd"), std::string::npos) << error;
}

}  // namespace
