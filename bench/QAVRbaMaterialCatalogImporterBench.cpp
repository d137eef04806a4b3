// The content importer's panel: building a panel of 200 material presets (the
// command activated at a loop pass: the dialog, the panel, every tile with its
// texts and the search of its content file among ten versions), then closing
// it. Half the presets have a package (version 5 of ten candidates), half
// none, so each missing one costs the ten file checks.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "QAVBenchScratch.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVHostDriver.h"
#include "QAVRbaMaterialCatalogImporterCmd.h"
#include "QAVRbaMaterialCatalogImporterPanel.h"
#include "QAVSettingRepository.h"
#include "QAVWidgetInput.h"

namespace fs = std::filesystem;

namespace {

constexpr int kPresets = 200;

// A scratch resource directory with the catalog, and a content folder.
struct Content {
  fs::path root = qavbench::Scratch();
  Content() {
    fs::create_directories(root / "msgcatalog");
    fs::create_directories(root / "content/startup/materials");
    std::ofstream catalog(root / "msgcatalog/QAVRbaMaterialCatalogImporterCmd.catalog");
    catalog << "NbMaterialPresets = " << kPresets << "\n";
    for (int n = 0; n < kPresets; ++n) {
      catalog << "Preset_Mat_" << n << "_Name = Preset " << n << "\n"
              << "Preset_Mat_" << n << "_Icon = Preset" << n << ".png\n"
              << "Preset_Mat_" << n << "_File = Preset" << n << ".orlix\n"
              << "Preset_Mat_" << n << "_Description = Material number " << n << "\n";
      if (n % 2 == 0)
        std::ofstream(root /
                      ("content/startup/materials/Preset" + std::to_string(n) + "_V05.orlix"))
            << "x";
    }
    ::setenv("QAVHOST_RESOURCE_PATH", root.c_str(), 1);
    ::setenv("QAVHOST_SETTINGS_DIR", (root / "settings").c_str(), 1);
  }
};

void BM_FillImporterPanel(benchmark::State& state) {
  static Content content;
  QAVHostDriver driver;
  auto layout = QAVMakeRef<QAVFrmLayout>();
  QAVFrmLayout::SetCurrentLayout(layout.get());
  auto window = QAVMakeRef<QAVFrmWindow>("3D");
  layout->AddWindow(window.get());
  layout->SetCurrentWindow(window.get());
  const QAVUnicodeString path((content.root / "content").c_str());
  QAVSettingRepository::GetRepository("ContentInstallPathRepo")
      ->WriteSetting("QAVContentInstallPath", &path);
  int tiles = 0;
  for (auto _ : state) {
    auto* command = new QAVRbaMaterialCatalogImporterCmd(QAVUnicodeString("Material"));
    driver.Idle();  // the panel is built
    tiles = command->GetPanel()->GetItems()->GetCount();
    QAVWidgetInput::PressButton(command->GetPanel()->FindWidget("CancelButton"));
    driver.Idle();  // and destroyed
  }
  state.counters["tiles"] = tiles;
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FillImporterPanel)->Unit(benchmark::kMicrosecond);

}  // namespace
