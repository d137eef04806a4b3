// Sampling of a light profile at any direction: the direction is folded onto the
// part of the sphere the file describes, then the candela table is interpolated
// linearly in each angle and scaled by the candela multiplier and the ballast
// factor. Nothing here allocates: the host samples per direction when it builds
// light textures.
#include <cmath>

#include "QAVRbaLightProfile.h"

namespace {

// Marks a direction without light, in either angle.
constexpr double kNoLight = -360.0;

}  // namespace

bool QAVRbaLightProfile::CompareAngles(double a, double b) { return std::fabs(a - b) < 0.001; }

void QAVRbaLightProfile::MapAnglesToStandardRep(double* horizontalAngle, double* verticalAngle) {
  double& h = *horizontalAngle;
  double& v = *verticalAngle;
  if (h < 0.0 || h >= 360.0) h = h - std::floor(h / 360.0) * 360.0;
  if (v < 0.0 || v >= 360.0) v = v - std::floor(v / 360.0) * 360.0;
  // Past the bottom pole: the same direction seen from the opposite azimuth.
  if (v > 180.0) {
    h = h >= 180.0 ? h - 180.0 : h + 180.0;
    v = 360.0 - v;
  }
}

// Mirror about the 0-180 plane.
void QAVRbaLightProfile::MapAngleTo0180Quarters(double* angle) {
  if (*angle < 0.0)
    *angle = -*angle;
  else if (*angle > 180.0)
    *angle = 360.0 - *angle;
}

// Mirror into the first quadrant.
void QAVRbaLightProfile::MapAngleTo090Quarter(double* angle) {
  MapAngleTo0180Quarters(angle);
  if (*angle > 90.0 && *angle <= 180.0) *angle = 180.0 - *angle;
}

void QAVRbaLightProfile::GetSamplingAnglesFromSymetries(double* horizontalAngle,
                                                        double* verticalAngle) const {
  MapAnglesToStandardRep(horizontalAngle, verticalAngle);
  double& h = *horizontalAngle;
  double& v = *verticalAngle;
  const HorizontalSymmetry symmetry = _symmetry;
  switch (symmetry) {
    case HorizontalSymmetry::Rotational:
    case HorizontalSymmetry::Quadrant:
    case HorizontalSymmetry::Bilateral:
      // The vertical rule shared by the three symmetric cases.
      switch (_coverage) {
        case VerticalCoverage::Single:
          v = _verticalAngles.front();
          break;
        case VerticalCoverage::Hemisphere:
          if (v > 90.0) v = kNoLight;
          break;
        case VerticalCoverage::Sphere:
          break;
        case VerticalCoverage::Range360:
          if (symmetry == HorizontalSymmetry::Bilateral) {
            if (h > 180.0) {
              v = 360.0 - v;
              h = h - 180.0;
            }
          } else if (h > 90.0 && h < 270.0) {
            v = 360.0 - v;
            h = h >= 180.0 ? h - 180.0 : h + 180.0;
          }
          break;
        default:
          v = kNoLight;
      }
      // The horizontal rule follows in every case, a no-light marker included.
      if (symmetry == HorizontalSymmetry::Rotational)
        h = _horizontalAngles.front();
      else if (symmetry == HorizontalSymmetry::Quadrant)
        MapAngleTo090Quarter(&h);
      else
        MapAngleTo0180Quarters(&h);
      return;
    case HorizontalSymmetry::Full:
      switch (_coverage) {
        case VerticalCoverage::Single:
          v = _verticalAngles.front();
          return;
        case VerticalCoverage::Hemisphere:
          if (v > 90.0) v = kNoLight;
          return;
        case VerticalCoverage::Sphere:
          return;
        default:  // 360 included
          break;
      }
      break;
    default:
      break;
  }
  h = kNoLight;
  v = kNoLight;
}

double QAVRbaLightProfile::GetLightProfileValue(double horizontalAngle,
                                                double verticalAngle) const {
  // A profile without a complete table (never read, failed, or no angles) gives
  // no light.
  if (!_tableComplete || _verticalAngles.empty() || _horizontalAngles.empty()) return 0.0;
  double h = horizontalAngle;
  double v = verticalAngle;
  GetSamplingAnglesFromSymetries(&h, &v);
  if (h == kNoLight || v == kNoLight) return 0.0;

  const double* const vAngles = _verticalAngles.data();
  const double* const hAngles = _horizontalAngles.data();
  const std::size_t vCount = _verticalAngles.size();
  const std::size_t hCount = _horizontalAngles.size();

  // The searches stop at the first angle within 0.001 of the input (an exact
  // match) or above it. With d = angle - input, "|d| < 0.001 or d > 0" is the
  // single test "d > -0.001" (NaN fails both forms alike), so each step of the
  // scan costs one comparison.
  std::size_t j = 0;
  while (j < vCount && !(vAngles[j] - v > -0.001))
    ++j;
  const bool vExact = j < vCount && vAngles[j] - v < 0.001;
  std::size_t i = 0;
  while (i < hCount && !(hAngles[i] - h > -0.001))
    ++i;
  const bool hExact = i < hCount && hAngles[i] - h < 0.001;

  const double scale = _ballastFactor * _candelaMultiplier;
  const double* const row = _candelaValues.data() + i * vCount;
  if (vExact && hExact) return scale * row[j];
  // No extrapolation below the first or above the last angle, and no wrap-around
  // between the last and the first azimuth.
  if (i >= hCount || (i == 0 && !hExact) || j >= vCount || (j == 0 && !vExact)) return 0.0;

  // t weighs the lower horizontal neighbour, u the lower vertical one.
  const double* const previousRow = row - (hExact ? 0 : vCount);
  double value;
  if (vExact) {
    const double t = (hAngles[i] - h) / (hAngles[i] - hAngles[i - 1]);
    value = (1 - t) * row[j] + t * previousRow[j];
  } else if (hExact) {
    const double u = (vAngles[j] - v) / (vAngles[j] - vAngles[j - 1]);
    value = u * row[j - 1] + (1 - u) * row[j];
  } else {
    const double t = (hAngles[i] - h) / (hAngles[i] - hAngles[i - 1]);
    const double u = (vAngles[j] - v) / (vAngles[j] - vAngles[j - 1]);
    value = (1 - t) * u * row[j - 1] + u * t * previousRow[j - 1] + (1 - u) * t * previousRow[j] +
            (1 - u) * (1 - t) * row[j];
  }
  return scale * value;
}

void QAVRbaLightProfile::ClassifyRanges() {
  _symmetry = HorizontalSymmetry::NoTable;
  _coverage = VerticalCoverage::NoTable;
  if (!_tableComplete || _verticalAngles.empty() || _horizontalAngles.empty()) return;
  // Tested in this order: a range within 0.001 of two values takes the first.
  const double h = _horizontalAngles.back() - _horizontalAngles.front();
  _symmetry = CompareAngles(h, 0.0)     ? HorizontalSymmetry::Rotational
              : CompareAngles(h, 90.0)  ? HorizontalSymmetry::Quadrant
              : CompareAngles(h, 180.0) ? HorizontalSymmetry::Bilateral
              : CompareAngles(h, 360.0) ? HorizontalSymmetry::Full
                                        : HorizontalSymmetry::Unsupported;
  const double v = _verticalAngles.back() - _verticalAngles.front();
  _coverage = CompareAngles(v, 0.0)     ? VerticalCoverage::Single
              : CompareAngles(v, 90.0)  ? VerticalCoverage::Hemisphere
              : CompareAngles(v, 180.0) ? VerticalCoverage::Sphere
              : CompareAngles(v, 360.0) ? VerticalCoverage::Range360
                                        : VerticalCoverage::Unsupported;
}
