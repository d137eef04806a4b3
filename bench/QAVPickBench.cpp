// Picking benchmarks: picks per second at pixels of an 800 x 600 view of a
// wavy surface of about one million triangles, the time to hand that scene to
// the ray-tracing kernel, and the autofocus over it.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVModelObject.h"
#include "QAVPickPath.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVSettingRepository.h"

namespace {

// A grid of n x n quads over [-1, 1]^2, heights a gentle wave: 2 n^2 triangles.
QAVRef<QAV3DBagRep> WavyScene(int n) {
  std::vector<float> positions;
  std::vector<std::uint32_t> triangles;
  positions.reserve(static_cast<std::size_t>(3 * (n + 1) * (n + 1)));
  for (int i = 0; i <= n; ++i) {
    for (int j = 0; j <= n; ++j) {
      const float x = -1.0F + 2.0F * static_cast<float>(j) / static_cast<float>(n);
      const float y = -1.0F + 2.0F * static_cast<float>(i) / static_cast<float>(n);
      positions.insert(positions.end(), {x, y, 0.05F * std::sin(9 * x) * std::cos(7 * y)});
    }
  }
  const auto row = static_cast<std::uint32_t>(n + 1);
  for (std::uint32_t i = 0; i < static_cast<std::uint32_t>(n); ++i) {
    for (std::uint32_t j = 0; j < static_cast<std::uint32_t>(n); ++j) {
      const std::uint32_t a = i * row + j;
      triangles.insert(triangles.end(), {a, a + 1, a + row, a + 1, a + row + 1, a + row});
    }
  }
  auto leaf = QAVMakeRef<QAVSurfacicRep>();
  leaf->SetGeometry(std::move(positions), {}, std::move(triangles));
  auto root = QAVMakeRef<QAV3DBagRep>();
  root->SetModelObject(QAVMakeRef<QAVModelObject>("QAVPart", QAVUnicodeString("Wave")).get());
  root->AddChild(leaf.get());
  return root;
}

constexpr int kGrid = 708;  // 2 x 708^2 = 1,002,528 triangles

QAVRef<QAV3DViewer> WavyViewer() {
  static QAVRef<QAV3DBagRep> scene = WavyScene(kGrid);
  auto viewer = QAVMakeRef<QAV3DViewer>("bench");
  viewer->GetMain3DViewpoint()->Set({0, -0.5, 1.3}, {0, 0, 0}, {0, 0, 1}, 60);
  viewer->SetSceneRoot(scene.get());
  return viewer;
}

void BM_Pick1x1(benchmark::State& state) {
  QAVRef<QAV3DViewer> viewer = WavyViewer();
  std::vector<QAVRef<QAVPickPath>> paths;
  viewer->Pick(400, 300, 1, 1, 0, paths);  // the kernel's scene is built here
  int k = 0;
  std::int64_t hits = 0;
  for (auto _ : state) {
    // Pixels spread over the default 800 x 600 view.
    viewer->Pick((k * 7919) % 800, (k * 104729) % 600, 1, 1, 0, paths);
    hits += static_cast<std::int64_t>(paths.size());
    ++k;
  }
  state.SetItemsProcessed(state.iterations());
  state.counters["hit_ratio"] = static_cast<double>(hits) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_Pick1x1);

void BM_PickCentre(benchmark::State& state) {
  QAVRef<QAV3DViewer> viewer = WavyViewer();
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
  QAVRef<QAV3DViewer> viewer = WavyViewer();
  std::vector<QAVRef<QAVPickPath>> paths;
  for (auto _ : state) {
    viewer->SceneChanged();
    viewer->Pick(400, 300, 1, 1, 0, paths);
  }
  state.SetItemsProcessed(state.iterations() * 2 * kGrid * kGrid);  // triangles
}
BENCHMARK(BM_BuildKernelScene)->Unit(benchmark::kMillisecond);

void BM_Autofocus(benchmark::State& state) {
  QAVRef<QAV3DViewer> viewer = WavyViewer();
  QAVSettingRepository* camera = QAVSettingRepository::GetRepository("BenchCamera");
  float distance = 0;
  QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer.get(), camera, distance);
  for (auto _ : state) {
    QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer.get(), camera, distance);
    benchmark::DoNotOptimize(distance);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Autofocus);

}  // namespace
