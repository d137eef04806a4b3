// qavrba bbox on the shipped showroom and on a scene with a product structure,
// as a user runs it.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

class PlacementCliTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (qavtest::QavrbaProgram().empty()) GTEST_SKIP() << "qavrba is not built";
  }
  qavtest::ScratchDir _scratch;
  const std::string _showroom =
      (fs::path(QAV_RESOURCES_DIR) / "scenes/showroom/scene.json").string();
};

TEST_F(PlacementCliTest, BoxOfAnObjectsSupport) {
  // The bracket is moved and turned in the scene, but measured in its own space.
  qavtest::ProgramRun run = qavtest::RunQavrba("bbox " + _showroom + " Bracket", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "size\t120 60 100\ncentre\t60 30 50\n");

  // An instance whose part has a face is measured by that face; a representation
  // instance by its occurrence's geometry.
  const fs::path scene = _scratch.Write("plm.json", R"({
    "format": "qav-scene", "version": 1, "window": {"width": 10, "height": 10},
    "viewpoint": {"eye": [0, -9, 0], "target": [0, 0, 0]}, "product": {"name": "P"},
    "root": {"children": [
      {"class": "Panel", "name": "Door panel", "plm": "instance", "translate": [9, 9, 9],
       "shape": {"quad": [3, 2]}},
      {"class": "Rep", "name": "Handle", "plm": "rep", "translate": [9, 9, 9],
       "children": [{"translate": [1, 0, 0], "shape": {"box": [2, 2, 2]}}]}]}})");
  run = qavtest::RunQavrba("bbox " + scene.string() + " 'Door panel'", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "size\t3 2 0\ncentre\t0 0 0\n");
  run = qavtest::RunQavrba("bbox " + scene.string() + " Handle", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "size\t2 2 2\ncentre\t1 0 0\n");

  run = qavtest::RunQavrba("bbox " + _showroom + " Teapot", _scratch);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_NE(run.err.find("no object named \"Teapot\""), std::string::npos) << run.err;
  run = qavtest::RunQavrba("bbox missing.json Vase", _scratch);
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("missing.json: no such file"), std::string::npos) << run.err;
  run = qavtest::RunQavrba("bbox " + _showroom, _scratch);
  EXPECT_EQ(run.status, 2) << "the object is required";
}

}  // namespace
