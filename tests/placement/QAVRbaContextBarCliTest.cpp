// qavrba bar and qavrba place as a user runs them: the rows printed, the
// mapping type shown first after a press, the pictures written, and the
// clear refusals of unknown bars, types, objects and buttons.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QAVTestScenes.h"
#include "QAVTestSupport.h"

namespace {

using ContextBarCliTest = qavtest::ProgramTest;

TEST_F(ContextBarCliTest, BarRowsAndTheirPictures) {
  qavtest::ProgramRun run =
      qavtest::RunQavrba("bar sticker --mapping spherical -o bar.svg", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("QAVRbaUIContextBarStickerComponent, mapping spherical\n"),
            std::string::npos);
  EXPECT_NE(run.out.find("  QAVCmdContainer MappingCommandsContainer\n"
                         "    QAVCmdStarter QAVRbaContextBarTypeSphericalHdr\n"
                         "    QAVCmdStarter QAVRbaContextBarTypePlanarHdr\n"),
            std::string::npos)
      << run.out;
  EXPECT_EQ(run.out.find("AlignWithCameraView"), std::string::npos) << "not for spherical";
  const std::string svg = qavtest::ReadFile(_scratch.path() / "bar.svg");
  EXPECT_EQ(svg.rfind("<svg", 0), 0u);
  EXPECT_NE(svg.find("<title>QAVRbaContextBarTypeSphericalHdr</title>"), std::string::npos);

  // No mapping type yet: the container shows no type's button first, as the
  // bars do before an object is placed, not the planar one.
  run = qavtest::RunQavrba("bar sticker --mapping none -o none.svg", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("QAVRbaUIContextBarStickerComponent, mapping none\n"), std::string::npos);
  EXPECT_NE(run.out.find("  QAVCmdContainer MappingCommandsContainer\n"
                         "    QAVCmdStarter \n"
                         "    QAVCmdStarter QAVRbaContextBarTypePlanarHdr\n"),
            std::string::npos)
      << run.out;
  EXPECT_NE(qavtest::ReadFile(_scratch.path() / "none.svg").find("<title>(nameless)</title>"),
            std::string::npos);

  run = qavtest::RunQavrba("bar cropmode", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("  QAVCmdSeparator pRowSeparator4\n"), std::string::npos);

  run = qavtest::RunQavrba("bar toolbar", _scratch);
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("unknown bar \"toolbar\""), std::string::npos) << run.err;
  run = qavtest::RunQavrba("bar material --mapping conical", _scratch);
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("unknown mapping type \"conical\""), std::string::npos) << run.err;
}

TEST_F(ContextBarCliTest, PlacementPressesButtonsInOrder) {
  qavtest::ProgramRun run =
      qavtest::RunQavrba("place " + _showroom +
                             " Vase --as sticker --press QAVRbaContextBarTypeCubicalHdr"
                             " --press QAVRbaContextBarFitToSupportScaleHdr -o place.png",
                         _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  const std::size_t cubical = run.out.find(
      "press QAVRbaContextBarTypeCubicalHdr\tQAVRbaContextBarMappingTypeCubicalCmd\n"
      "  event\tQAVRbaUIEventsCONTEXT_BAR_BEGIN_ACTIONEvt\n"
      "  event\tQAVRbaUIEventsCONTEXT_BAR_END_ACTIONEvt\n"
      "  bar filled again\n"
      "  mapping\tcubical\n");
  ASSERT_NE(cubical, std::string::npos) << run.out;
  EXPECT_NE(run.out.find("press QAVRbaContextBarFitToSupportScaleHdr", cubical), std::string::npos);
  int width = 0;
  int height = 0;
  std::vector<unsigned char> rgb;
  ASSERT_TRUE(
      qavtest::DecodePng(qavtest::ReadFile(_scratch.path() / "place.png"), width, height, rgb));
  EXPECT_EQ(width, 960);
  EXPECT_EQ(height, 540);

  run = qavtest::RunQavrba("place " + _showroom + " Nothing", _scratch);
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("no object named \"Nothing\""), std::string::npos) << run.err;
  run = qavtest::RunQavrba("place " + _showroom + " Vase --as poster", _scratch);
  EXPECT_EQ(run.status, 2);
  run = qavtest::RunQavrba(
      "place " + _showroom + " Vase --press QAVRbaContextBarAlignWithCameraViewHdr", _scratch);
  EXPECT_EQ(run.status, 1) << "the material bar has no align button";
  EXPECT_NE(run.err.find("no context bar shown has a button"), std::string::npos) << run.err;
}

}  // namespace
