// Sampling a light profile: folding by symmetry, the vertical rules, the
// outside-table rule, the tolerance of 0.001 degree, interpolation and scaling.
// The expected values are worked out by hand from the small tables in
// tests/data/ies.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "QAVRbaLightProfile.h"
#include "QAVTestSupport.h"

namespace {

using Symmetry = QAVRbaLightProfile::HorizontalSymmetry;
using Coverage = QAVRbaLightProfile::VerticalCoverage;

class LightProfileSamplingTest : public ::testing::Test {
 protected:
  void Load(const std::string& name) {
    const std::string path = std::string(QAV_TEST_DATA_DIR) + "/ies/" + name;
    ASSERT_TRUE(_profile.ReadIESFile(QAVUnicodeString(path))) << _profile.GetLastError().str();
  }
  void LoadText(const std::string& text) {
    const auto path = _scratch.Write("case.ies", text);
    ASSERT_TRUE(_profile.ReadIESFile(QAVUnicodeString(path.string())))
        << _profile.GetLastError().str();
  }
  double At(double h, double v) const { return _profile.GetLightProfileValue(h, v); }

  qavtest::ScratchDir _scratch;
  QAVRbaLightProfile _profile;
};

TEST_F(LightProfileSamplingTest, RotationalProfile) {
  Load("sym_h0_v90.ies");  // V 0..90 by 10 -> 1000..100, one plane
  EXPECT_EQ(_profile.GetHorizontalSymmetry(), Symmetry::Rotational);
  EXPECT_EQ(_profile.GetVerticalCoverage(), Coverage::Hemisphere);
  for (const double h : {0.0, 33.0, 180.0, 270.0, 359.9, -45.0, 720.0})
    EXPECT_EQ(At(h, 20), 800.0) << h;
  EXPECT_EQ(At(0, 5), 950.0);
  EXPECT_EQ(At(0, 90), 100.0);
  EXPECT_EQ(At(0, 95), 0.0);        // V range 90: nothing above 90 degrees
  EXPECT_EQ(At(0, 90.0004), 0.0);   // cut before any tolerance applies
  EXPECT_EQ(At(0, 9.9996), 900.0);  // within 0.001 of 10: that angle, exactly
  EXPECT_EQ(At(0, 10.0004), 900.0);
  EXPECT_EQ(At(0, -10), 900.0);  // v = 350 -> the opposite azimuth at 10
  EXPECT_EQ(At(10, 200), 0.0);   // h 190, v 160, above 90
  EXPECT_EQ(At(10, 560), 0.0);   // 560 - 360 = 200, the same direction
  EXPECT_EQ(At(0, 360 + 30), 700.0);
}

TEST_F(LightProfileSamplingTest, QuadrantProfileMirrorsIntoTheFirstQuadrant) {
  Load("sym_h90_quadrant.ies");  // H 0 45 90, V 0 30 60 90, rows 100.., 200.., 300..
  EXPECT_EQ(_profile.GetHorizontalSymmetry(), Symmetry::Quadrant);
  EXPECT_EQ(At(135, 30), 210.0);  // 135 -> 45
  EXPECT_EQ(At(135, 15), 205.0);
  EXPECT_DOUBLE_EQ(At(300, 0), 300.0 / 3 + 400.0 / 3);          // 300 -> 60, t = 2/3 on 45
  EXPECT_DOUBLE_EQ(At(100, 0), 300.0 * 7 / 9 + 200.0 * 2 / 9);  // 100 -> 80
  EXPECT_EQ(At(22.5, 15), 155.0);                               // bilinear, all four weights 1/4
  EXPECT_EQ(At(45.0004, 30), 210.0);                            // counts as 45: no interpolation
  EXPECT_DOUBLE_EQ(At(44.9, 30), 210.0 - 100.0 * 0.1 / 45);
  EXPECT_EQ(At(0, 95), 0.0);
  // The fold makes the four quadrants identical.
  for (int a = 0; a <= 12; ++a)
    for (int b = 0; b <= 18; ++b) {
      const double h = 7.5 * a;
      const double v = 5.0 * b;
      const double value = At(h, v);
      EXPECT_EQ(At(180 - h, v), value) << h << " " << v;
      EXPECT_EQ(At(180 + h, v), value) << h << " " << v;
      EXPECT_EQ(At(360 - h, v), value) << h << " " << v;
    }
}

TEST_F(LightProfileSamplingTest, BilateralProfileMirrorsAboutTheZeroPlane) {
  Load("sym_h180_bilateral.ies");  // H and V 0..180 by 45, C[i][j] = 100 (i + 1) + j
  EXPECT_EQ(_profile.GetHorizontalSymmetry(), Symmetry::Bilateral);
  EXPECT_EQ(_profile.GetVerticalCoverage(), Coverage::Sphere);
  EXPECT_EQ(At(270, 45), 301.0);  // 270 -> 90
  EXPECT_DOUBLE_EQ(At(200, 90), 502.0 * 5 / 9 + 402.0 * 4 / 9);
  // v 200 at h 10 is h 190 at v 160, mirrored to h 170; the table is linear in
  // its indices, so the bilinear result is exact.
  EXPECT_EQ(At(10, 200), At(170, 160));
  EXPECT_NEAR(At(10, 200), 100.0 * (170.0 / 45 + 1) + 160.0 / 45, 1e-9);
  EXPECT_EQ(At(0, 180), 104.0);
  for (int a = 0; a <= 16; ++a)
    for (int b = 0; b <= 24; ++b) {
      const double h = 11.25 * a;
      const double v = 7.5 * b;
      EXPECT_EQ(At(360 - h, v), At(h, v)) << h << " " << v;
    }
}

TEST_F(LightProfileSamplingTest, FullProfileHasNoWrapAround) {
  Load("sym_h360_full.ies");  // H 0..360 by 90, V 0 90 180, C[i][j] = 100 (i + 1) + j
  EXPECT_EQ(_profile.GetHorizontalSymmetry(), Symmetry::Full);
  EXPECT_DOUBLE_EQ(At(300, 90), 501.0 / 3 + 401.0 * 2 / 3);
  EXPECT_DOUBLE_EQ(At(-30, 90), 501.0 * 2 / 3 + 401.0 / 3);  // -30 -> 330
  EXPECT_EQ(At(270, 90), 401.0);
  EXPECT_EQ(At(0, 45), 100.5);
  EXPECT_EQ(At(360, 0), 100.0);  // 360 -> 0, the first plane
  // Inputs that are not numbers give no light rather than a crash.
  EXPECT_EQ(At(std::numeric_limits<double>::quiet_NaN(), 10), 0.0);
  EXPECT_EQ(At(10, std::numeric_limits<double>::infinity()), 0.0);
}

TEST_F(LightProfileSamplingTest, UnsupportedRangesGiveNoLight) {
  Load("sym_h350_unsupported.ies");  // 350 is not 360
  EXPECT_EQ(_profile.GetHorizontalSymmetry(), Symmetry::Unsupported);
  for (const double h : {0.0, 10.0, 350.0})
    for (const double v : {0.0, 45.0, 90.0})
      EXPECT_EQ(At(h, v), 0.0) << h << " " << v;
  // Types B and A store negated angles, so their ranges run backwards.
  Load("type_b.ies");
  EXPECT_EQ(_profile.GetVerticalCoverage(), Coverage::Unsupported);
  EXPECT_EQ(At(0, 0), 0.0);
  Load("type_a.ies");
  EXPECT_EQ(_profile.GetHorizontalSymmetry(), Symmetry::Unsupported);
  EXPECT_EQ(At(0, 0), 0.0);
}

TEST_F(LightProfileSamplingTest, VerticalRange360Rules) {
  // Rotational, V 0..360 by 90 -> 10..50: azimuths strictly between 90 and 270
  // read the far half of the vertical list.
  Load("sym_h0_v360.ies");
  EXPECT_EQ(_profile.GetVerticalCoverage(), Coverage::Range360);
  EXPECT_EQ(At(0, 45), 15.0);
  EXPECT_EQ(At(180, 45), 45.0);  // v 315
  EXPECT_EQ(At(90, 45), 15.0);
  EXPECT_EQ(At(270, 45), 15.0);
  // Bilateral: only azimuths above 180 are turned, by half a turn.
  Load("sym_h180_v360.ies");      // H 0 90 180, C[i][j] = 100 (i + 1) + 10 j
  EXPECT_EQ(At(270, 45), 235.0);  // h 90, v 315
  EXPECT_EQ(At(135, 45), 255.0);
  EXPECT_EQ(At(180, 45), 305.0);
}

TEST_F(LightProfileSamplingTest, OutsideTheTableAndScaling) {
  // V 10 55 100 (range 90): below the first angle there is no extrapolation;
  // above 90 the range rule cuts, even inside the table.
  LoadText("TILT=NONE\n1 1000 1.0 3 1 1 2 0 0 0\n1.0 1.0 10\n10 55 100\n0\n100 200 400\n");
  EXPECT_EQ(At(0, 5), 0.0);
  EXPECT_EQ(At(0, 10), 100.0);
  EXPECT_EQ(At(0, 32.5), 150.0);
  EXPECT_DOUBLE_EQ(At(0, 90), 400.0 * 35 / 45 + 200.0 * 10 / 45);
  EXPECT_EQ(At(0, 91), 0.0);
  // V 90..180: only exactly 90 degrees ever gives light.
  LoadText("TILT=NONE\n1 1000 1.0 3 1 1 2 0 0 0\n1.0 1.0 10\n90 135 180\n0\n7 8 9\n");
  EXPECT_EQ(At(0, 90), 7.0);
  EXPECT_EQ(At(0, 100), 0.0);
  EXPECT_EQ(At(0, 45), 0.0);
  // H 10..100 (range 90): azimuths folded below 10 are outside the table.
  LoadText("TILT=NONE\n1 1000 1.0 2 2 1 2 0 0 0\n1.0 1.0 10\n0 90\n10 100\n10 20\n30 40\n");
  EXPECT_EQ(At(5, 0), 0.0);
  EXPECT_EQ(At(175, 0), 0.0);  // mirrored to 5
  EXPECT_EQ(At(10, 0), 10.0);
  EXPECT_EQ(At(95, 0), 10.0 * 15 / 90 + 30.0 * 75 / 90);  // folded to 85
  // A candela multiplier of 2 and a ballast factor of 0.5 give the raw values.
  Load("tilt_include.ies");
  EXPECT_EQ(At(0, 0), 100.0);
  EXPECT_EQ(At(0, 45), 75.0);
  LoadText("TILT=NONE\n1 1000 3.0 2 1 1 2 0 0 0\n0.25 1.0 10\n0 90\n0\n100 50\n");
  EXPECT_EQ(At(0, 0), 75.0);
  // A valid file without angles samples as no light.
  LoadText("TILT=NONE\n1 1000 1.0 0 0 1 2 0 0 0\n1.0 1.0 10\n");
  EXPECT_TRUE(_profile.HasCompleteTable());
  EXPECT_EQ(_profile.GetHorizontalSymmetry(), Symmetry::NoTable);
  EXPECT_EQ(At(0, 0), 0.0);
}

}  // namespace
