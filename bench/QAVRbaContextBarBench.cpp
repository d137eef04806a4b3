// Context bar benchmarks: one fill of the sticker bar (its twelve items, the
// mapping container of seven starters and the align pair) into its frame's
// row, as the host's frame asks for it after each mapping-type change.
#include <benchmark/benchmark.h>

#include "QAVAfrCtxBarFrame.h"
#include "QAVHostDriver.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRef.h"

namespace {

void BM_FillStickerBar(benchmark::State& state) {
  QAVHostDriver session;
  QAVRbaContextBarManager::GetContextBarManager()->SetCurrentMappingType(3);
  auto frame = QAVMakeRef<QAVAfrCtxBarFrame>(QAVString("QAVRbaUIContextBarStickerComponent"));
  if (FAILED(frame->Show())) {
    state.SkipWithError("no sticker bar");
    return;
  }
  QAVIAfrCtxBar* bar = frame->GetBar();
  for (auto _ : state) {
    bar->FillCtxBar(QAVString());
    benchmark::DoNotOptimize(frame->GetRow(0)->GetComponentCount());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FillStickerBar);

}  // namespace
