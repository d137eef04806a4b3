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
#include "QAVBenchScratch.h"
#include "QAVCommand.h"
#include "QAVFrmWindow.h"
#include "QAVHostDriver.h"
#include "QAVMeshReader.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVRbaPanelManager.h"
#include "QAVViewRenderer.h"

namespace fs = std::filesystem;

namespace {

// A wavy grid of n x n quads as a binary STL: 2 n^2 triangles.
std::string WriteWavyStl(int n) {
  const fs::path file = qavbench::Scratch() / ("wave" + std::to_string(n) + ".stl");
  std::ofstream out(file, std::ios::binary);
  const std::string header(80, ' ');
  out.write(header.data(), 80);
  const auto count = static_cast<std::uint32_t>(2 * n * n);
  out.write(reinterpret_cast<const char*>(&count), 4);
  auto at = [n](int i, int j) {
    const float x = -1.0F + 2.0F * static_cast<float>(j) / static_cast<float>(n);
    const float y = -1.0F + 2.0F * static_cast<float>(i) / static_cast<float>(n);
    return std::vector<float>{x, y, 0.05F * std::sin(9 * x) * std::cos(7 * y)};
  };
  auto facet = [&out](const std::vector<float>& a, const std::vector<float>& b,
                      const std::vector<float>& c) {
    const float normal[3] = {0, 0, 1};
    out.write(reinterpret_cast<const char*>(normal), 12);
    for (const auto* p : {&a, &b, &c})
      out.write(reinterpret_cast<const char*>(p->data()), 12);
    const std::uint16_t attributes = 0;
    out.write(reinterpret_cast<const char*>(&attributes), 2);
  };
  for (int i = 0; i < n; ++i) {
    for (int j = 0; j < n; ++j) {
      facet(at(i, j), at(i, j + 1), at(i + 1, j));
      facet(at(i, j + 1), at(i + 1, j + 1), at(i + 1, j));
    }
  }
  return file.string();
}

constexpr int kGrid = 708;  // 1,002,528 triangles

void BM_ReadMeshFile(benchmark::State& state) {
  static const std::string file = WriteWavyStl(kGrid);
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
  static const std::string file = WriteWavyStl(kGrid);
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
