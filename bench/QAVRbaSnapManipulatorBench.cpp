// The snap manipulator on the benchmarks' wavy surface of about one million
// triangles as a user opens it (a mesh file placed by a scene file, read
// through the scene reader), in its 800 x 600 window: a whole pointer move (the
// pick under the pointer, the selector's event, the frame update and the
// notification sent), and UpdatePosition alone on a notification already
// picked.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVBenchWavyScene.h"
#include "QAVCallbackManager.h"
#include "QAVHostDriver.h"
#include "QAVManipulator.h"
#include "QAVPickPath.h"
#include "QAVRbaSnapManipulator.h"
#include "QAVSettingRepository.h"
#include "QAVViewerEvent.h"

namespace {

// A host session whose current window shows the wave's scene, with the gizmo on.
struct Session {
  QAVHostDriver driver;
  QAV3DViewer* viewer = nullptr;
  Session() {
    driver.ShowScene(qavbench::WaveDocument());
    viewer = driver.GetSceneViewer();
    const int on = 1;
    QAVSettingRepository::GetRepository("RenderingOptionsSettings")
        ->WriteSetting("LightManipMode", &on);
  }
};

void BM_SnapPointerMove(benchmark::State& state) {
  Session session;
  auto* snap = new QAVRbaSnapManipulator;
  std::int64_t snapped = 0;
  GetDefaultCallbackManager(snap)->AddCallback(
      QAVRbaSnapManipulator::NOTIFICATION(),
      [&snapped, &session](const char*, void*, QAVNotification*, void*, QAVCallback) {
        snapped += session.viewer->GetCursor() == 3 ? 1 : 0;
      });
  session.driver.PointerMove(session.viewer, 400, 300);  // the kernel's scene is built here
  int k = 0;
  for (auto _ : state) {
    session.driver.PointerMove(session.viewer, (k * 7919) % qavbench::kWaveWidth,
                               (k * 104729) % qavbench::kWaveHeight);
    ++k;
  }
  state.SetItemsProcessed(state.iterations());
  state.counters["snapped_ratio"] =
      static_cast<double>(snapped) / static_cast<double>(state.iterations() + 1);
  snap->RequestDelayedDestruction();
  session.driver.Idle();
}
BENCHMARK(BM_SnapPointerMove);

void BM_SnapUpdatePosition(benchmark::State& state) {
  Session session;
  auto* snap = new QAVRbaSnapManipulator;
  std::vector<QAVRef<QAVPickPath>> paths;
  session.viewer->Pick(400, 300, 1, 1, 0, paths);
  if (paths.empty()) {
    state.SkipWithError("the centre ray meets nothing");
    return;
  }
  const std::vector<QAVRef<QAV3DRep>> reps = {QAVRef<QAV3DRep>(paths[0]->GetRep(0))};
  int applied = 0;
  for (auto _ : state) {
    // A fresh walk of the pick path, as each pointer move brings.
    auto pick = QAVMakeRef<QAVPickPath>(reps, nullptr, paths[0]->GetGlobalIntersection(),
                                        paths[0]->GetGlobalNormal(), 0, 1.0);
    auto moved = QAVMakeRef<QAVVueNotification>(
        QAVMakeRef<QAVViewerEvent>(session.viewer, 400, 300, 0, pick.get()).get());
    applied += snap->UpdatePosition(snap->GetSelector(), moved.get());
  }
  state.SetItemsProcessed(state.iterations());
  if (applied != state.iterations()) state.SkipWithError("an update was not applied");
  snap->RequestDelayedDestruction();
  session.driver.Idle();
}
BENCHMARK(BM_SnapUpdatePosition);

}  // namespace
