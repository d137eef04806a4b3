#include "QAVFixedGPDrawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "QAV3DRep.h"
#include "QAV3DViewer.h"
#include "QAVPixelImage.h"

namespace {

struct Pixel {
  double x, y;
};

QAVMathVector Unit(const QAVMathVector& v) {
  const double length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
  return length > 0 ? QAVMathVector{v.x / length, v.y / length, v.z / length} : v;
}

QAVMathVector Cross(const QAVMathVector& a, const QAVMathVector& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

QAVMathPoint Along(const QAVMathPoint& p, const QAVMathVector& v, double k) {
  return {p.x + k * v.x, p.y + k * v.y, p.z + k * v.z};
}

// Drawing in the picture, with coverage-weighted blending of one colour.
class Canvas {
 public:
  Canvas(QAVPixelImage& image, const QAV3DViewer& viewer) : _image(image), _viewer(viewer) {
    float width = 0.0F;
    float height = 0.0F;
    viewer.GetGraphicSize(width, height);
    _scaleX = width > 0 ? image.GetWidth() / static_cast<double>(width) : 1.0;
    _scaleY = height > 0 ? image.GetHeight() / static_cast<double>(height) : 1.0;
  }

  // The picture's pixel of a point of the scene; false behind the eye.
  bool Project(const QAVMathPoint& point, Pixel& pixel) const {
    double x = 0.0;
    double y = 0.0;
    if (!_viewer.Project(point, x, y)) return false;
    pixel = {x * _scaleX, y * _scaleY};
    return std::abs(pixel.x) < 1e6 && std::abs(pixel.y) < 1e6;
  }

  // Scene units per picture pixel at a point, across the view.
  double UnitsPerPixel(const QAVMathPoint& point) const {
    const QAV3DViewpoint& view = *_viewer.GetMain3DViewpoint();
    const QAVMathVector across =
        Unit(Cross(view.GetTarget() - view.GetOrigin(), view.GetUpDirection()));
    Pixel a{};
    Pixel b{};
    if (!Project(point, a) || !Project(Along(point, across, 1.0), b)) return 0.0;
    const double pixels = std::hypot(b.x - a.x, b.y - a.y);
    return pixels > 0 ? 1.0 / pixels : 0.0;
  }

  void Line(Pixel a, Pixel b, double width, const QAVGraphicAttributeSet& ink) {
    Cover(std::min(a.x, b.x) - width, std::max(a.x, b.x) + width, std::min(a.y, b.y) - width,
          std::max(a.y, b.y) + width, ink, [&](double x, double y) {
            const double dx = b.x - a.x;
            const double dy = b.y - a.y;
            const double length2 = dx * dx + dy * dy;
            const double t = length2 > 0
                                 ? std::clamp(((x - a.x) * dx + (y - a.y) * dy) / length2, 0.0, 1.0)
                                 : 0.0;
            const double distance = std::hypot(x - a.x - t * dx, y - a.y - t * dy);
            return std::clamp(width / 2 + 0.5 - distance, 0.0, 1.0);
          });
  }

  // A convex quadrilateral, its corners in order.
  void Fill(const std::array<Pixel, 4>& q, const QAVGraphicAttributeSet& ink) {
    double left = q[0].x, right = q[0].x, top = q[0].y, bottom = q[0].y;
    for (const Pixel& p : q) {
      left = std::min(left, p.x);
      right = std::max(right, p.x);
      top = std::min(top, p.y);
      bottom = std::max(bottom, p.y);
    }
    Cover(left, right, top, bottom, ink, [&q](double x, double y) {
      int positive = 0;
      int negative = 0;
      for (std::size_t i = 0; i < q.size(); ++i) {
        const Pixel& a = q[i];
        const Pixel& b = q[(i + 1) % q.size()];
        const double side = (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
        positive += side > 0 ? 1 : 0;
        negative += side < 0 ? 1 : 0;
      }
      return positive == 0 || negative == 0 ? 1.0 : 0.0;
    });
  }

 private:
  template <typename Coverage>
  void Cover(double left, double right, double top, double bottom,
             const QAVGraphicAttributeSet& ink, Coverage coverage) {
    const int x0 = static_cast<int>(std::max(0.0, std::floor(left)));
    const int x1 = static_cast<int>(std::min(_image.GetWidth() - 1.0, std::ceil(right)));
    const int y0 = static_cast<int>(std::max(0.0, std::floor(top)));
    const int y1 = static_cast<int>(std::min(_image.GetHeight() - 1.0, std::ceil(bottom)));
    const int channels = QAVPixelImage::GetChannelCount(_image.GetFormat());
    auto* pixels = static_cast<std::uint8_t*>(_image.GetPixels());
    const std::array<double, 3> colour = {static_cast<double>(ink.red),
                                          static_cast<double>(ink.green),
                                          static_cast<double>(ink.blue)};
    for (int y = y0; y <= y1; ++y) {
      for (int x = x0; x <= x1; ++x) {
        const double c = coverage(x + 0.5, y + 0.5) * ink.alpha / 255.0;
        if (c <= 0) continue;
        std::uint8_t* pixel = pixels + static_cast<std::size_t>(channels) *
                                           (static_cast<std::size_t>(y) *
                                                static_cast<std::size_t>(_image.GetWidth()) +
                                            static_cast<std::size_t>(x));
        for (std::size_t k = 0; k < 3; ++k)
          pixel[k] = static_cast<std::uint8_t>(std::lround(pixel[k] * (1 - c) + colour[k] * c));
      }
    }
  }

  QAVPixelImage& _image;
  const QAV3DViewer& _viewer;
  double _scaleX = 1.0;
  double _scaleY = 1.0;
};

QAVMathPoint Global(const QAV4x4Matrix& toGlobal, const QAVMathPointf& p) {
  return toGlobal * QAVMathPoint(p.x, p.y, p.z);
}

QAVMathVector GlobalDirection(const QAV4x4Matrix& toGlobal, const QAVMathVectorf& v) {
  return Unit(toGlobal.Rotate({v.x, v.y, v.z}));
}

void DrawPlane(Canvas& canvas, const QAV4x4Matrix& toGlobal, const QAV3DFixedPlanGP& plane) {
  const QAVMathPoint centre = Global(toGlobal, plane.GetPoint());
  const double half = plane.GetSize() / 2.0 * canvas.UnitsPerPixel(centre);
  if (!(half > 0)) return;
  const QAVMathVector u = GlobalDirection(toGlobal, plane.GetFirstDirection());
  const QAVMathVector v = GlobalDirection(toGlobal, plane.GetSecondDirection());
  std::array<Pixel, 4> corner{};
  const std::array<std::array<double, 2>, 4> signs = {{{-1, -1}, {1, -1}, {1, 1}, {-1, 1}}};
  for (std::size_t i = 0; i < 4; ++i)
    if (!canvas.Project(Along(Along(centre, u, signs[i][0] * half), v, signs[i][1] * half),
                        corner[i]))
      return;
  QAVGraphicAttributeSet fill = plane.GetAttributes();
  fill.alpha = static_cast<unsigned char>(fill.alpha / 2);
  canvas.Fill(corner, fill);
  for (std::size_t i = 0; i < 4; ++i)
    canvas.Line(corner[i], corner[(i + 1) % 4], 1.5, plane.GetAttributes());
}

void DrawArrow(Canvas& canvas, const QAV4x4Matrix& toGlobal, const QAV3DFixedArrowGP& arrow,
               const QAV3DViewer& viewer) {
  const QAVMathPoint start = Global(toGlobal, arrow.GetPoint());
  const double unit = canvas.UnitsPerPixel(start);
  if (!(unit > 0)) return;
  const QAVMathVector d = GlobalDirection(toGlobal, arrow.GetDirection());
  const QAVMathPoint tip = Along(start, d, arrow.GetLength() * unit);
  // The head opens across the arrow as seen from the eye.
  const QAV3DViewpoint& view = *viewer.GetMain3DViewpoint();
  QAVMathVector side = Unit(Cross(d, tip - view.GetOrigin()));
  if (side.x == 0 && side.y == 0 && side.z == 0)
    side = Unit(Cross(view.GetTarget() - view.GetOrigin(), view.GetUpDirection()));
  const double head = arrow.GetHeadSize() * unit;
  Pixel a{};
  Pixel b{};
  Pixel left{};
  Pixel right{};
  if (!canvas.Project(start, a) || !canvas.Project(tip, b) ||
      !canvas.Project(Along(Along(tip, d, -head), side, head / 2), left) ||
      !canvas.Project(Along(Along(tip, d, -head), side, -head / 2), right))
    return;
  canvas.Line(a, b, 2.0, arrow.GetAttributes());
  canvas.Line(b, left, 2.0, arrow.GetAttributes());
  canvas.Line(b, right, 2.0, arrow.GetAttributes());
}

void DrawRep(Canvas& canvas, const QAV3DRep* rep, const QAV4x4Matrix& toGlobal,
             const QAV3DViewer& viewer) {
  if (const auto* bag = dynamic_cast<const QAV3DBagRep*>(rep)) {
    const QAV4x4Matrix inner = bag->GetMatrix() ? toGlobal * *bag->GetMatrix() : toGlobal;
    for (int i = 0; i < bag->GetChildCount(); ++i)
      DrawRep(canvas, bag->GetChild(i), inner, viewer);
  } else if (const auto* custom = dynamic_cast<const QAV3DCustomRep*>(rep)) {
    for (int i = 0; i < custom->GetPrimitiveCount(); ++i) {
      const QAVGraphicPrimitive* primitive = custom->GetPrimitive(i);
      if (const auto* plane = dynamic_cast<const QAV3DFixedPlanGP*>(primitive))
        DrawPlane(canvas, toGlobal, *plane);
      else if (const auto* arrow = dynamic_cast<const QAV3DFixedArrowGP*>(primitive))
        DrawArrow(canvas, toGlobal, *arrow, viewer);
    }
  }
}

}  // namespace

void QAVDrawViewerReps(QAVPixelImage& image, const QAV3DViewer& viewer) {
  const QAVPixelFormat format = image.GetFormat();
  if (format != QAVPixelFormat::RGB && format != QAVPixelFormat::RGBA) return;
  Canvas canvas(image, viewer);
  for (int i = 0; i < viewer.GetRepCount(); ++i)
    DrawRep(canvas, viewer.GetRep(i), QAV4x4Matrix(), viewer);
}
