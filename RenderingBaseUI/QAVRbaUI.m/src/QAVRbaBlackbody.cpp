#include "QAVRbaBlackbody.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// One record of the colour-matching table: x̄, ȳ, z̄ and the wavelength in nm.
struct ObserverRecord {
  float x;
  float y;
  float z;
  float wavelength;
};

constexpr int kRecordCount = 41;  // 380 nm to 780 nm every 10 nm
constexpr float kFirstWavelength = 380.0f;
constexpr float kLastWavelength = 780.0f;
constexpr float kStep = 10.0f;

using ObserverTable = std::array<ObserverRecord, kRecordCount>;

// The CIE 1931 2-degree standard colorimetric observer at 10 nm intervals.
ObserverTable BuildObserverTable() {
  return {{
      {0.001368f, 0.000039f, 0.006450f, 380.0f}, {0.004243f, 0.000120f, 0.020050f, 390.0f},
      {0.014310f, 0.000396f, 0.067850f, 400.0f}, {0.043510f, 0.001210f, 0.207400f, 410.0f},
      {0.134380f, 0.004000f, 0.645600f, 420.0f}, {0.283900f, 0.011600f, 1.385600f, 430.0f},
      {0.348280f, 0.023000f, 1.747060f, 440.0f}, {0.336200f, 0.038000f, 1.772110f, 450.0f},
      {0.290800f, 0.060000f, 1.669200f, 460.0f}, {0.195360f, 0.090980f, 1.287640f, 470.0f},
      {0.095640f, 0.139020f, 0.812950f, 480.0f}, {0.032010f, 0.208020f, 0.465180f, 490.0f},
      {0.004900f, 0.323000f, 0.272000f, 500.0f}, {0.009300f, 0.503000f, 0.158200f, 510.0f},
      {0.063270f, 0.710000f, 0.078250f, 520.0f}, {0.165500f, 0.862000f, 0.042160f, 530.0f},
      {0.290400f, 0.954000f, 0.020300f, 540.0f}, {0.433450f, 0.994950f, 0.008750f, 550.0f},
      {0.594500f, 0.995000f, 0.003900f, 560.0f}, {0.762100f, 0.952000f, 0.002100f, 570.0f},
      {0.916300f, 0.870000f, 0.001650f, 580.0f}, {1.026300f, 0.757000f, 0.001100f, 590.0f},
      {1.062200f, 0.631000f, 0.000800f, 600.0f}, {1.002600f, 0.503000f, 0.000340f, 610.0f},
      {0.854450f, 0.381000f, 0.000190f, 620.0f}, {0.642400f, 0.265000f, 0.000050f, 630.0f},
      {0.447900f, 0.175000f, 0.000020f, 640.0f}, {0.283500f, 0.107000f, 0.000000f, 650.0f},
      {0.164900f, 0.061000f, 0.000000f, 660.0f}, {0.087400f, 0.032000f, 0.000000f, 670.0f},
      {0.046770f, 0.017000f, 0.000000f, 680.0f}, {0.022700f, 0.008210f, 0.000000f, 690.0f},
      {0.011359f, 0.004102f, 0.000000f, 700.0f}, {0.005790f, 0.002091f, 0.000000f, 710.0f},
      {0.002899f, 0.001047f, 0.000000f, 720.0f}, {0.001440f, 0.000520f, 0.000000f, 730.0f},
      {0.000690f, 0.000249f, 0.000000f, 740.0f}, {0.000332f, 0.000120f, 0.000000f, 750.0f},
      {0.000166f, 0.000060f, 0.000000f, 760.0f}, {0.000083f, 0.000030f, 0.000000f, 770.0f},
      {0.000042f, 0.000015f, 0.000000f, 780.0f},
  }};
}

// Built once on first use (a function-local static is initialised exactly once
// even when several threads get here together) and never freed.
const ObserverTable& Observer() {
  static const ObserverTable table = BuildObserverTable();
  return table;
}

// The value of a channel in a record; -1 for an unknown channel.
int ChannelIndex(char channel) {
  switch (channel) {
    case 'x':
      return 0;
    case 'y':
      return 1;
    case 'z':
      return 2;
    default:
      return -1;
  }
}

float ChannelValue(const ObserverRecord& record, int channel) {
  return channel == 0 ? record.x : channel == 1 ? record.y : record.z;
}

// Second radiation constant in nanometre-kelvin, as the renderer has always used
// it (not the latest recommended value).
constexpr double kSecondRadiationConstant = 14388276.839025812;
// Planck terms below this are treated as no radiation at all.
constexpr double kNegligibleRadiance = 3e-30;

// Planck's law up to constant factors, with x = 1 / wavelength: x^5 / (e^(c2 x / T) - 1).
// `inverseTemperature` is 1 / T in single precision.
float PlanckTerm(float wavelength, float inverseTemperature) {
  const float x = 1.0f / wavelength;
  const double xd = x;
  const double term =
      std::pow(xd, 5.0) / (std::exp(xd * kSecondRadiationConstant * inverseTemperature) - 1.0);
  if (term < kNegligibleRadiance) return 0.0f;
  return static_cast<float>(term);
}

}  // namespace

float CIEColorimetricObserver(char channel, float wavelength) {
  const ObserverTable& table = Observer();
  // Written as a range test so that a NaN wavelength is outside too.
  if (!(wavelength >= kFirstWavelength && wavelength <= kLastWavelength)) return 0.0f;

  const int c = ChannelIndex(channel);
  const float f = (wavelength - kFirstWavelength) / kStep;
  const int i = static_cast<int>(f);

  const bool onGrid = static_cast<float>(static_cast<int>(wavelength / kStep) * 10) == wavelength;
  if (onGrid) return c < 0 ? 0.0f : ChannelValue(table[static_cast<std::size_t>(i)], c);
  if (c < 0) return 0.0f;

  // Off the grid, i + 1 is at most 40: 780 itself is on the grid.
  const float w = f - static_cast<float>(i);
  const auto lower = static_cast<std::size_t>(i);
  return w * ChannelValue(table[lower], c) + (1.0f - w) * ChannelValue(table[lower + 1], c);
}

void BlackbodyColor(float temperature, float* r, float* g, float* b) {
  if (temperature == 0.0f) temperature = 6500.0f;
  const float s = 1.0f / temperature;

  // Trapezoidal rule over the grid wavelengths; the step width cancels in the
  // normalisation below and is left out. The full terms run from 390 to 760 nm:
  // 770 nm takes no part, as in every earlier release of this computation, whose
  // results the light editors match. Only grid wavelengths are sampled, where the
  // observer's value is the table's record itself, so the records are read
  // directly.
  const ObserverTable& table = Observer();
  const ObserverRecord& first = table.front();
  float term = PlanckTerm(kFirstWavelength, s);
  float X = 0.5f * term * first.x;
  float Y = 0.5f * term * first.y;
  float Z = 0.5f * term * first.z;
  for (int i = 1; i < kRecordCount - 2; ++i) {
    const ObserverRecord& record = table[static_cast<std::size_t>(i)];
    term = PlanckTerm(static_cast<float>(380 + 10 * i), s);
    X += term * record.x;
    Y += term * record.y;
    Z += term * record.z;
  }
  const ObserverRecord& last = table.back();
  term = PlanckTerm(kLastWavelength, s);
  X += 0.5f * term * last.x;
  Y += 0.5f * term * last.y;
  Z += 0.5f * term * last.z;

  // XYZ to linear RGB, scaled by the luminance.
  const float n = Y == 0.0f ? 1.0f : 1.0f / Y;
  *r = (1.967f * X - 0.548f * Y - 0.297f * Z) * n;
  *g = (1.938f * Y - 0.955f * X + 0.027f * Z) * n;
  *b = (0.064f * X - 0.130f * Y + 0.982f * Z) * n;

  // A tint: the largest component becomes 1; nothing is clamped.
  const float m = std::max(*b, std::max(*r, *g));
  if (m == 0.0f) return;
  *r /= m;
  *g /= m;
  *b /= m;
}
