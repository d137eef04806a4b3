#include "QAVViewDecoration.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "QAV3DViewer.h"
#include "QAVPixelImage.h"

QAV_IMPLEMENT_CLASS(QAVViewDecoration, QAVBaseUnknown, "System");

namespace {

// Beyond ten million pixels nothing has to do with a picture any more.
constexpr double kFar = 1e7;

bool Drawable(const QAVPixelImage& image) {
  return image.GetFormat() == QAVPixelFormat::RGB || image.GetFormat() == QAVPixelFormat::RGBA;
}

void Blend(QAVPixelImage& image, int x, int y, QAVDecorationInk ink, double coverage) {
  const int channels = QAVPixelImage::GetChannelCount(image.GetFormat());
  auto* pixel = static_cast<std::uint8_t*>(image.GetPixels()) +
                static_cast<std::size_t>(channels) *
                    (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.GetWidth()) +
                     static_cast<std::size_t>(x));
  const std::array<double, 3> colour = {
      static_cast<double>(ink.red), static_cast<double>(ink.green), static_cast<double>(ink.blue)};
  for (std::size_t c = 0; c < 3; ++c)
    pixel[c] =
        static_cast<std::uint8_t>(std::lround(pixel[c] * (1 - coverage) + colour[c] * coverage));
}

// A filled rectangle, clipped, of whole pixels.
void Fill(QAVPixelImage& image, int x0, int y0, int x1, int y1, QAVDecorationInk ink,
          double coverage) {
  x0 = std::max(x0, 0);
  y0 = std::max(y0, 0);
  x1 = std::min(x1, image.GetWidth() - 1);
  y1 = std::min(y1, image.GetHeight() - 1);
  for (int y = y0; y <= y1; ++y)
    for (int x = x0; x <= x1; ++x)
      Blend(image, x, y, ink, coverage);
}

// A 3 x 5 digit font: one row a value, its three low bits the dots from left to
// right. Indices 0-9 are the digits, then '.', '-' and the degree sign.
constexpr std::array<std::array<std::uint8_t, 5>, 13> kGlyphs = {{
    {7, 5, 5, 5, 7},  // 0
    {2, 6, 2, 2, 7},  // 1
    {7, 1, 7, 4, 7},  // 2
    {7, 1, 7, 1, 7},  // 3
    {5, 5, 7, 1, 1},  // 4
    {7, 4, 7, 1, 7},  // 5
    {7, 4, 7, 5, 7},  // 6
    {7, 1, 1, 1, 1},  // 7
    {7, 5, 7, 5, 7},  // 8
    {7, 5, 7, 1, 7},  // 9
    {0, 0, 0, 0, 2},  // .
    {0, 0, 7, 0, 0},  // -
    {2, 5, 2, 0, 0},  // degree
}};
constexpr int kDot = 10;
constexpr int kMinus = 11;
constexpr int kDegree = 12;

}  // namespace

QAVViewDecoration::QAVViewDecoration() = default;

QAVViewDecoration::~QAVViewDecoration() = default;

bool QAVViewDecoration::ProjectOnto(const QAVPixelImage& image, const QAV3DViewer& viewer,
                                    const QAVMathPoint& point, double& x, double& y) {
  float width = 0.0F;
  float height = 0.0F;
  viewer.GetGraphicSize(width, height);
  double px = 0.0;
  double py = 0.0;
  if (!(width > 0 && height > 0) || !viewer.Project(point, px, py)) return false;
  x = px * image.GetWidth() / static_cast<double>(width);
  y = py * image.GetHeight() / static_cast<double>(height);
  return true;
}

void QAVViewDecoration::DrawLine(QAVPixelImage& image, double x0, double y0, double x1, double y1,
                                 double width, QAVDecorationInk ink) {
  if (!Drawable(image)) return;
  if (!(std::abs(x0) < kFar && std::abs(y0) < kFar && std::abs(x1) < kFar && std::abs(y1) < kFar &&
        width > 0 && width < kFar))
    return;
  const double reach = width / 2 + 1;
  const double left = std::max(0.0, std::floor(std::min(x0, x1) - reach));
  const double right = std::min(image.GetWidth() - 1.0, std::ceil(std::max(x0, x1) + reach));
  const double top = std::max(0.0, std::floor(std::min(y0, y1) - reach));
  const double bottom = std::min(image.GetHeight() - 1.0, std::ceil(std::max(y0, y1) + reach));
  if (!(left <= right && top <= bottom)) return;
  const double dx = x1 - x0;
  const double dy = y1 - y0;
  const double squared = dx * dx + dy * dy;
  for (int y = static_cast<int>(top); y <= static_cast<int>(bottom); ++y) {
    for (int x = static_cast<int>(left); x <= static_cast<int>(right); ++x) {
      const double px = x + 0.5 - x0;
      const double py = y + 0.5 - y0;
      // The distance from the pixel centre to the nearest point of the segment.
      const double t = squared > 0 ? std::clamp((px * dx + py * dy) / squared, 0.0, 1.0) : 0.0;
      const double distance = std::hypot(px - t * dx, py - t * dy);
      const double coverage = std::clamp(width / 2 + 0.5 - distance, 0.0, 1.0);
      if (coverage > 0) Blend(image, x, y, ink, coverage);
    }
  }
}

void QAVViewDecoration::DrawValue(QAVPixelImage& image, double x, double y, double value,
                                  bool degrees, int scale, QAVDecorationInk ink) {
  if (!Drawable(image) || !std::isfinite(value) || !(std::abs(x) < kFar && std::abs(y) < kFar))
    return;
  scale = std::clamp(scale, 1, 16);
  char text[48];
  const int length = std::snprintf(text, sizeof text, "%.1f", value);
  if (length <= 0 || static_cast<std::size_t>(length) >= sizeof text) return;
  std::array<int, sizeof text + 1> glyphs{};
  std::size_t count = 0;
  for (int i = 0; i < length; ++i) {
    const char c = text[i];
    if (c >= '0' && c <= '9')
      glyphs[count++] = c - '0';
    else if (c == '.')
      glyphs[count++] = kDot;
    else if (c == '-')
      glyphs[count++] = kMinus;
  }
  if (degrees) glyphs[count++] = kDegree;
  // Glyphs of 3 dots and a space of one between them, a margin of 2 around.
  const int advance = 4 * scale;
  const int textWidth = static_cast<int>(count) * advance - scale;
  const int textHeight = 5 * scale;
  const int left = static_cast<int>(std::lround(x)) - textWidth / 2;
  const int top = static_cast<int>(std::lround(y)) - textHeight / 2;
  const int margin = 2 * scale;
  Fill(image, left - margin, top - margin, left + textWidth + margin - 1,
       top + textHeight + margin - 1, {250, 250, 245}, 0.85);
  for (std::size_t g = 0; g < count; ++g) {
    const auto& glyph = kGlyphs[static_cast<std::size_t>(glyphs[g])];
    for (int row = 0; row < 5; ++row)
      for (int column = 0; column < 3; ++column)
        if ((glyph[static_cast<std::size_t>(row)] >> (2 - column)) & 1U) {
          const int dotX = left + static_cast<int>(g) * advance + column * scale;
          const int dotY = top + row * scale;
          Fill(image, dotX, dotY, dotX + scale - 1, dotY + scale - 1, ink, 1.0);
        }
  }
}
