// Light profiles. Reading IES files: the file layout, the line and token rules,
// the number conversions, what a failed read leaves, copies and re-reads.
// Sampling: folding by symmetry, the vertical rules, the outside-table rule, the
// tolerance of 0.001 degree, interpolation and scaling, with values worked out
// by hand from the small tables in tests/data/ies. Then the shared corpus of
// real files, skipped when it is not beside the project.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <initializer_list>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "QAVMetaClass.h"
#include "QAVRbaLightProfile.h"
#include "QAVRef.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

using Doubles = std::vector<double>;
using Symmetry = QAVRbaLightProfile::HorizontalSymmetry;
using Coverage = QAVRbaLightProfile::VerticalCoverage;

std::string Data(const std::string& name) {
  return std::string(QAV_TEST_DATA_DIR) + "/ies/" + name;
}

// Header numbers of a small file with 3 vertical angles and 1 horizontal one.
const std::string kNumbers = "1 1000 1.0 3 1 1 2 0 0 0\n1.0 1.0 10\n";
const std::string kTables = "0 45 90\n0\n100 75 50\n";

// The twelve kept header numbers, in file order.
Doubles Header(const QAVRbaLightProfile& p) {
  return {double(p.GetNumberOfLamps()),
          p.GetLumensPerLamp(),
          p.GetCandelaMultiplier(),
          double(p.GetNumberOfVerticalAngles()),
          double(p.GetNumberOfHorizontalAngles()),
          double(p.GetPhotometricType()),
          double(p.GetUnitsType()),
          p.GetWidth(),
          p.GetLength(),
          p.GetHeight(),
          p.GetBallastFactor(),
          p.GetInputWatts()};
}

Doubles Table(const QAVRbaLightProfile& p) {
  Doubles values;
  for (int i = 0; i < p.GetNumberOfHorizontalAngles(); ++i)
    for (int j = 0; j < p.GetNumberOfVerticalAngles(); ++j)
      values.push_back(p.GetCandelaValue(i, j));
  return values;
}

class LightProfileTest : public ::testing::Test {
 protected:
  bool Read(const std::string& path) { return _profile.ReadIESFile(QAVUnicodeString(path)); }
  bool ReadText(const std::string& content) {
    return Read(_scratch.Write("case.ies", content).string());
  }
  std::string Error() const { return _profile.GetLastError().str(); }
  void Load(const std::string& name) { ASSERT_TRUE(Read(Data(name))) << Error(); }
  void LoadText(const std::string& text) { ASSERT_TRUE(ReadText(text)) << Error(); }
  double At(double h, double v) const { return _profile.GetLightProfileValue(h, v); }
  // Each case is {h, v, candela}, compared exactly.
  void ExpectAt(std::initializer_list<std::array<double, 3>> cases) const {
    for (const auto& [h, v, candela] : cases)
      EXPECT_EQ(At(h, v), candela) << "at h " << h << ", v " << v;
  }

  qavtest::ScratchDir _scratch;
  QAVRbaLightProfile _profile;
};

TEST(LightProfileClassTest, MetaClassFactoryAndEmptyProfile) {
  QAVMetaClass* meta = QAVMetaClass::Find("QAVRbaLightProfile");
  ASSERT_NE(meta, nullptr);
  EXPECT_STREQ(meta->GetFramework(), "RenderingBaseUI");
  auto created = QAVRef<QAVBaseUnknown>::Adopt(meta->CreateInstance());
  auto profile = QAVQuery<QAVRbaLightProfile>(created.get());
  ASSERT_TRUE(profile);
  EXPECT_TRUE(profile->GetFileName().IsEmpty());
  EXPECT_EQ(profile->GetNumberOfVerticalAngles() + profile->GetNumberOfHorizontalAngles(), 0);
  EXPECT_FALSE(profile->HasCompleteTable());
  EXPECT_EQ(profile->GetLightProfileValue(0.0, 0.0), 0.0);
}

TEST_F(LightProfileTest, HeaderTiltBlockTablesAndLineEnds) {
  // The tilt block holds 1 + 1 + 2 + 2 tokens; the lamp count 3 follows it.
  Load("tilt_include.ies");
  EXPECT_EQ(Header(_profile), (Doubles{3, 1000, 2, 2, 1, 1, 2, 0.1, 0.2, 0.3, 0.5, 42}));
  EXPECT_EQ(_profile.GetVerticalAngles(), (Doubles{0, 90}));
  EXPECT_EQ(_profile.GetHorizontalAngles(), (Doubles{0}));
  EXPECT_EQ(Table(_profile), (Doubles{100, 50}));
  EXPECT_EQ(_profile.GetCandelaValue(1, 0), 0.0);  // outside the table

  // CRLF reads exactly like LF: lamp count 2 shows "TILT=INCLUDE\r\n" was
  // recognised, and the 131-character keyword line passed with its CR.
  QAVRbaLightProfile lf;
  ASSERT_TRUE(lf.ReadIESFile(QAVUnicodeString(Data("lf_twin.ies"))));
  Load("crlf_twin.ies");
  EXPECT_EQ(Header(_profile), Header(lf));
  EXPECT_EQ(_profile.GetNumberOfLamps(), 2);
  EXPECT_EQ(_profile.GetVerticalAngles(), lf.GetVerticalAngles());
  EXPECT_EQ(Table(_profile), (Doubles{100, 75, 50}));

  // Commas, tabs and spaces in any mixture, empty fields included.
  Load("commas.ies");
  EXPECT_EQ(Header(_profile), (Doubles{1, 1000, 1, 3, 1, 1, 2, 0, 0, 0, 1, 10}));
  EXPECT_EQ(Table(_profile), (Doubles{300, 200, 100}));
}

TEST_F(LightProfileTest, LineAndTokenLengthLimits) {
  EXPECT_TRUE(Read(Data("line_131.ies"))) << Error();
  EXPECT_FALSE(Read(Data("line_132.ies")));
  EXPECT_EQ(Error(), "line 2: 132 characters or more");
  Load("token_131.ies");
  EXPECT_EQ(_profile.GetCandelaValue(0, 0), 100.0);
  EXPECT_FALSE(Read(Data("token_132.ies")));
  EXPECT_EQ(Error(),
            "line 7: token of 132 characters or more (candela value 1 of 1, horizontal angle 1, "
            "vertical angle 1)");
  // A lone carriage return is an ordinary character and counts.
  const std::string line132 = "[X] " + std::string(126, 'a') + "\rb";
  EXPECT_FALSE(ReadText(line132 + "\nTILT=NONE\n" + kNumbers + kTables));
  EXPECT_EQ(Error(), "line 1: 132 characters or more");
  EXPECT_TRUE(ReadText(line132.substr(1) + "\nTILT=NONE\n" + kNumbers + kTables));
}

TEST_F(LightProfileTest, SignRulesOfTypesBAndA) {
  Load("type_b.ies");
  EXPECT_EQ(_profile.GetVerticalAngles(), (Doubles{90, 0, -90}));
  EXPECT_TRUE(std::signbit(_profile.GetVerticalAngles()[1]));  // -0: negated as stored
  EXPECT_EQ(_profile.GetHorizontalAngles(), (Doubles{0}));
  Load("type_a.ies");
  EXPECT_EQ(_profile.GetHorizontalAngles(), (Doubles{90, 45, 0, -45, -90}));
  EXPECT_EQ(_profile.GetVerticalAngles(), (Doubles{0, 45, 90}));
  EXPECT_EQ(_profile.GetCandelaValue(4, 2), 52.0);  // candela values keep their sign
}

TEST_F(LightProfileTest, RejectedFilesSayWhy) {
  const struct {
    const char* file;
    const char* reason;
  } cases[] = {
      {"reject_no_tilt.ies", "no \"TILT=\" line before the end of the file"},
      {"reject_bad_type.ies", "line 3: photometric type 0 (header number 6): must be 1, 2 or 3"},
      {"reject_bad_units.ies", "line 3: units type 3 (header number 7): must be 1 or 2"},
      {"reject_not_a_number.ies", "line 5: token 'abc' (vertical angle 2 of 3): not a number"},
      {"reject_missing_tokens.ies", "end of file after 5 of 6 candela values"},
      {"reject_negative_count.ies", "number of vertical angles -3: negative"},
      {"reject_huge_count.ies", "end of file after 7 of 1000000000 vertical angles"},
      {"no_such_file.ies", "cannot open the file"},
  };
  for (const auto& c : cases) {
    EXPECT_FALSE(Read(Data(c.file))) << c.file;
    EXPECT_EQ(Error(), c.reason) << c.file;
  }
  EXPECT_FALSE(ReadText("TILT=NONE\n1 1000 1.0 3 1 1 2 0 0 0 1.0\n"));
  EXPECT_EQ(Error(), "end of file before the header number 12, ballast-lamp photometric factor");
  EXPECT_FALSE(ReadText("TILT=NONE\nx1 1000 1.0 3 1 1 2 0 0 0 1.0 1 1\n"));
  EXPECT_EQ(Error(), "line 2: token 'x1' (header number 1, number of lamps): not an integer");
  EXPECT_FALSE(ReadText("TILT=INCLUDE\n1\n3\n0 45 90\n1 1\n"));
  EXPECT_EQ(Error(), "end of file after 2 of 3 tilt multiplying factors");
  // Data after the candela table is never read, even text or an overlong line.
  Load("extra_data.ies");
  EXPECT_EQ(Table(_profile), (Doubles{100, 75, 50}));
}

TEST_F(LightProfileTest, TiltLineAndCharacterRules) {
  // "TILT=" is compared case-sensitively on the first five characters; only the
  // exact line "TILT=INCLUDE" has a tilt block. A named tilt file is not opened.
  EXPECT_TRUE(ReadText("IES\nTILT=/no/such/file.tlt\n" + kNumbers + kTables)) << Error();
  EXPECT_FALSE(ReadText("IES\nTilt=NONE\n" + kNumbers + kTables));
  EXPECT_TRUE(ReadText("TILT=INCLUDE \n" + kNumbers + kTables)) << Error();  // no block
  // A NUL byte ends the text of a line.
  EXPECT_TRUE(ReadText(std::string("TILT=INCLUDE\0junk\n1 0 ", 22) + kNumbers + kTables))
      << Error();

  // A byte 255 ends a line or a token like an end of file, and reading goes on
  // after it; where a line or a token should begin it fails the read.
  ASSERT_TRUE(ReadText("IES\n[X] abc\xffTILT=NONE\n" + kNumbers + "0 45\xff" + "90\n0\n100 75 50"))
      << Error();
  EXPECT_EQ(_profile.GetVerticalAngles(), (Doubles{0, 45, 90}));
  EXPECT_EQ(Table(_profile), (Doubles{100, 75, 50}));  // no newline after the last value
  EXPECT_FALSE(ReadText("IES\n\xff[X]\nTILT=NONE\n" + kNumbers + kTables));
  EXPECT_EQ(Error(), "line 2: byte 255 (read as end of file) before any \"TILT=\" line");
  EXPECT_FALSE(ReadText("TILT=NONE\n" + kNumbers + "0 45 \xff" + "90\n0\n1 2 3\n"));
  EXPECT_EQ(Error(), "line 4: byte 255 (read as end of file) after 2 of 3 vertical angles");

  // A lone carriage return and a semicolon belong to the token; "%le" converts
  // its leading number. "0\r5" and "45;90" are single tokens here.
  ASSERT_TRUE(ReadText("TILT=NONE\n" + kNumbers + "0\r5 45;90 90\n0\n1 2 3\n")) << Error();
  EXPECT_EQ(_profile.GetVerticalAngles(), (Doubles{0, 45, 90}));
}

TEST_F(LightProfileTest, NumbersConvertExactlyAsScanfDoes) {
  std::vector<std::string> tokens;
  std::istringstream list(
      "0.1 1e-5 +.5 1. -0 5e 1e+0010 123456789012345678901234567890 2.2250738585072011e-308 "
      "4.9e-324 1e-400 1e400 0x1p4 12abc 1.5.3 9007199254740993 0.30000000000000004 -inf nan");
  for (std::string token; list >> token;)
    tokens.push_back(token);
  std::string text =
      "TILT=NONE\n1 1000 1.0 " + std::to_string(tokens.size()) + " 1 1 2 0 0 0 1 1 1\n";
  for (std::size_t k = 0; k < tokens.size(); ++k)
    text += std::to_string(k) + " ";
  text += "\n0\n";
  for (const std::string& t : tokens)
    text += t + "\n";
  ASSERT_TRUE(ReadText(text)) << Error();
  for (std::size_t k = 0; k < tokens.size(); ++k) {
    double expected = 0.0;
    ASSERT_EQ(std::sscanf(tokens[k].c_str(), "%le", &expected), 1);  // NOLINT(cert-err34-c)
    const double got = _profile.GetCandelaValue(0, static_cast<int>(k));
    if (!std::isnan(expected) || !std::isnan(got)) {
      EXPECT_EQ(std::bit_cast<std::uint64_t>(got), std::bit_cast<std::uint64_t>(expected))
          << "token '" << tokens[k] << "': " << got << " instead of " << expected;
    }
  }
  for (const char* bad : {"+-1", ".", "e5", "-", "\2615"})
    EXPECT_FALSE(ReadText("TILT=NONE\n1 1000 " + std::string(bad) + " 0 0 1 2 0 0 0 1 1 1\n"))
        << bad;
  // "%d" beyond the range of int gives what sscanf gives.
  int wrapped = 0;
  ASSERT_EQ(std::sscanf("4294967297", "%d", &wrapped), 1);  // NOLINT(cert-err34-c)
  ASSERT_TRUE(ReadText("TILT=NONE\n4294967297 1 1 0 0 1 2 0 0 0 1 1 1\n")) << Error();
  EXPECT_EQ(_profile.GetNumberOfLamps(), wrapped);
  // "%d": signs, leading zeros and the integer part of what follows.
  ASSERT_TRUE(ReadText("TILT=NONE\n+007 1000 1.0 2x 1.9 1 2 0 0 0 1 1 1\n0 90\n0\n1 2\n"))
      << Error();
  EXPECT_EQ(Header(_profile), (Doubles{7, 1000, 1, 2, 1, 1, 2, 0, 0, 0, 1, 1}));
}

TEST_F(LightProfileTest, ReReadsAndFailedReadsLeaveTheDocumentedState) {
  Load("sym_h180_bilateral.ies");
  Load("type_b.ies");
  EXPECT_EQ(_profile.GetNumberOfHorizontalAngles(), 1);
  EXPECT_EQ(Table(_profile), (Doubles{5, 6, 7}));
  // A file that cannot be opened: the earlier tables and counts go, the other
  // numbers stay, the name is the new one.
  EXPECT_FALSE(Read(Data("no_such_file.ies")));
  EXPECT_EQ(_profile.GetFileName().str(), Data("no_such_file.ies"));
  EXPECT_EQ(Header(_profile), (Doubles{1, 1000, 1, 0, 0, 2, 2, 0, 0, 0, 1, 10}));
  EXPECT_TRUE(_profile.GetVerticalAngles().empty());
  // A failure in the header keeps the numbers read up to it.
  EXPECT_FALSE(Read(Data("reject_bad_units.ies")));
  EXPECT_EQ(Header(_profile), (Doubles{1, 1000, 1, 1, 1, 1, 3, 0, 0, 0, 1, 10}));
  // A failure in the candela part keeps the values read so far; the incomplete
  // table is never sampled.
  EXPECT_FALSE(Read(Data("reject_missing_tokens.ies")));
  EXPECT_EQ(_profile.GetHorizontalAngles(), (Doubles{0, 90}));
  EXPECT_EQ(Table(_profile), (Doubles{100, 75, 50, 100, 75, 0}));
  EXPECT_FALSE(_profile.HasCompleteTable());
  EXPECT_EQ(At(0.0, 0.0), 0.0);
  Load("sym_h0_v90.ies");
  EXPECT_EQ(At(0.0, 5.0), 950.0);
}

TEST_F(LightProfileTest, CopiesAreDeep) {
  Load("sym_h90_quadrant.ies");
  const double sample = At(300.0, 15.0);
  auto copy = QAVMakeRef<QAVRbaLightProfile>(_profile);
  EXPECT_EQ(copy->GetRefCount(), 1u);
  QAVRbaLightProfile assigned;
  ASSERT_TRUE(assigned.ReadIESFile(QAVUnicodeString(Data("type_b.ies"))));
  assigned = _profile;
  Load("sym_h0_v90.ies");  // the source changes; the copies do not
  EXPECT_NE(At(300.0, 15.0), sample);
  for (const QAVRbaLightProfile* p : {copy.get(), &assigned}) {
    EXPECT_EQ(p->GetFileName().str(), Data("sym_h90_quadrant.ies"));
    EXPECT_EQ(p->GetHorizontalAngles(), (Doubles{0, 45, 90}));
    EXPECT_EQ(p->GetLightProfileValue(300.0, 15.0), sample);
  }
}

TEST_F(LightProfileTest, RotationalProfile) {
  Load("sym_h0_v90.ies");  // V 0..90 by 10 -> 1000..100, one plane
  EXPECT_EQ(_profile.GetHorizontalSymmetry(), Symmetry::Rotational);
  EXPECT_EQ(_profile.GetVerticalCoverage(), Coverage::Hemisphere);
  for (const double h : {0.0, 33.0, 180.0, 270.0, 359.9, -45.0, 720.0})
    EXPECT_EQ(At(h, 20), 800.0) << h;
  // V range 90: nothing above 90 degrees, cut before any tolerance applies;
  // within 0.001 of 10 is that angle, exactly. v -10 is v 350: the opposite
  // azimuth at 10. v 200 at h 10 is h 190 at v 160, above 90; 560 is 200.
  ExpectAt({{0, 5, 950},
            {0, 90, 100},
            {0, 95, 0},
            {0, 90.0004, 0},
            {0, 9.9996, 900},
            {0, 10.0004, 900},
            {0, -10, 900},
            {10, 200, 0},
            {10, 560, 0},
            {0, 390, 700}});
}

TEST_F(LightProfileTest, QuadrantProfileMirrorsIntoTheFirstQuadrant) {
  Load("sym_h90_quadrant.ies");  // H 0 45 90, V 0 30 60 90, rows 100.., 200.., 300..
  EXPECT_EQ(_profile.GetHorizontalSymmetry(), Symmetry::Quadrant);
  // 135 -> 45; bilinear with all four weights 1/4 at 22.5, 15; 45.0004 counts
  // as 45: no interpolation.
  ExpectAt({{135, 30, 210}, {135, 15, 205}, {22.5, 15, 155}, {45.0004, 30, 210}, {0, 95, 0}});
  EXPECT_DOUBLE_EQ(At(300, 0), 300.0 / 3 + 400.0 / 3);          // 300 -> 60, t = 2/3 on 45
  EXPECT_DOUBLE_EQ(At(100, 0), 300.0 * 7 / 9 + 200.0 * 2 / 9);  // 100 -> 80
  EXPECT_DOUBLE_EQ(At(44.9, 30), 210.0 - 100.0 * 0.1 / 45);
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

TEST_F(LightProfileTest, BilateralProfileMirrorsAboutTheZeroPlane) {
  Load("sym_h180_bilateral.ies");  // H and V 0..180 by 45, C[i][j] = 100 (i + 1) + j
  EXPECT_EQ(_profile.GetHorizontalSymmetry(), Symmetry::Bilateral);
  EXPECT_EQ(_profile.GetVerticalCoverage(), Coverage::Sphere);
  ExpectAt({{270, 45, 301}, {0, 180, 104}});  // 270 -> 90
  EXPECT_DOUBLE_EQ(At(200, 90), 502.0 * 5 / 9 + 402.0 * 4 / 9);
  // v 200 at h 10 is h 190 at v 160, mirrored to h 170; the table is linear in
  // its indices, so the bilinear result is exact.
  EXPECT_EQ(At(10, 200), At(170, 160));
  EXPECT_NEAR(At(10, 200), 100.0 * (170.0 / 45 + 1) + 160.0 / 45, 1e-9);
  for (int a = 0; a <= 16; ++a)
    for (int b = 0; b <= 24; ++b)
      EXPECT_EQ(At(360 - 11.25 * a, 7.5 * b), At(11.25 * a, 7.5 * b)) << a << " " << b;
}

TEST_F(LightProfileTest, FullProfileHasNoWrapAround) {
  Load("sym_h360_full.ies");  // H 0..360 by 90, V 0 90 180, C[i][j] = 100 (i + 1) + j
  EXPECT_EQ(_profile.GetHorizontalSymmetry(), Symmetry::Full);
  EXPECT_DOUBLE_EQ(At(300, 90), 501.0 / 3 + 401.0 * 2 / 3);
  EXPECT_DOUBLE_EQ(At(-30, 90), 501.0 * 2 / 3 + 401.0 / 3);  // -30 -> 330
  // 360 -> 0, the first plane. Inputs that are not numbers give no light.
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  ExpectAt({{270, 90, 401},
            {0, 45, 100.5},
            {360, 0, 100},
            {kNaN, 10, 0},
            {10, std::numeric_limits<double>::infinity(), 0}});
}

TEST_F(LightProfileTest, UnsupportedRangesGiveNoLight) {
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

TEST_F(LightProfileTest, VerticalRange360Rules) {
  // Rotational, V 0..360 by 90 -> 10..50: azimuths strictly between 90 and 270
  // read the far half of the vertical list (180, 45 is v 315).
  Load("sym_h0_v360.ies");
  EXPECT_EQ(_profile.GetVerticalCoverage(), Coverage::Range360);
  ExpectAt({{0, 45, 15}, {180, 45, 45}, {90, 45, 15}, {270, 45, 15}});
  // Bilateral: only azimuths above 180 are turned, by half a turn: 270, 45 is
  // h 90, v 315.
  Load("sym_h180_v360.ies");  // H 0 90 180, C[i][j] = 100 (i + 1) + 10 j
  ExpectAt({{270, 45, 235}, {135, 45, 255}, {180, 45, 305}});
}

TEST_F(LightProfileTest, OutsideTheTableAndScaling) {
  // V 10 55 100 (range 90): below the first angle there is no extrapolation;
  // above 90 the range rule cuts, even inside the table.
  LoadText("TILT=NONE\n1 1000 1.0 3 1 1 2 0 0 0\n1.0 1.0 10\n10 55 100\n0\n100 200 400\n");
  ExpectAt({{0, 5, 0}, {0, 10, 100}, {0, 32.5, 150}, {0, 91, 0}});
  EXPECT_DOUBLE_EQ(At(0, 90), 400.0 * 35 / 45 + 200.0 * 10 / 45);
  // V 90..180: only exactly 90 degrees ever gives light.
  LoadText("TILT=NONE\n1 1000 1.0 3 1 1 2 0 0 0\n1.0 1.0 10\n90 135 180\n0\n7 8 9\n");
  ExpectAt({{0, 90, 7}, {0, 100, 0}, {0, 45, 0}});
  // H 10..100 (range 90): azimuths folded below 10 (175 mirrors to 5) are
  // outside the table; 95 folds to 85.
  LoadText("TILT=NONE\n1 1000 1.0 2 2 1 2 0 0 0\n1.0 1.0 10\n0 90\n10 100\n10 20\n30 40\n");
  ExpectAt({{5, 0, 0}, {175, 0, 0}, {10, 0, 10}, {95, 0, 10.0 * 15 / 90 + 30.0 * 75 / 90}});
  // A candela multiplier of 2 and a ballast factor of 0.5 give the raw values.
  Load("tilt_include.ies");
  ExpectAt({{0, 0, 100}, {0, 45, 75}});
  LoadText("TILT=NONE\n1 1000 3.0 2 1 1 2 0 0 0\n0.25 1.0 10\n0 90\n0\n100 50\n");
  EXPECT_EQ(At(0, 0), 75.0);
  // A valid file without angles samples as no light.
  LoadText("TILT=NONE\n1 1000 1.0 0 0 1 2 0 0 0\n1.0 1.0 10\n");
  EXPECT_TRUE(_profile.HasCompleteTable());
  EXPECT_EQ(_profile.GetHorizontalSymmetry(), Symmetry::NoTable);
  EXPECT_EQ(At(0, 0), 0.0);
}

// The corpus holds 33 files. Five are rejected, with the start of the reason:
// three keyword lines of 132 characters or more (183, 150 and 136), a header
// that says 3 horizontal planes where the file holds 2 (the data runs out), and
// a text line where the lamp count should be. Every other file reads.
constexpr int kCorpusFiles = 33;
const std::map<std::string, std::string> kRejected = {
    {"cu_2002_kw183_h0-180_crlf.ies", "line 23: 132 characters or more"},
    {"iv360_malformed_count_mismatch.ies", "end of file after 361 of 543 candela"},
    {"lith_2002_181x73_v0-90_crlf.ies", "line 9: 132 characters or more"},
    {"lith_2002_h90-270_kw136_crlf.ies", "line 9: 132 characters or more"},
    {"mdl_malformed_garbage_line_crlf.ies", "line 3: token 'file'"},
};

fs::path CorpusDir() {
  const fs::path shared = qavtest::SharedDir();
  return shared.empty() ? fs::path() : shared / "ies-corpus";
}

TEST(LightProfileCorpusTest, EveryFileReadsAsDecidedAndSamplesSafely) {
  const fs::path dir = CorpusDir();
  if (dir.empty() || !fs::is_directory(dir)) GTEST_SKIP() << "no shared IES corpus";
  int files = 0;
  for (const auto& entry : fs::directory_iterator(dir)) {
    const std::string name = entry.path().filename().string();
    std::string lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(), ::tolower);
    if (lower.size() < 4 || lower.substr(lower.size() - 4) != ".ies") continue;
    ++files;
    const auto rejected = kRejected.find(name);
    QAVRbaLightProfile profile;
    const bool read = profile.ReadIESFile(QAVUnicodeString(entry.path().string()));
    const std::string error = profile.GetLastError().str();
    EXPECT_EQ(read, rejected == kRejected.end()) << name << ": " << error;
    if (!read) {
      const std::string why = rejected == kRejected.end() ? "" : rejected->second;
      EXPECT_EQ(error.rfind(why, 0), 0u) << name << ": " << error;
      continue;
    }
    // Every sample is a weighted mean of table values with weights in [0, 1],
    // times the scale: it is finite and bounded by the largest magnitude.
    double largest = 0.0;
    for (int i = 0; i < profile.GetNumberOfHorizontalAngles(); ++i)
      for (int j = 0; j < profile.GetNumberOfVerticalAngles(); ++j)
        largest = std::max(largest, std::fabs(profile.GetCandelaValue(i, j)));
    const double bound = largest *
                         std::fabs(profile.GetCandelaMultiplier() * profile.GetBallastFactor()) *
                         (1 + 1e-12);
    int lit = 0;
    for (int a = 0; a <= 168; ++a)
      for (int b = 0; b <= 168; ++b) {
        const double h = -30.0 + 2.5 * a;
        const double v = -30.0 + 2.5 * b;
        const double value = profile.GetLightProfileValue(h, v);
        ASSERT_TRUE(std::isfinite(value)) << name << " at " << h << " " << v;
        ASSERT_LE(std::fabs(value), bound) << name << " at " << h << " " << v;
        lit += value != 0.0;
      }
    if (profile.GetHorizontalSymmetry() == Symmetry::Unsupported ||
        profile.GetVerticalCoverage() == Coverage::Unsupported) {
      EXPECT_EQ(lit, 0) << name;
    }
  }
  EXPECT_EQ(files, kCorpusFiles) << "the corpus changed: decide the result of each new file";
}

TEST_F(LightProfileTest, ValuesOfSelectedCorpusFiles) {
  const fs::path dir = CorpusDir();
  if (dir.empty() || !fs::is_directory(dir)) GTEST_SKIP() << "no shared IES corpus";
  ASSERT_TRUE(Read((dir / "eu_1995_263x361_large_crlf.ies").string())) << Error();
  EXPECT_EQ(_profile.GetNumberOfVerticalAngles(), 263);
  EXPECT_EQ(_profile.GetNumberOfHorizontalAngles(), 361);

  // TILT=INCLUDE with four angle and factor pairs, then a 5 x 1 table.
  ASSERT_TRUE(Read((dir / "eu_tilt_include_synthetic.ies").string())) << Error();
  EXPECT_EQ(_profile.GetNumberOfLamps(), 1);
  EXPECT_EQ(_profile.GetVerticalAngles(), (Doubles{0.0, 22.5, 45.0, 67.5, 90.0}));
  EXPECT_EQ(At(123, 22.5), 900.0);
  EXPECT_EQ(At(0, 11.25), 950.0);

  // The malformed angle lists: 47 times 25 then 47 times 205 on one line, then
  // 205.0. The vertical angles are the 25s, the one horizontal angle is the
  // first 205, the candela row the other 46 and the 205.0 of the next line; the
  // rest of the file is not read.
  ASSERT_TRUE(Read((dir / "gldf_malformed_angle_lists.ies").string())) << Error();
  EXPECT_EQ(_profile.GetVerticalAngles(), Doubles(47, 25.0));
  EXPECT_EQ(_profile.GetHorizontalAngles(), (Doubles{205.0}));
  EXPECT_EQ(Table(_profile), Doubles(47, 205.0));
  EXPECT_EQ(At(80, 170), 205.0);  // V range 0: v becomes 25
}

}  // namespace
