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

std::string Data(const std::string& name) {
  return std::string(QAV_TEST_DATA_DIR) + "/ies/" + name;
}

// The thirteen numbers and the tables of a small valid file around a chosen
// piece of text.
const char* const kSmallHeader = "1 1000 1.0 3 1 1 2 0 0 0\n1.0 1.0 10\n";

bool Read(QAVRbaLightProfile& profile, const std::string& path) {
  return profile.ReadIESFile(QAVUnicodeString(path));
}

std::string Error(const QAVRbaLightProfile& profile) { return profile.GetLastError().str(); }

class LightProfileReaderTest : public ::testing::Test {
 protected:
  // Writes `content` to a scratch file and reads it into _profile.
  bool ReadText(const std::string& content) {
    return Read(_profile, _scratch.Write("case.ies", content).string());
  }
  qavtest::ScratchDir _scratch;
  QAVRbaLightProfile _profile;
};

TEST(LightProfileClassTest, MetaClassFactoryAndEmptyProfile) {
  QAVMetaClass* meta = QAVMetaClass::Find("QAVRbaLightProfile");
  ASSERT_NE(meta, nullptr);
  EXPECT_STREQ(meta->GetFramework(), "RenderingBaseUI");
  EXPECT_EQ(QAVRbaLightProfile::ClassId(), QAVMetaClass::ClassIdFromName("QAVRbaLightProfile"));
  auto created = QAVRef<QAVBaseUnknown>::Adopt(meta->CreateInstance());
  ASSERT_TRUE(created);
  EXPECT_STREQ(created->IsA(), "QAVRbaLightProfile");
  EXPECT_TRUE(created->IsAKindOf("QAVBaseUnknown"));
  auto profile = QAVQuery<QAVRbaLightProfile>(created.get());
  ASSERT_TRUE(profile);
  EXPECT_TRUE(profile->GetFileName().IsEmpty());
  EXPECT_EQ(profile->GetNumberOfVerticalAngles(), 0);
  EXPECT_EQ(profile->GetNumberOfHorizontalAngles(), 0);
  EXPECT_FALSE(profile->HasCompleteTable());
  EXPECT_EQ(profile->GetLightProfileValue(0.0, 0.0), 0.0);
  EXPECT_EQ(profile->GetHorizontalSymmetry(), QAVRbaLightProfile::HorizontalSymmetry::NoTable);
}

TEST_F(LightProfileReaderTest, HeaderNumbersTiltBlockAndTables) {
  // The tilt block holds 1 + 1 + 2 + 2 tokens; the lamp count 3 follows it.
  ASSERT_TRUE(Read(_profile, Data("tilt_include.ies"))) << Error(_profile);
  EXPECT_EQ(_profile.GetFileName().str(), Data("tilt_include.ies"));
  EXPECT_TRUE(_profile.GetLastError().IsEmpty());
  EXPECT_EQ(_profile.GetNumberOfLamps(), 3);
  EXPECT_EQ(_profile.GetLumensPerLamp(), 1000.0);
  EXPECT_EQ(_profile.GetCandelaMultiplier(), 2.0);
  EXPECT_EQ(_profile.GetNumberOfVerticalAngles(), 2);
  EXPECT_EQ(_profile.GetNumberOfHorizontalAngles(), 1);
  EXPECT_EQ(_profile.GetPhotometricType(), 1);
  EXPECT_EQ(_profile.GetUnitsType(), 2);
  EXPECT_EQ(_profile.GetWidth(), 0.1);
  EXPECT_EQ(_profile.GetLength(), 0.2);
  EXPECT_EQ(_profile.GetHeight(), 0.3);
  EXPECT_EQ(_profile.GetBallastFactor(), 0.5);
  EXPECT_EQ(_profile.GetInputWatts(), 42.0);
  EXPECT_EQ(_profile.GetVerticalAngles(), (std::vector<double>{0.0, 90.0}));
  EXPECT_EQ(_profile.GetHorizontalAngles(), (std::vector<double>{0.0}));
  EXPECT_EQ(_profile.GetCandelaValue(0, 0), 100.0);
  EXPECT_EQ(_profile.GetCandelaValue(0, 1), 50.0);
  EXPECT_EQ(_profile.GetCandelaValue(1, 0), 0.0);  // outside the table
  EXPECT_TRUE(_profile.HasCompleteTable());
}

TEST_F(LightProfileReaderTest, CrLfFileReadsExactlyLikeItsLfTwin) {
  QAVRbaLightProfile lf;
  ASSERT_TRUE(Read(lf, Data("lf_twin.ies"))) << Error(lf);
  ASSERT_TRUE(Read(_profile, Data("crlf_twin.ies"))) << Error(_profile);
  // Lamp count 2 shows "TILT=INCLUDE\r\n" was recognised and its block skipped;
  // the 131-character keyword line passed with its carriage return.
  EXPECT_EQ(_profile.GetNumberOfLamps(), 2);
  EXPECT_EQ(lf.GetNumberOfLamps(), 2);
  EXPECT_EQ(_profile.GetVerticalAngles(), lf.GetVerticalAngles());
  EXPECT_EQ(_profile.GetHorizontalAngles(), lf.GetHorizontalAngles());
  for (int j = 0; j < 3; ++j)
    EXPECT_EQ(_profile.GetCandelaValue(0, j), lf.GetCandelaValue(0, j));
  EXPECT_EQ(_profile.GetCandelaValue(0, 2), 50.0);
  EXPECT_EQ(_profile.GetInputWatts(), lf.GetInputWatts());

  // Separators in any mixture: commas, tabs, spaces, empty fields.
  ASSERT_TRUE(Read(_profile, Data("commas.ies"))) << Error(_profile);
  EXPECT_EQ(_profile.GetNumberOfLamps(), 1);
  EXPECT_EQ(_profile.GetInputWatts(), 10.0);
  EXPECT_EQ(_profile.GetVerticalAngles(), (std::vector<double>{0.0, 45.0, 90.0}));
  EXPECT_EQ(_profile.GetCandelaValue(0, 2), 100.0);
}

TEST_F(LightProfileReaderTest, LineAndTokenLengthLimits) {
  EXPECT_TRUE(Read(_profile, Data("line_131.ies"))) << Error(_profile);
  EXPECT_FALSE(Read(_profile, Data("line_132.ies")));
  EXPECT_EQ(Error(_profile), "line 2: 132 characters or more");

  ASSERT_TRUE(Read(_profile, Data("token_131.ies"))) << Error(_profile);
  EXPECT_EQ(_profile.GetCandelaValue(0, 0), 100.0);
  EXPECT_FALSE(Read(_profile, Data("token_132.ies")));
  EXPECT_EQ(Error(_profile),
            "line 7: token of 132 characters or more (candela value 1 of 1, horizontal angle 1, "
            "vertical angle 1)");

  // A lone carriage return is an ordinary character and counts towards the limit.
  const std::string line132 = "[X] " + std::string(126, 'a') + "\r" + "b";
  ASSERT_EQ(line132.size(), 132u);
  EXPECT_FALSE(ReadText("IES\n" + line132 + "\nTILT=NONE\n" + kSmallHeader + "0 1 2\n0\n1 2 3\n"));
  EXPECT_EQ(Error(_profile), "line 2: 132 characters or more");
  EXPECT_TRUE(
      ReadText("IES\n" + line132.substr(1) + "\nTILT=NONE\n" + kSmallHeader + "0 1 2\n0\n1 2 3\n"));
}

TEST_F(LightProfileReaderTest, SignRulesOfTypesBAndA) {
  ASSERT_TRUE(Read(_profile, Data("type_b.ies"))) << Error(_profile);
  const std::vector<double>& v = _profile.GetVerticalAngles();
  ASSERT_EQ(v.size(), 3u);
  EXPECT_EQ(v[0], 90.0);
  EXPECT_EQ(v[1], 0.0);
  EXPECT_TRUE(std::signbit(v[1]));  // -0: negated as stored
  EXPECT_EQ(v[2], -90.0);
  EXPECT_EQ(_profile.GetHorizontalAngles(), (std::vector<double>{0.0}));

  ASSERT_TRUE(Read(_profile, Data("type_a.ies"))) << Error(_profile);
  EXPECT_EQ(_profile.GetHorizontalAngles(), (std::vector<double>{90.0, 45.0, -0.0, -45.0, -90.0}));
  EXPECT_EQ(_profile.GetVerticalAngles(), (std::vector<double>{0.0, 45.0, 90.0}));
  EXPECT_EQ(_profile.GetCandelaValue(4, 2), 52.0);  // candela values are never negated
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
    EXPECT_FALSE(Read(_profile, Data(c.file))) << c.file;
    EXPECT_EQ(Error(_profile), c.reason) << c.file;
    EXPECT_EQ(_profile.GetLightProfileValue(0.0, 0.0), 0.0) << c.file;
  }

  EXPECT_FALSE(ReadText(""));
  EXPECT_EQ(Error(_profile), "no \"TILT=\" line before the end of the file");
  EXPECT_FALSE(ReadText("TILT=NONE\n1 1000 1.0 3 1 1 2 0 0 0 1.0\n"));
  EXPECT_EQ(Error(_profile),
            "end of file before the header number 12, ballast-lamp photometric factor");
  EXPECT_TRUE(ReadText("TILT=NONE\n1.5 1000 1.0 0 0 1 2 0 0 0 1.0 1 1\n"))
      << "\"%d\" reads the integer part: " << Error(_profile);
  EXPECT_FALSE(ReadText("TILT=NONE\nx1 1000 1.0 3 1 1 2 0 0 0 1.0 1 1\n"));
  EXPECT_EQ(Error(_profile),
            "line 2: token 'x1' (header number 1, number of lamps): not an integer");
  EXPECT_FALSE(ReadText("TILT=INCLUDE\n1\n3\n0 45 90\n1 1\n"));
  EXPECT_EQ(Error(_profile), "end of file after 2 of 3 tilt multiplying factors");
  EXPECT_FALSE(ReadText("TILT=INCLUDE\n1\nmany\n"));
  EXPECT_EQ(Error(_profile), "line 3: token 'many' (number of tilt angles): not an integer");

  // Data after the candela table is never read, even text or an overlong line.
  ASSERT_TRUE(Read(_profile, Data("extra_data.ies"))) << Error(_profile);
  EXPECT_EQ(_profile.GetCandelaValue(0, 2), 50.0);
}

TEST_F(LightProfileReaderTest, TiltLineAndCharacterRules) {
  const std::string tables = "0 45 90\n0\n100 75 50\n";
  // "TILT=" is compared case-sensitively on the first five characters; only the
  // exact line "TILT=INCLUDE" has a tilt block. A named tilt file is not opened.
  EXPECT_TRUE(ReadText("IES\nTILT=/no/such/file.tlt\n" + std::string(kSmallHeader) + tables));
  EXPECT_FALSE(ReadText("IES\nTilt=NONE\n" + std::string(kSmallHeader) + tables));
  // With a trailing space the line is not "TILT=INCLUDE": no block is skipped.
  ASSERT_TRUE(ReadText("TILT=INCLUDE \n" + std::string(kSmallHeader) + tables)) << Error(_profile);
  EXPECT_EQ(_profile.GetNumberOfLamps(), 1);
  // A NUL byte ends the text of a line.
  ASSERT_TRUE(ReadText(std::string("TILT=INCLUDE\0junk\n", 18) + "1 0 " + kSmallHeader + tables))
      << Error(_profile);

  // A byte 255 ends a line or a token like an end of file, and the reading goes
  // on after it; where a line or token should begin it fails the read.
  ASSERT_TRUE(ReadText("IES\n[X] abc\xffTILT=NONE\n" + std::string(kSmallHeader) +
                       "0 45\xff"
                       "90\n0\n100 75 50"))
      << Error(_profile);
  EXPECT_EQ(_profile.GetVerticalAngles(), (std::vector<double>{0.0, 45.0, 90.0}));
  EXPECT_EQ(_profile.GetCandelaValue(0, 2), 50.0);  // last value without a final newline
  EXPECT_FALSE(ReadText("IES\n\xff[X]\nTILT=NONE\n" + std::string(kSmallHeader) + tables));
  EXPECT_EQ(Error(_profile), "line 2: byte 255 (read as end of file) before any \"TILT=\" line");
  EXPECT_FALSE(ReadText("TILT=NONE\n" + std::string(kSmallHeader) +
                        "0 45 \xff"
                        "90\n0\n1 2 3\n"));
  EXPECT_EQ(Error(_profile), "line 4: byte 255 (read as end of file) after 2 of 3 vertical angles");

  // A lone carriage return and a semicolon belong to the token; "%le" converts
  // the leading number. Here "0\r5" and "45;90" are single tokens.
  ASSERT_TRUE(
      ReadText("TILT=NONE\n1 1000 1.0 3 1 1 2 0 0 0\n1.0 1.0 10\n0\r5 45;90 90\n0\n1 2 3\n"))
      << Error(_profile);
  EXPECT_EQ(_profile.GetVerticalAngles(), (std::vector<double>{0.0, 45.0, 90.0}));
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
                                           "nan",
                                           "+-1",
                                           "\2615",
                                           "7\r"};
  std::string text =
      "TILT=NONE\n1 1000 1.0 " + std::to_string(tokens.size()) + " 1 1 2 0 0 0\n1.0 1.0 10\n";
  for (std::size_t k = 0; k < tokens.size(); ++k)
    text += std::to_string(k) + " ";
  text += "\n0\n";
  std::vector<std::string> convertible;
  for (const std::string& t : tokens) {
    double value = 0.0;
    if (std::sscanf(t.c_str(), "%le", &value) == 1) convertible.push_back(t);  // NOLINT
  }
  for (const std::string& t : convertible)
    text += t + "\n";
  // The file claims one value per token; fewer convert, so replace the rest by a
  // number that is certainly readable.
  for (std::size_t k = convertible.size(); k < tokens.size(); ++k)
    text += "1\n";
  ASSERT_TRUE(ReadText(text)) << Error(_profile);
  for (std::size_t k = 0; k < convertible.size(); ++k) {
    double expected = 0.0;
    std::sscanf(convertible[k].c_str(), "%le", &expected);  // NOLINT
    const double got = _profile.GetCandelaValue(0, static_cast<int>(k));
    if (std::isnan(expected))
      EXPECT_TRUE(std::isnan(got)) << convertible[k];
    else
      EXPECT_EQ(std::bit_cast<std::uint64_t>(got), std::bit_cast<std::uint64_t>(expected))
          << "token '" << convertible[k] << "': " << got << " instead of " << expected;
  }
  // Tokens that do not convert at all fail the read.
  for (const char* bad : {"+-1", ".", "e5", "-", "\2615"}) {
    EXPECT_FALSE(ReadText("TILT=NONE\n1 1000 " + std::string(bad) + " 0 0 1 2 0 0 0 1 1 1\n"))
        << bad;
  }
  // "%d" fast and slow paths: signs, leading zeros, trailing text.
  ASSERT_TRUE(ReadText("TILT=NONE\n+007 1000 1.0 2x 1.9 1 2 0 0 0 1 1 1\n0 90\n0\n1 2\n"))
      << Error(_profile);
  EXPECT_EQ(_profile.GetNumberOfLamps(), 7);
  EXPECT_EQ(_profile.GetNumberOfVerticalAngles(), 2);
  EXPECT_EQ(_profile.GetNumberOfHorizontalAngles(), 1);
}

TEST_F(LightProfileReaderTest, NumericLocaleIsCDuringTheReadAndRestoredAfter) {
  const char* before = std::setlocale(LC_NUMERIC, nullptr);
  const std::string original = before ? before : "C";
  // A decimal-comma locale, when this machine has one, shows the read ignores
  // it: "0.5x" goes through sscanf, which would stop at the point.
  const char* comma = nullptr;
  for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"})
    if ((comma = std::setlocale(LC_NUMERIC, name))) break;
  const std::string chosen =
      comma ? comma : (std::setlocale(LC_NUMERIC, "C.UTF-8") ? "C.UTF-8" : "");
  if (chosen.empty()) GTEST_SKIP() << "no locale other than C";
  const std::string active = std::setlocale(LC_NUMERIC, nullptr);
  const bool read = ReadText("TILT=NONE\n1 1000 0.5x 1 1 1 2 0 0 0\n1.0 1.0 10\n0\n0\n1,5\n");
  const std::string after = std::setlocale(LC_NUMERIC, nullptr);
  (void)std::setlocale(LC_NUMERIC, original.c_str());
  ASSERT_TRUE(read) << Error(_profile);
  EXPECT_EQ(after, active);
  EXPECT_EQ(_profile.GetCandelaMultiplier(), 0.5);
  EXPECT_EQ(_profile.GetCandelaValue(0, 0), 1.0);  // the comma separates tokens
  if (!comma) std::printf("(no decimal-comma locale here; checked the restore only)\n");
}

TEST_F(LightProfileReaderTest, ReReadAndFailedReadsLeaveTheDocumentedState) {
  ASSERT_TRUE(Read(_profile, Data("sym_h180_bilateral.ies")));
  ASSERT_EQ(_profile.GetNumberOfHorizontalAngles(), 5);
  ASSERT_TRUE(Read(_profile, Data("type_b.ies")));
  EXPECT_EQ(_profile.GetNumberOfHorizontalAngles(), 1);
  EXPECT_EQ(_profile.GetVerticalAngles().size(), 3u);
  EXPECT_EQ(_profile.GetFileName().str(), Data("type_b.ies"));

  // A file that cannot be opened: the tables and counts of the earlier file are
  // gone, the other numbers stay, the name is the new one.
  EXPECT_FALSE(Read(_profile, Data("no_such_file.ies")));
  EXPECT_EQ(_profile.GetFileName().str(), Data("no_such_file.ies"));
  EXPECT_EQ(_profile.GetNumberOfVerticalAngles(), 0);
  EXPECT_EQ(_profile.GetNumberOfHorizontalAngles(), 0);
  EXPECT_TRUE(_profile.GetVerticalAngles().empty());
  EXPECT_EQ(_profile.GetPhotometricType(), 2);
  EXPECT_EQ(_profile.GetLumensPerLamp(), 1000.0);

  // A failure in the header keeps the numbers read up to it.
  EXPECT_FALSE(Read(_profile, Data("reject_bad_units.ies")));
  EXPECT_EQ(_profile.GetPhotometricType(), 1);
  EXPECT_EQ(_profile.GetUnitsType(), 3);
  EXPECT_EQ(_profile.GetNumberOfVerticalAngles(), 1);
  EXPECT_TRUE(_profile.GetVerticalAngles().empty());

  // A failure in the candela part keeps the values read so far, and the
  // incomplete table is never sampled.
  EXPECT_FALSE(Read(_profile, Data("reject_missing_tokens.ies")));
  EXPECT_EQ(_profile.GetVerticalAngles(), (std::vector<double>{0.0, 45.0, 90.0}));
  EXPECT_EQ(_profile.GetHorizontalAngles(), (std::vector<double>{0.0, 90.0}));
  EXPECT_EQ(_profile.GetCandelaValue(1, 1), 75.0);
  EXPECT_EQ(_profile.GetCandelaValue(1, 2), 0.0);
  EXPECT_FALSE(_profile.HasCompleteTable());
  EXPECT_EQ(_profile.GetLightProfileValue(0.0, 0.0), 0.0);

  // And a good file after all that reads normally.
  ASSERT_TRUE(Read(_profile, Data("sym_h0_v90.ies")));
  EXPECT_EQ(_profile.GetLightProfileValue(0.0, 5.0), 950.0);
}

TEST_F(LightProfileReaderTest, CopiesAreDeep) {
  ASSERT_TRUE(Read(_profile, Data("sym_h90_quadrant.ies")));
  const double sample = _profile.GetLightProfileValue(300.0, 15.0);
  auto copy = QAVMakeRef<QAVRbaLightProfile>(_profile);
  EXPECT_EQ(copy->GetRefCount(), 1u);
  QAVRbaLightProfile assigned;
  ASSERT_TRUE(Read(assigned, Data("type_b.ies")));
  assigned = _profile;
  EXPECT_NE(copy->GetVerticalAngles().data(), _profile.GetVerticalAngles().data());

  // Reading another file into the source leaves both copies as they were.
  ASSERT_TRUE(Read(_profile, Data("sym_h0_v90.ies")));
  for (const QAVRbaLightProfile* p : {copy.get(), &assigned}) {
    EXPECT_EQ(p->GetFileName().str(), Data("sym_h90_quadrant.ies"));
    EXPECT_EQ(p->GetNumberOfHorizontalAngles(), 3);
    EXPECT_EQ(p->GetHorizontalAngles(), (std::vector<double>{0.0, 45.0, 90.0}));
    EXPECT_EQ(p->GetLightProfileValue(300.0, 15.0), sample);
  }
  EXPECT_NE(_profile.GetLightProfileValue(300.0, 15.0), sample);
}

}  // namespace
