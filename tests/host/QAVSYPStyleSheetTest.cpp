#include <gtest/gtest.h>

#include <string>

#include "QAVSYPStyleSheet.h"
#include "QAVTestSupport.h"

namespace {

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

}  // namespace
