// Picking benchmarks: picks per second at pixels of an 800 x 600 view of a
// wavy surface of about one million triangles, the time to hand that scene to
// the ray-tracing kernel, and the autofocus over it.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVBenchWavyScene.h"
#include "QAVPickPath.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVSettingRepository.h"

namespace {

using qavbench::kWavyGrid;

QAVRef<QAV3DViewer> WavyViewer() {
  auto viewer = QAVMakeRef<QAV3DViewer>("bench");
  qavbench::ShowWave(viewer.get());
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
  state.SetItemsProcessed(state.iterations() * 2 * kWavyGrid * kWavyGrid);  // triangles
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
