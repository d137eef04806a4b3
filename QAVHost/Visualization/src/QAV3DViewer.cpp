#include "QAV3DViewer.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "QAVGraphicWindow.h"
#include "QAVRayCaster.h"

namespace {

QAVMathVector Unit(const QAVMathVector& v) {
  const double length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
  return length > 0 ? QAVMathVector{v.x / length, v.y / length, v.z / length} : v;
}

QAVMathVector Cross(const QAVMathVector& a, const QAVMathVector& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

}  // namespace

QAV_IMPLEMENT_CLASS(QAV3DViewer, QAVViewer, "System");

QAV3DViewer::QAV3DViewer(const char* name)
    : QAVViewer(name), _mainViewpoint(QAVMakeRef<QAV3DViewpoint>()) {}

QAV3DViewer::~QAV3DViewer() = default;

void QAV3DViewer::SetVizViewer(QAVVizViewer* vizViewer) { _vizViewer = QAVRef(vizViewer); }

QAVString QAV3DViewer::GetInfiniteEnvironmentRootName() const {
  return _vizViewer ? _vizViewer->GetInfiniteEnvironmentRootName() : QAVString();
}

void QAV3DViewer::SetSceneRoot(QAV3DBagRep* root) {
  _root = QAVRef<QAV3DBagRep>(root);
  _caster.reset();
}

void QAV3DViewer::SceneChanged() { _caster.reset(); }

const QAVRayCaster* QAV3DViewer::Caster() const {
  if (!_caster) _caster = std::make_unique<QAVRayCaster>(_root.get());
  return _caster.get();
}

const QAV3DViewer::Frame& QAV3DViewer::CurrentFrame() const {
  float width = 0.0F;
  float height = 0.0F;
  GetGraphicSize(width, height);
  const QAV3DViewpoint& view = *_mainViewpoint;
  const QAVMathPoint& eye = view.GetOrigin();
  const QAVMathPoint& target = view.GetTarget();
  const QAVMathVector& up = view.GetUpDirection();
  Frame& f = _frame;
  if (eye.x == f.eye.x && eye.y == f.eye.y && eye.z == f.eye.z && target.x == f.target.x &&
      target.y == f.target.y && target.z == f.target.z && up.x == f.up.x && up.y == f.up.y &&
      up.z == f.up.z && view.GetFieldOfView() == f.fieldOfView && width == f.width &&
      height == f.height)
    return f;
  f.eye = eye;
  f.target = target;
  f.up = up;
  f.fieldOfView = view.GetFieldOfView();
  f.width = width;
  f.height = height;
  f.forward = Unit(target - eye);
  f.right = Unit(Cross(f.forward, up));
  f.upward = Cross(f.right, f.forward);
  f.halfHeight = std::tan(f.fieldOfView * std::numbers::pi / 360.0);
  return f;
}

void QAV3DViewer::GetRay(double x, double y, QAVMathPoint& origin, QAVMathVector& direction) const {
  const Frame& f = CurrentFrame();
  origin = f.eye;
  const double aspect = f.height > 0 ? static_cast<double>(f.width) / f.height : 1.0;
  const double u = (f.width > 0 ? 2.0 * x / f.width - 1.0 : 0.0) * f.halfHeight * aspect;
  const double v = (f.height > 0 ? 1.0 - 2.0 * y / f.height : 0.0) * f.halfHeight;
  direction = Unit({f.forward.x + u * f.right.x + v * f.upward.x,
                    f.forward.y + u * f.right.y + v * f.upward.y,
                    f.forward.z + u * f.right.z + v * f.upward.z});
}

bool QAV3DViewer::Project(const QAVMathPoint& point, double& x, double& y) const {
  const Frame& f = CurrentFrame();
  const QAVMathVector d = point - f.eye;
  const double depth = d.x * f.forward.x + d.y * f.forward.y + d.z * f.forward.z;
  if (!(depth > 0) || !(f.width > 0) || !(f.height > 0)) return false;
  const double aspect = static_cast<double>(f.width) / f.height;
  const double u =
      (d.x * f.right.x + d.y * f.right.y + d.z * f.right.z) / depth / (f.halfHeight * aspect);
  const double v = (d.x * f.upward.x + d.y * f.upward.y + d.z * f.upward.z) / depth / f.halfHeight;
  x = (u + 1.0) * f.width / 2.0;
  y = (1.0 - v) * f.height / 2.0;
  return true;
}

HRESULT QAV3DViewer::Pick(int x, int y, int boxWidth, int boxHeight, int /*style*/,
                          std::vector<QAVRef<QAVPickPath>>& paths) {
  paths.clear();
  constexpr int kLargest = QAVGraphicWindow::kMaxWindowSide;
  if (!_root || boxWidth < 1 || boxHeight < 1 || boxWidth > kLargest || boxHeight > kLargest)
    return E_FAIL;
  const QAVRayCaster* caster = Caster();
  // The nearest hit of each leaf over the box's rays, where it is, then
  // nearest first (at one distance, in the leaves' order).
  struct Nearest {
    QAVRayCaster::Hit hit;
    QAVMathPoint point;
  };
  // Kept from pick to pick (a pick calls nothing that picks): once they have
  // grown, a pick allocates nothing but its paths.
  thread_local std::vector<Nearest> best;
  thread_local std::vector<QAVRayCaster::Hit> hits;
  best.clear();
  for (int dy = 0; dy < boxHeight; ++dy) {
    for (int dx = 0; dx < boxWidth; ++dx) {
      QAVMathPoint origin;
      QAVMathVector direction;
      GetRay(x - (boxWidth - 1) / 2.0 + dx, y - (boxHeight - 1) / 2.0 + dy, origin, direction);
      caster->CastAll(origin, direction, hits);
      for (const QAVRayCaster::Hit& hit : hits) {
        const QAVMathPoint point =
            origin + QAVMathVector{direction.x * hit.distance, direction.y * hit.distance,
                                   direction.z * hit.distance};
        const auto known = std::find_if(
            best.begin(), best.end(), [&hit](const Nearest& b) { return b.hit.leaf == hit.leaf; });
        if (known == best.end())
          best.push_back({hit, point});
        else if (hit.distance < known->hit.distance)
          *known = {hit, point};
      }
    }
  }
  std::sort(best.begin(), best.end(), [](const Nearest& a, const Nearest& b) {
    return a.hit.distance < b.hit.distance ||
           (a.hit.distance == b.hit.distance && a.hit.leaf < b.hit.leaf);
  });
  paths.reserve(best.size());
  for (const Nearest& nearest : best)
    paths.push_back(QAVMakeRef<QAVPickPath>(
        caster->PathOf(nearest.hit.leaf), _mainViewpoint.get(), nearest.point, nearest.hit.normal,
        caster->SubElementOf(nearest.hit.leaf, nearest.hit.triangle), nearest.hit.distance));
  return S_OK;
}

HRESULT QAV3DViewer::AddDecoration(QAVViewDecoration* decoration) {
  if (!decoration) return E_INVALIDARG;
  if (std::find(_decorations.begin(), _decorations.end(), QAVRef(decoration)) != _decorations.end())
    return S_FALSE;
  _decorations.emplace_back(decoration);
  return S_OK;
}

HRESULT QAV3DViewer::RemoveDecoration(QAVViewDecoration* decoration) {
  const auto found = std::find(_decorations.begin(), _decorations.end(), QAVRef(decoration));
  if (!decoration || found == _decorations.end()) return E_FAIL;
  _decorations.erase(found);
  return S_OK;
}

QAVViewDecoration* QAV3DViewer::GetDecoration(int index) const {
  if (index < 0 || index >= GetDecorationCount()) return nullptr;
  return _decorations[static_cast<std::size_t>(index)].get();
}
