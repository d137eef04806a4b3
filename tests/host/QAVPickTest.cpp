// Picking a 3D viewer: the ray of a pixel from the main viewpoint, every
// representation it meets nearest first, each with its path up to the root.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "QAV3DRep.h"
#include "QAV3DViewer.h"
#include "QAVCallbackManager.h"
#include "QAVModelObject.h"
#include "QAVPickPath.h"
#include "QAVPointerEvent.h"
#include "QAVTestScenes.h"
#include "QAVTestSupport.h"

namespace {

using qavtest::Moved;
using qavtest::Square;

std::vector<std::string> Classes(QAVPickPath& path) {
  std::vector<std::string> classes;
  for (int i = 0; i < path.GetRepCount(); ++i) {
    QAVModelObject* object = path.GetRep(i)->GetModelObject();
    classes.emplace_back(object ? object->IsA() : "-");
  }
  return classes;
}

class PickTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    qavtest::HostTest::SetUp();
    _viewer = QAVMakeRef<QAV3DViewer>("viewer");
    Driver().Resize(_viewer.get(), 200, 100);
    // The eye 10 above the origin, looking down -z, 90 degrees vertically.
    _viewer->GetMain3DViewpoint()->Set({0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 90);
  }
  QAVRef<QAV3DViewer> _viewer;
};

TEST_F(PickTest, EveryRepresentationOnTheRayNearestFirstWithItsPath) {
  std::vector<QAVRef<QAVPickPath>> paths;
  EXPECT_EQ(_viewer->Pick(100, 50, 1, 1, 0, paths), E_FAIL);  // no scene yet

  // A part at z = 0, a sticker above it at z = 1 (inside a sticker container),
  // a small light at z = 5 off the centre.
  auto root = QAVMakeRef<QAV3DBagRep>();
  root->SetModelObject(QAVMakeRef<QAVModelObject>("ZRMRootOccurrence").get());
  auto part = Square(4, "Bracket");
  auto sticker = Square(1, "QAVStkSticker");
  auto stickers = Moved(sticker.get(), 0, 0, 1, "QAVStkStickerContainer");
  auto light = Square(0.5, "QAVRscLight");
  auto lights = Moved(light.get(), 0, 0, 5, "QAVRscLightContainer");
  ASSERT_TRUE(root->AddChild(part.get()));
  ASSERT_TRUE(root->AddChild(lights.get()));
  ASSERT_TRUE(root->AddChild(stickers.get()));
  _viewer->SetSceneRoot(root.get());

  ASSERT_EQ(_viewer->Pick(100, 50, 1, 1, 0, paths), S_OK);
  ASSERT_EQ(paths.size(), 3U);
  EXPECT_EQ(Classes(*paths[0]),
            (std::vector<std::string>{"QAVRscLight", "QAVRscLightContainer", "ZRMRootOccurrence"}));
  EXPECT_EQ(Classes(*paths[1]), (std::vector<std::string>{"QAVStkSticker", "QAVStkStickerContainer",
                                                          "ZRMRootOccurrence"}));
  EXPECT_EQ(Classes(*paths[2]), (std::vector<std::string>{"Bracket", "ZRMRootOccurrence"}));
  const double expectedZ[] = {5, 1, 0};
  for (std::size_t i = 0; i < 3; ++i) {
    const QAVPickPath& path = *paths[i];
    EXPECT_EQ(path.GetViewpoint(), _viewer->GetMain3DViewpoint());
    EXPECT_NEAR(path.GetGlobalIntersection().z, expectedZ[i], 1e-4);
    EXPECT_NEAR(path.GetGlobalIntersection().x, 0, 1e-5);
    EXPECT_NEAR(path.GetDistance(), 10 - expectedZ[i], 1e-4);
    EXPECT_NEAR(path.GetGlobalNormal().z, 1, 1e-6);
    EXPECT_EQ(path.GetRep(path.GetRepCount() - 1), root.get());
  }
  EXPECT_EQ(paths[2]->GetRep(0), part.get());
  EXPECT_EQ(paths[2]->GetRep(0)->GetFather(), root.get());
  // Walking up a path.
  QAVPickPath& walk = *paths[1];
  EXPECT_EQ(walk.NextFatherRep(), sticker.get());
  EXPECT_EQ(walk.NextFatherRep(), stickers.get());
  EXPECT_EQ(walk.NextFatherRep(), root.get());
  EXPECT_EQ(walk.NextFatherRep(), nullptr);

  // Ten pixels right of the centre (x = 2 on the part, 1.8 at the sticker's
  // height, 1 at the light's): only the part.
  ASSERT_EQ(_viewer->Pick(110, 50, 1, 1, 0, paths), S_OK);
  ASSERT_EQ(paths.size(), 1U);
  EXPECT_NEAR(paths[0]->GetGlobalIntersection().x, 2, 1e-5);
  // Off the part: nothing, and that is no failure.
  ASSERT_EQ(_viewer->Pick(199, 0, 1, 1, 0, paths), S_OK);
  EXPECT_TRUE(paths.empty());
  // At x = 5 the ray misses the part; a box 13 pixels wide around it reaches
  // x = 3.8 and meets the part, once.
  ASSERT_EQ(_viewer->Pick(125, 50, 1, 1, 0, paths), S_OK);
  EXPECT_TRUE(paths.empty());
  ASSERT_EQ(_viewer->Pick(125, 50, 13, 1, 0, paths), S_OK);
  ASSERT_EQ(paths.size(), 1U);
  EXPECT_EQ(paths[0]->GetRep(0), part.get());
  EXPECT_EQ(_viewer->Pick(100, 50, 0, 1, 0, paths), E_FAIL);
  EXPECT_TRUE(paths.empty());

  // The scene changed under the viewer: the next pick sees it once told.
  lights->SetMatrix(QAV4x4Matrix({1, 0, 0, 100, 0, 1, 0, 0, 0, 0, 1, 5, 0, 0, 0, 1}));
  _viewer->SceneChanged();
  ASSERT_EQ(_viewer->Pick(100, 50, 1, 1, 0, paths), S_OK);
  EXPECT_EQ(paths.size(), 2U);
}

TEST_F(PickTest, PointerInputCarriesWhatLiesUnderThePointer) {
  auto part = Square(4, "Bracket");
  auto root = QAVMakeRef<QAV3DBagRep>();
  ASSERT_TRUE(root->AddChild(part.get()));
  _viewer->SetSceneRoot(root.get());
  struct Seen {
    std::string event;
    double x;
    int button;
    std::size_t paths;
  };
  std::vector<Seen> seen;
  auto record = [&seen](const char* event, void* data, QAVNotification*, void*, QAVCallback) {
    const auto* pointer = static_cast<const QAVPointerEvent*>(data);
    seen.push_back({event, pointer->x, pointer->button, pointer->paths.size()});
  };
  QAVCallbackManager* callbacks = _viewer->GetCallbackManager();
  for (const char* event : {QAVPointerEvent::POINTER_MOVED(), QAVPointerEvent::POINTER_PRESSED(),
                            QAVPointerEvent::POINTER_RELEASED()})
    callbacks->AddCallback(event, record);
  Driver().PointerMove(_viewer.get(), 199, 0);  // off the part
  Driver().PointerPress(_viewer.get(), 100, 50);
  Driver().PointerRelease(_viewer.get(), 110, 50, 2);
  Driver().PointerMove(nullptr, 1, 1);
  ASSERT_EQ(seen.size(), 3U);
  EXPECT_EQ(seen[0].event, QAVPointerEvent::POINTER_MOVED());
  EXPECT_EQ(seen[0].button, 0);
  EXPECT_EQ(seen[0].paths, 0U);
  EXPECT_EQ(seen[1].event, QAVPointerEvent::POINTER_PRESSED());
  EXPECT_EQ(seen[1].paths, 1U);
  EXPECT_EQ(seen[2].x, 110);
  EXPECT_EQ(seen[2].button, 2);
}

TEST_F(PickTest, RaysFollowTheViewpointAndTheMatricesCompose) {
  // A part seen from the side through two nested bags: rotated a quarter turn
  // about y (its face now facing +x), then moved 3 along x.
  auto part = Square(1, "Panel");
  auto turned = QAVMakeRef<QAV3DBagRep>();
  turned->SetMatrix(QAV4x4Matrix({0, 0, 1, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 0, 1}));
  ASSERT_TRUE(turned->AddChild(part.get()));
  auto moved = QAVMakeRef<QAV3DBagRep>();
  moved->SetMatrix(QAV4x4Matrix({1, 0, 0, 3, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
  ASSERT_TRUE(moved->AddChild(turned.get()));
  _viewer->SetSceneRoot(moved.get());
  _viewer->GetMain3DViewpoint()->Set({10, 0, 0}, {0, 0, 0}, {0, 0, 1}, 60);

  std::vector<QAVRef<QAVPickPath>> paths;
  ASSERT_EQ(_viewer->Pick(100, 50, 1, 1, 0, paths), S_OK);
  ASSERT_EQ(paths.size(), 1U);
  EXPECT_NEAR(paths[0]->GetGlobalIntersection().x, 3, 1e-5);
  EXPECT_NEAR(paths[0]->GetDistance(), 7, 1e-3);
  EXPECT_NEAR(paths[0]->GetGlobalNormal().x, 1, 1e-6);  // facing the eye
  EXPECT_EQ(paths[0]->GetRepCount(), 3);
  // Seen from behind, the normal still faces the eye.
  _viewer->GetMain3DViewpoint()->Set({-10, 0, 0}, {0, 0, 0}, {0, 0, 1}, 60);
  ASSERT_EQ(_viewer->Pick(100, 50, 1, 1, 0, paths), S_OK);
  ASSERT_EQ(paths.size(), 1U);
  EXPECT_NEAR(paths[0]->GetGlobalNormal().x, -1, 1e-6);
  EXPECT_NEAR(paths[0]->GetDistance(), 13, 1e-3);

  // Up is the top of the picture: a pixel above the centre looks up (+z).
  QAVMathPoint origin;
  QAVMathVector direction;
  _viewer->GetRay(100, 0, origin, direction);
  EXPECT_GT(direction.z, 0);
  EXPECT_NEAR(direction.z / direction.x, std::tan(30.0 * 3.14159265358979 / 180), 1e-9);
  _viewer->GetRay(200, 50, origin, direction);
  EXPECT_LT(direction.y, 0);  // the right of the picture, looking along +x with z up, is -y
  // Projecting a point of the ray gives the pixel back; behind the eye, nothing.
  double x = -1;
  double y = -1;
  ASSERT_TRUE(_viewer->Project(
      origin + QAVMathVector{3 * direction.x, 3 * direction.y, 3 * direction.z}, x, y));
  EXPECT_NEAR(x, 200, 1e-9);
  EXPECT_NEAR(y, 50, 1e-9);
  EXPECT_FALSE(_viewer->Project({-20, 0, 0}, x, y));
  EXPECT_NEAR(x, 200, 1e-9) << "untouched";
}

TEST(SceneRepresentationTest, TreesAndGeometryRefuseWhatDoesNotFit) {
  auto a = QAVMakeRef<QAV3DBagRep>();
  auto b = QAVMakeRef<QAV3DBagRep>();
  ASSERT_TRUE(a->AddChild(b.get()));
  EXPECT_FALSE(b->AddChild(a.get()));  // a cycle
  EXPECT_FALSE(a->AddChild(b.get()));  // already has a father
  EXPECT_FALSE(b->AddChild(b.get()));
  EXPECT_FALSE(a->AddChild(nullptr));
  EXPECT_EQ(a->GetChild(1), nullptr);
  EXPECT_EQ(a->GetChild(-1), nullptr);

  QAVSurfacicRep leaf;
  EXPECT_TRUE(leaf.SetGeometry({0, 0, 0, 1, 0, 0, 0, 1, 0}, {}, {0, 1, 2}));
  EXPECT_FALSE(leaf.SetGeometry({0, 0, 0, 1, 0, 0, 0, 1}, {}, {0, 1, 2}));     // not triples
  EXPECT_FALSE(leaf.SetGeometry({0, 0, 0, 1, 0, 0, 0, 1, 0}, {}, {0, 1, 3}));  // index out
  EXPECT_FALSE(leaf.SetGeometry({0, 0, 0, 1, 0, 0, 0, 1, NAN}, {}, {0, 1, 2}));
  EXPECT_FALSE(leaf.SetGeometry({0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 0, 1}, {0, 1, 2}));
  EXPECT_EQ(leaf.GetTriangleCount(), 1);  // the refused calls changed nothing

  // Matrices: composition order, points and inverse-transpose for normals.
  const QAV4x4Matrix move({1, 0, 0, 3, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
  const QAV4x4Matrix scale({2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
  const QAVMathPoint p = (move * scale) * QAVMathPoint(1, 1, 1);
  EXPECT_DOUBLE_EQ(p.x, 5);  // scaled first, then moved
  EXPECT_DOUBLE_EQ((scale * move * QAVMathPoint(1, 1, 1)).x, 8);
  const QAVMathVector n = scale.NormalMatrix().Rotate({1, 1, 0});
  EXPECT_DOUBLE_EQ(n.x, 0.5);
  EXPECT_DOUBLE_EQ(n.y, 1);
  EXPECT_TRUE(move.IsUsable());
  EXPECT_FALSE(QAV4x4Matrix({0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}).IsUsable());
  EXPECT_FALSE(QAV4x4Matrix({NAN, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}).IsUsable());
}

}  // namespace
