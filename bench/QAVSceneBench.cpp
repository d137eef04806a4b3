// Scene benchmarks: reading a mesh file (megabytes per second of a binary STL
// of about one million triangles written for the run), drawing the view of a
// scene of that size (rays per second), and the depth-of-field and panel
// lookups the panels make many times: the bokeh texture of an aperture and a
// panel among 54 ids registered on 8 windows.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVBenchWavyScene.h"
#include "QAVCommand.h"
#include "QAVFrmWindow.h"
#include "QAVHostDriver.h"
#include "QAVMeshReader.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVRbaPanelManager.h"
#include "QAVViewRenderer.h"

namespace fs = std::filesystem;

namespace {

using qavbench::kWavyGrid;
using qavbench::WriteWavyStl;

void BM_ReadMeshFile(benchmark::State& state) {
  static const std::string file = WriteWavyStl(kWavyGrid);
  const auto bytes = static_cast<std::int64_t>(fs::file_size(file));
  for (auto _ : state) {
    QAVRef<QAVSurfacicRep> leaf;
    std::string error;
    if (FAILED(QAVMeshReader::Read(file, leaf, error))) state.SkipWithError(error.c_str());
    benchmark::DoNotOptimize(leaf.get());
  }
  state.SetBytesProcessed(state.iterations() * bytes);
}
BENCHMARK(BM_ReadMeshFile)->Unit(benchmark::kMillisecond);

void BM_RenderView(benchmark::State& state) {
  static const std::string file = WriteWavyStl(kWavyGrid);
  QAVRef<QAVSurfacicRep> leaf;
  std::string error;
  QAVMeshReader::Read(file, leaf, error);
  auto root = QAVMakeRef<QAV3DBagRep>();
  root->AddChild(leaf.get());
  auto viewer = QAVMakeRef<QAV3DViewer>("bench");  // the default 800 x 600 window
  viewer->GetMain3DViewpoint()->Set({0, -0.5, 1.3}, {0, 0, 0}, {0, 0, 1}, 60);
  viewer->SetSceneRoot(root.get());
  QAVRef<QAVPixelImage> image;
  QAVViewRenderer::Render(viewer.get(), image);  // the kernel's scene is built here
  for (auto _ : state) {
    QAVViewRenderer::Render(viewer.get(), image);
    benchmark::DoNotOptimize(image.get());
  }
  state.SetItemsProcessed(state.iterations() * 800 * 600);  // rays
}
BENCHMARK(BM_RenderView)->Unit(benchmark::kMillisecond);

void BM_BokehImage(benchmark::State& state) {
  // The studio folder of the shipped resources; the last entry is never searched.
  const std::string graphic = std::string(QAV_RESOURCES_DIR) + "/graphic";
  ::setenv("QAVGraphicPath", (graphic + ":" + graphic).c_str(), 1);
  const QAVHostDriver session;  // a new session reads the environment again
  const float apertures[] = {1.4F, 2.8F, 5.6F, 8.0F, 16.0F, 64.0F};
  std::size_t i = 0;
  std::int64_t found = 0;
  for (auto _ : state) {
    QAVString path;
    found +=
        SUCCEEDED(QAVRbaLiveUIServices::RetrieveAssociatedBokehImage(apertures[i++ % 6], path));
    benchmark::DoNotOptimize(path.c_str());
  }
  if (found != static_cast<std::int64_t>(state.iterations()))
    state.SkipWithError("a bokeh texture was not found");
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_BokehImage);

void BM_PanelLookup(benchmark::State& state) {
  const QAVHostDriver session;
  QAVRbaPanelManager* manager = QAVRbaPanelManager::GetPanelManager();
  std::vector<QAVRef<QAVFrmWindow>> windows;
  for (int w = 0; w < 8; ++w)
    windows.push_back(QAVMakeRef<QAVFrmWindow>(("window" + std::to_string(w)).c_str()));
  for (int id = 1; id <= 54; ++id)
    manager->AddPanel(id, new QAVCommand(nullptr, "panel"), windows[id % 8].get());
  int k = 0;
  for (auto _ : state) {
    const int id = 1 + (k * 17) % 54;
    benchmark::DoNotOptimize(manager->GetPanel(id, windows[id % 8].get()));
    ++k;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_PanelLookup);

}  // namespace
