// Picking a 3D viewer: the ray of a pixel from the main viewpoint, every
// representation it meets nearest first, each with its path up to the root.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "QAV3DRep.h"
#include "QAV3DViewer.h"
#include "QAVCallbackManager.h"
#include "QAVModelObject.h"
#include "QAVPickPath.h"
#include "QAVPointerEvent.h"
#include "QAVSceneReader.h"
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

// An independent count of what a ray meets: every triangle of every leaf,
// placed by the matrices above it, crossed in double precision.
struct Triangle {
  QAVMathPoint a, b, c;
};

void Flatten(QAV3DRep* rep, const QAV4x4Matrix& toGlobal,
             std::map<const QAV3DRep*, std::vector<Triangle>>& leaves) {
  if (auto* bag = dynamic_cast<QAV3DBagRep*>(rep)) {
    const QAV4x4Matrix inner = bag->GetMatrix() ? toGlobal * *bag->GetMatrix() : toGlobal;
    for (int i = 0; i < bag->GetChildCount(); ++i)
      Flatten(bag->GetChild(i), inner, leaves);
    return;
  }
  const auto* surface = dynamic_cast<QAV3DTessellatedRep*>(rep);
  if (!surface) return;
  const std::vector<float>& p = surface->GetPositions();
  auto at = [&p, &toGlobal](std::size_t v) {
    return toGlobal * QAVMathPoint(p[3 * v], p[3 * v + 1], p[3 * v + 2]);
  };
  std::vector<Triangle>& triangles = leaves[rep];
  const std::vector<std::uint32_t>& t = surface->GetTriangles();
  for (std::size_t i = 0; i + 2 < t.size(); i += 3)
    triangles.push_back({at(t[i]), at(t[i + 1]), at(t[i + 2])});
}

double Dot(const QAVMathVector& a, const QAVMathVector& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}
QAVMathVector CrossOf(const QAVMathVector& a, const QAVMathVector& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// Where a leaf meets the ray: the nearest crossing well inside a triangle
// (`clear`, infinite when none) and the nearest one counting those on or just
// beside an edge (`edge`), which a single-precision kernel may take or miss.
struct Expected {
  double clear = INFINITY;
  double edge = INFINITY;
};

Expected Cross(const std::vector<Triangle>& triangles, const QAVMathPoint& origin,
               const QAVMathVector& direction) {
  constexpr double kEdge = 1e-5;
  Expected expected;
  for (const Triangle& tri : triangles) {
    const QAVMathVector e1 = tri.b - tri.a;
    const QAVMathVector e2 = tri.c - tri.a;
    const QAVMathVector p = CrossOf(direction, e2);
    const double det = Dot(e1, p);
    if (std::abs(det) < 1e-12) continue;  // parallel (or degenerate): never met
    const QAVMathVector s = origin - tri.a;
    const double u = Dot(s, p) / det;
    const QAVMathVector q = CrossOf(s, e1);
    const double v = Dot(direction, q) / det;
    const double t = Dot(e2, q) / det;
    if (t <= 0) continue;
    if (u > kEdge && v > kEdge && u + v < 1 - kEdge) expected.clear = std::min(expected.clear, t);
    if (u > -kEdge && v > -kEdge && u + v < 1 + kEdge) expected.edge = std::min(expected.edge, t);
  }
  return expected;
}

std::string NameOf(const QAV3DRep* leaf) {
  const QAV3DRep* bag = leaf->GetFather();
  const QAVModelObject* object = bag ? bag->GetModelObject() : nullptr;
  return object ? object->GetAlias().ToString().str() : "(unnamed)";
}

// Picks every `step`-th pixel of the scene's view and checks the paths against
// the independent count; returns how many rays met two leaves at one distance.
int CheckPicksAgainstEveryTriangle(QAV3DViewer& viewer, QAV3DBagRep& root, int step) {
  std::map<const QAV3DRep*, std::vector<Triangle>> leaves;
  Flatten(&root, QAV4x4Matrix(), leaves);
  float width = 0;
  float height = 0;
  viewer.GetGraphicSize(width, height);
  int touching = 0;
  std::vector<QAVRef<QAVPickPath>> paths;
  for (int y = step / 2; y < height; y += step) {
    for (int x = step / 2; x < width; x += step) {
      QAVMathPoint origin;
      QAVMathVector direction;
      viewer.GetRay(x, y, origin, direction);
      EXPECT_EQ(viewer.Pick(x, y, 1, 1, 0, paths), S_OK);
      std::map<const QAV3DRep*, double> listed;
      double previous = 0;
      for (const auto& path : paths) {
        const QAV3DRep* leaf = path->GetRep(0);
        EXPECT_TRUE(listed.emplace(leaf, path->GetDistance()).second)
            << NameOf(leaf) << " listed twice at pixel " << x << " " << y;
        EXPECT_GE(path->GetDistance(), previous) << "nearest first at pixel " << x << " " << y;
        previous = path->GetDistance();
      }
      std::vector<double> clear;
      for (const auto& [leaf, triangles] : leaves) {
        const Expected expected = Cross(triangles, origin, direction);
        const auto found = listed.find(leaf);
        const std::string where =
            NameOf(leaf) + " at pixel " + std::to_string(x) + " " + std::to_string(y);
        const double tolerance = 1e-5 * std::max(1.0, expected.edge);
        if (std::isfinite(expected.clear)) {
          clear.push_back(expected.clear);
          if (found == listed.end()) {
            ADD_FAILURE() << where << ": met at " << expected.clear << " but not listed";
            continue;
          }
          // Its nearest hit: the nearest clear one, or one on an edge before it.
          EXPECT_GE(found->second, expected.edge - tolerance) << where;
          EXPECT_LE(found->second, expected.clear + tolerance) << where;
        } else if (found != listed.end()) {
          EXPECT_TRUE(std::isfinite(expected.edge)) << where << ": listed but never met";
          EXPECT_NEAR(found->second, expected.edge, tolerance) << where;
        }
      }
      std::sort(clear.begin(), clear.end());
      for (std::size_t i = 1; i < clear.size(); ++i)
        if (clear[i] - clear[i - 1] < 1e-9 * clear[i]) {
          ++touching;
          break;
        }
    }
  }
  return touching;
}

// Parts standing on a table, side by side, stickers lying flat on their faces
// and a ball resting on the table: hits at one distance for two leaves.
const char* const kTouchingScene = R"({
  "format": "qav-scene", "version": 1, "window": {"width": 200, "height": 100},
  "viewpoint": {"eye": [1.3, -7, 6], "target": [0, 0, 0.5], "up": [0, 0, 1], "fieldOfView": 50},
  "root": {"class": "QAVProduct", "name": "Bench", "children": [
    {"class": "QAVPart", "name": "Table", "translate": [0, 0, -1], "shape": {"box": [6, 4, 2]}},
    {"class": "QAVPart", "name": "Block", "translate": [0, 0, 1], "shape": {"box": [2, 2, 2]}},
    {"class": "QAVPart", "name": "Neighbour", "translate": [2, 0, 1], "shape": {"box": [2, 2, 2]}},
    {"class": "QAVPart", "name": "Ball", "translate": [-2, 1, 0.5],
     "shape": {"sphere": 0.5, "segments": 16}},
    {"class": "QAVStkStickerContainer", "name": "Stickers", "children": [
      {"class": "QAVStkSticker", "name": "Top", "translate": [0, 0, 2], "shape": {"quad": [1, 1]}},
      {"class": "QAVStkSticker", "name": "Front", "translate": [0, -1, 1],
       "rotate": {"axis": [1, 0, 0], "degrees": 90}, "shape": {"quad": [1.5, 1]}},
      {"class": "QAVStkSticker", "name": "Floor", "translate": [-2, -1, 0],
       "shape": {"quad": [1, 1]}}]}]}})";

TEST_F(PickTest, TouchingPartsAndDecalsOnFacesAreAllListedAtTheirNearestHit) {
  const std::filesystem::path file = _scratch.Write("touching/scene.json", kTouchingScene);
  std::string error;
  ASSERT_EQ(Driver().OpenScene(file.string(), error), S_OK) << error;
  QAV3DViewer* viewer = Driver().GetSceneViewer();
  EXPECT_GT(CheckPicksAgainstEveryTriangle(*viewer, *Driver().GetScene()->root, 3), 30)
      << "rays that meet two leaves at one distance";

  // Straight down onto the sticker on the block's top: the sticker and the
  // block at 6 - 2 = 4, then the table at 6.
  viewer->GetMain3DViewpoint()->Set({0.2, 0.1, 6}, {0.2, 0.1, 0}, {0, 1, 0}, 50);
  std::vector<QAVRef<QAVPickPath>> paths;
  ASSERT_EQ(viewer->Pick(100, 50, 1, 1, 0, paths), S_OK);
  std::vector<std::string> names;
  names.reserve(paths.size());
  for (const auto& path : paths)
    names.push_back(NameOf(path->GetRep(0)) + " " + std::to_string(path->GetDistance()));
  ASSERT_EQ(names.size(), 3U) << testing::PrintToString(names);
  std::sort(names.begin(), names.begin() + 2);
  EXPECT_EQ(names, (std::vector<std::string>{"Block 4.000000", "Top 4.000000", "Table 6.000000"}));

  // The shipped showroom: the vase stands on the plinth, and a ray through
  // the vase leaves it where it enters the plinth's top.
  const std::string showroom =
      (std::filesystem::path(QAV_RESOURCES_DIR) / "scenes/showroom/scene.json").string();
  ASSERT_EQ(Driver().OpenScene(showroom, error), S_OK) << error;
  viewer = Driver().GetSceneViewer();
  ASSERT_EQ(viewer->Pick(521, 361, 1, 1, 0, paths), S_OK);
  ASSERT_EQ(paths.size(), 2U);
  EXPECT_EQ(NameOf(paths[0]->GetRep(0)), "Vase");
  EXPECT_NEAR(paths[0]->GetDistance(), 908.49, 0.01);
  EXPECT_EQ(NameOf(paths[1]->GetRep(0)), "Plinth");
  EXPECT_NEAR(paths[1]->GetDistance(), 933.18, 0.01);
  EXPECT_NEAR(paths[1]->GetGlobalIntersection().z, 120, 1e-3) << "the plinth's top";
  CheckPicksAgainstEveryTriangle(*viewer, *Driver().GetScene()->root, 12);
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
