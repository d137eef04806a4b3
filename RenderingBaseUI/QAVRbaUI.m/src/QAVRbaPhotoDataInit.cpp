// The photographic ladders, written as users have always seen them.
#include "QAVRbaPhotoDataInit.h"

#include <algorithm>
#include <array>

#include "QAVDiagnostics.h"
#include "QAVMathPoint.h"

namespace {

constexpr std::array<float, QAVRbaApertureValueCount> kApertures = {
    1,    1.2F, 1.4F,  1.7F, 2,  2.4F, 2.8F, 3.4F, 4,     4.8F, 5.6F,  6.8F, 8,
    9.5F, 11,   13.5F, 16,   19, 22,   27,   32,   38.5F, 45,   54.5F, 64};

constexpr std::array<float, QAVRbaISOValueCount> kISO = {
    0.195F, 0.26F,      0.292F,   0.326F,     0.391F, 0.521F,     0.586F, 0.651F,
    0.781F, 1.042F,     1.171F,   1.302F,     1.562F, 2.083F,     2.343F, 2.604F,
    3.125F, 4.167F,     4.687F,   5.208F,     6.25F,  8.333F,     9.375F, 10.417F,
    12.5F,  16.667F,    18.75F,   20.833F,    25,     33.333F,    37.5F,  41.667F,
    50,     66.666F,    75,       83.333F,    100,    133.333F,   150,    166.667F,
    200,    250,        266.667F, 333.333F,   400,    533.333F,   600,    666.667F,
    800,    1066.667F,  1200,     1333.333F,  1600,   2133.333F,  2400,   2666.667F,
    3200,   4266.667F,  4800,     5333.333F,  6400,   8533.333F,  9600,   10666.667F,
    12800,  17066.667F, 19200,    21333.333F, 25600,  34133.333F, 38400,  42666.667F,
    51200};

constexpr std::array<float, QAVRbaExtraISOValueCount> kExtraISO = {
    0.003046875F, 0.0040625F,  0.00457125F, 0.005078125F, 0.00609375F, 0.008125F,
    0.009140625F, 0.01015625F, 0.0121875F,  0.01625F,     0.01828125F, 0.0203125F,
    0.024375F,    0.0325F,     0.0365625F,  0.040625F,    0.04875F,    0.065F,
    0.073125F,    0.08125F,    0.0975F,     0.13F,        0.14625F,    0.1625F};

constexpr std::array<float, QAVRbaSpeedValueCount> kSpeeds = {1,   2,   4,   8,    16,   30,  60,
                                                              125, 250, 500, 1000, 2000, 4000};

}  // namespace

void InitApertureValues(float* values) { std::copy(kApertures.begin(), kApertures.end(), values); }

void InitISOValues(float* values) { std::copy(kISO.begin(), kISO.end(), values); }

void InitEXTRA_ISOValues(float* values) { std::copy(kExtraISO.begin(), kExtraISO.end(), values); }

void InitSpeedValues(float* values) { std::copy(kSpeeds.begin(), kSpeeds.end(), values); }

float GetEVCorrectionForAperture(float aperture, const float* apertureTable) {
  if (!apertureTable) QAVFatalError("AssertionFailed:apertureTable", "QAVRbaPhotoDataInit", 61);
  if (aperture == 0.0F) return 0.0F;
  if (static_cast<double>(aperture) >= QAVMathInfinite) return 0.0F;
  for (int i = 0; i < QAVRbaApertureValueCount; ++i)
    if (apertureTable[i] == aperture) return static_cast<float>(i - 12) * 0.5F;
  return 6.5F;
}
