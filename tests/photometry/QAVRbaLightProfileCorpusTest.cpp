// The shared corpus of real IES files: each is read with the result decided for
// it by reading the file, and sampling never goes wrong on any that read.
// Skips when the corpus is not beside the project.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <string>

#include "QAVRbaLightProfile.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

struct Expected {
  bool reads;
  const char* why;  // for a rejected file, the start of the reason
};

// Decided file by file. The rejected ones: three keyword lines of 132
// characters or more (183, 150 and 136), a header that says 3 horizontal
// planes where the file holds 2 (the data runs out), and a text line where the
// lamp count should be.
const std::map<std::string, Expected>& Decisions() {
  static const std::map<std::string, Expected> decisions = {
      {"arnold_bega_iesna91_73x37_h0-180.ies", {true, ""}},
      {"arnold_erco_1986_19x1.ies", {true, ""}},
      {"babylon_lm63_2019.ies", {true, ""}},
      {"blc_bad_header_exponent_crlf.ies", {true, ""}},
      {"cu_2002_199x38_irregular_crlf.ies", {true, ""}},
      {"cu_2002_37x9_h0-360_crlf.ies", {true, ""}},
      {"cu_2002_kw183_h0-180_crlf.ies", {false, "line 23: 132 characters or more"}},
      {"cu_typeB_h0-90_crlf.ies", {true, ""}},
      {"cu_typeB_hm90-90_crlf.ies", {true, ""}},
      {"eu_1995_263x361_large_crlf.ies", {true, ""}},
      {"eu_tilt_include_synthetic.ies", {true, ""}},
      {"gldf_2002_v0-140_h90-270_crlf.ies", {true, ""}},
      // Its counts (47 x 1) are met by the first 95 numbers; the rest is not read.
      {"gldf_malformed_angle_lists.ies", {true, ""}},
      {"iv360_2002_181x25_longlines.ies", {true, ""}},
      {"iv360_malformed_count_mismatch.ies", {false, "end of file after 361 of 543 candela"}},
      {"lith_2002_181x73_v0-90_crlf.ies", {false, "line 9: 132 characters or more"}},
      {"lith_2002_h90-270_kw136_crlf.ies", {false, "line 9: 132 characters or more"}},
      {"lith_2002_tiny_21x1_crlf.ies", {true, ""}},
      {"luxcore_2002_crlf_37x73_h0-180.ies", {true, ""}},
      {"mdl_iesna91_onevalue_no_final_eol.ies", {true, ""}},
      {"mdl_malformed_garbage_line_crlf.ies", {false, "line 3: token 'file'"}},
      {"mdl_typeB_tiny_2x5_crlf.ies", {true, ""}},
      {"pv_1995_crlf_multiline_keywords.ies", {true, ""}},
      {"radiance_iesna95_header_sccs_line.ies", {true, ""}},
      {"rp_1995_35x35_v0-180_h0-180.ies", {true, ""}},
      {"rp_1995_73x1_v0-180_longline.ies", {true, ""}},
      {"rp_1995_leading_space_header_feet.ies", {true, ""}},
      {"rp_2002_37x73_h0-180.ies", {true, ""}},
      {"rp_erco_1986_73x2_h0-90.ies", {true, ""}},
      {"rp_erco_1986_onevalue_end_ctrlz.ies", {true, ""}},
      {"rp_lithonia_iesna91_commas.ies", {true, ""}},
      {"rpr_iesna91_269v_h0-360_2planes.ies", {true, ""}},
      {"threejs_bega_1995_19x24_h0-345.ies", {true, ""}},
  };
  return decisions;
}

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
    const auto decision = Decisions().find(name);
    ASSERT_NE(decision, Decisions().end()) << name << ": a new corpus file; decide its result";
    QAVRbaLightProfile profile;
    const bool read = profile.ReadIESFile(QAVUnicodeString(entry.path().string()));
    EXPECT_EQ(read, decision->second.reads) << name << ": " << profile.GetLastError().str();
    if (!read) {
      EXPECT_EQ(profile.GetLastError().str().rfind(decision->second.why, 0), 0u)
          << name << ": " << profile.GetLastError().str();
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
    using Symmetry = QAVRbaLightProfile::HorizontalSymmetry;
    using Coverage = QAVRbaLightProfile::VerticalCoverage;
    const bool dark = profile.GetHorizontalSymmetry() == Symmetry::Unsupported ||
                      profile.GetVerticalCoverage() == Coverage::Unsupported;
    if (dark) {
      EXPECT_EQ(lit, 0) << name;
    }
  }
  EXPECT_EQ(files, static_cast<int>(Decisions().size()));
}

TEST(LightProfileCorpusTest, ValuesOfSelectedFiles) {
  const fs::path dir = CorpusDir();
  if (dir.empty() || !fs::is_directory(dir)) GTEST_SKIP() << "no shared IES corpus";
  QAVRbaLightProfile p;
  auto read = [&](const char* name) {
    return p.ReadIESFile(QAVUnicodeString((dir / name).string()));
  };

  ASSERT_TRUE(read("eu_1995_263x361_large_crlf.ies")) << p.GetLastError().str();
  EXPECT_EQ(p.GetNumberOfVerticalAngles(), 263);
  EXPECT_EQ(p.GetNumberOfHorizontalAngles(), 361);
  EXPECT_EQ(p.GetVerticalAngles().back(), 180.0);
  EXPECT_EQ(p.GetHorizontalAngles().back(), 360.0);

  // TILT=INCLUDE with four angle and factor pairs, then a 5 x 1 table.
  ASSERT_TRUE(read("eu_tilt_include_synthetic.ies")) << p.GetLastError().str();
  EXPECT_EQ(p.GetNumberOfLamps(), 1);
  EXPECT_EQ(p.GetVerticalAngles(), (std::vector<double>{0.0, 22.5, 45.0, 67.5, 90.0}));
  EXPECT_EQ(p.GetLightProfileValue(123, 22.5), 900.0);
  EXPECT_EQ(p.GetLightProfileValue(0, 11.25), 950.0);

  // The malformed angle lists: 47 times 25 then 47 times 205 on one line, then
  // 205.0. The vertical angles are the 25s, the one horizontal angle is the
  // first 205, the candela row the other 46 and the 205.0 of the next line.
  ASSERT_TRUE(read("gldf_malformed_angle_lists.ies")) << p.GetLastError().str();
  EXPECT_EQ(p.GetVerticalAngles(), std::vector<double>(47, 25.0));
  EXPECT_EQ(p.GetHorizontalAngles(), (std::vector<double>{205.0}));
  for (int j = 0; j < 47; ++j)
    EXPECT_EQ(p.GetCandelaValue(0, j), 205.0) << j;
  EXPECT_EQ(p.GetLightProfileValue(80, 170), 205.0);  // V range 0: v becomes 25

  // Type B with vertical -90..90 stored negated: a backwards range, no light.
  ASSERT_TRUE(read("mdl_typeB_tiny_2x5_crlf.ies")) << p.GetLastError().str();
  EXPECT_EQ(p.GetVerticalAngles(), (std::vector<double>{90.0, -90.0}));
  EXPECT_EQ(p.GetLightProfileValue(0, 0), 0.0);

  // The Ctrl-Z after the data is never reached; the multiplier is 2.2.
  ASSERT_TRUE(read("rp_erco_1986_onevalue_end_ctrlz.ies")) << p.GetLastError().str();
  EXPECT_EQ(p.GetNumberOfVerticalAngles(), 19);
  EXPECT_DOUBLE_EQ(p.GetLightProfileValue(77, 0), 2.2 * p.GetCandelaValue(0, 0));
}

}  // namespace
