#include <gtest/gtest.h>

#include <array>
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

// The published figures are rounded to three decimals: a faithful result lies
// within half a unit of the last digit (plus a little for float rounding).
constexpr float kThreeDecimals = 0.0005f + 1e-6f;

TEST(BlackbodyColorTest, ReferenceResultsRoundToThePublishedFigures) {
  struct Case {
    float kelvin;
    Rgb expected;
  };
  // 6500 K blue: the computation gives 0.98848, i.e. 0.988 (0.989 is a known
  // misprint of the published table).
  const Case cases[] = {
      {2000.0f, {1.000f, 0.379f, 0.049f}},  {3000.0f, {1.000f, 0.627f, 0.222f}},
      {6500.0f, {0.982f, 1.000f, 0.988f}},  {10000.0f, {0.660f, 0.750f, 1.000f}},
      {20000.0f, {0.477f, 0.583f, 1.000f}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.kelvin);
    const Rgb got = Blackbody(c.kelvin);
    EXPECT_NEAR(got.r, c.expected.r, kThreeDecimals);
    EXPECT_NEAR(got.g, c.expected.g, kThreeDecimals);
    EXPECT_NEAR(got.b, c.expected.b, kThreeDecimals);
  }
  // Which component is the largest matters to callers: it is exactly 1.
  EXPECT_EQ(Blackbody(2000.0f).r, 1.0f);
  EXPECT_EQ(Blackbody(6500.0f).g, 1.0f);
  EXPECT_EQ(Blackbody(20000.0f).b, 1.0f);
}

TEST(BlackbodyColorTest, ZeroMeans6500AndExtremesAreLeftAsComputed) {
  const Rgb zero = Blackbody(0.0f);
  const Rgb d65 = Blackbody(6500.0f);
  EXPECT_EQ(zero.r, d65.r);
  EXPECT_EQ(zero.g, d65.g);
  EXPECT_EQ(zero.b, d65.b);

  // At 1000 K the blue is slightly negative (about -0.0003) and not clamped.
  const Rgb warm = Blackbody(1000.0f);
  EXPECT_EQ(warm.r, 1.0f);
  EXPECT_LT(warm.b, 0.0f);
  EXPECT_NEAR(warm.b, -0.0003f, 0.0001f);

  // At 100 K every Planck term is negligible: black, not normalised (and no
  // division by zero turning it into NaN).
  const Rgb cold = Blackbody(100.0f);
  EXPECT_EQ(cold.r, 0.0f);
  EXPECT_EQ(cold.g, 0.0f);
  EXPECT_EQ(cold.b, 0.0f);
}

TEST(CIEColorimetricObserverTest, GridValuesMatchTheStandardObserver) {
  struct Row {
    float nm, x, y, z;
  };
  const Row rows[] = {
      {380.0f, 0.001368f, 0.000039f, 0.006450f}, {450.0f, 0.33620f, 0.038000f, 1.77211f},
      {550.0f, 0.43345f, 0.99495f, 0.00875f},    {600.0f, 1.0622f, 0.631f, 0.0008f},
      {710.0f, 0.00579f, 0.002091f, 0.0f},       {780.0f, 0.000042f, 0.000015f, 0.0f},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.nm);
    EXPECT_EQ(CIEColorimetricObserver('x', row.nm), row.x);
    EXPECT_EQ(CIEColorimetricObserver('y', row.nm), row.y);
    EXPECT_EQ(CIEColorimetricObserver('z', row.nm), row.z);
  }

  // The whole table, not only the rows above: summed over the 41 grid points
  // the three functions of the published 10 nm table give 10.6836, 10.6858 and
  // 10.6769 (equal-energy white); a wrong digit anywhere of more than a few
  // units in the fourth decimal shows here. z̄ is 0 from 650 nm on.
  double sums[3] = {0.0, 0.0, 0.0};
  for (int nm = 380; nm <= 780; nm += 10) {
    const auto wavelength = static_cast<float>(nm);
    sums[0] += CIEColorimetricObserver('x', wavelength);
    sums[1] += CIEColorimetricObserver('y', wavelength);
    sums[2] += CIEColorimetricObserver('z', wavelength);
    if (nm >= 650) {
      EXPECT_EQ(CIEColorimetricObserver('z', wavelength), 0.0f) << nm;
    }
  }
  EXPECT_NEAR(sums[0], 10.683642, 1e-4);
  EXPECT_NEAR(sums[1], 10.685779, 1e-4);
  EXPECT_NEAR(sums[2], 10.676900, 1e-4);
}

TEST(CIEColorimetricObserverTest, InterpolationWeightsAreReversed) {
  const float y550 = CIEColorimetricObserver('y', 550.0f);
  const float y560 = CIEColorimetricObserver('y', 560.0f);
  EXPECT_FLOAT_EQ(CIEColorimetricObserver('y', 555.0f), 0.5f * y550 + 0.5f * y560);
  // The fraction 0.1 is itself rounded to float: within a few ulps.
  EXPECT_NEAR(CIEColorimetricObserver('y', 551.0f), 0.1f * y550 + 0.9f * y560, 1e-6f);

  // With x̄, whose neighbours differ a lot, the direction is unmistakable: just
  // above 550 nm the value is nearly that of 560 nm, and just below 560 nm
  // nearly that of 550 nm.
  const float x550 = CIEColorimetricObserver('x', 550.0f);
  const float x560 = CIEColorimetricObserver('x', 560.0f);
  EXPECT_NEAR(CIEColorimetricObserver('x', 550.5f), 0.05f * x550 + 0.95f * x560, 1e-5f);
  EXPECT_NEAR(CIEColorimetricObserver('x', 559.5f), 0.95f * x550 + 0.05f * x560, 1e-5f);
  // Between the two last grid points.
  EXPECT_NEAR(CIEColorimetricObserver('y', 775.0f), 0.5f * 0.000030f + 0.5f * 0.000015f, 1e-9f);
}

TEST(CIEColorimetricObserverTest, OutOfRangeAndUnknownChannelsGiveZero) {
  EXPECT_EQ(CIEColorimetricObserver('x', 379.9f), 0.0f);
  EXPECT_EQ(CIEColorimetricObserver('x', 780.1f), 0.0f);
  EXPECT_EQ(CIEColorimetricObserver('x', -550.0f), 0.0f);
  EXPECT_EQ(CIEColorimetricObserver('x', 780.0f), 0.000042f);
  EXPECT_EQ(CIEColorimetricObserver('x', 380.0f), 0.001368f);
  // Channels are lower case only, on and off the grid.
  EXPECT_EQ(CIEColorimetricObserver('X', 550.0f), 0.0f);
  EXPECT_EQ(CIEColorimetricObserver('Y', 555.0f), 0.0f);
  EXPECT_EQ(CIEColorimetricObserver('r', 600.0f), 0.0f);
  EXPECT_EQ(CIEColorimetricObserver('\0', 600.0f), 0.0f);
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
        sum += CIEColorimetricObserver('y', float(nm));
      seen[static_cast<std::size_t>(t)] = sum;
    });
  for (std::thread& thread : threads)
    thread.join();
  for (float sum : seen)
    EXPECT_NEAR(sum, 10.685779f, 1e-4f);
}

}  // namespace
