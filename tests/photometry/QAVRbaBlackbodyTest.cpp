#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <thread>
#include <vector>

#include "QAVRbaBlackbody.h"

namespace {

struct Rgb {
  float r, g, b;
};

Rgb Blackbody(float kelvin) {
  Rgb c{-9.0f, -9.0f, -9.0f};
  BlackbodyColor(kelvin, &c.r, &c.g, &c.b);
  return c;
}

float Y(float nm) { return CIEColorimetricObserver('y', nm); }

// The published figures are rounded to three decimals: a faithful result lies
// within half a unit of the last digit (plus a little for float rounding).
constexpr float kThreeDecimals = 0.0005f + 1e-6f;

TEST(BlackbodyColorTest, ReferenceResultsAndExtremes) {
  // 6500 K blue: the computation gives 0.98848, i.e. 0.988 (0.989 is a known
  // misprint of the published table).
  const std::pair<float, Rgb> cases[] = {
      {2000.0f, {1.000f, 0.379f, 0.049f}},  {3000.0f, {1.000f, 0.627f, 0.222f}},
      {6500.0f, {0.982f, 1.000f, 0.988f}},  {10000.0f, {0.660f, 0.750f, 1.000f}},
      {20000.0f, {0.477f, 0.583f, 1.000f}},
  };
  for (const auto& [kelvin, expected] : cases) {
    SCOPED_TRACE(kelvin);
    const Rgb got = Blackbody(kelvin);
    EXPECT_NEAR(got.r, expected.r, kThreeDecimals);
    EXPECT_NEAR(got.g, expected.g, kThreeDecimals);
    EXPECT_NEAR(got.b, expected.b, kThreeDecimals);
  }
  // The largest component is exactly 1.
  EXPECT_EQ(Blackbody(2000.0f).r, 1.0f);
  EXPECT_EQ(Blackbody(6500.0f).g, 1.0f);
  EXPECT_EQ(Blackbody(20000.0f).b, 1.0f);
  // 0 K means 6500 K, to the bit.
  const Rgb zero = Blackbody(0.0f), d65 = Blackbody(6500.0f);
  EXPECT_TRUE(zero.r == d65.r && zero.g == d65.g && zero.b == d65.b);

  // At 1000 K the blue is slightly negative and not clamped.
  const Rgb warm = Blackbody(1000.0f);
  EXPECT_EQ(warm.r, 1.0f);
  EXPECT_NEAR(warm.b, -0.0003f, 0.0001f);
  // At 100 K every Planck term is negligible: black, not normalised into NaN.
  const Rgb cold = Blackbody(100.0f);
  EXPECT_EQ(cold.r + cold.g + cold.b, 0.0f);
}

TEST(CIEColorimetricObserverTest, GridValuesInterpolationAndRange) {
  const std::array<float, 4> rows[] = {
      {380.0f, 0.001368f, 0.000039f, 0.006450f},
      {450.0f, 0.33620f, 0.038000f, 1.77211f},
      {600.0f, 1.0622f, 0.631f, 0.0008f},
      {780.0f, 0.000042f, 0.000015f, 0.0f},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row[0]);
    EXPECT_EQ(CIEColorimetricObserver('x', row[0]), row[1]);
    EXPECT_EQ(CIEColorimetricObserver('y', row[0]), row[2]);
    EXPECT_EQ(CIEColorimetricObserver('z', row[0]), row[3]);
  }
  // The whole table: summed over the 41 grid points the published 10 nm table
  // gives these sums; a wrong digit of more than a few units in the fourth
  // decimal anywhere shows. z̄ is 0 from 650 nm on.
  double sums[3] = {0.0, 0.0, 0.0};
  for (int nm = 380; nm <= 780; nm += 10) {
    const auto wavelength = static_cast<float>(nm);
    sums[0] += CIEColorimetricObserver('x', wavelength);
    sums[1] += Y(wavelength);
    sums[2] += CIEColorimetricObserver('z', wavelength);
    if (nm >= 650) {
      EXPECT_EQ(CIEColorimetricObserver('z', wavelength), 0.0f) << nm;
    }
  }
  EXPECT_NEAR(sums[0], 10.683642, 1e-4);
  EXPECT_NEAR(sums[1], 10.685779, 1e-4);
  EXPECT_NEAR(sums[2], 10.676900, 1e-4);

  // Linear between grid points with the weights reversed: just above a grid
  // point the value comes mostly from the next one. x̄ differs a lot between 550
  // and 560, so the direction is unmistakable.
  EXPECT_FLOAT_EQ(Y(555.0f), 0.5f * Y(550.0f) + 0.5f * Y(560.0f));
  const float x550 = CIEColorimetricObserver('x', 550.0f);
  const float x560 = CIEColorimetricObserver('x', 560.0f);
  EXPECT_NEAR(CIEColorimetricObserver('x', 550.5f), 0.05f * x550 + 0.95f * x560, 1e-5f);
  EXPECT_NEAR(CIEColorimetricObserver('x', 559.5f), 0.95f * x550 + 0.05f * x560, 1e-5f);
  EXPECT_NEAR(Y(775.0f), 0.5f * 0.000030f + 0.5f * 0.000015f, 1e-9f);  // the last interval

  // Outside 380..780 nm (not a number included), and for channels other than
  // lower-case x, y, z: 0.
  for (const float nm : {379.9f, 780.1f, -550.0f, std::numeric_limits<float>::quiet_NaN()})
    EXPECT_EQ(CIEColorimetricObserver('x', nm), 0.0f) << nm;
  for (const char channel : {'X', 'Y', 'r', '\0'})
    EXPECT_EQ(CIEColorimetricObserver(channel, 555.0f), 0.0f) << int(channel);
}

// Runs in a process of its own: the first call of all happens on several
// threads at once, and every thread must see the complete table.
TEST(CIEColorimetricObserverTest, FirstUseFromSeveralThreads) {
  constexpr int kThreads = 8;
  std::array<float, kThreads> seen{};
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int t = 0; t < kThreads; ++t)
    threads.emplace_back([&seen, t] {
      float sum = 0.0f;
      for (int nm = 380; nm <= 780; nm += 10)
        sum += Y(float(nm));
      seen[static_cast<std::size_t>(t)] = sum;
    });
  for (std::thread& thread : threads)
    thread.join();
  for (float sum : seen)
    EXPECT_NEAR(sum, 10.685779f, 1e-4f);
}

}  // namespace
