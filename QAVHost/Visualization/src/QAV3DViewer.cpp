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

void QAV3DViewer::GetRay(double x, double y, QAVMathPoint& origin, QAVMathVector& direction) const {
  float width = 0.0F;
  float height = 0.0F;
  GetGraphicSize(width, height);
  const QAV3DViewpoint& view = *_mainViewpoint;
  origin = view.GetOrigin();
  const QAVMathVector forward = Unit(view.GetTarget() - origin);
  const QAVMathVector right = Unit(Cross(forward, view.GetUpDirection()));
  const QAVMathVector up = Cross(right, forward);
  const double halfHeight = std::tan(view.GetFieldOfView() * std::numbers::pi / 360.0);
  const double aspect = height > 0 ? static_cast<double>(width) / height : 1.0;
  const double u = (width > 0 ? 2.0 * x / width - 1.0 : 0.0) * halfHeight * aspect;
  const double v = (height > 0 ? 1.0 - 2.0 * y / height : 0.0) * halfHeight;
  direction = Unit({forward.x + u * right.x + v * up.x, forward.y + u * right.y + v * up.y,
                    forward.z + u * right.z + v * up.z});
}

bool QAV3DViewer::Project(const QAVMathPoint& point, double& x, double& y) const {
  float width = 0.0F;
  float height = 0.0F;
  GetGraphicSize(width, height);
  const QAV3DViewpoint& view = *_mainViewpoint;
  const QAVMathPoint eye = view.GetOrigin();
  const QAVMathVector forward = Unit(view.GetTarget() - eye);
  const QAVMathVector right = Unit(Cross(forward, view.GetUpDirection()));
  const QAVMathVector up = Cross(right, forward);
  const QAVMathVector d = point - eye;
  const double depth = d.x * forward.x + d.y * forward.y + d.z * forward.z;
  if (!(depth > 0) || !(width > 0) || !(height > 0)) return false;
  const double halfHeight = std::tan(view.GetFieldOfView() * std::numbers::pi / 360.0);
  const double aspect = static_cast<double>(width) / height;
  const double u = (d.x * right.x + d.y * right.y + d.z * right.z) / depth / (halfHeight * aspect);
  const double v = (d.x * up.x + d.y * up.y + d.z * up.z) / depth / halfHeight;
  x = (u + 1.0) * width / 2.0;
  y = (1.0 - v) * height / 2.0;
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
  std::vector<Nearest> best;
  std::vector<QAVRayCaster::Hit> hits;
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
