#include <gtest/gtest.h>

#include "QAVString.h"
#include "QAVUnicodeString.h"

TEST(QAVString, ComparisonConcatenationAndSearch) {
  QAVString a("Rendering");
  EXPECT_EQ(a + "Live" + QAVString("Settings"), QAVString("RenderingLiveSettings"));
  EXPECT_LT(QAVString("a").Compare(QAVString("b")), 0);
  EXPECT_EQ(a.SearchSubString("der"), 3);
  EXPECT_EQ(a.SearchSubString("der", 4), -1);
  EXPECT_EQ(a.SearchSubString("ing", 6), 6);
  EXPECT_EQ(a.SubString(3, 100), QAVString("dering"));
  EXPECT_TRUE(QAVString(static_cast<const char*>(nullptr)).IsEmpty());
}

TEST(QAVString, CaseMappingKeepsNonAsciiBytes) {
  QAVUnicodeString s("Sky.HDR \xc3\x89t\xc3\xa9");
  s.ToLower();
  EXPECT_EQ(s, QAVUnicodeString("sky.hdr \xc3\x89t\xc3\xa9"));
  s.ToUpper();
  EXPECT_EQ(s, QAVUnicodeString("SKY.HDR \xc3\x89T\xc3\xa9"));
}

TEST(QAVString, ConvertToNumFollowsScanf) {
  int i = -1;
  EXPECT_EQ(QAVString("12abc").ConvertToNum(&i, "%d"), 1);
  EXPECT_EQ(i, 12);
  EXPECT_EQ(QAVString("abc").ConvertToNum(&i, "%d"), 0);
  EXPECT_EQ(QAVString("").ConvertToNum(&i, "%d"), 0);
  double d = 0;
  EXPECT_EQ(QAVUnicodeString("-1.5e3").ConvertToNum(&d, "%le"), 1);
  EXPECT_EQ(d, -1500.0);
  EXPECT_EQ(QAVString::BuildFromNum(0.1), QAVString("0.1"));
  EXPECT_EQ(QAVString::BuildFromNum(-42), QAVString("-42"));
}
