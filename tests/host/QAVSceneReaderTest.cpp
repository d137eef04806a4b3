// Scene files and the 3D files they place: read whole, or refused with the
// place of the fault and nothing used.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "QAV3DViewer.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVMeshReader.h"
#include "QAVPickPath.h"
#include "QAVSceneReader.h"
#include "QAVTestSupport.h"
#include "QAVVizViewer.h"

namespace fs = std::filesystem;

namespace {

const char* const kHeader =
    R"("format": "qav-scene", "version": 1, "window": {"width": 200, "height": 100},
       "viewpoint": {"eye": [0, 0, 10], "target": [0, 0, 0], "up": [0, 1, 0], "fieldOfView": 90})";

std::string Scene(const std::string& root, const std::string& more = "") {
  return std::string("{") + kHeader + more + R"(, "root": )" + root + "}";
}

std::string ParseError(const std::string& text, const std::string& directory = ".") {
  QAVSceneDocument scene;
  std::string error;
  EXPECT_EQ(QAVSceneReader::Parse(text, directory, scene, error), E_FAIL) << text;
  EXPECT_EQ(scene.root.get(), nullptr) << "nothing used";
  return error;
}

TEST(SceneReaderTest, ReadsTheWindowViewpointProductAndTree) {
  QAVSceneDocument scene;
  std::string error;
  const std::string text = Scene(
      R"({"class": "QAVProduct", "name": "Car", "children": [
            {"class": "Door", "name": "Left door", "translate": [1, 2, 3],
             "rotate": {"axis": [0, 0, 2], "degrees": 90}, "scale": 2, "shape": {"quad": [2, 4]}},
            {"matrix": [1, 0, 0, 5, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1],
             "shape": {"box": [1, 2, 3]}, "children": [{"shape": {"sphere": 1, "segments": 8}}]}]})",
      R"(, "environment": "Dome", "workbench": "Live",
         "product": {"name": "Car", "ambiences": ["Dusk", "Noon"]})");
  ASSERT_EQ(QAVSceneReader::Parse(text, ".", scene, error), S_OK) << error;
  EXPECT_EQ(scene.width, 200.0F);
  EXPECT_EQ(scene.usableHeight, 100.0F) << "the whole window by default";
  EXPECT_EQ(scene.fieldOfView, 90.0);
  EXPECT_EQ(scene.environment, "Dome");
  EXPECT_EQ(scene.workbench, "Live");
  ASSERT_NE(scene.product.get(), nullptr);
  EXPECT_STREQ(scene.product->IsA(), "QAVProduct");
  QAVModelObject* ambiences = scene.product->GetContainer("QAVRamAmbienceContainer");
  ASSERT_NE(ambiences, nullptr);
  ASSERT_EQ(ambiences->GetMembers().size(), 2U);
  EXPECT_EQ(ambiences->GetMembers()[1]->GetAlias().ToString().str(), "Noon");
  EXPECT_EQ(scene.leafCount, 3);
  EXPECT_EQ(scene.triangleCount, 2 + 12 + 8 * 5 * 2);

  QAV3DBagRep& root = *scene.root;
  EXPECT_STREQ(root.GetModelObject()->IsA(), "QAVProduct");
  ASSERT_EQ(root.GetChildCount(), 2);
  // Scale, then rotate a quarter turn about z, then translate: (1, 0, 0) goes
  // to (2, 0, 0), (0, 2, 0), then (1, 4, 3).
  const auto* door = dynamic_cast<QAV3DBagRep*>(root.GetChild(0));
  ASSERT_NE(door, nullptr);
  EXPECT_EQ(door->GetModelObject()->GetAlias().ToString().str(), "Left door");
  const QAVMathPoint moved = *door->GetMatrix() * QAVMathPoint(1, 0, 0);
  EXPECT_NEAR(moved.x, 1, 1e-12);
  EXPECT_NEAR(moved.y, 4, 1e-12);
  EXPECT_NEAR(moved.z, 3, 1e-12);
  const auto* quad = dynamic_cast<QAVSurfacicRep*>(door->GetChild(0));
  ASSERT_NE(quad, nullptr);
  EXPECT_EQ(quad->GetModelObject(), nullptr) << "the bag stands for the object";
  EXPECT_EQ(quad->GetPositions()[0], -1.0F);
  EXPECT_EQ(quad->GetPositions()[1], -2.0F);
  const auto* unnamed = dynamic_cast<QAV3DBagRep*>(root.GetChild(1));
  ASSERT_NE(unnamed, nullptr);
  EXPECT_EQ(unnamed->GetModelObject(), nullptr);
  EXPECT_EQ((*unnamed->GetMatrix())(0, 3), 5.0);
  EXPECT_EQ(unnamed->GetChildCount(), 2) << "its box, then its child";
}

TEST(SceneReaderTest, FaultsAreNamedWhereTheyAre) {
  const std::map<std::string, std::string> cases = {
      {"{", "not valid JSON"},
      {R"({"format": "other"})", "format: \"qav-scene\" expected"},
      {R"({"format": "qav-scene", "version": 2})", "version: 1 expected"},
      {Scene(R"({})", R"(, "colour": 1)"), "scene: unknown key \"colour\""},
      {Scene(R"({"chidlren": []})"), "root: unknown key \"chidlren\""},
      {Scene(R"({"children": [{}, {"matrix": [1, 2]}]})"), "root.children[1].matrix: 16 numbers"},
      {Scene(R"({"matrix": [0,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,1]})"), "not an invertible"},
      {Scene(R"({"matrix": [1,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,1,1]})"), "last row 0 0 0 1"},
      {Scene(R"({"matrix": [1,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,1], "translate": [1, 2, 3]})"),
       "not both"},
      {Scene(R"({"translate": [1, "2", 3]})"), "root.translate[1]: a number expected"},
      {Scene(R"({"scale": [1, 0, 1]})"), "root.scale: numbers above 0"},
      {Scene(R"({"rotate": {"axis": [0, 0, 0], "degrees": 1}})"), "root.rotate.axis"},
      {Scene(R"({"name": "Nobody"})"), "a \"name\" without a \"class\""},
      {Scene(R"({"shape": {"cone": 1}})"), "root.shape: \"quad\", \"box\" or \"sphere\""},
      {Scene(R"({"shape": {"sphere": 1, "segments": 2}})"), "root.shape.segments"},
      {Scene(R"({"shape": {"box": [1, -1, 1]}})"), "root.shape.box"},
      {Scene(R"({"shape": {"quad": [1, 1]}, "mesh": "a.stl"})"), "not both"},
      {Scene(R"({"mesh": "missing.stl"})"), "root.mesh: ./missing.stl: no such file"},
      {Scene(R"({"mesh": ""})"), "root.mesh: a file name expected"},
      {Scene(R"({"children": {}})"), "root.children: an array expected"},
      {Scene(R"({})", R"(, "product": {"ambiences": ["a", 2]})"), "product.ambiences[1]"},
      {std::string("{") + R"("format": "qav-scene", "version": 1, "window": {"width": 0,
        "height": 1}})",
       "window.width: 0 pixels: from 1 to 8192 expected"},
      {std::string("{") + R"("format": "qav-scene", "version": 1, "window": {"width": 10,
        "height": 10, "usable": {"height": 11}}})",
       "window.usable: larger than the window"},
      {std::string("{") + R"("format": "qav-scene", "version": 1, "window": {"width": 1,
        "height": 1}, "viewpoint": {"eye": [0, 0, 1], "target": [0, 0, 0], "up": [0, 0, 5]}})",
       "viewpoint: the eye, the target and the up direction do not make a view"},
      {std::string("{") + R"("format": "qav-scene", "version": 1, "window": {"width": 1,
        "height": 1}, "viewpoint": {"eye": [0, 0, 1], "target": [0, 0, 0], "fieldOfView": 180}})",
       "viewpoint.fieldOfView"},
      {std::string("{") + kHeader + "}", "root: missing"},
      {Scene(R"({"rotate": {"axis": [0, 0, 1]}})"), "root.rotate.degrees: missing"},
      {std::string("{") + R"("format": "qav-scene", "version": 1, "window": {"width": 10}})",
       "window.height: missing"},
      {std::string("{") + R"("format": "qav-scene", "version": 1, "window": {"width": 1,
        "height": 1}, "viewpoint": {"eye": [0, 0, 1]}})",
       "viewpoint.target: missing"},
  };
  for (const auto& [text, expected] : cases)
    EXPECT_NE(ParseError(text).find(expected), std::string::npos)
        << text << "\ngave: " << ParseError(text);

  // Nesting deeper than any scene needs is refused, not followed down the stack.
  std::string deep = R"({"children": [)";
  for (int i = 0; i < 300; ++i)
    deep += R"({"children": [)";
  for (int i = 0; i < 301; ++i)
    deep += "]}";
  EXPECT_NE(ParseError(Scene(deep)).find("nested too deep"), std::string::npos);

  // A refused scene leaves the document as it was.
  QAVSceneDocument scene;
  std::string error;
  ASSERT_EQ(QAVSceneReader::Parse(Scene(R"({"shape": {"quad": [1, 1]}})"), ".", scene, error),
            S_OK);
  QAV3DBagRep* before = scene.root.get();
  EXPECT_EQ(QAVSceneReader::Parse(Scene(R"({"mesh": "none.obj"})"), ".", scene, error), E_FAIL);
  EXPECT_EQ(scene.root.get(), before);
  EXPECT_EQ(scene.leafCount, 1);
}

// A scene file of the given window and root, read as a user's file is: the
// error, which names the file first (empty when the scene was read).
std::string ReadError(const qavtest::ScratchDir& scratch, const std::string& name,
                      const std::string& window, const std::string& root,
                      const std::string& eye = "[0, 0, 10]") {
  const fs::path file =
      scratch.Write(name, R"({"format": "qav-scene", "version": 1, "window": )" + window +
                              R"(, "viewpoint": {"eye": )" + eye +
                              R"(, "target": [0, 0, 0], "up": [0, 1, 0]}, "root": )" + root + "}");
  QAVSceneDocument scene;
  std::string error;
  const HRESULT result = QAVSceneReader::Read(file.string(), scene, error);
  EXPECT_EQ(result == S_OK, error.empty()) << error;
  if (FAILED(result)) {
    EXPECT_EQ(scene.root.get(), nullptr) << "nothing used";
    EXPECT_EQ(error.rfind(file.string() + ": ", 0), 0U) << "the file first: " << error;
  }
  return error;
}

TEST(SceneReaderTest, NumbersBeyondSinglePrecisionAndWindowsOutOfRangeAreRefused) {
  qavtest::ScratchDir scratch;
  const std::string window = R"({"width": 200, "height": 100})";
  const std::string quad = R"("shape": {"quad": [1, 1]})";
  struct Case {
    std::string window, root, eye, expected;
  };
  const Case cases[] = {
      {window, R"({"children": [{"translate": [1e39, 0, 0], )" + quad + "}]}", "[0, 0, 10]",
       "root.children[0].translate[0]: 1e+39 is beyond single precision (at most 3.40282347e+38"},
      {window, R"({"matrix": [1,0,0,-4e38, 0,1,0,0, 0,0,1,0, 0,0,0,1]})", "[0, 0, 10]",
       "root.matrix[3]: -4e+38 is beyond single precision"},
      {window, R"({"scale": 1e39})", "[0, 0, 10]", "root.scale: 1e+39 is beyond"},
      {window, R"({"shape": {"box": [1, 1e39, 1]}})", "[0, 0, 10]",
       "root.shape.box[1]: 1e+39 is beyond"},
      {window, R"({"shape": {"sphere": 5e38}})", "[0, 0, 10]",
       "root.shape.sphere: 5e+38 is beyond"},
      {window, R"({"shape": {"quad": [1, 3.5e38]}})", "[0, 0, 10]",
       "root.shape.quad[1]: 3.5e+38 is beyond"},
      {window, "{}", "[0, 1e39, 10]", "viewpoint.eye[1]: 1e+39 is beyond"},
      // Each number fits, but not where the placements put the vertices: the
      // scene's space, or the node's own for a mesh beyond half the range (the
      // size from one side to the other would not fit).
      {window,
       R"({"translate": [1e38, 0, 0], "children": [{"translate": [1e38, 0, 0], )" + quad + "}]}",
       "[0, 0, 10]",
       "root.children[0].shape: the box of its vertices reaches 2e+38 in the space of "
       "the scene, beyond 1.70141173e+38 either way"},
      {window, R"({"children": [{"mesh": "far.obj"}]})", "[0, 0, 10]",
       "root.children[0].mesh: the box of its vertices reaches 1.79999996e+38 in the space of "
       "root.children[0]"},
      {window,
       R"({"scale": 1e30, "children": [{"scale": 1e30, "shape": {"quad": [1e-30, 1e-30]}}]})",
       "[0, 0, 10]",
       "root.children[0].shape: the placements from root down make 1e+60, beyond single "
       "precision"},
      // Windows: 1 to 8192 pixels each way, the usable area too.
      {R"({"width": 1e12, "height": 100})", "{}", "[0, 0, 10]",
       "window.width: 1e+12 pixels: from 1 to 8192 expected"},
      {R"({"width": 8193, "height": 100})", "{}", "[0, 0, 10]", "window.width: 8193 pixels"},
      {R"({"width": 200, "height": 0.5})", "{}", "[0, 0, 10]", "window.height: 0.5 pixels"},
      {R"({"width": 200, "height": 100, "usable": {"width": 0.25}})", "{}", "[0, 0, 10]",
       "window.usable.width: 0.25 pixels"},
      {R"({"width": 200, "height": 100, "usable": {"height": 120}})", "{}", "[0, 0, 10]",
       "window.usable: larger than the window"},
  };
  scratch.Write("far.obj", "v 1.8e38 0 0\nv 0 1 0\nv 0 0 1\nf 1 2 3\n");
  int n = 0;
  for (const Case& c : cases) {
    const std::string error =
        ReadError(scratch, "case" + std::to_string(n++) + ".json", c.window, c.root, c.eye);
    EXPECT_NE(error.find(c.expected), std::string::npos)
        << "expected: " << c.expected << "\ngave: " << error;
  }
  // What single precision holds is read: the largest windows, far placements
  // whose vertices stay within half the range.
  EXPECT_EQ(ReadError(scratch, "large.json", R"({"width": 8192, "height": 1})",
                      R"({"translate": [1.7e38, 0, -1.7e38], )" + quad + "}", "[0, 3e38, 10]"),
            "");
}

class SceneProgramTest : public qavtest::ProgramTest {};

TEST_F(SceneProgramTest, TheProgramRefusesAFarPlacementAndAHugeWindowNamingThem) {
  _scratch.Write("far.json", R"({"format": "qav-scene", "version": 1,
    "window": {"width": 200, "height": 100},
    "viewpoint": {"eye": [0, 0, 10], "target": [0, 0, 0], "up": [0, 1, 0]},
    "root": {"class": "QAVProduct", "name": "Far", "children": [
      {"class": "QAVPart", "name": "Part", "translate": [1e39, 0, 0], "shape": {"box": [2, 4, 6]}}]}})");
  qavtest::ProgramRun run = Run("bbox far.json Part");
  EXPECT_EQ(run.status, 1) << run.out << run.err;
  EXPECT_EQ(run.out.find("inf"), std::string::npos) << run.out;
  EXPECT_NE(run.err.find("far.json: root.children[0].translate[0]: 1e+39"), std::string::npos)
      << run.err;

  _scratch.Write("wide.json", R"({"format": "qav-scene", "version": 1,
    "window": {"width": 1e12, "height": 1e12},
    "viewpoint": {"eye": [0, 0, 10], "target": [0, 0, 0], "up": [0, 1, 0]}, "root": {}})");
  run = Run("scene view wide.json -o wide.png");
  EXPECT_EQ(run.status, 1) << run.out << run.err;
  EXPECT_FALSE(fs::exists(_scratch.path() / "wide.png"));
  EXPECT_NE(run.err.find("wide.json: window.width: 1e+12 pixels"), std::string::npos) << run.err;
}

TEST(MeshReaderTest, ShippedAndCorpusFilesAndBadOnes) {
  const fs::path meshes = fs::path(QAV_RESOURCES_DIR) / "scenes/showroom/meshes";
  const std::map<std::string, int> shipped = {
      {"vase.obj", 576}, {"plinth.ply", 32}, {"bracket.stl", 20}, {"sticker.gltf", 24}};
  for (const auto& [name, triangles] : shipped) {
    QAVRef<QAVSurfacicRep> leaf;
    std::string error;
    ASSERT_EQ(QAVMeshReader::Read((meshes / name).string(), leaf, error), S_OK) << error;
    EXPECT_EQ(leaf->GetTriangleCount(), triangles) << name;
    ASSERT_EQ(leaf->GetNormals().size(), leaf->GetPositions().size());
  }
  // The bracket stands on z = 0 and is 100 high; the sticker is flat.
  QAVRef<QAVSurfacicRep> bracket;
  std::string error;
  ASSERT_EQ(QAVMeshReader::Read((meshes / "bracket.stl").string(), bracket, error), S_OK);
  float low = 1e9F;
  float high = -1e9F;
  for (std::size_t i = 2; i < bracket->GetPositions().size(); i += 3) {
    low = std::min(low, bracket->GetPositions()[i]);
    high = std::max(high, bracket->GetPositions()[i]);
  }
  EXPECT_EQ(low, 0.0F);
  EXPECT_EQ(high, 100.0F);

  qavtest::ScratchDir scratch;
  const fs::path& dir = scratch.path();
  std::ofstream(dir / "empty.stl").flush();
  std::ofstream(dir / "bad.obj") << "garbage here\n";
  std::ofstream(dir / "notes.txt") << "v 0 0 0\n";
  std::ofstream(dir / "points.obj") << "v 0 0 0\nv 1 0 0\nv 0 1 0\np 1 2 3\n";
  {
    std::ifstream whole(meshes / "bracket.stl", std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(whole)), {});
    std::ofstream(dir / "cut.stl", std::ios::binary) << bytes.substr(0, 100);
  }
  const std::map<std::string, std::string> bad = {
      {"empty.stl", "unreadable"}, {"cut.stl", "unreadable"},     {"bad.obj", "unreadable"},
      {"notes.txt", "not a glTF"}, {"points.obj", "no triangle"}, {"", "not a regular file"},
      {"none.ply", "no such file"}};
  for (const auto& [name, expected] : bad) {
    QAVRef<QAVSurfacicRep> leaf = QAVMakeRef<QAVSurfacicRep>();
    ASSERT_EQ(QAVMeshReader::Read((dir / name).string(), leaf, error), E_FAIL) << name;
    EXPECT_EQ(leaf.get(), nullptr);
    EXPECT_NE(error.find(expected), std::string::npos) << name << ": " << error;
  }
  EXPECT_TRUE(QAVMeshReader::IsSupported("A.GLB"));
  EXPECT_FALSE(QAVMeshReader::IsSupported("a.fbx"));

  const fs::path corpus = qavtest::SharedDir() / "mesh-corpus";
  if (qavtest::SharedDir().empty() || !fs::is_directory(corpus))
    GTEST_SKIP() << "the mesh corpus (../shared/mesh-corpus) is not here";
  const std::map<std::string, int> expected = {{"Box.gltf", 12},
                                               {"OrientationTest.gltf", 524},
                                               {"cube.obj", 12},
                                               {"cube_blender_uv.ply", 12},
                                               {"two_objects_mixed_case_names.stl", 24}};
  for (const auto& [name, triangles] : expected) {
    QAVRef<QAVSurfacicRep> leaf;
    ASSERT_EQ(QAVMeshReader::Read((corpus / name).string(), leaf, error), S_OK) << error;
    EXPECT_EQ(leaf->GetTriangleCount(), triangles) << name;
  }
  for (const auto& entry : fs::directory_iterator(corpus)) {
    if (!QAVMeshReader::IsSupported(entry.path().string())) continue;
    QAVRef<QAVSurfacicRep> leaf;
    EXPECT_EQ(QAVMeshReader::Read(entry.path().string(), leaf, error), S_OK)
        << entry.path() << ": " << error;
  }
}

TEST(SceneFileTest, TheShowroomOpensInTheCurrentWindowAndPicks) {
  QAVHostDriver driver;
  std::string error;
  EXPECT_EQ(driver.OpenScene("/nonexistent/scene.json", error), E_FAIL);
  EXPECT_NE(error.find("no such file"), std::string::npos);
  EXPECT_EQ(driver.GetScene(), nullptr);
  EXPECT_EQ(QAVFrmLayout::GetCurrentLayout(), nullptr) << "nothing changed";

  const fs::path showroom = fs::path(QAV_RESOURCES_DIR) / "scenes/showroom/scene.json";
  ASSERT_EQ(driver.OpenScene(showroom.string(), error), S_OK) << error;
  QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout();
  ASSERT_NE(layout, nullptr);
  QAV3DViewer* viewer = driver.GetSceneViewer();
  ASSERT_EQ(layout->GetCurrentWindow()->GetViewer(), viewer);
  float width = 0;
  float height = 0;
  viewer->GetGraphicSize(width, height);
  EXPECT_EQ(width, 960.0F);
  EXPECT_EQ(height, 540.0F);
  viewer->GetVizViewer()->GetUsableArea(width, height);
  EXPECT_EQ(height, 500.0F);
  EXPECT_EQ(viewer->GetInfiniteEnvironmentRootName().str(), "StudioWhite");
  EXPECT_EQ(driver.GetScene()->workbench, "LiveRendering");
  EXPECT_EQ(driver.GetScene()->triangleCount, 1288);

  // The view's centre: the logo sticker on the vase, then the vase.
  std::vector<QAVRef<QAVPickPath>> paths;
  ASSERT_EQ(viewer->Pick(480, 270, 1, 1, 0, paths), S_OK);
  ASSERT_EQ(paths.size(), 2U);
  EXPECT_STREQ(paths[0]->GetRep(1)->GetModelObject()->IsA(), "QAVStkSticker");
  EXPECT_EQ(paths[1]->GetRep(1)->GetModelObject()->GetAlias().ToString().str(), "Vase");
  EXPECT_NEAR(paths[0]->GetGlobalIntersection().y, -73, 1e-3);

  driver.Restart();
  EXPECT_EQ(driver.GetScene(), nullptr);
  EXPECT_EQ(QAVFrmLayout::GetCurrentLayout(), nullptr);
}

}  // namespace
