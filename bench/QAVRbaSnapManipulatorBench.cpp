// The snap manipulator on the benchmarks' wavy surface of about one million
// triangles in an 800 x 600 view: a whole pointer move (the pick under the
// pointer, the selector's event, the frame update and the notification sent),
// and UpdatePosition alone on a notification already picked.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVCallbackManager.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVHostDriver.h"
#include "QAVManipulator.h"
#include "QAVModelObject.h"
#include "QAVPickPath.h"
#include "QAVRbaSnapManipulator.h"
#include "QAVSettingRepository.h"
#include "QAVViewerEvent.h"

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

// A host session whose current window shows the wave, with the gizmo on.
struct Session {
  QAVHostDriver driver;
  QAVRef<QAV3DViewer> viewer = QAVMakeRef<QAV3DViewer>("bench");
  Session() {
    static QAVRef<QAV3DBagRep> scene = WavyScene(kGrid);
    auto layout = QAVMakeRef<QAVFrmLayout>();
    QAVFrmLayout::SetCurrentLayout(layout.get());
    auto window = QAVMakeRef<QAVFrmWindow>("3D");
    window->SetViewer(viewer.get());
    layout->AddWindow(window.get());
    layout->SetCurrentWindow(window.get());
    driver.Resize(viewer.get(), 800, 600);
    viewer->GetMain3DViewpoint()->Set({0, -0.5, 1.3}, {0, 0, 0}, {0, 0, 1}, 60);
    viewer->SetSceneRoot(scene.get());
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
  session.driver.PointerMove(session.viewer.get(), 400, 300);  // the kernel's scene is built here
  int k = 0;
  for (auto _ : state) {
    session.driver.PointerMove(session.viewer.get(), (k * 7919) % 800, (k * 104729) % 600);
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
        QAVMakeRef<QAVViewerEvent>(session.viewer.get(), 400, 300, 0, pick.get()).get());
    applied += snap->UpdatePosition(snap->GetSelector(), moved.get());
  }
  state.SetItemsProcessed(state.iterations());
  if (applied != state.iterations()) state.SkipWithError("an update was not applied");
  snap->RequestDelayedDestruction();
  session.driver.Idle();
}
BENCHMARK(BM_SnapUpdatePosition);

}  // namespace
