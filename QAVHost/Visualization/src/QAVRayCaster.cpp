#include "QAVRayCaster.h"

#include <embree3/rtcore.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace {

// One kernel device for the process, made on first use.
RTCDevice Device() {
  static const RTCDevice device = [] {
    RTCDevice made = rtcNewDevice("threads=1");
    if (!made) (void)std::fprintf(stderr, "qavhost: the ray-tracing kernel cannot start\n");
    return made;
  }();
  return device;
}

QAVMathVector Unit(const QAVMathVector& v) {
  const double length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
  return length > 0 ? QAVMathVector{v.x / length, v.y / length, v.z / length} : v;
}

}  // namespace

struct QAVRayCaster::Kernel {
  RTCScene scene = nullptr;
};

namespace {

// The context of a ray that sees every hit: the kernel's own first, so that
// the filter finds the rest from the context it is given.
struct EveryHitContext {
  RTCIntersectContext kernel;
  // Each leaf's nearest hit so far, its normal the kernel's (not unit, not
  // turned to the eye yet).
  std::vector<QAVRayCaster::Hit>* nearest;
};

// Keeps each leaf's nearest hit and refuses every hit, so that the kernel
// goes on along the whole ray instead of stopping at the first surface.
void KeepNearestOfEachLeaf(const RTCFilterFunctionNArguments* args) {
  auto* context = reinterpret_cast<EveryHitContext*>(args->context);
  std::vector<QAVRayCaster::Hit>& nearest = *context->nearest;
  for (unsigned i = 0; i < args->N; ++i) {
    if (args->valid[i] != -1) continue;
    args->valid[i] = 0;
    QAVRayCaster::Hit seen;
    seen.leaf = RTCHitN_geomID(args->hit, args->N, i);
    seen.triangle = RTCHitN_primID(args->hit, args->N, i);
    seen.distance = RTCRayN_tfar(args->ray, args->N, i);
    seen.normal = {RTCHitN_Ng_x(args->hit, args->N, i), RTCHitN_Ng_y(args->hit, args->N, i),
                   RTCHitN_Ng_z(args->hit, args->N, i)};
    seen.u = RTCHitN_u(args->hit, args->N, i);
    seen.v = RTCHitN_v(args->hit, args->N, i);
    const auto known =
        std::find_if(nearest.begin(), nearest.end(),
                     [&seen](const QAVRayCaster::Hit& h) { return h.leaf == seen.leaf; });
    if (known == nearest.end())
      nearest.push_back(seen);
    else if (seen.distance < known->distance ||
             (seen.distance == known->distance && seen.triangle < known->triangle))
      *known = seen;  // the same hit whichever order the kernel visits them in
  }
}

RTCRayHit MakeRay(const QAVMathPoint& origin, const QAVMathVector& d, double from) {
  RTCRayHit ray{};
  ray.ray.org_x = static_cast<float>(origin.x);
  ray.ray.org_y = static_cast<float>(origin.y);
  ray.ray.org_z = static_cast<float>(origin.z);
  ray.ray.dir_x = static_cast<float>(d.x);
  ray.ray.dir_y = static_cast<float>(d.y);
  ray.ray.dir_z = static_cast<float>(d.z);
  ray.ray.tnear = static_cast<float>(from);
  ray.ray.tfar = std::numeric_limits<float>::infinity();
  ray.ray.mask = 0xFFFFFFFFU;
  ray.hit.geomID = RTC_INVALID_GEOMETRY_ID;
  return ray;
}

// A triangle's own normal made unit and turned against the unit direction `d`.
QAVMathVector Facing(const QAVMathVector& kernel, const QAVMathVector& d) {
  const QAVMathVector normal = Unit(kernel);
  if (normal.x * d.x + normal.y * d.y + normal.z * d.z > 0)
    return {-normal.x, -normal.y, -normal.z};
  return normal;
}

}  // namespace

QAVRayCaster::QAVRayCaster(QAV3DBagRep* root) : _kernel(new Kernel) {
  RTCDevice device = Device();
  if (!device) return;
  _kernel->scene = rtcNewScene(device);
  rtcSetSceneBuildQuality(_kernel->scene, RTC_BUILD_QUALITY_HIGH);
  // A context may carry a filter: the rays that see every hit.
  rtcSetSceneFlags(_kernel->scene, RTC_SCENE_FLAG_CONTEXT_FILTER_FUNCTION);
  if (root) {
    std::vector<QAVRef<QAV3DRep>> path;
    Flatten(root, QAV4x4Matrix(), path);
  }
  rtcCommitScene(_kernel->scene);
}

QAVRayCaster::~QAVRayCaster() {
  if (_kernel->scene) rtcReleaseScene(_kernel->scene);
  delete _kernel;
}

void QAVRayCaster::Flatten(QAV3DRep* rep, const QAV4x4Matrix& toGlobal,
                           std::vector<QAVRef<QAV3DRep>>& path) {
  path.emplace_back(rep);
  if (auto* bag = dynamic_cast<QAV3DBagRep*>(rep)) {
    const QAV4x4Matrix inner = bag->GetMatrix() ? toGlobal * *bag->GetMatrix() : toGlobal;
    for (int i = 0; i < bag->GetChildCount(); ++i)
      Flatten(bag->GetChild(i), inner, path);
  } else if (auto* surface = dynamic_cast<QAV3DTessellatedRep*>(rep);
             surface && surface->GetTriangleCount() > 0) {
    RTCGeometry geometry = rtcNewGeometry(Device(), RTC_GEOMETRY_TYPE_TRIANGLE);
    const std::vector<float>& positions = surface->GetPositions();
    const std::size_t vertices = positions.size() / 3;
    auto* vertex = static_cast<float*>(rtcSetNewGeometryBuffer(
        geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, 3 * sizeof(float), vertices));
    for (std::size_t v = 0; v < vertices; ++v) {
      const QAVMathPoint p =
          toGlobal * QAVMathPoint(positions[3 * v], positions[3 * v + 1], positions[3 * v + 2]);
      vertex[3 * v] = static_cast<float>(p.x);
      vertex[3 * v + 1] = static_cast<float>(p.y);
      vertex[3 * v + 2] = static_cast<float>(p.z);
    }
    const std::vector<std::uint32_t>& triangles = surface->GetTriangles();
    auto* index = static_cast<unsigned*>(
        rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                3 * sizeof(unsigned), triangles.size() / 3));
    std::copy(triangles.begin(), triangles.end(), index);
    rtcCommitGeometry(geometry);
    const unsigned id = rtcAttachGeometry(_kernel->scene, geometry);
    rtcReleaseGeometry(geometry);
    if (_paths.size() <= id) {
      _paths.resize(id + 1);
      _normals.resize(id + 1);
      _triangleLists.resize(id + 1);
      _leaves.resize(id + 1);
    }
    _paths[id] = std::make_shared<const std::vector<QAVRef<QAV3DRep>>>(path.rbegin(), path.rend());
    _leaves[id] = surface;
    _triangleLists[id] = &triangles;
    const std::vector<float>& normals = surface->GetNormals();
    if (!normals.empty()) {
      const QAV4x4Matrix toNormal = toGlobal.NormalMatrix();
      std::vector<float>& global = _normals[id];
      global.resize(normals.size());
      for (std::size_t v = 0; v < vertices; ++v) {
        const QAVMathVector n =
            toNormal.Rotate({normals[3 * v], normals[3 * v + 1], normals[3 * v + 2]});
        global[3 * v] = static_cast<float>(n.x);
        global[3 * v + 1] = static_cast<float>(n.y);
        global[3 * v + 2] = static_cast<float>(n.z);
      }
    }
    _triangles += triangles.size() / 3;
  }
  path.pop_back();
}

bool QAVRayCaster::CastNearest(const QAVMathPoint& origin, const QAVMathVector& direction,
                               double from, Hit& hit) const {
  if (!_kernel->scene) return false;
  const QAVMathVector d = Unit(direction);
  RTCRayHit ray = MakeRay(origin, d, from);
  RTCIntersectContext context;
  rtcInitIntersectContext(&context);
  rtcIntersect1(_kernel->scene, &context, &ray);
  if (ray.hit.geomID == RTC_INVALID_GEOMETRY_ID) return false;
  hit.leaf = ray.hit.geomID;
  hit.triangle = ray.hit.primID;
  hit.distance = ray.ray.tfar;
  hit.normal = Facing({ray.hit.Ng_x, ray.hit.Ng_y, ray.hit.Ng_z}, d);
  hit.u = ray.hit.u;
  hit.v = ray.hit.v;
  return true;
}

QAVMathVector QAVRayCaster::ShadingNormal(const Hit& hit, const QAVMathVector& direction) const {
  const std::vector<float>& normals = _normals[hit.leaf];
  if (normals.empty()) return hit.normal;
  const QAVMathVector d = Unit(direction);
  const std::uint32_t* corner = _triangleLists[hit.leaf]->data() + 3 * std::size_t{hit.triangle};
  const double w[3] = {1.0 - hit.u - hit.v, hit.u, hit.v};
  QAVMathVector smooth{0, 0, 0};
  for (int k = 0; k < 3; ++k) {
    const float* n = normals.data() + 3 * std::size_t{corner[k]};
    smooth = {smooth.x + w[k] * n[0], smooth.y + w[k] * n[1], smooth.z + w[k] * n[2]};
  }
  smooth = Unit(smooth);
  if (smooth.x == 0 && smooth.y == 0 && smooth.z == 0) return hit.normal;
  // A vertex normal pointing away from the eye (a mesh seen from inside)
  // faces the eye like the triangle's own.
  const double facing = smooth.x * d.x + smooth.y * d.y + smooth.z * d.z;
  return facing > 0 ? QAVMathVector{-smooth.x, -smooth.y, -smooth.z} : smooth;
}

void QAVRayCaster::CastAll(const QAVMathPoint& origin, const QAVMathVector& direction,
                           std::vector<Hit>& hits) const {
  hits.clear();
  if (!_kernel->scene) return;
  const QAVMathVector d = Unit(direction);
  RTCRayHit ray = MakeRay(origin, d, 0.0);
  EveryHitContext context{};
  rtcInitIntersectContext(&context.kernel);
  context.kernel.filter = KeepNearestOfEachLeaf;
  context.nearest = &hits;
  rtcIntersect1(_kernel->scene, &context.kernel, &ray);
  for (Hit& hit : hits)
    hit.normal = Facing(hit.normal, d);
  if (hits.size() > 1)
    std::sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) {
      return a.distance < b.distance || (a.distance == b.distance && a.leaf < b.leaf);
    });
}
