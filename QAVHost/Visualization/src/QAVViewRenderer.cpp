#include "QAVViewRenderer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVFixedGPDrawing.h"
#include "QAVGraphicWindow.h"
#include "QAVModelObject.h"
#include "QAVRayCaster.h"

namespace {

enum class Kind { Part, Sticker, Light, Camera, Environment };

struct Colour {
  double r, g, b;
};

// What a leaf stands for, from the classes of the objects above it.
Kind KindOf(const std::vector<QAVRef<QAV3DRep>>& path) {
  for (const QAVRef<QAV3DRep>& rep : path) {
    const QAVModelObject* object = rep->GetModelObject();
    const char* name = object ? object->IsA() : nullptr;
    if (!name) continue;
    if (std::strcmp(name, "QAVStkStickerContainer") == 0) return Kind::Sticker;
    if (std::strcmp(name, "QAVRscLightContainer") == 0) return Kind::Light;
    if (std::strcmp(name, "QAVCameraContainer") == 0) return Kind::Camera;
    if (std::strcmp(name, "QAVRscEnvironmentContainer") == 0) return Kind::Environment;
  }
  return Kind::Part;
}

Colour BaseColour(Kind kind) {
  switch (kind) {
    case Kind::Sticker:
      return {0.86, 0.18, 0.36};
    case Kind::Light:
      return {1.0, 0.86, 0.35};
    case Kind::Camera:
      return {0.25, 0.45, 0.85};
    case Kind::Environment:
      return {0.62, 0.80, 0.66};
    case Kind::Part:
      break;
  }
  return {0.72, 0.68, 0.62};
}

std::uint8_t Byte(double value) {
  // A display gamma of 2.2 over linear shading.
  const double encoded = std::pow(std::clamp(value, 0.0, 1.0), 1.0 / 2.2);
  return static_cast<std::uint8_t>(std::lround(encoded * 255.0));
}

}  // namespace

HRESULT QAVViewRenderer::Render(QAV3DViewer* viewer, QAVRef<QAVPixelImage>& image) {
  image = nullptr;
  if (!viewer) return E_FAIL;
  float graphicWidth = 0.0F;
  float graphicHeight = 0.0F;
  viewer->GetGraphicSize(graphicWidth, graphicHeight);
  // Whole pixels; a size the picture cannot have is refused, never clamped:
  // a clamped picture would show the view squashed.
  constexpr float kMin = QAVGraphicWindow::kMinWindowSide;
  constexpr float kMax = QAVGraphicWindow::kMaxWindowSide;
  const float roundedWidth = std::round(graphicWidth);
  const float roundedHeight = std::round(graphicHeight);
  if (!(roundedWidth >= kMin && roundedWidth <= kMax && roundedHeight >= kMin &&
        roundedHeight <= kMax))
    return E_INVALIDARG;
  const int width = static_cast<int>(roundedWidth);
  const int height = static_cast<int>(roundedHeight);
  auto picture = QAVMakeRef<QAVPixelImage>(width, height, QAVPixelFormat::RGB);
  auto* pixels = static_cast<std::uint8_t*>(picture->GetPixels());

  const QAVRayCaster* caster = viewer->GetSceneRoot() ? viewer->Caster() : nullptr;
  std::vector<Kind> kinds;
  if (caster)
    for (unsigned leaf = 0; caster && leaf < caster->GetLeafCount(); ++leaf)
      kinds.push_back(KindOf(*caster->PathOf(leaf)));

  // The light from above the view (the viewpoint's up) and a little from the left.
  const QAV3DViewpoint& view = *viewer->GetMain3DViewpoint();
  const QAVMathVector up = view.GetUpDirection();
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      QAVMathPoint origin;
      QAVMathVector direction;
      // Pixel centres, scaled from the image to the graphic area.
      viewer->GetRay((x + 0.5) * graphicWidth / width, (y + 0.5) * graphicHeight / height, origin,
                     direction);
      Colour colour;
      QAVRayCaster::Hit hit;
      if (caster && caster->CastNearest(origin, direction, 0.0, hit)) {
        const Kind kind = kinds[hit.leaf];
        const Colour base = BaseColour(kind);
        const QAVMathVector n = caster->ShadingNormal(hit, direction);
        const double facing = std::abs(n.x * direction.x + n.y * direction.y + n.z * direction.z);
        const double upLength = std::sqrt(up.x * up.x + up.y * up.y + up.z * up.z);
        const double fromAbove =
            upLength > 0 ? std::max(0.0, (n.x * up.x + n.y * up.y + n.z * up.z) / upLength) : 0.0;
        double light = 0.18 + 0.62 * facing + 0.35 * fromAbove;
        if (kind == Kind::Light) light = 1.0 + 0.3 * facing;  // it glows
        const double highlight = kind == Kind::Part ? 0.25 * std::pow(facing, 40.0) : 0.0;
        colour = {base.r * light + highlight, base.g * light + highlight,
                  base.b * light + highlight};
      } else {
        // The environment: lighter towards the top of the picture.
        const double t = static_cast<double>(y) / std::max(1, height - 1);
        colour = {0.80 - 0.45 * t, 0.82 - 0.45 * t, 0.86 - 0.42 * t};
      }
      std::uint8_t* pixel = pixels + 3 * (static_cast<std::size_t>(y) * width + x);
      pixel[0] = Byte(colour.r);
      pixel[1] = Byte(colour.g);
      pixel[2] = Byte(colour.b);
    }
  }
  // The representations shown over the scene, then the decorations.
  QAVDrawViewerReps(*picture, *viewer);
  for (int i = 0; i < viewer->GetDecorationCount(); ++i)
    viewer->GetDecoration(i)->Draw(*picture, *viewer);
  image = picture;
  return S_OK;
}

void QAVViewRenderer::DrawRing(QAVPixelImage& image, double centerX, double centerY, double radius,
                               double lineWidth, unsigned char red, unsigned char green,
                               unsigned char blue) {
  const QAVPixelFormat format = image.GetFormat();
  if (format != QAVPixelFormat::RGB && format != QAVPixelFormat::RGBA) return;
  // Beyond ten million pixels a ring has nothing to do with any picture (and
  // its distances lose their precision): none is drawn, as for non-numbers.
  constexpr double kFar = 1e7;
  if (!(std::abs(centerX) < kFar && std::abs(centerY) < kFar && std::abs(radius) < kFar &&
        lineWidth > 0 && lineWidth < kFar))
    return;
  const int channels = QAVPixelImage::GetChannelCount(format);
  auto* pixels = static_cast<std::uint8_t*>(image.GetPixels());
  const double reach = std::abs(radius) + lineWidth;
  // The box around the ring, clipped to the image in floating point first.
  const double left = std::max(0.0, std::floor(centerX - reach));
  const double right = std::min(image.GetWidth() - 1.0, std::ceil(centerX + reach));
  const double top = std::max(0.0, std::floor(centerY - reach));
  const double bottom = std::min(image.GetHeight() - 1.0, std::ceil(centerY + reach));
  if (!(left <= right && top <= bottom)) return;
  const int x0 = static_cast<int>(left);
  const int x1 = static_cast<int>(right);
  const int y0 = static_cast<int>(top);
  const int y1 = static_cast<int>(bottom);
  const std::array<double, 3> ink = {static_cast<double>(red), static_cast<double>(green),
                                     static_cast<double>(blue)};
  for (int y = y0; y <= y1; ++y) {
    for (int x = x0; x <= x1; ++x) {
      const double distance = std::hypot(x + 0.5 - centerX, y + 0.5 - centerY);
      // Coverage: 1 inside the line, falling to 0 over one pixel at its edges.
      const double coverage =
          std::clamp(lineWidth / 2 + 0.5 - std::abs(distance - std::abs(radius)), 0.0, 1.0);
      if (coverage <= 0) continue;
      std::uint8_t* pixel =
          pixels + static_cast<std::size_t>(channels) *
                       (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.GetWidth()) +
                        static_cast<std::size_t>(x));
      for (std::size_t c = 0; c < 3; ++c)
        pixel[c] =
            static_cast<std::uint8_t>(std::lround(pixel[c] * (1 - coverage) + ink[c] * coverage));
    }
  }
}
