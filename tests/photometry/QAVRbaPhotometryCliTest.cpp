// Runs the built qavrba program: the blackbody, color and ies commands.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "QAVMMColorProfile.h"
#include "QAVRef.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

std::size_t Count(const std::string& text, const std::string& part) {
  std::size_t n = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
    ++n;
  return n;
}

std::string Ies(const std::string& name) {
  return "'" + std::string(QAV_TEST_DATA_DIR) + "/ies/" + name + "'";
}

class PhotometryCliTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    qavtest::HostTest::SetUp();
    if (qavtest::QavrbaProgram().empty()) GTEST_SKIP() << "qavrba is not built";
    // Installed profiles: 1 to 5 built in; then 6 sRGB, 7 linear sRGB, 8 not a profile.
    const fs::path icc = _scratch.path() / "icc";
    fs::create_directories(icc);
    QAVRef<QAVMMColorProfile>::Adopt(QAVMMColorProfile::CreateSRGB())
        ->SaveToFile(QAVUnicodeString((icc / "1-srgb.icc").string()));
    QAVRef<QAVMMColorProfile>::Adopt(
        QAVMMColorProfile::CreateRGB("Linear sRGB", QAVRGBChromaticities::SRGB(), 1.0))
        ->SaveToFile(QAVUnicodeString((icc / "2-linear.icc").string()));
    _scratch.Write("icc/3-junk.icc", "junk");
    SetEnvAndReload("QAVHOST_ICC_PATH", icc.string());
    SetEnvAndReload("QAVHOST_ICC_SYSTEM_PATH", "");
  }

  using Run = qavtest::ProgramRun;
  // Runs the program in the scratch directory.
  Run Qavrba(const std::string& arguments) const { return qavtest::RunQavrba(arguments, _scratch); }
  std::string Output(const char* name) const { return qavtest::ReadFile(_scratch.path() / name); }
};

TEST_F(PhotometryCliTest, BlackbodyTintsAndStrip) {
  Run run = Qavrba("blackbody 2000 1000 0");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(Has(run.out, "2000 K  1.0000 0.3786 0.0491  #ff610d")) << run.out;
  // The negative blue is shown and clamped to 00 in hex.
  EXPECT_TRUE(Has(run.out, "1000 K  1.0000 0.0406 -0.0003  #ff0a00")) << run.out;
  EXPECT_TRUE(Has(run.out, "0 K (6500 K)  0.9818 1.0000 0.9885  #fafffc")) << run.out;

  for (const char* bad :
       {"blackbody", "blackbody 12x", "blackbody -100", "blackbody nan",
        "blackbody 5 --strip 1:2 -o s.svg", "blackbody --strip 5000:1000 -o s.svg",
        "blackbody --strip 0:1000 -o s.svg", "blackbody --strip 1000 -o s.svg",
        "blackbody --strip 1000:2000"}) {
    run = Qavrba(bad);
    EXPECT_EQ(run.status, 2) << bad;
    EXPECT_FALSE(run.err.empty()) << bad;
  }
  EXPECT_FALSE(fs::exists(_scratch.path() / "s.svg"));

  run = Qavrba("blackbody --strip 1000:12000 -o strip.svg");
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string svg = Output("strip.svg");
  EXPECT_EQ(svg.rfind("<?xml", 0), 0u);
  for (const char* part : {"</svg>\n", "fill=\"#ff" /* the warm end */, ">12000</text>"})
    EXPECT_TRUE(Has(svg, part)) << part;
  EXPECT_EQ(Qavrba("blackbody --strip 1000:2000 -o no/such/dir/s.svg").status, 1);

  // Outside the range where black bodies have a colour the program says so: a
  // note for the black tints of low temperatures, a refusal where the
  // computation gives no numbers.
  run = Qavrba("blackbody 300");
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(Has(run.out, "300 K  0.0000 0.0000 0.0000  #000000")) << run.out;
  EXPECT_TRUE(Has(run.err, "note: below 5")) << run.err;
  for (const char* refused : {"blackbody 2000 1e25", "blackbody --strip 100:1e38 -o s.svg",
                              "blackbody --strip=100:400 --output=s.svg"}) {
    run = Qavrba(refused);
    EXPECT_EQ(run.status, 1) << refused;
    EXPECT_TRUE(Has(run.err, "have a colour from about 5")) << run.err;
    EXPECT_TRUE(run.out.empty()) << run.out;
  }
  EXPECT_FALSE(fs::exists(_scratch.path() / "s.svg"));
}

TEST_F(PhotometryCliTest, ColorProfilesAndConversion) {
  // Numbered as the setting counts them.
  Run run = Qavrba("color profiles");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(Has(run.out, "  0  colour management off\n")) << run.out;
  EXPECT_TRUE(Has(run.out, "  6  sRGB")) << run.out;
  EXPECT_TRUE(Has(run.out, "  7  Linear sRGB\n     " + _scratch.str() + "/icc/2-linear.icc"))
      << run.out;
  EXPECT_TRUE(Has(run.out, "  8  (not a usable RGB profile)")) << run.out;

  // Linear 55 and 128 shown on an sRGB screen: 128 and 188. Off: copied as is.
  _scratch.Write("in.ppm", "P6\n# linear light\n2 1\n255\n\x00\x37\xff\x80\x80\x80"s);
  run = Qavrba("color convert --to 7 in.ppm out.ppm");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(Output("out.ppm"), "P6\n2 1\n255\n\x00\x80\xff\xbc\xbc\xbc"s);
  run = Qavrba("color convert --to 0 in.ppm off.ppm");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(Output("off.ppm"), "P6\n2 1\n255\n\x00\x37\xff\x80\x80\x80"s);

  // 16-bit samples, and another screen: sRGB pixels on a linear screen.
  _scratch.Write("in16.ppm", "P6 1 1 65535\n\x80\x00\xff\xff\x00\x00"s);
  run = Qavrba("color convert --to 6 --screen 7 in16.ppm out16.ppm");
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string out16 = Output("out16.ppm");
  ASSERT_EQ(out16.size(), 19u);  // 13 bytes of header, 3 samples of 2 bytes
  const int red =
      (static_cast<unsigned char>(out16[13]) << 8) | static_cast<unsigned char>(out16[14]);
  EXPECT_NEAR(red, 65535 * 0.21404, 20);  // sRGB 0.5 is linear 0.214
  EXPECT_EQ(out16.substr(15), "\xff\xff\x00\x00"s);
}

TEST_F(PhotometryCliTest, ConvertRefusesBadInput) {
  _scratch.Write("in.ppm", "P6\n1 1\n255\n\x10\x20\x30"s);
  const std::pair<std::string, std::string> refused[] = {
      {"P5\n1 1\n255\n\x00"s, "does not start with \"P6\""},
      {"P6\n2 2\n255\n\x00\x00\x00"s, "truncated"},
      {"P6\n2\n"s, "needs a width, a height and a maxval"},
      {"P6\n0 1\n255\n"s, "at least 1"},
      {"P6\n1 1\n0\n\x00\x00\x00"s, "maxval must be 1 to 65535"},
      {"P6\n1 1\n70000\n\x00\x00\x00\x00\x00\x00"s, "maxval must be 1 to 65535"},
      {"P6\n1 1\n100\n\x00\x00\xff"s, "above the maxval"},
      {"P6\n1 1\n255"s, "followed by one blank"},
      {"P6\n99999 99999\n255\n"s, "too large"},
      {""s, "does not start"},
  };
  for (const auto& [content, reason] : refused) {
    _scratch.Write("bad.ppm", content);
    const Run run = Qavrba("color convert --to 7 bad.ppm o.ppm");
    EXPECT_EQ(run.status, 1) << content;
    EXPECT_TRUE(Has(run.err, reason)) << run.err;
  }
  for (const auto& [to, reason] : {std::pair{8, "profile 8 is not a usable RGB ICC profile"},
                                   std::pair{9, "there is no profile 9: 8 installed"}}) {
    const Run run = Qavrba("color convert --to " + std::to_string(to) + " in.ppm o.ppm");
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Has(run.err, reason)) << run.err;
  }
  EXPECT_EQ(Qavrba("color convert --to 6 --screen 8 in.ppm o.ppm").status, 1);
  // Folders, FIFOs, missing files and usage errors are rows of the table of
  // bad input.
}

TEST_F(PhotometryCliTest, IesInfoSampleGridAndPlot) {
  Run run = Qavrba("ies info " + Ies("tilt_include.ies"));
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(Has(run.out, "lamps                3\n")) << run.out;
  EXPECT_TRUE(Has(run.out, "vertical angles      2 (0 to 90)\n")) << run.out;
  EXPECT_TRUE(Has(run.out, "horizontal symmetry  rotational")) << run.out;
  EXPECT_TRUE(Has(run.out, "peak intensity       100 cd raw at H 0 V 0; 100 cd scaled")) << run.out;
  run = Qavrba("ies info " + Ies("reject_not_a_number.ies"));
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(Has(run.err, "line 5: token 'abc' (vertical angle 2 of 3): not a number")) << run.err;
  EXPECT_TRUE(run.out.empty());

  run = Qavrba("ies sample " + Ies("sym_h90_quadrant.ies") + " 135 30 22.5 15 0 95");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "135 30 210\n22.5 15 155\n0 95 0\n");
  run = Qavrba("ies grid " + Ies("sym_h0_v90.ies") + " --step 90");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "h,v,candela\n0,0,1000\n0,90,100\n0,180,0\n90,0,1000\n90,90,100\n90,180,0\n"
            "180,0,1000\n180,90,100\n180,180,0\n270,0,1000\n270,90,100\n270,180,0\n");

  run = Qavrba("ies plot " + Ies("sym_h180_bilateral.ies") + " -o plot.svg");
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string svg = Output("plot.svg");
  EXPECT_EQ(svg.rfind("<?xml", 0), 0u);
  // Peak 504 cd: rings of 200 cd, the last one the first past the peak.
  for (const char* part : {">sym_h180_bilateral.ies</text>", "C0 - C180 plane", "stroke-dasharray",
                           ">200 cd</text>", ">600 cd</text>", "</svg>"})
    EXPECT_TRUE(Has(svg, part)) << part;
  EXPECT_FALSE(Has(svg, ">800 cd</text>"));
  // Two curves of 2 x 361 points each: a move and 721 line segments.
  EXPECT_EQ(Count(svg, "<path d=\"M"), 2u);
  EXPECT_EQ(Count(svg, " L"), 2u * 721);

  // A profile that samples as 0 everywhere says why on its diagram.
  run = Qavrba("ies plot " + Ies("type_b.ies") + " --output=zero.svg");
  ASSERT_EQ(run.status, 0) << run.err;
  for (const char* part :
       {"Every direction samples as 0 cd", "vertical angles: unsupported range", "a type B file"})
    EXPECT_TRUE(Has(Output("zero.svg"), part)) << part;
  EXPECT_FALSE(Has(Output("plot.svg"), "Every direction samples as 0 cd"));

  for (const std::string& usage :
       {"ies info"s, "ies frobnicate x"s, "ies sample " + Ies("sym_h90_quadrant.ies") + " 135",
        "ies sample " + Ies("sym_h90_quadrant.ies") + " 135 north",
        "ies grid " + Ies("sym_h0_v90.ies") + " --step 0", "ies plot " + Ies("sym_h0_v90.ies")})
    EXPECT_EQ(Qavrba(usage).status, 2) << usage;
}

}  // namespace
