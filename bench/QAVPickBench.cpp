// Picking benchmarks on the wave of about one million triangles as a user
// opens it (a mesh file placed by a scene file, read through the scene
// reader), in its 800 x 600 window: picks per second at pixels spread over the
// view and at its centre, the ray-tracing kernel's own nearest hits on the same
// rays (what a pick is measured against), the time to hand that scene to the
// kernel, and the autofocus over it.
#include <benchmark/benchmark.h>
#include <embree3/rtcore.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <limits>
#include <utility>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVBenchWavyScene.h"
#include "QAVHostDriver.h"
#include "QAVPickPath.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVSettingRepository.h"

namespace {

using qavbench::kWavyGrid;

// The wave's scene shown in the current window of a host session, as the
// host opens a scene file.
struct WaveSession {
  QAVHostDriver driver;
  QAV3DViewer* viewer = nullptr;
  WaveSession() {
    driver.ShowScene(qavbench::WaveDocument());
    viewer = driver.GetSceneViewer();
  }
};

// The pixels the picks go to, spread over the view: the sequence repeats
// after 2400 (800 and 600 steps of two primes).
constexpr int kPixels = 2400;
int PixelX(int k) { return (k * 7919) % qavbench::kWaveWidth; }
int PixelY(int k) { return (k * 104729) % qavbench::kWaveHeight; }

// The kernel alone, on the triangles of the same scene, built the same way
// (one thread, high-quality hierarchy), with the rays of the same pixels; as
// it comes, or ready for rays that see every hit (`everyHit`).
class KernelOnly {
 public:
  KernelOnly(const QAV3DViewer& viewer, bool everyHit) {
    _device = rtcNewDevice("threads=1");
    _scene = rtcNewScene(_device);
    rtcSetSceneBuildQuality(_scene, RTC_BUILD_QUALITY_HIGH);
    if (everyHit) rtcSetSceneFlags(_scene, RTC_SCENE_FLAG_CONTEXT_FILTER_FUNCTION);
    Add(qavbench::WaveDocument().root.get(), QAV4x4Matrix());
    rtcCommitScene(_scene);
    for (int k = 0; k < kPixels; ++k) {
      QAVMathPoint origin;
      QAVMathVector d;
      viewer.GetRay(PixelX(k), PixelY(k), origin, d);
      RTCRayHit& ray = _rays[static_cast<std::size_t>(k)];
      ray = {};
      ray.ray.org_x = static_cast<float>(origin.x);
      ray.ray.org_y = static_cast<float>(origin.y);
      ray.ray.org_z = static_cast<float>(origin.z);
      ray.ray.dir_x = static_cast<float>(d.x);
      ray.ray.dir_y = static_cast<float>(d.y);
      ray.ray.dir_z = static_cast<float>(d.z);
      ray.ray.tfar = std::numeric_limits<float>::infinity();
      ray.ray.mask = 0xFFFFFFFFU;
      ray.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    }
  }
  ~KernelOnly() {
    rtcReleaseScene(_scene);
    rtcReleaseDevice(_device);
  }
  KernelOnly(const KernelOnly&) = delete;
  KernelOnly& operator=(const KernelOnly&) = delete;

  // The nearest hit of the k-th ray: true when it meets the surface.
  bool Nearest(int k) const {
    RTCRayHit ray = _rays[static_cast<std::size_t>(k % kPixels)];
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    rtcIntersect1(_scene, &context, &ray);
    return ray.hit.geomID != RTC_INVALID_GEOMETRY_ID;
  }

  // The k-th ray through every surface (a filter that sees each hit and lets
  // the ray go on), as a pick needs: the number of hits. Made `everyHit`.
  int EveryHit(int k) const {
    RTCRayHit ray = _rays[static_cast<std::size_t>(k % kPixels)];
    struct Counting {
      RTCIntersectContext kernel;
      int hits;
    } context{};
    rtcInitIntersectContext(&context.kernel);
    context.kernel.filter = [](const RTCFilterFunctionNArguments* args) {
      for (unsigned i = 0; i < args->N; ++i) {
        if (args->valid[i] != -1) continue;
        args->valid[i] = 0;
        ++reinterpret_cast<Counting*>(args->context)->hits;
      }
    };
    rtcIntersect1(_scene, &context.kernel, &ray);
    return context.hits;
  }

 private:
  void Add(QAV3DRep* rep, const QAV4x4Matrix& toGlobal) {
    if (auto* bag = dynamic_cast<QAV3DBagRep*>(rep)) {
      const QAV4x4Matrix inner = bag->GetMatrix() ? toGlobal * *bag->GetMatrix() : toGlobal;
      for (int i = 0; i < bag->GetChildCount(); ++i)
        Add(bag->GetChild(i), inner);
      return;
    }
    const auto* surface = dynamic_cast<QAV3DTessellatedRep*>(rep);
    if (!surface || surface->GetTriangleCount() == 0) return;
    RTCGeometry geometry = rtcNewGeometry(_device, RTC_GEOMETRY_TYPE_TRIANGLE);
    const std::vector<float>& p = surface->GetPositions();
    auto* vertex = static_cast<float*>(rtcSetNewGeometryBuffer(
        geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, 3 * sizeof(float), p.size() / 3));
    for (std::size_t v = 0; v < p.size(); v += 3) {
      const QAVMathPoint placed = toGlobal * QAVMathPoint(p[v], p[v + 1], p[v + 2]);
      vertex[v] = static_cast<float>(placed.x);
      vertex[v + 1] = static_cast<float>(placed.y);
      vertex[v + 2] = static_cast<float>(placed.z);
    }
    const std::vector<std::uint32_t>& t = surface->GetTriangles();
    auto* index = static_cast<unsigned*>(rtcSetNewGeometryBuffer(
        geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, 3 * sizeof(unsigned), t.size() / 3));
    std::copy(t.begin(), t.end(), index);
    rtcCommitGeometry(geometry);
    rtcAttachGeometry(_scene, geometry);
    rtcReleaseGeometry(geometry);
  }

  RTCDevice _device;
  RTCScene _scene;
  std::vector<RTCRayHit> _rays = std::vector<RTCRayHit>(kPixels);
};

// The processor time of this thread, in seconds: what a pass costs whatever
// else the machine runs.
double ThreadSeconds() {
  timespec now{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// The least time of five passes of each, taken in turn.
template <typename Pass, typename Other>
std::pair<double, double> LeastOfFive(Pass pass, Other other) {
  double least[2] = {1e30, 1e30};
  for (int r = 0; r < 5; ++r) {
    double start = ThreadSeconds();
    pass();
    least[0] = std::min(least[0], ThreadSeconds() - start);
    start = ThreadSeconds();
    other();
    least[1] = std::min(least[1], ThreadSeconds() - start);
  }
  return {least[0], least[1]};
}

void BM_Pick1x1(benchmark::State& state) {
  WaveSession session;
  QAV3DViewer* viewer = session.viewer;
  std::vector<QAVRef<QAVPickPath>> paths;
  viewer->Pick(400, 300, 1, 1, 0, paths);  // the kernel's scene is built here
  int k = 0;
  std::int64_t hits = 0;
  for (auto _ : state) {
    viewer->Pick(PixelX(k), PixelY(k), 1, 1, 0, paths);
    hits += static_cast<std::int64_t>(paths.size());
    ++k;
  }
  state.SetItemsProcessed(state.iterations());
  state.counters["hit_ratio"] = static_cast<double>(hits) / static_cast<double>(state.iterations());
  // Picks per second against the kernel's nearest hits per second on the same
  // rays, both timed here (processor time) over the 2400 pixels, four times.
  const KernelOnly kernel(*viewer, false);
  const auto [picking, nearest] = LeastOfFive(
      [&viewer, &paths] {
        for (int i = 0; i < 4 * kPixels; ++i)
          viewer->Pick(PixelX(i), PixelY(i), 1, 1, 0, paths);
      },
      [&kernel] {
        int met = 0;
        for (int i = 0; i < 4 * kPixels; ++i)
          met += kernel.Nearest(i) ? 1 : 0;
        benchmark::DoNotOptimize(met);
      });
  state.counters["vs_kernel"] = nearest / picking;
}
BENCHMARK(BM_Pick1x1);

void BM_KernelNearest(benchmark::State& state) {
  WaveSession session;
  const KernelOnly kernel(*session.viewer, false);
  int k = 0;
  std::int64_t hits = 0;
  for (auto _ : state)
    hits += kernel.Nearest(k++) ? 1 : 0;
  state.SetItemsProcessed(state.iterations());
  state.counters["hit_ratio"] = static_cast<double>(hits) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_KernelNearest);

void BM_KernelEveryHit(benchmark::State& state) {
  WaveSession session;
  const KernelOnly kernel(*session.viewer, true);
  int k = 0;
  std::int64_t hits = 0;
  for (auto _ : state)
    hits += kernel.EveryHit(k++);
  state.SetItemsProcessed(state.iterations());
  state.counters["hits_per_ray"] =
      static_cast<double>(hits) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_KernelEveryHit);

void BM_PickCentre(benchmark::State& state) {
  WaveSession session;
  QAV3DViewer* viewer = session.viewer;
  std::vector<QAVRef<QAVPickPath>> paths;
  viewer->Pick(400, 300, 1, 1, 0, paths);
  for (auto _ : state) {
    viewer->Pick(400, 300, 1, 1, 0, paths);
    benchmark::DoNotOptimize(paths.data());
  }
  if (paths.empty()) state.SkipWithError("the centre ray meets nothing");
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_PickCentre);

void BM_BuildKernelScene(benchmark::State& state) {
  WaveSession session;
  std::vector<QAVRef<QAVPickPath>> paths;
  for (auto _ : state) {
    session.viewer->SceneChanged();
    session.viewer->Pick(400, 300, 1, 1, 0, paths);
  }
  state.SetItemsProcessed(state.iterations() * 2 * kWavyGrid * kWavyGrid);  // triangles
}
BENCHMARK(BM_BuildKernelScene)->Unit(benchmark::kMillisecond);

void BM_Autofocus(benchmark::State& state) {
  WaveSession session;
  QAVSettingRepository* camera = QAVSettingRepository::GetRepository("BenchCamera");
  float distance = 0;
  QAVRbaLiveUIServices::SetFocusOnViewpoint(session.viewer, camera, distance);
  for (auto _ : state) {
    QAVRbaLiveUIServices::SetFocusOnViewpoint(session.viewer, camera, distance);
    benchmark::DoNotOptimize(distance);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Autofocus);

}  // namespace
