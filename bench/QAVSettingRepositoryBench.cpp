// The cost of saving a setting repository: one key changed, then SaveRepository,
// on a repository of the size of the live rendering settings (about forty keys),
// in a scratch settings directory removed at the end. Each save is flushed to
// disk, so the figure depends on the file system the directory is on
// (QAVHOST_SETTINGS_DIR when set, else the system's temporary directory).
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

#include "QAVBenchScratch.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVSettingRepository.h"

namespace {

namespace fs = std::filesystem;

// The settings of the whole run in the program's scratch directory.
void UseScratchSettings() { ::setenv("QAVHOST_SETTINGS_DIR", qavbench::Scratch().c_str(), 1); }

void BM_SaveOneChangedKey(benchmark::State& state) {
  static const bool scratch = (UseScratchSettings(), true);
  (void)scratch;
  QAVRbaLiveUIServices::InitSettings();
  QAVSettingRepository* live = QAVSettingRepository::GetRepository("RenderingLiveSettings");
  int dpi = 0;
  for (auto _ : state) {
    ++dpi;
    live->WriteSetting("DPI", &dpi);
    if (FAILED(live->SaveRepository())) state.SkipWithError("the save failed");
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SaveOneChangedKey)->Unit(benchmark::kMicrosecond);

}  // namespace
