// The photographic ladders against their printed figures, and the exposure
// correction of an aperture.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "QAVRbaPhotoDataInit.h"

namespace {

// The ladders as users read them in the camera panels.
const char* const kPrintedApertures =
    "1, 1.2, 1.4, 1.7, 2, 2.4, 2.8, 3.4, 4, 4.8, 5.6, 6.8, 8, 9.5, 11, 13.5, 16, 19, 22, 27, 32, "
    "38.5, 45, 54.5, 64";
const char* const kPrintedISO =
    "0.195, 0.26, 0.292, 0.326, 0.391, 0.521, 0.586, 0.651, 0.781, 1.042, 1.171, 1.302, 1.562, "
    "2.083, 2.343, 2.604, 3.125, 4.167, 4.687, 5.208, 6.25, 8.333, 9.375, 10.417, 12.5, 16.667, "
    "18.75, 20.833, 25, 33.333, 37.5, 41.667, 50, 66.666, 75, 83.333, 100, 133.333, 150, 166.667, "
    "200, 250, 266.667, 333.333, 400, 533.333, 600, 666.667, 800, 1066.667, 1200, 1333.333, 1600, "
    "2133.333, 2400, 2666.667, 3200, 4266.667, 4800, 5333.333, 6400, 8533.333, 9600, 10666.667, "
    "12800, 17066.667, 19200, 21333.333, 25600, 34133.333, 38400, 42666.667, 51200";
const char* const kPrintedExtraISO =
    "0.003046875, 0.0040625, 0.00457125, 0.005078125, 0.00609375, 0.008125, 0.009140625, "
    "0.01015625, 0.0121875, 0.01625, 0.01828125, 0.0203125, 0.024375, 0.0325, 0.0365625, "
    "0.040625, 0.04875, 0.065, 0.073125, 0.08125, 0.0975, 0.13, 0.14625, 0.1625";
const char* const kPrintedSpeeds = "1, 2, 4, 8, 16, 30, 60, 125, 250, 500, 1000, 2000, 4000";

std::vector<float> Parse(const char* printed) {
  std::vector<float> values;
  std::stringstream in(printed);
  std::string item;
  while (std::getline(in, item, ','))
    values.push_back(std::strtof(item.c_str(), nullptr));
  return values;
}

// Runs a ladder into an array with guard values around it; checks that it
// writes exactly `count` values and returns them.
std::vector<float> Ladder(void (*init)(float*), int count) {
  constexpr float kGuard = -12345.0F;
  std::vector<float> buffer(static_cast<std::size_t>(count) + 8, kGuard);
  init(buffer.data() + 4);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(buffer[static_cast<std::size_t>(i)], kGuard) << "written before the array";
    EXPECT_EQ(buffer[static_cast<std::size_t>(count + 4 + i)], kGuard) << "written past the count";
  }
  return {buffer.begin() + 4, buffer.begin() + 4 + count};
}

TEST(PhotoDataInitTest, LaddersAreThePrintedValues) {
  EXPECT_EQ(Ladder(InitApertureValues, QAVRbaApertureValueCount), Parse(kPrintedApertures));
  EXPECT_EQ(Ladder(InitISOValues, QAVRbaISOValueCount), Parse(kPrintedISO));
  EXPECT_EQ(Ladder(InitEXTRA_ISOValues, QAVRbaExtraISOValueCount), Parse(kPrintedExtraISO));
  EXPECT_EQ(Ladder(InitSpeedValues, QAVRbaSpeedValueCount), Parse(kPrintedSpeeds));
  EXPECT_EQ(Parse(kPrintedApertures).size(), 25U);
  EXPECT_EQ(Parse(kPrintedISO).size(), 73U);
  EXPECT_EQ(Parse(kPrintedExtraISO).size(), 24U);
  EXPECT_EQ(Parse(kPrintedSpeeds).size(), 13U);
}

TEST(PhotoDataInitTest, IsoLaddersFollowTheirOctaveRuleSaveTheKeptDepartures) {
  // Four values per octave: b, 4/3 b, 1.5 b, 5/3 b, b doubling each octave.
  const double factors[] = {1.0, 4.0 / 3.0, 1.5, 5.0 / 3.0};
  const std::vector<float> iso = Ladder(InitISOValues, QAVRbaISOValueCount);
  for (std::size_t i = 0; i < iso.size(); ++i) {
    const double rule = 50.0 * std::ldexp(1.0, static_cast<int>(i / 4) - 8) * factors[i % 4];
    if (i == 41 || i == 42) continue;  // below
    // The printed values are the rule to three decimals (some truncated).
    EXPECT_NEAR(iso[i], rule, 1e-3 + rule * 1e-6) << i;
  }
  // The octave of 200 holds the film speed 250 in place of 1.5 b = 300, in
  // ascending order.
  EXPECT_EQ(iso[40], 200.0F);
  EXPECT_EQ(iso[41], 250.0F);
  EXPECT_EQ(iso[42], 266.667F);
  EXPECT_EQ(iso[33], 66.666F) << "not 66.667";
  const std::vector<float> extra = Ladder(InitEXTRA_ISOValues, QAVRbaExtraISOValueCount);
  for (std::size_t i = 0; i < extra.size(); ++i) {
    const double rule = 0.195 * std::ldexp(1.0, static_cast<int>(i / 4) - 6) * factors[i % 4];
    if (i == 2) {
      EXPECT_EQ(extra[i], 0.00457125F);
      EXPECT_NEAR(rule, 0.0045703125, 1e-15);
    } else {
      EXPECT_FLOAT_EQ(extra[i], static_cast<float>(rule)) << i;
    }
  }
  EXPECT_LT(extra.back(), iso.front()) << "the extra ladder ends below the ISO ladder";
}

TEST(PhotoDataInitTest, ExposureCorrectionIsHalfAStopPerLadderStep) {
  float table[QAVRbaApertureValueCount];
  InitApertureValues(table);
  for (int i = 0; i < QAVRbaApertureValueCount; ++i)
    EXPECT_EQ(GetEVCorrectionForAperture(table[i], table), (i - 12) * 0.5F) << table[i];
  EXPECT_EQ(GetEVCorrectionForAperture(8, table), 0.0F);
  EXPECT_EQ(GetEVCorrectionForAperture(1, table), -6.0F);
  EXPECT_EQ(GetEVCorrectionForAperture(64, table), 6.0F);
  EXPECT_EQ(GetEVCorrectionForAperture(2.8F, table), -3.0F);
  EXPECT_EQ(GetEVCorrectionForAperture(5.6F, table), -1.0F);
  // No tolerance; the double 2.8 is not the float 2.8.
  EXPECT_EQ(GetEVCorrectionForAperture(8.0001F, table), 6.5F);
  EXPECT_EQ(GetEVCorrectionForAperture(std::nextafter(8.0F, 9.0F), table), 6.5F);
  EXPECT_EQ(GetEVCorrectionForAperture(static_cast<float>(2.8 + 1e-6), table), 6.5F);
  EXPECT_EQ(GetEVCorrectionForAperture(0.0F, table), 0.0F);
  EXPECT_EQ(GetEVCorrectionForAperture(-0.0F, table), 0.0F);
  EXPECT_EQ(GetEVCorrectionForAperture(std::numeric_limits<float>::infinity(), table), 0.0F);
  EXPECT_EQ(GetEVCorrectionForAperture(-std::numeric_limits<float>::infinity(), table), 6.5F);
  EXPECT_EQ(GetEVCorrectionForAperture(std::numeric_limits<float>::max(), table), 6.5F);
  EXPECT_EQ(GetEVCorrectionForAperture(std::nanf(""), table), 6.5F);
  EXPECT_EQ(GetEVCorrectionForAperture(-8.0F, table), 6.5F);

  // Another table: the first equal entry wins, and only 25 entries are read.
  float other[QAVRbaApertureValueCount + 1];
  for (int i = 0; i < QAVRbaApertureValueCount + 1; ++i)
    other[i] = 100.0F + static_cast<float>(i);
  other[20] = 3.0F;
  other[5] = 3.0F;
  other[QAVRbaApertureValueCount] = 7.0F;
  EXPECT_EQ(GetEVCorrectionForAperture(3.0F, other), -3.5F);
  EXPECT_EQ(GetEVCorrectionForAperture(7.0F, other), 6.5F);
  EXPECT_EQ(GetEVCorrectionForAperture(112.0F, other), 0.0F);
}

TEST(PhotoDataInitDeathTest, NullTableEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(GetEVCorrectionForAperture(8.0F, nullptr),
               "AssertionFailed:apertureTable.*QAVRbaPhotoDataInit:61");
}

}  // namespace
