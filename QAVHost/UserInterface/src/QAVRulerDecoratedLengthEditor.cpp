#include "QAVRulerDecoratedLengthEditor.h"

#include <algorithm>
#include <cmath>

#include "QAV3DViewer.h"
#include "QAVPixelImage.h"
#include "QAVViewDecoration.h"

QAV_IMPLEMENT_CLASS(QAVRulerDecoratedLengthEditor, QAVRulerDecoratedEditor, "System");

namespace {

constexpr QAVDecorationInk kInk = {235, 92, 18};

double Dot(const QAVMathVector& a, const QAVMathVector& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

QAVMathVector Cross(const QAVMathVector& a, const QAVMathVector& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

QAVMathVector Scaled(const QAVMathVector& v, double s) { return {v.x * s, v.y * s, v.z * s}; }

// The unit vector of v, or null when v has no length (or is not a number).
QAVMathVector Unit(const QAVMathVector& v) {
  const double length = std::sqrt(Dot(v, v));
  return length > 0 && std::isfinite(length) ? Scaled(v, 1.0 / length) : QAVMathVector();
}

// A tick step of 1, 2 or 5 times a power of ten giving about ten ticks.
double TickStep(double length) {
  const double rough = length / 10.0;
  const double power = std::pow(10.0, std::floor(std::log10(rough)));
  for (const double factor : {1.0, 2.0, 5.0})
    if (factor * power >= rough) return factor * power;
  return 10.0 * power;
}

// The ruler: the segment measured is from P along D for L; the ruler runs
// beside it, moved by the offset across D and across the line of sight, so
// that it stands apart on screen. Thin lines join the segment's ends to it.
class LengthDecoration : public QAVViewDecoration {
 public:
  explicit LengthDecoration(const QAVRulerDecoratedLengthEditor* editor) : _editor(editor) {}
  void Forget() { _editor = nullptr; }

  void Draw(QAVPixelImage& image, const QAV3DViewer& viewer) const override {
    if (!_editor) return;
    const QAVMathVector direction = Unit(_editor->GetDecoratorDirection());
    const double length = _editor->GetDecoratorLength();
    if (!std::isfinite(length) || Dot(direction, direction) == 0) return;
    const QAVMathPoint start = _editor->GetDecoratorPoint();
    const QAVMathPoint end = start + Scaled(direction, length);
    const QAV3DViewpoint& view = *viewer.GetMain3DViewpoint();
    QAVMathVector side = Unit(Cross(direction, view.GetTarget() - view.GetOrigin()));
    if (Dot(side, side) == 0) side = Unit(view.GetUpDirection());
    const QAVMathVector offset = Scaled(side, _editor->GetRulerOffsetInMM());
    const QAVMathPoint rulerStart = start + offset;
    const QAVMathPoint rulerEnd = end + offset;

    double x0 = 0;
    double y0 = 0;
    double x1 = 0;
    double y1 = 0;
    if (!ProjectOnto(image, viewer, rulerStart, x0, y0) ||
        !ProjectOnto(image, viewer, rulerEnd, x1, y1))
      return;
    const double scale = std::max(1, _editor->GetScale() + 1) / 2.0;
    // The extension lines from the segment's ends.
    double ex = 0;
    double ey = 0;
    if (ProjectOnto(image, viewer, start, ex, ey)) DrawLine(image, ex, ey, x0, y0, scale, kInk);
    if (ProjectOnto(image, viewer, end, ex, ey)) DrawLine(image, ex, ey, x1, y1, scale, kInk);
    DrawLine(image, x0, y0, x1, y1, 2.0 * scale, kInk);

    // Ticks across the ruler on screen, on the side away from the segment.
    double nx = 0;
    double ny = 0;
    const double screenLength = std::hypot(x1 - x0, y1 - y0);
    if (screenLength > 0) {
      nx = -(y1 - y0) / screenLength;
      ny = (x1 - x0) / screenLength;
      double sx = 0;
      double sy = 0;
      // Away from the measured segment when it is seen apart from the ruler.
      if (ProjectOnto(image, viewer, start, sx, sy) && (sx - x0) * nx + (sy - y0) * ny > 0) {
        nx = -nx;
        ny = -ny;
      }
    }
    const double magnitude = std::abs(length);
    if (magnitude > 0 && screenLength > 0) {
      const double step = TickStep(magnitude);
      const int count = static_cast<int>(std::floor(magnitude / step + 1e-9));
      // Ticks closer than three pixels would make a smear: only the ends then.
      const bool ticks = count <= 1000 && screenLength / std::max(1, count) >= 3.0;
      for (int i = 0; ticks && i <= count; ++i) {
        const double t = i * step / magnitude;
        const double tx = x0 + t * (x1 - x0);
        const double ty = y0 + t * (y1 - y0);
        const double size = (i % 5 == 0 ? 7.0 : 4.0) * scale;
        DrawLine(image, tx, ty, tx + size * nx, ty + size * ny, scale, kInk);
      }
    }
    for (const double t : {0.0, 1.0}) {
      const double tx = x0 + t * (x1 - x0);
      const double ty = y0 + t * (y1 - y0);
      DrawLine(image, tx - 6 * scale * nx, ty - 6 * scale * ny, tx + 10 * scale * nx,
               ty + 10 * scale * ny, 1.5 * scale, kInk);
    }
    // The value beside the middle of the ruler.
    const int dot = std::max(1, static_cast<int>(std::lround(2 * scale)));
    DrawValue(image, (x0 + x1) / 2 + 20 * scale * nx, (y0 + y1) / 2 + 20 * scale * ny,
              _editor->GetValue(), false, dot, kInk);
  }

 private:
  const QAVRulerDecoratedLengthEditor* _editor;
};

}  // namespace

QAVRulerDecoratedLengthEditor::QAVRulerDecoratedLengthEditor(QAVCommand* father, const char* name,
                                                             QAV3DViewer* viewer)
    : QAVRulerDecoratedEditor(father, name, viewer, QAVMakeRef<LengthDecoration>(this)) {}

QAVRulerDecoratedLengthEditor::~QAVRulerDecoratedLengthEditor() {
  Undecorate();
  // Whoever still holds the decoration finds it empty.
  static_cast<LengthDecoration*>(GetDecoration())->Forget();
}

void QAVRulerDecoratedLengthEditor::SetDecoratorData(const QAVMathPoint& point,
                                                     const QAVMathVector& direction,
                                                     double length) {
  _point = point;
  _direction = direction;
  _length = length;
  SetValue(length);
}
