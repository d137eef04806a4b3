// The placement commands' rulers: made hidden, fed with the drag geometry
// (directions normalised), the values typed by the user read back (the angle
// also written into the length ruler), hidden with the angle ruler's global
// visibility lost for good, re-made and destroyed by delayed destruction, and
// drawn in the view of the current window only while visible.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVCallbackManager.h"
#include "QAVCommand.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVRbaRulerManager.h"
#include "QAVRulerDecoratedAngleEditor.h"
#include "QAVRulerDecoratedLengthEditor.h"
#include "QAVTestScenes.h"
#include "QAVTestSupport.h"
#include "QAVViewRenderer.h"

namespace {

class RulerManagerTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    qavtest::HostTest::SetUp();
    _layout = QAVMakeRef<QAVFrmLayout>();
    QAVFrmLayout::SetCurrentLayout(_layout.get());
    _window = QAVMakeRef<QAVFrmWindow>("3D");
    _viewer = QAVMakeRef<QAV3DViewer>("viewer");
    _window->SetViewer(_viewer.get());
    _layout->SetCurrentWindow(_window.get());
    Driver().Resize(_viewer.get(), 240, 180);
    // 300 mm away with a 60 degree field: about 2.4 mm a pixel.
    _viewer->GetMain3DViewpoint()->Set({0, 0, 300}, {0, 0, 0}, {0, 1, 0}, 60);
    _root = QAVMakeRef<QAV3DBagRep>();
    _part = qavtest::Moved(qavtest::Square(40, "QAVPart").get(), 0, -60, -20, nullptr);
    _root->AddChild(_part.get());
    _viewer->SetSceneRoot(_root.get());
    _father = new QAVCommand(nullptr, "placement");
  }
  void TearDown() override {
    _father->RequestDelayedDestruction();
    qavtest::HostTest::TearDown();
  }

  static QAVRulerDecoratedLengthEditor* Length(QAVRbaRulerManager& manager) {
    return dynamic_cast<QAVRulerDecoratedLengthEditor*>(manager.GetTranslationRulerCommand());
  }
  static QAVRulerDecoratedAngleEditor* Angle(QAVRbaRulerManager& manager) {
    return dynamic_cast<QAVRulerDecoratedAngleEditor*>(manager.GetRotationRulerCommand());
  }
  QAVRef<QAVPixelImage> Render() const {
    QAVRef<QAVPixelImage> image;
    EXPECT_EQ(QAVViewRenderer::Render(_viewer.get(), image), S_OK);
    return image;
  }
  // Pixels of `image` that differ from `other`, within `radius` of the point
  // of the scene (or anywhere, for a negative radius).
  int Changed(const QAVPixelImage& image, const QAVPixelImage& other, const QAVMathPoint& near,
              double radius) const {
    double cx = 0;
    double cy = 0;
    if (radius >= 0) {
      EXPECT_TRUE(_viewer->Project(near, cx, cy));
    }
    const auto* a = static_cast<const std::uint8_t*>(image.GetPixels());
    const auto* b = static_cast<const std::uint8_t*>(other.GetPixels());
    int changed = 0;
    for (int y = 0; y < image.GetHeight(); ++y)
      for (int x = 0; x < image.GetWidth(); ++x) {
        if (radius >= 0 && std::hypot(x + 0.5 - cx, y + 0.5 - cy) > radius) continue;
        const std::size_t i = 3 * (static_cast<std::size_t>(y) * image.GetWidth() + x);
        if (a[i] != b[i] || a[i + 1] != b[i + 1] || a[i + 2] != b[i + 2]) ++changed;
      }
    return changed;
  }

  QAVRef<QAVFrmLayout> _layout;
  QAVRef<QAVFrmWindow> _window;
  QAVRef<QAV3DViewer> _viewer;
  QAVRef<QAV3DBagRep> _root;
  QAVRef<QAV3DBagRep> _part;
  QAVCommand* _father = nullptr;
};

TEST_F(RulerManagerTest, RulersAreMadeHiddenAndTheDirectionIsNormalised) {
  QAVRbaRulerManager manager;
  // Nothing yet: every operation tolerates the missing rulers.
  manager.refreshTranslationRuler({0, 0, 0}, {1, 0, 0}, {1, 0, 0});
  QAVMathPlane noPlane;
  manager.refreshRotationRuler(noPlane, 10);
  manager.HideRulers();
  EXPECT_EQ(manager.getTranslationRulerEditorValue(), 0.0);
  EXPECT_EQ(manager.getRotationRulerEditorAngle(), 0.0);
  EXPECT_EQ(manager.GetTranslationRulerEditionNotification(), nullptr);

  manager.InitRulers(_father);
  QAVRulerDecoratedLengthEditor* ruler = Length(manager);
  QAVRulerDecoratedAngleEditor* angle = Angle(manager);
  auto* second = dynamic_cast<QAVRulerDecoratedLengthEditor*>(Driver().FindCommand("myRulerBis"));
  ASSERT_NE(ruler, nullptr);
  ASSERT_NE(angle, nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_STREQ(ruler->GetName().c_str(), "myRuler");
  EXPECT_STREQ(angle->GetName().c_str(), "myRulerAngle");
  for (QAVRulerDecoratedLengthEditor* length : {ruler, second}) {
    EXPECT_EQ(length->GetFather(), _father);
    EXPECT_FALSE(length->IsRulerManipModeAllowed());
    EXPECT_EQ(length->GetRulerOffsetInMM(), 34.7);
    EXPECT_EQ(length->GetScale(), 1);
    EXPECT_TRUE(length->IsBuilt());
    EXPECT_FALSE(length->GetGlobalVisibility());
    EXPECT_FALSE(length->IsShown());
  }
  EXPECT_EQ(angle->GetFather(), _father);
  EXPECT_EQ(angle->GetScale(), 1);
  EXPECT_EQ(angle->GetFreeRadius(), 37.0);
  EXPECT_TRUE(angle->IsBuilt());
  EXPECT_FALSE(angle->GetDecoratorVisibility());
  EXPECT_TRUE(angle->GetGlobalVisibility()) << "only its decorator is hidden";
  EXPECT_EQ(_viewer->GetDecorationCount(), 0);

  struct Case {
    QAVMathVector given;
    QAVMathVector shown;
  };
  const std::vector<Case> cases = {
      {{0, 0, 0}, {1, 0, 0}},          // none: along x
      {{0, 0, 2}, {0, 0, 1}},          // divided by its norm
      {{-3, 0, 4}, {-0.6, 0, 0.8}},    // any length
      {{0, -1, 0}, {0, -1, 0}},        // a unit direction is kept
      {{1e-200, 0, 0}, {1, 0, 0}},     // its squared norm is exactly 0: along x
      {{0, 1e-150, 0}, {0, 1, 0}},     // a squared norm that is tiny but not 0
      {{1e200, 1e200, 0}, {0, 0, 0}},  // a squared norm beyond the doubles: not a direction
  };
  for (const Case& c : cases) {
    const QAVMathPoint start(1, 2, 3);
    const QAVMathPoint end(4, 6, 3);
    manager.refreshTranslationRuler(start, end, c.given);
    EXPECT_TRUE(ruler->IsShown());
    EXPECT_EQ(ruler->GetDecoratorPoint(), start);
    EXPECT_EQ(ruler->GetDecoratorLength(), 5.0) << "the start-end distance, not the direction's";
    const QAVMathVector d = ruler->GetDecoratorDirection();
    EXPECT_DOUBLE_EQ(d.x, c.shown.x) << c.given.x << " " << c.given.y << " " << c.given.z;
    EXPECT_DOUBLE_EQ(d.y, c.shown.y) << c.given.x << " " << c.given.y << " " << c.given.z;
    EXPECT_DOUBLE_EQ(d.z, c.shown.z) << c.given.x << " " << c.given.y << " " << c.given.z;
  }
  EXPECT_FALSE(second->IsShown()) << "the second ruler is never fed";
  EXPECT_EQ(_viewer->GetDecorationCount(), 1);
  manager.DestroyRulers();
}

TEST_F(RulerManagerTest, TheAngleReadIsWrittenIntoTheLengthRuler) {
  QAVRbaRulerManager manager;
  manager.InitRulers(_father);
  QAVRulerDecoratedLengthEditor* ruler = Length(manager);
  QAVRulerDecoratedAngleEditor* angle = Angle(manager);
  manager.refreshTranslationRuler({0, 0, 0}, {0, 20, 0}, {0, 1, 0});
  EXPECT_EQ(manager.getTranslationRulerEditorValue(), 20.0) << "the length shown";

  QAVMathPlane plane({5, 5, 5}, {0, 1, 0}, {0, 0, 1});
  const int refreshes = angle->GetRefreshCount();
  manager.refreshRotationRuler(plane, 12.5);
  EXPECT_TRUE(angle->GetDecoratorVisibility());
  EXPECT_TRUE(angle->IsShown());
  EXPECT_EQ(angle->GetDecoratorPlane(), plane);
  EXPECT_EQ(angle->GetValue(), 12.5);
  EXPECT_EQ(angle->GetRefreshCount(), refreshes + 1);

  // The user types 30 into the angle ruler: reading it leaves 30 in both.
  Driver().TypeRulerValue(angle, 30);
  const int lengthRefreshes = ruler->GetRefreshCount();
  EXPECT_EQ(manager.getRotationRulerEditorAngle(), 30.0);
  EXPECT_EQ(angle->GetValue(), 30.0);
  EXPECT_EQ(ruler->GetValue(), 30.0) << "stamped into the translation ruler";
  EXPECT_EQ(ruler->GetRefreshCount(), lengthRefreshes + 1);
  EXPECT_EQ(manager.getTranslationRulerEditorValue(), 30.0);
  EXPECT_EQ(ruler->GetRefreshCount(), lengthRefreshes + 2) << "the value read is written back";

  // A length typed is read as it is and stays until the angle is read again.
  Driver().TypeRulerValue(ruler, -42.25);
  EXPECT_EQ(manager.getTranslationRulerEditorValue(), -42.25);
  EXPECT_EQ(ruler->GetValue(), -42.25);
  EXPECT_EQ(manager.getRotationRulerEditorAngle(), 30.0);
  EXPECT_EQ(ruler->GetValue(), 30.0);
  manager.DestroyRulers();
}

TEST_F(RulerManagerTest, HiddenAngleRulerStaysHiddenAfterARefresh) {
  QAVRbaRulerManager manager;
  manager.InitRulers(_father);
  QAVRulerDecoratedLengthEditor* ruler = Length(manager);
  QAVRulerDecoratedAngleEditor* angle = Angle(manager);
  QAVMathPlane plane;
  manager.refreshTranslationRuler({0, 0, 0}, {10, 0, 0}, {1, 0, 0});
  manager.refreshRotationRuler(plane, 45);
  EXPECT_TRUE(ruler->IsShown());
  EXPECT_TRUE(angle->IsShown());
  EXPECT_EQ(_viewer->GetDecorationCount(), 2);

  manager.HideRulers();
  EXPECT_FALSE(ruler->GetGlobalVisibility());
  EXPECT_FALSE(angle->GetGlobalVisibility());
  EXPECT_FALSE(dynamic_cast<QAVRulerDecoratedEditor*>(Driver().FindCommand("myRulerBis"))
                   ->GetGlobalVisibility());
  EXPECT_EQ(_viewer->GetDecorationCount(), 0);

  // The next manipulation: the length ruler comes back, the angle ruler does
  // not (its decorator is visible, its global visibility still off).
  manager.refreshTranslationRuler({0, 0, 0}, {10, 0, 0}, {1, 0, 0});
  manager.refreshRotationRuler(plane, 50);
  EXPECT_TRUE(ruler->IsShown());
  EXPECT_TRUE(angle->GetDecoratorVisibility());
  EXPECT_FALSE(angle->GetGlobalVisibility());
  EXPECT_FALSE(angle->IsShown());
  EXPECT_EQ(angle->GetValue(), 50.0) << "fed all the same";
  ASSERT_EQ(_viewer->GetDecorationCount(), 1);
  EXPECT_EQ(_viewer->GetDecoration(0), ruler->GetDecoration());
  manager.DestroyRulers();
}

TEST_F(RulerManagerTest, InitTwiceLeavesThreeRulersAndDestroyEndsThem) {
  const int before = Driver().GetCommandCount();
  {
    QAVRbaRulerManager manager;
    manager.InitRulers(_father);
    manager.refreshTranslationRuler({0, 0, 0}, {10, 0, 0}, {1, 0, 0});
    QAVCommand* oldRuler = manager.GetTranslationRulerCommand();
    QAVCommand* oldAngle = manager.GetRotationRulerCommand();
    EXPECT_EQ(_viewer->GetDecorationCount(), 1);

    manager.InitRulers(_father);
    EXPECT_NE(manager.GetTranslationRulerCommand(), oldRuler);
    EXPECT_NE(manager.GetRotationRulerCommand(), oldAngle);
    EXPECT_TRUE(oldRuler->IsDestructionRequested());
    EXPECT_EQ(Driver().GetPendingDestructionCount(), 3);
    EXPECT_EQ(Driver().GetCommandCount(), before + 6);
    // Still drawn until the event is over.
    EXPECT_EQ(_viewer->GetDecorationCount(), 1);
    Driver().ClearJournal();
    Driver().Idle();
    EXPECT_EQ(Driver().GetCommandCount(), before + 3);
    EXPECT_EQ(Driver().GetJournal("command-destroyed").size(), 3U);
    EXPECT_EQ(_viewer->GetDecorationCount(), 0) << "the old ruler left the view";
    EXPECT_EQ(Driver().FindCommand("myRuler"), manager.GetTranslationRulerCommand());

    // Copies share the rulers; a manager that dies only forgets them.
    QAVRbaRulerManager copy(manager);
    EXPECT_EQ(copy.GetTranslationRulerCommand(), manager.GetTranslationRulerCommand());
    EXPECT_EQ(copy.GetRotationRulerCommand(), manager.GetRotationRulerCommand());
    QAVRbaRulerManager assigned;
    assigned = manager;
    EXPECT_EQ(assigned.GetRotationRulerEditionNotification(),
              manager.GetRotationRulerEditionNotification());
  }
  EXPECT_EQ(Driver().GetCommandCount(), before + 3);
  EXPECT_EQ(Driver().GetPendingDestructionCount(), 0);

  QAVRbaRulerManager manager;
  manager.InitRulers(_father);
  manager.refreshTranslationRuler({0, 0, 0}, {10, 0, 0}, {1, 0, 0});
  Driver().TypeRulerValue(Length(manager), 8);
  ASSERT_NE(manager.GetTranslationRulerEditionNotification(), nullptr);
  ASSERT_NE(manager.GetRotationRulerEditionNotification(), nullptr);
  EXPECT_NE(manager.GetTranslationRulerEditionNotification(),
            manager.GetRotationRulerEditionNotification());
  manager.DestroyRulers();
  EXPECT_EQ(manager.GetTranslationRulerCommand(), nullptr);
  EXPECT_EQ(manager.GetRotationRulerCommand(), nullptr);
  EXPECT_EQ(manager.GetTranslationRulerEditionNotification(), nullptr);
  EXPECT_EQ(manager.GetRotationRulerEditionNotification(), nullptr);
  EXPECT_EQ(manager.getTranslationRulerEditorValue(), 0.0);
  EXPECT_EQ(manager.getRotationRulerEditorAngle(), 0.0);
  manager.DestroyRulers();  // nothing left: nothing happens
  EXPECT_EQ(Driver().GetPendingDestructionCount(), 3);
  Driver().Idle();
  // The three of the dead manager are still there; these are gone.
  EXPECT_EQ(Driver().GetCommandCount(), before + 3);
  EXPECT_EQ(_viewer->GetDecorationCount(), 0);
}

TEST_F(RulerManagerTest, TheOwnerLearnsOfATypedValueThroughTheEditionNotification) {
  QAVRbaRulerManager manager;
  manager.InitRulers(_father);
  manager.refreshTranslationRuler({0, 0, 0}, {0, 0, 10}, {0, 0, 1});
  QAVMathPlane plane;
  manager.refreshRotationRuler(plane, 5);

  // The owner subscribes as a placement command does, and reads the value
  // when told.
  struct Received {
    QAVNotification* notification = nullptr;
    double value = 0.0;
    int count = 0;
  };
  Received length;
  Received angle;
  const auto subscribe = [&manager](QAVCommand* ruler, Received& received, bool isAngle) {
    ruler->GetCallbackManager()->AddCallback(
        QAVRulerDecoratedEditor::EDIT_MODIFY(),
        [&manager, &received, isAngle](const char*, void*, QAVNotification* notification, void*,
                                       QAVCallback) {
          received.notification = notification;
          received.value = isAngle ? manager.getRotationRulerEditorAngle()
                                   : manager.getTranslationRulerEditorValue();
          ++received.count;
        });
  };
  subscribe(manager.GetTranslationRulerCommand(), length, false);
  subscribe(manager.GetRotationRulerCommand(), angle, true);

  Driver().TypeRulerValue(Length(manager), 75);
  EXPECT_EQ(length.count, 1);
  EXPECT_EQ(length.notification, manager.GetTranslationRulerEditionNotification());
  EXPECT_EQ(length.value, 75.0);
  EXPECT_EQ(angle.count, 0) << "each ruler sends its own";

  Driver().TypeRulerValue(Angle(manager), -15);
  EXPECT_EQ(angle.count, 1);
  EXPECT_EQ(angle.notification, manager.GetRotationRulerEditionNotification());
  EXPECT_EQ(angle.value, -15.0);
  EXPECT_EQ(length.count, 1);
  const auto dispatches = Dispatches(manager.GetRotationRulerCommand()->GetCallbackManager());
  ASSERT_EQ(dispatches.size(), 1U);
  EXPECT_EQ(dispatches[0].name, QAVRulerDecoratedEditor::EDIT_MODIFY());
  manager.DestroyRulers();
}

TEST_F(RulerManagerTest, TheViewShowsTheVisibleRulersOnly) {
  const QAVRef<QAVPixelImage> bare = Render();
  QAVRbaRulerManager manager;
  manager.InitRulers(_father);
  EXPECT_EQ(Changed(*Render(), *bare, {}, -1), 0) << "made hidden";

  // Along x from (-60, 20, 0) for 120 mm: the ruler runs 34.7 mm above it
  // (across the direction and the line of sight).
  manager.refreshTranslationRuler({-60, 20, 0}, {60, 20, 0}, {2, 0, 0});
  const QAVRef<QAVPixelImage> shown = Render();
  EXPECT_GT(Changed(*shown, *bare, {0, 54.7, 0}, 2), 6) << "the ruler's middle";
  EXPECT_GT(Changed(*shown, *bare, {-60, 54.7, 0}, 2), 6) << "its start";
  EXPECT_GT(Changed(*shown, *bare, {60, 54.7, 0}, 2), 6) << "its end";
  EXPECT_EQ(Changed(*shown, *bare, {0, 20, 0}, 3), 0) << "not on the segment measured";
  EXPECT_EQ(Changed(*shown, *bare, {0, -60, 0}, 10), 0) << "nor elsewhere";
  const auto* pixel = static_cast<const std::uint8_t*>(shown->GetPixels());
  double x = 0;
  double y = 0;
  ASSERT_TRUE(_viewer->Project({-30, 54.7, 0}, x, y));
  const std::size_t at =
      3 * (static_cast<std::size_t>(y) * shown->GetWidth() + static_cast<std::size_t>(x));
  EXPECT_GT(pixel[at], pixel[at + 2] + 100) << "drawn in the ruler's orange";

  // The arc of 37 mm in the plane facing the view, around (0, -30, 0).
  QAVMathPlane plane({0, -30, 0}, {1, 0, 0}, {0, 1, 0});
  manager.refreshRotationRuler(plane, 90);
  const QAVRef<QAVPixelImage> both = Render();
  const double diagonal = 37.0 / std::sqrt(2.0);
  EXPECT_GT(Changed(*both, *shown, {diagonal, -30 + diagonal, 0}, 2), 6) << "on the arc";
  EXPECT_EQ(Changed(*both, *shown, {-diagonal, -30 - diagonal, 0}, 3), 0) << "beyond its sweep";

  // Hidden: the picture is the bare one again, and stays so for the angle
  // ruler refreshed after.
  manager.HideRulers();
  EXPECT_EQ(Changed(*Render(), *bare, {}, -1), 0);
  manager.refreshRotationRuler(plane, 90);
  EXPECT_EQ(Changed(*Render(), *bare, {}, -1), 0);
  manager.DestroyRulers();
  Driver().Idle();
  EXPECT_EQ(Changed(*Render(), *bare, {}, -1), 0);
}

}  // namespace
