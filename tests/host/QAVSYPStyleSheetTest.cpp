#include <gtest/gtest.h>
#include <langinfo.h>
#include <locale.h>

#include <filesystem>
#include <optional>
#include <string>

#include "QAVSYPStyleSheet.h"
#include "QAVTestSupport.h"

namespace {

// Whether the thread's numbers now use a decimal comma.
bool NumbersHaveAComma() { return std::string(nl_langinfo(RADIXCHAR)) == ","; }

class StyleSheetTest : public qavtest::HostTest {};

TEST_F(StyleSheetTest, VariantsFollowTheWidgetsStatesInTheFilesOrder) {
  QAVSYPStyleSheet sheet;
  std::string error;
  ASSERT_TRUE(
      sheet.Parse("# tiles\n[Tile]\nwidth = 356\nbackground = #fff\n"
                  "background:BHighlight = #eef\nbackground : BSelect = #ddf\n"
                  "opacity = 1\nopacity:Unavailable = 0.45\nsize = wide\n",
                  error))
      << error;
  const QAVSYPStyleSheet::States none;
  EXPECT_EQ(sheet.GetValue("Tile", "background", none, "?"), "#fff");
  EXPECT_EQ(sheet.GetValue("Tile", "background", {{"BSelect", 1}}, "?"), "#ddf");
  // Both set: the first variant the file lists wins.
  EXPECT_EQ(sheet.GetValue("Tile", "background", {{"BSelect", 1}, {"BHighlight", 1}}, "?"), "#eef");
  EXPECT_EQ(sheet.GetValue("Tile", "background", {{"BSelect", 0}}, "?"), "#fff");
  EXPECT_DOUBLE_EQ(sheet.GetNumber("Tile", "opacity", {{"Unavailable", 1}}, 9), 0.45);
  EXPECT_DOUBLE_EQ(sheet.GetNumber("Tile", "size", none, 7), 7);  // not a number
  EXPECT_EQ(sheet.GetValue("Tile", "border", none, "none"), "none");
  EXPECT_EQ(sheet.GetValue("Panel", "width", none, "none"), "none");

  for (const char* bad :
       {"width = 3\n", "[Tile]\nwidth 3\n", "[Tile]\nwidth: = 3\n", "[Two words]\n", "[Tile\n"}) {
    EXPECT_FALSE(sheet.Parse(bad, error)) << bad;
    EXPECT_EQ(error.rfind("line ", 0), 0U) << error;
    EXPECT_FALSE(sheet.HasClass("Tile")) << bad;  // nothing half-read is kept
  }
}

TEST_F(StyleSheetTest, SheetsAreFoundAlongTheResourcePathAndAMalformedOneIsNotUsed) {
  _scratch.Write("a/style/Good.QAVSYPStyle", "[Panel]\nwidth = 700\n");
  _scratch.Write("b/style/Good.QAVSYPStyle", "[Panel]\nwidth = 1\n");
  _scratch.Write("b/style/Bad.QAVSYPStyle", "[Panel]\nwidth\n");
  SetEnvAndReload("QAVHOST_RESOURCE_PATH", _scratch.str() + "/a:" + _scratch.str() + "/b");
  const QAVSYPStyleSheet* good = QAVSYPStyleSheet::Get("Good.QAVSYPStyle");
  ASSERT_NE(good, nullptr);
  EXPECT_DOUBLE_EQ(good->GetNumber("Panel", "width", {}, 0), 700);
  EXPECT_EQ(QAVSYPStyleSheet::Get("Good.QAVSYPStyle"), good);  // read once
  testing::internal::CaptureStderr();
  EXPECT_EQ(QAVSYPStyleSheet::Get("Bad.QAVSYPStyle"), nullptr);
  EXPECT_NE(testing::internal::GetCapturedStderr().find("Bad.QAVSYPStyle: line 2"),
            std::string::npos);
  EXPECT_EQ(QAVSYPStyleSheet::Get("Missing.QAVSYPStyle"), nullptr);
}

TEST_F(StyleSheetTest, NumbersAreReadWithAPointUnderADecimalCommaLocale) {
  // The host's process runs in the user's locale; the sheet's numbers are
  // written with a point all the same.
  _scratch.Write("res/style/Comma.QAVSYPStyle",
                 "[Tile]\nopacity = 0.5\nopacity:Unavailable = .45\nwidth = 356.25\n"
                 "size = 1,5\nscale = 2.5e-1\nshift = -0.75\n");
  SetEnvAndReload("QAVHOST_RESOURCE_PATH", _scratch.str() + "/res");
  std::optional<qavtest::ScopedEnv> locpath;
  std::string why;
  const locale_t commaLocale = qavtest::CommaLocale(_scratch.str() + "/locales", locpath, why);
  if (commaLocale == static_cast<locale_t>(nullptr)) GTEST_SKIP() << why;
  const locale_t original = uselocale(commaLocale);
  const bool comma = NumbersHaveAComma();
  const QAVSYPStyleSheet* sheet = QAVSYPStyleSheet::Get("Comma.QAVSYPStyle");
  double values[6] = {};
  if (sheet) {
    values[0] = sheet->GetNumber("Tile", "opacity", {}, 1);
    values[1] = sheet->GetNumber("Tile", "opacity", {{"Unavailable", 1}}, 1);
    values[2] = sheet->GetNumber("Tile", "width", {}, 0);
    values[3] = sheet->GetNumber("Tile", "size", {}, 7);
    values[4] = sheet->GetNumber("Tile", "scale", {}, 0);
    values[5] = sheet->GetNumber("Tile", "shift", {}, 0);
  }
  uselocale(original);
  freelocale(commaLocale);
  ASSERT_TRUE(comma);
  ASSERT_NE(sheet, nullptr);
  EXPECT_EQ(values[0], 0.5);
  EXPECT_EQ(values[1], 0.45);
  EXPECT_EQ(values[2], 356.25);
  EXPECT_EQ(values[3], 7);  // a comma is not a decimal separator here
  EXPECT_EQ(values[4], 0.25);
  EXPECT_EQ(values[5], -0.75);
}

TEST_F(StyleSheetTest, OnlyWholeFiniteNumbersAreNumbers) {
  QAVSYPStyleSheet sheet;
  std::string error;
  ASSERT_TRUE(
      sheet.Parse("[T]\na = +2\nb = 3px\nc = inf\nd = nan\ne = 1e999\nf = +-1\n"
                  "g = 0x10\nh = -\n",
                  error))
      << error;
  EXPECT_EQ(sheet.GetNumber("T", "a", {}, 9), 2);
  for (const char* key : {"b", "c", "d", "e", "f", "g", "h"})
    EXPECT_EQ(sheet.GetNumber("T", key, {}, 9), 9) << key;
}

}  // namespace
