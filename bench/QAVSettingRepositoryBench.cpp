// The cost of saving a setting repository: one key changed, then SaveRepository,
// on a repository of the size of the live rendering settings (about forty keys),
// in a scratch settings directory removed at the end. Each save is flushed to
// disk, so the figure depends on the file system the directory is on
// (QAVHOST_SETTINGS_DIR when set, else the system's temporary directory).
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

#include "QAVRbaLiveUIServices.h"
#include "QAVSettingRepository.h"

namespace {

namespace fs = std::filesystem;

// A scratch settings directory for the whole run.
class ScratchSettings {
 public:
  ScratchSettings() {
    const char* base = std::getenv("QAVHOST_SETTINGS_DIR");
    std::string pattern =
        (base && *base ? fs::path(base) : fs::temp_directory_path()) / "qav-bench-XXXXXX";
    if (::mkdtemp(pattern.data())) _path = pattern;
    ::setenv("QAVHOST_SETTINGS_DIR", _path.c_str(), 1);
  }
  ~ScratchSettings() {
    std::error_code ec;
    fs::remove_all(_path, ec);
  }
  ScratchSettings(const ScratchSettings&) = delete;
  ScratchSettings& operator=(const ScratchSettings&) = delete;

 private:
  fs::path _path;
};

void BM_SaveOneChangedKey(benchmark::State& state) {
  static ScratchSettings scratch;
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
