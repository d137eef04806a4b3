#include "QAVRulerDecoratedAngleEditor.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "QAV3DViewer.h"
#include "QAVPixelImage.h"
#include "QAVViewDecoration.h"

QAV_IMPLEMENT_CLASS(QAVRulerDecoratedAngleEditor, QAVRulerDecoratedEditor, "System");

namespace {

constexpr QAVDecorationInk kInk = {24, 150, 70};

double Dot(const QAVMathVector& a, const QAVMathVector& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

QAVMathVector Scaled(const QAVMathVector& v, double s) { return {v.x * s, v.y * s, v.z * s}; }

QAVMathVector Unit(const QAVMathVector& v) {
  const double length = std::sqrt(Dot(v, v));
  return length > 0 && std::isfinite(length) ? Scaled(v, 1.0 / length) : QAVMathVector();
}

// The arc: around the plane's origin, of the free radius, from the first
// direction turning towards the second one (made orthogonal to the first) over
// the value in degrees, with both bounding radii and ticks every 15 degrees.
class AngleDecoration : public QAVViewDecoration {
 public:
  explicit AngleDecoration(const QAVRulerDecoratedAngleEditor* editor) : _editor(editor) {}
  void Forget() { _editor = nullptr; }

  void Draw(QAVPixelImage& image, const QAV3DViewer& viewer) const override {
    if (!_editor) return;
    const QAVMathPlane& plane = _editor->GetDecoratorPlane();
    const QAVMathVector u = Unit(plane.GetFirstDirection());
    const QAVMathVector second = plane.GetSecondDirection();
    const double along = Dot(second, u);
    const QAVMathVector v =
        Unit({second.x - along * u.x, second.y - along * u.y, second.z - along * u.z});
    const double radius = _editor->GetFreeRadius();
    const double degrees = _editor->GetValue();
    if (Dot(u, u) == 0 || Dot(v, v) == 0 || !std::isfinite(radius) || !std::isfinite(degrees))
      return;
    // Beyond a full turn the arc is a full circle.
    const double sweep = std::clamp(degrees, -360.0, 360.0) * std::numbers::pi / 180.0;
    const QAVMathPoint origin = plane.GetOrigin();
    const auto at = [&](double angle, double r) {
      return origin + QAVMathVector(r * (std::cos(angle) * u.x + std::sin(angle) * v.x),
                                    r * (std::cos(angle) * u.y + std::sin(angle) * v.y),
                                    r * (std::cos(angle) * u.z + std::sin(angle) * v.z));
    };
    const double scale = std::max(1, _editor->GetScale() + 1) / 2.0;
    double cx = 0;
    double cy = 0;
    double px = 0;
    double py = 0;
    const bool centre = ProjectOnto(image, viewer, origin, cx, cy);
    // The bounding radii.
    for (const double angle : {0.0, sweep})
      if (centre && ProjectOnto(image, viewer, at(angle, radius), px, py))
        DrawLine(image, cx, cy, px, py, scale, kInk);
    // The arc, in pieces of at most three degrees.
    const int pieces = std::max(8, static_cast<int>(std::ceil(std::abs(degrees) / 3.0)));
    bool previous = ProjectOnto(image, viewer, at(0.0, radius), px, py);
    for (int i = 1; i <= pieces; ++i) {
      double qx = 0;
      double qy = 0;
      const bool seen = ProjectOnto(image, viewer, at(sweep * i / pieces, radius), qx, qy);
      if (previous && seen) DrawLine(image, px, py, qx, qy, 2.0 * scale, kInk);
      previous = seen;
      px = qx;
      py = qy;
    }
    // Ticks outwards every 15 degrees.
    const double tick = (sweep < 0 ? -15.0 : 15.0) * std::numbers::pi / 180.0;
    const int ticks = static_cast<int>(std::floor(std::abs(degrees) / 15.0 + 1e-9));
    for (int i = 0; i <= std::min(ticks, 24); ++i) {
      const double signedAngle = i * tick;
      double ox = 0;
      double oy = 0;
      if (ProjectOnto(image, viewer, at(signedAngle, radius), px, py) &&
          ProjectOnto(image, viewer, at(signedAngle, radius * 1.12), ox, oy))
        DrawLine(image, px, py, ox, oy, scale, kInk);
    }
    // The value outside the middle of the arc.
    if (ProjectOnto(image, viewer, at(sweep / 2, radius * 1.7), px, py)) {
      const int dot = std::max(1, static_cast<int>(std::lround(2 * scale)));
      DrawValue(image, px, py, degrees, true, dot, kInk);
    }
  }

 private:
  const QAVRulerDecoratedAngleEditor* _editor;
};

}  // namespace

QAVRulerDecoratedAngleEditor::QAVRulerDecoratedAngleEditor(QAVCommand* father, const char* name,
                                                           QAV3DViewer* viewer)
    : QAVRulerDecoratedEditor(father, name, viewer, QAVMakeRef<AngleDecoration>(this)) {}

QAVRulerDecoratedAngleEditor::~QAVRulerDecoratedAngleEditor() {
  Undecorate();
  // Whoever still holds the decoration finds it empty.
  static_cast<AngleDecoration*>(GetDecoration())->Forget();
}
