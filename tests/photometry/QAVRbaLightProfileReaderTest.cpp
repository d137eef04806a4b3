// Reading IES files into a light profile: the file layout, the line and token
// rules, the number conversions, what a failed read leaves, copies and re-reads.
#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "QAVMetaClass.h"
#include "QAVRbaLightProfile.h"
#include "QAVRef.h"
#include "QAVTestSupport.h"

namespace {

using Doubles = std::vector<double>;

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

class LightProfileReaderTest : public ::testing::Test {
 protected:
  bool Read(const std::string& path) { return _profile.ReadIESFile(QAVUnicodeString(path)); }
  bool ReadText(const std::string& content) {
    return Read(_scratch.Write("case.ies", content).string());
  }
  std::string Error() const { return _profile.GetLastError().str(); }

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
  EXPECT_TRUE(profile->IsAKindOf("QAVBaseUnknown"));
  EXPECT_TRUE(profile->GetFileName().IsEmpty());
  EXPECT_EQ(profile->GetNumberOfVerticalAngles() + profile->GetNumberOfHorizontalAngles(), 0);
  EXPECT_FALSE(profile->HasCompleteTable());
  EXPECT_EQ(profile->GetLightProfileValue(0.0, 0.0), 0.0);
}

TEST_F(LightProfileReaderTest, HeaderTiltBlockTablesAndLineEnds) {
  // The tilt block holds 1 + 1 + 2 + 2 tokens; the lamp count 3 follows it.
  ASSERT_TRUE(Read(Data("tilt_include.ies"))) << Error();
  EXPECT_EQ(_profile.GetFileName().str(), Data("tilt_include.ies"));
  EXPECT_TRUE(_profile.GetLastError().IsEmpty());
  EXPECT_EQ(Header(_profile), (Doubles{3, 1000, 2, 2, 1, 1, 2, 0.1, 0.2, 0.3, 0.5, 42}));
  EXPECT_EQ(_profile.GetVerticalAngles(), (Doubles{0, 90}));
  EXPECT_EQ(_profile.GetHorizontalAngles(), (Doubles{0}));
  EXPECT_EQ(Table(_profile), (Doubles{100, 50}));
  EXPECT_EQ(_profile.GetCandelaValue(1, 0), 0.0);  // outside the table

  // CRLF reads exactly like LF: lamp count 2 shows "TILT=INCLUDE\r\n" was
  // recognised, and the 131-character keyword line passed with its CR.
  QAVRbaLightProfile lf;
  ASSERT_TRUE(lf.ReadIESFile(QAVUnicodeString(Data("lf_twin.ies"))));
  ASSERT_TRUE(Read(Data("crlf_twin.ies"))) << Error();
  EXPECT_EQ(Header(_profile), Header(lf));
  EXPECT_EQ(_profile.GetNumberOfLamps(), 2);
  EXPECT_EQ(_profile.GetVerticalAngles(), lf.GetVerticalAngles());
  EXPECT_EQ(Table(_profile), (Doubles{100, 75, 50}));
  EXPECT_EQ(Table(_profile), Table(lf));

  // Commas, tabs and spaces in any mixture, empty fields included.
  ASSERT_TRUE(Read(Data("commas.ies"))) << Error();
  EXPECT_EQ(Header(_profile), (Doubles{1, 1000, 1, 3, 1, 1, 2, 0, 0, 0, 1, 10}));
  EXPECT_EQ(Table(_profile), (Doubles{300, 200, 100}));
}

TEST_F(LightProfileReaderTest, LineAndTokenLengthLimits) {
  EXPECT_TRUE(Read(Data("line_131.ies"))) << Error();
  EXPECT_FALSE(Read(Data("line_132.ies")));
  EXPECT_EQ(Error(), "line 2: 132 characters or more");
  ASSERT_TRUE(Read(Data("token_131.ies"))) << Error();
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

TEST_F(LightProfileReaderTest, SignRulesOfTypesBAndA) {
  ASSERT_TRUE(Read(Data("type_b.ies"))) << Error();
  EXPECT_EQ(_profile.GetVerticalAngles(), (Doubles{90, 0, -90}));
  EXPECT_TRUE(std::signbit(_profile.GetVerticalAngles()[1]));  // -0: negated as stored
  EXPECT_EQ(_profile.GetHorizontalAngles(), (Doubles{0}));
  ASSERT_TRUE(Read(Data("type_a.ies"))) << Error();
  EXPECT_EQ(_profile.GetHorizontalAngles(), (Doubles{90, 45, 0, -45, -90}));
  EXPECT_EQ(_profile.GetVerticalAngles(), (Doubles{0, 45, 90}));
  EXPECT_EQ(_profile.GetCandelaValue(4, 2), 52.0);  // candela values keep their sign
}

TEST_F(LightProfileReaderTest, RejectedFilesSayWhy) {
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
  ASSERT_TRUE(Read(Data("extra_data.ies"))) << Error();
  EXPECT_EQ(Table(_profile), (Doubles{100, 75, 50}));
}

TEST_F(LightProfileReaderTest, TiltLineAndCharacterRules) {
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

TEST_F(LightProfileReaderTest, NumbersConvertExactlyAsScanfDoes) {
  const std::vector<std::string> tokens = {"0.1",
                                           "1e-5",
                                           "+.5",
                                           "1.",
                                           "-0",
                                           "5e",
                                           "1e+0010",
                                           "123456789012345678901234567890",
                                           "2.2250738585072011e-308",
                                           "4.9e-324",
                                           "1e-400",
                                           "1e400",
                                           "0x1p4",
                                           "12abc",
                                           "1.5.3",
                                           "9007199254740993",
                                           "0.30000000000000004",
                                           "-inf",
                                           "nan"};
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

TEST_F(LightProfileReaderTest, NumericLocaleIsCDuringTheReadAndRestoredAfter) {
  const std::string original = std::setlocale(LC_NUMERIC, nullptr);
  // A decimal-comma locale, when the machine has one, shows that the read
  // ignores it: "0.5x" goes through sscanf, which would stop at the point.
  bool set = false;
  for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"})
    if ((set = std::setlocale(LC_NUMERIC, name) != nullptr)) break;
  if (!set) GTEST_SKIP() << "no locale other than C";
  const std::string active = std::setlocale(LC_NUMERIC, nullptr);
  const bool read = ReadText("TILT=NONE\n1 1000 0.5x 1 1 1 2 0 0 0 1.0 1.0 10\n0\n0\n1,5\n");
  const std::string after = std::setlocale(LC_NUMERIC, nullptr);
  (void)std::setlocale(LC_NUMERIC, original.c_str());
  ASSERT_TRUE(read) << Error();
  EXPECT_EQ(after, active);
  EXPECT_EQ(_profile.GetCandelaMultiplier(), 0.5);
  EXPECT_EQ(Table(_profile), (Doubles{1}));  // the comma separates tokens
}

TEST_F(LightProfileReaderTest, ReReadsAndFailedReadsLeaveTheDocumentedState) {
  ASSERT_TRUE(Read(Data("sym_h180_bilateral.ies")));
  ASSERT_TRUE(Read(Data("type_b.ies")));
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
  EXPECT_EQ(_profile.GetLightProfileValue(0.0, 0.0), 0.0);
  ASSERT_TRUE(Read(Data("sym_h0_v90.ies")));
  EXPECT_EQ(_profile.GetLightProfileValue(0.0, 5.0), 950.0);
}

TEST_F(LightProfileReaderTest, CopiesAreDeep) {
  ASSERT_TRUE(Read(Data("sym_h90_quadrant.ies")));
  const double sample = _profile.GetLightProfileValue(300.0, 15.0);
  auto copy = QAVMakeRef<QAVRbaLightProfile>(_profile);
  EXPECT_EQ(copy->GetRefCount(), 1u);
  QAVRbaLightProfile assigned;
  ASSERT_TRUE(assigned.ReadIESFile(QAVUnicodeString(Data("type_b.ies"))));
  assigned = _profile;
  ASSERT_TRUE(Read(Data("sym_h0_v90.ies")));  // the source changes; the copies do not
  EXPECT_NE(_profile.GetLightProfileValue(300.0, 15.0), sample);
  for (const QAVRbaLightProfile* p : {copy.get(), &assigned}) {
    EXPECT_EQ(p->GetFileName().str(), Data("sym_h90_quadrant.ies"));
    EXPECT_EQ(p->GetHorizontalAngles(), (Doubles{0, 45, 90}));
    EXPECT_EQ(p->GetLightProfileValue(300.0, 15.0), sample);
  }
}

}  // namespace
