// qavrba snap, run as a user runs it: hovers and a drag over the showroom, the
// frame and notification after each, the lamp never snapped to outside the
// ambience workbench, the gizmo in the picture, and bad input refused.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QAVTestScenes.h"
#include "QAVTestSupport.h"

namespace {

using SnapCliTest = qavtest::ProgramTest;

std::size_t Count(const std::string& text, const std::string& what) {
  std::size_t count = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
    ++count;
  return count;
}

TEST_F(SnapCliTest, HoversAndADragTellTheFrameAfterEachPosition) {
  // The sticker on the vase's front, then the key light (a feature), then
  // outside the view.
  qavtest::ProgramRun run = Run("snap " + _showroom + " 480 300 198 55 -5 20 -o snap.png");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(Count(run.out, "sent\t3 (hover step)\tnormal 0.000 1.000 0.000\torigin 0.000 -73.000"),
            3U)
      << "the sticker's frame, kept over the light and outside the view: " << run.out;
  EXPECT_NE(run.out.find("axes\tX 1.000 0.000 0.000\tY 0.000 0.000 -1.000\tZ 0.000 1.000 0.000"),
            std::string::npos)
      << run.out;
  EXPECT_EQ(Count(run.out, "cursor\t3 (snap target)"), 1U) << run.out;
  EXPECT_EQ(Count(run.out, "cursor\t15 (no target)"), 2U) << run.out;

  // The gizmo is drawn: the picture differs from the bare view near the sticker's point.
  run = Run("scene view " + _showroom + " -o bare.png");
  ASSERT_EQ(run.status, 0) << run.err;
  int width = 0;
  int height = 0;
  std::vector<unsigned char> snapped;
  std::vector<unsigned char> bare;
  ASSERT_TRUE(
      qavtest::DecodePng(qavtest::ReadFile(_scratch.path() / "snap.png"), width, height, snapped));
  ASSERT_TRUE(
      qavtest::DecodePng(qavtest::ReadFile(_scratch.path() / "bare.png"), width, height, bare));
  ASSERT_EQ(snapped.size(), bare.size());
  int green = 0;
  for (int y = 290; y < 310; ++y)
    for (int x = 470; x < 490; ++x) {
      const std::size_t at = 3 * (static_cast<std::size_t>(y) * width + x);
      if (snapped[at + 1] > snapped[at] + 40 && snapped[at + 1] > snapped[at + 2] + 40) ++green;
    }
  EXPECT_GT(green, 20) << "the gizmo's green square around the snapped point";

  run = Run("snap " + _showroom + " 480 300 520 260 380 450 --drag");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("press 480 300\n  sent\t0 (begin of a drag)"), std::string::npos)
      << run.out;
  EXPECT_EQ(Count(run.out, "sent\t1 (drag step)"), 2U) << run.out;
  EXPECT_NE(run.out.find("release 380 450\n  sent\t1 (drag step)"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("sent\t2 (end of a drag)"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("cursor\t14 (dragging)"), std::string::npos) << run.out;
}

}  // namespace
