// The snap manipulator on a scene opened in the substitute host: pointer moves
// and drags over a board become frames on its surface (Z away from the eye, a
// right-handed frame, the world-X normal special case), the four notification
// events with the frame, the cursors, the gizmo switched by "LightManipMode",
// the workbench filter on lights, the primitive search by representation kind,
// the traces, and an end that leaves the viewer and the host as they were.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "QAV3DRep.h"
#include "QAV3DViewer.h"
#include "QAVCallbackManager.h"
#include "QAVFrmContext.h"
#include "QAVManipulator.h"
#include "QAVRbaSnapManipulator.h"
#include "QAVRbaSnapManipulatorNotification.h"
#include "QAVSettingRepository.h"
#include "QAVTestScenes.h"
#include "QAVTestSupport.h"
#include "QAVTrace.h"
#include "QAVViewerEvent.h"

namespace {

struct Sent {
  int event;
  QAVMathVector normal;
  QAVMathVector origin;
};

// A board 100 x 60 whose top (z = 5) faces the eye 200 above it, and a lamp
// (a feature never snapped to outside the ambience workbench) to its right.
constexpr const char* kScene = R"({
  "format": "qav-scene", "version": 1,
  "window": {"width": 200, "height": 100, "usable": {"width": 200, "height": 100}},
  "viewpoint": {"eye": [0, 0, 200], "target": [0, 0, 0], "up": [0, 1, 0], "fieldOfView": 40},
  "workbench": "%WORKBENCH%",
  "root": {"class": "QAVProduct", "name": "Root", "children": [
    {"class": "QAVPart", "name": "Board", "shape": {"box": [100, 60, 10]}},
    {"class": "QAVRscNewLight", "name": "Lamp", "translate": [85, 0, 20],
     "shape": {"sphere": 8}}]}
})";

class SnapManipulatorTest : public qavtest::HostTest {
 protected:
  void Open(const std::string& workbench, bool gizmo) {
    if (gizmo) {
      const int on = 1;
      ASSERT_EQ(QAVSettingRepository::GetRepository("RenderingOptionsSettings")
                    ->WriteSetting("LightManipMode", &on),
                S_OK);
    }
    std::string text = kScene;
    text.replace(text.find("%WORKBENCH%"), 11, workbench);
    std::string error;
    ASSERT_EQ(Driver().OpenScene(_scratch.Write("scene.json", text).string(), error), S_OK)
        << error;
    _viewer = Driver().GetSceneViewer();
    _snap = new QAVRbaSnapManipulator;
    GetDefaultCallbackManager(_snap)->AddCallback(
        QAVRbaSnapManipulator::NOTIFICATION(),
        [this](const char*, void*, QAVNotification* n, void*, QAVCallback) {
          const auto* snap = dynamic_cast<QAVRbaSnapManipulatorNotification*>(n);
          ASSERT_NE(snap, nullptr);
          _sent.push_back({snap->GetEventName(), snap->GetNormal(), snap->GetOrigin()});
        });
  }
  void TearDown() override {
    if (_snap) _snap->RequestDelayedDestruction();
    Driver().Idle();
    qavtest::HostTest::TearDown();
  }

  // The gizmo's frame: its matrix's columns.
  QAVMathVector Axis(int column) const {
    const QAV4x4Matrix* m = _snap->GetFeedbackRep()->GetMatrix();
    return {(*m)(0, column), (*m)(1, column), (*m)(2, column)};
  }

  // A viewer notification of a pick on `leaf` at `point` with `normal`.
  QAVRef<QAVVueNotification> PickOn(QAV3DRep* leaf, const QAVMathPoint& point,
                                    const QAVMathVector& normal, int subElement) const {
    std::vector<QAVRef<QAV3DRep>> reps{QAVRef<QAV3DRep>(leaf)};
    auto pick = QAVMakeRef<QAVPickPath>(reps, nullptr, point, normal, subElement, 1.0);
    auto event = QAVMakeRef<QAVViewerEvent>(_viewer, 0, 0, 0, pick.get());
    return QAVMakeRef<QAVVueNotification>(event.get());
  }

  QAV3DViewer* _viewer = nullptr;
  QAVRbaSnapManipulator* _snap = nullptr;
  std::vector<Sent> _sent;
};

void ExpectVector(const QAVMathVector& v, double x, double y, double z, const char* what) {
  // Single precision, as the frame is built.
  EXPECT_NEAR(v.x, x, 1e-4) << what;
  EXPECT_NEAR(v.y, y, 1e-4) << what;
  EXPECT_NEAR(v.z, z, 1e-4) << what;
}

TEST_F(SnapManipulatorTest, HoverAndDragSnapToTheSurfaceAndTellEveryStep) {
  Open("Design", true);
  ASSERT_NE(_snap->GetFeedbackRep(), nullptr);
  ASSERT_EQ(_viewer->GetRepCount(), 1);
  EXPECT_EQ(_viewer->GetRep(0), _snap->GetFeedbackRep());
  EXPECT_EQ(_snap->GetSelector()->GetAttachmentCount(), 1);  // the root's bag
  const int redraws = _viewer->GetRedrawCount();

  // Over the board's top, a little right of the centre.
  Driver().PointerMove(_viewer, 110, 50);
  ASSERT_EQ(_sent.size(), 1U);
  EXPECT_EQ(_sent[0].event, 3);
  EXPECT_NEAR(_sent[0].origin.z, 5, 1e-4);
  EXPECT_GT(_sent[0].origin.x, 1);
  // The pick's normal faces the eye; the frame's Z turns away from it.
  ExpectVector(_sent[0].normal, 0, 0, -1, "normal");
  EXPECT_EQ(_viewer->GetCursor(), 3);
  EXPECT_EQ(_viewer->GetRedrawCount(), redraws + 1);
  // X from the world X axis, then Y = Z x X and X = Y x Z: right-handed.
  ExpectVector(Axis(0), 1, 0, 0, "X");
  ExpectVector(Axis(1), 0, -1, 0, "Y");
  ExpectVector(Axis(2), 0, 0, -1, "Z");
  EXPECT_NEAR((*_snap->GetFeedbackRep()->GetMatrix())(2, 3), 5, 1e-4);

  // Over empty space: the previous frame is sent again, with the no-target cursor.
  Driver().PointerMove(_viewer, 2, 2);
  ASSERT_EQ(_sent.size(), 2U);
  EXPECT_EQ(_sent[1].event, 3);
  ExpectVector(_sent[1].origin, _sent[0].origin.x, _sent[0].origin.y, 5, "kept origin");
  EXPECT_EQ(_viewer->GetCursor(), 15);

  // A drag: begin and end send the frame as it stands; each step snaps.
  Driver().PointerPress(_viewer, 100, 40);
  Driver().PointerMove(_viewer, 80, 40);
  Driver().PointerMove(_viewer, 2, 2);  // still dragging, off the board
  Driver().PointerRelease(_viewer, 2, 2);
  ASSERT_EQ(_sent.size(), 6U);
  EXPECT_EQ(_sent[2].event, 0);
  ExpectVector(_sent[2].origin, _sent[0].origin.x, _sent[0].origin.y, 5, "begin: no snap");
  EXPECT_EQ(_sent[3].event, 1);
  EXPECT_LT(_sent[3].origin.x, -1);
  EXPECT_GT(_sent[3].origin.y, 1);
  EXPECT_EQ(_sent[4].event, 1);
  EXPECT_EQ(_sent[5].event, 2);
  ExpectVector(_sent[5].origin, _sent[3].origin.x, _sent[3].origin.y, 5, "end");
  EXPECT_EQ(_viewer->GetCursor(), 15);
  Driver().PointerPress(_viewer, 100, 40);
  Driver().PointerMove(_viewer, 100, 45);
  EXPECT_EQ(_viewer->GetCursor(), 14);
  Driver().PointerRelease(_viewer, 100, 45);
}

TEST_F(SnapManipulatorTest, WithoutLightManipModeThereIsNoGizmoButTheFrameIsSent) {
  Open("Design", false);
  EXPECT_EQ(_snap->GetFeedbackRep(), nullptr);
  EXPECT_EQ(_viewer->GetRepCount(), 0);
  Driver().PointerMove(_viewer, 100, 50);
  ASSERT_EQ(_sent.size(), 1U);
  EXPECT_NEAR(_sent[0].origin.z, 5, 1e-4);
  ExpectVector(_sent[0].normal, 0, 0, -1, "normal");
  EXPECT_EQ(_viewer->GetRedrawCount(), 0);
}

TEST_F(SnapManipulatorTest, LightsSnapOnlyInTheAmbienceWorkbench) {
  Open("Design", true);
  Driver().PointerMove(_viewer, 100, 50);
  const QAVMathVector board = _sent.back().origin;
  // The lamp's sphere, right of the board.
  Driver().PointerMove(_viewer, 168, 50);
  EXPECT_EQ(_sent.back().event, 3);
  ExpectVector(_sent.back().origin, board.x, board.y, board.z, "not on the lamp");
  EXPECT_EQ(_viewer->GetCursor(), 15);

  QAVFrmContext::GetContext()->SetWorkbenchName("RenderingAmbienceWorkbench");
  Driver().PointerMove(_viewer, 168, 50);
  EXPECT_GT(_sent.back().origin.z, 20);
  EXPECT_EQ(_viewer->GetCursor(), 3);
}

TEST_F(SnapManipulatorTest, InTheAmbienceWorkbenchTheSelectorWorksOnTheWholeViewer) {
  Open("RenderingAmbienceWorkbench", true);
  ASSERT_NE(_snap->GetPathElement(), nullptr);
  EXPECT_EQ(_snap->GetPathElement()->GetRoot(), _viewer->GetSceneRoot());
  EXPECT_EQ(_snap->GetSelector()->GetAttachmentCount(), 0);
  Driver().PointerMove(_viewer, 168, 50);
  ASSERT_EQ(_sent.size(), 1U);
  EXPECT_GT(_sent[0].origin.z, 20);
}

TEST_F(SnapManipulatorTest, TheNormalComesFromTheHitPrimitiveByRepresentationKind) {
  Open("Design", true);
  QAVCommand* selector = _snap->GetSelector();
  const QAVMathVector up(0, 0, 1);
  const QAVMathVector side(0, 1, 0);  // neither towards nor away from the eye at the origin

  auto surface = qavtest::Square(1, nullptr);
  surface->SetFaces({0, 1});
  ASSERT_EQ(_snap->UpdatePosition(selector, PickOn(surface.get(), {0, 0, 0}, up, 1).get()), 1);
  ExpectVector(QAVMathVector(_snap->GetNormal().x, _snap->GetNormal().y, _snap->GetNormal().z), 0,
               0, -1, "surfacic: turned away from the eye, and kept so");
  // A face index beyond the faces: the origin moves, the normal stays.
  ASSERT_EQ(_snap->UpdatePosition(selector, PickOn(surface.get(), {1, 2, 0}, side, 2).get()), 1);
  EXPECT_EQ(_snap->GetOrigin(), QAVMathPointf(1, 2, 0));
  EXPECT_EQ(_snap->GetNormal().z, -1.0F);

  auto cylinder = QAVMakeRef<QAV3DCylinderRep>();
  ASSERT_TRUE(cylinder->SetGeometry({0, 0, 0, 1, 0, 0, 0, 1, 0}, {}, {0, 1, 2}));
  ASSERT_EQ(_snap->UpdatePosition(selector, PickOn(cylinder.get(), {0, 0, 0}, side, 7).get()), 1);
  EXPECT_EQ(_snap->GetNormal().y, 1.0F) << "a cylinder's one primitive, whatever the index";

  auto custom = QAVMakeRef<QAV3DCustomRep>();
  custom->AddGP(QAVMakeRef<QAV3DFaceGP>(0, 1).get(), {});
  ASSERT_EQ(_snap->UpdatePosition(selector, PickOn(custom.get(), {0, 0, 0}, up, 1).get()), 1);
  EXPECT_EQ(_snap->GetNormal().y, 1.0F) << "no primitive 1: kept";
  ASSERT_EQ(_snap->UpdatePosition(selector, PickOn(custom.get(), {0, 0, 0}, up, 0).get()), 1);
  EXPECT_EQ(_snap->GetNormal().z, -1.0F);

  auto canonical = QAVMakeRef<QAV3DCanonicalRep>();
  ASSERT_EQ(_snap->UpdatePosition(selector, PickOn(canonical.get(), {0, 0, 0}, side, 0).get()), 1);
  EXPECT_EQ(_snap->GetNormal().y, 1.0F) << "canonical: no primitive needed";

  auto bag = QAVMakeRef<QAV3DBagRep>();
  ASSERT_EQ(_snap->UpdatePosition(selector, PickOn(bag.get(), {4, 5, 6}, up, 0).get()), 1);
  EXPECT_EQ(_snap->GetOrigin(), QAVMathPointf(4, 5, 6));
  EXPECT_EQ(_snap->GetNormal().y, 1.0F) << "an unlisted kind keeps the normal";

  EXPECT_EQ(_snap->UpdatePosition(nullptr, PickOn(bag.get(), {0, 0, 0}, up, 0).get()), 0);
  EXPECT_EQ(_snap->UpdatePosition(selector, nullptr), 0);
  QAVNotification plain;
  EXPECT_EQ(_snap->UpdatePosition(selector, &plain), 0) << "no path element carried";
}

TEST_F(SnapManipulatorTest, AWorldXNormalTakesYAsItsFirstAxis) {
  Open("Design", true);
  auto surface = qavtest::Square(1, nullptr);
  QAVCommand* selector = _snap->GetSelector();
  // Exactly -X: X would be parallel to Z, so X = (0, 1, 0).
  ASSERT_EQ(_snap->UpdatePosition(selector, PickOn(surface.get(), {0, 0, 0}, {-1, 0, 0}, 0).get()),
            1);
  ExpectVector(Axis(0), 0, 1, 0, "X");
  ExpectVector(Axis(1), 0, 0, -1, "Y");
  ExpectVector(Axis(2), -1, 0, 0, "Z");
  // Almost -X: the world X axis is kept and the cross products do the rest.
  ASSERT_EQ(_snap->UpdatePosition(selector,
                                  PickOn(surface.get(), {0, 0, 0}, {-0.9999, 0.0141, 0}, 0).get()),
            1);
  const double n = std::hypot(0.9999, 0.0141);
  ExpectVector(Axis(0), 0.0141 / n, 0.9999 / n, 0, "X");
  ExpectVector(Axis(1), 0, 0, -1, "Y");
}

TEST_F(SnapManipulatorTest, TracesFollowTheirLevels) {
  Open("Design", true);
  QAVTrace trace("snap", 4);
  trace.Enable();
  QAVRbaSnapManipulator::SetTrace(&trace);
  Driver().PointerMove(_viewer, 110, 50);
  Driver().PointerMove(_viewer, 2, 2);
  std::vector<std::string> texts;
  for (const QAVJournalEntry& entry : Driver().GetJournal("trace"))
    texts.push_back(entry.detail);
  const std::vector<std::string> expected = {
      "QAVRbaSnapManipulator::MoveCB()",
      "QAVRbaSnapManipulator::UpdatePosition() notif=QAVVueNotification\n",
      "QAVRbaSnapManipulator::UpdatePosition() rep=QAVSurfacicRep gp=5\n",
      "QAVRbaSnapManipulator::UpdatePosition() gp=QAV3DFaceGP\n",
      "QAVRbaSnapManipulator::MoveCB()",
      "QAVRbaSnapManipulator::UpdatePosition() notif=QAVVueNotification\n",
      "QAVRbaSnapManipulator::UpdatePosition() pickPath=NULL\n"};
  EXPECT_EQ(texts, expected);

  trace.SetLevel(2);
  Driver().ClearJournal();
  Driver().PointerMove(_viewer, 110, 50);
  ASSERT_EQ(Driver().GetJournal("trace").size(), 1U);

  // A new manipulator starts without a trace.
  auto* other = new QAVRbaSnapManipulator;
  EXPECT_EQ(QAVRbaSnapManipulator::GetTrace(), nullptr);
  other->RequestDelayedDestruction();
  Driver().Idle();
}

TEST_F(SnapManipulatorTest, TheEndLeavesTheViewerAndTheHostAsTheyWere) {
  const int before = Driver().GetCommandCount();
  Open("Design", true);
  EXPECT_EQ(Driver().GetCommandCount(), before + 2);  // the manipulator and its selector
  QAVTrace trace("snap", 2);
  trace.Enable();
  QAVRbaSnapManipulator::SetTrace(&trace);
  _snap->RequestDelayedDestruction();
  _snap = nullptr;
  Driver().Idle();
  EXPECT_EQ(Driver().GetCommandCount(), before);
  EXPECT_EQ(_viewer->GetRepCount(), 0);
  const auto traces = Driver().GetJournal("trace");
  ASSERT_EQ(traces.size(), 1U);
  EXPECT_EQ(traces[0].detail, "QAVRbaSnapManipulator::~QAVRbaSnapManipulator()");
  // Nothing listens to the pointer any more.
  Driver().PointerMove(_viewer, 110, 50);
  EXPECT_TRUE(_sent.empty());
  QAVRbaSnapManipulator::SetTrace(nullptr);
}

}  // namespace
