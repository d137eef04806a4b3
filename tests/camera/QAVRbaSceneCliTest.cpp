// qavrba scene and the focus commands on the shipped showroom, as a user runs them.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "QAVTestScenes.h"
#include "QAVTestSupport.h"

namespace {

using SceneCliTest = qavtest::ProgramTest;

TEST_F(SceneCliTest, InfoAndPick) {
  qavtest::ProgramRun run = qavtest::RunQavrba("scene info " + _showroom, _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("window\t960 x 540 (usable 960 x 500)\n"), std::string::npos);
  EXPECT_NE(run.out.find("product\tQAVProduct \"Showroom\"\n  ambience\tSunset drive\n"),
            std::string::npos);
  EXPECT_NE(run.out.find("6 leaves, 1288 triangles\n"), std::string::npos);
  EXPECT_NE(run.out.find("    QAVStkSticker \"Logo\"\n      (24 triangles)\n"), std::string::npos)
      << run.out;

  run = qavtest::RunQavrba("scene pick " + _showroom + " 480 270", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  const std::size_t sticker = run.out.find("  QAVStkSticker \"Logo\"\n");
  const std::size_t vase = run.out.find("  QAVPart \"Vase\"\n");
  ASSERT_NE(sticker, std::string::npos) << run.out;
  ASSERT_NE(vase, std::string::npos) << run.out;
  EXPECT_LT(sticker, vase) << "nearest first";
  run = qavtest::RunQavrba("scene pick " + _showroom + " 5 5", _scratch);
  EXPECT_EQ(run.out, "nothing at 5 5\n");
  EXPECT_EQ(qavtest::RunQavrba("scene pick " + _showroom + " 5", _scratch).status, 2);
  EXPECT_EQ(qavtest::RunQavrba("scene pick " + _showroom + " 5 5 --box 0 1", _scratch).status, 2);

  // A faulty scene: the place of the fault, status 1.
  std::ofstream(_scratch.path() / "bad.json") << R"({"format": "qav-scene", "version": 3})";
  run = qavtest::RunQavrba("scene info bad.json", _scratch);
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("bad.json: version: 1 expected"), std::string::npos) << run.err;
  run = qavtest::RunQavrba("scene info .", _scratch);
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("not a regular file"), std::string::npos) << run.err;
}

TEST_F(SceneCliTest, FocusAndCircle) {
  // The sticker at the centre is passed over: the vase behind it takes the focus.
  qavtest::ProgramRun run = qavtest::RunQavrba("dof focus " + _showroom, _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NEAR(std::stod(run.out), 837.08, 0.01);
  EXPECT_NE(run.out.find("\tQAVPart \"Vase\"\n"), std::string::npos) << "what took the focus";
  run = qavtest::RunQavrba("dof focus " + _showroom + " --mode 2 --point 230 40 100 -o f.png",
                           _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  int width = 0;
  int height = 0;
  std::vector<unsigned char> rgb;
  ASSERT_TRUE(qavtest::DecodePng(qavtest::ReadFile(_scratch.path() / "f.png"), width, height, rgb));
  EXPECT_EQ(width, 960);
  int marked = 0;  // pixels of the focus point's marker, in amber
  for (std::size_t i = 0; i + 2 < rgb.size(); i += 3)
    marked += rgb[i] == 255 && rgb[i + 1] == 196 && rgb[i + 2] == 40;
  EXPECT_GT(marked, 20);
  run = qavtest::RunQavrba("dof focus " + _showroom + " --mode 0 --distance 1200", _scratch);
  EXPECT_EQ(run.out, "1200\n");
  run = qavtest::RunQavrba("dof focus " + _showroom + " --mode 2 --point 0 0 350", _scratch);
  EXPECT_EQ(run.out, "900\n");
  EXPECT_EQ(qavtest::RunQavrba("dof focus " + _showroom + " --mode 3", _scratch).status, 2);

  // The view with the focus circle over it: the circle's colour on its top.
  run = qavtest::RunQavrba("scene view " + _showroom + " -o view.png --focus-circle", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  ASSERT_TRUE(
      qavtest::DecodePng(qavtest::ReadFile(_scratch.path() / "view.png"), width, height, rgb));
  EXPECT_EQ(width, 960);
  EXPECT_EQ(height, 540);
  const std::size_t top = 3 * (static_cast<std::size_t>(270 - 173) * 960 + 480);  // 172.5 up
  EXPECT_EQ(rgb[top], 255);
  EXPECT_EQ(rgb[top + 1], 196);
  // "." names no picture (a usage error); a folder named like one cannot be written.
  EXPECT_EQ(qavtest::RunQavrba("scene view " + _showroom + " -o .", _scratch).status, 2);
  std::filesystem::create_directories(_scratch.path() / "folder.png");
  EXPECT_EQ(qavtest::RunQavrba("scene view " + _showroom + " -o folder.png", _scratch).status, 1);
  EXPECT_EQ(qavtest::RunQavrba("scene view " + _showroom, _scratch).status, 2);

  run = qavtest::RunQavrba("dof circle " + _showroom + " -o circle.svg", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "centre\t480 270\nradius\t172.5\noffset\t40\n");
  const std::string svg = qavtest::ReadFile(_scratch.path() / "circle.svg");
  EXPECT_NE(svg.find("<circle cx=\"480\" cy=\"270\" r=\"172.5\""), std::string::npos);
  EXPECT_NE(svg.find("<rect x=\"0\" y=\"500\" width=\"960\" height=\"40\""), std::string::npos)
      << "the unusable band, to scale";
}

TEST_F(SceneCliTest, LiveHudLinesAndPicture) {
  qavtest::ProgramRun run =
      qavtest::RunQavrba("hud " + _showroom +
                             " --in-progress --total 256 --render 17 --resources GPU "
                             "--backplate plates/road.png -o hud.svg",
                         _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "Rendering in progress...\nRendering information\nResolution: 960 x 540\n"
            "Ambience: StudioWhite\nBackplate: road\nResources: GPU\n"
            "Frames rendered: 17\nTotal: 256\n");
  const std::string svg = qavtest::ReadFile(_scratch.path() / "hud.svg");
  EXPECT_NE(svg.find("<image x=\"0\" y=\"0\" width=\"960\" height=\"540\" "
                     "href=\"data:image/png;base64,iVBORw0KGgo"),
            std::string::npos);
  EXPECT_NE(svg.find(">Total: 256</text>"), std::string::npos);

  // Not in progress, no backplate: those lines are hidden.
  run = qavtest::RunQavrba("hud " + _showroom + " --ambience /studio/Dusk.hdr", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "Rendering information\nResolution: 960 x 540\nAmbience: Dusk\n");
}

}  // namespace
