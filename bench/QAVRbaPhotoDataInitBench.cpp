// Exposure correction benchmarks: nanoseconds per GetEVCorrectionForAperture
// call for an aperture at the start of the ladder, at its end, and off it (the
// whole ladder searched).
#include <benchmark/benchmark.h>

#include <array>

#include "QAVRbaPhotoDataInit.h"

namespace {

void BM_EVCorrection(benchmark::State& state, float aperture) {
  std::array<float, QAVRbaApertureValueCount> table{};
  InitApertureValues(table.data());
  for (auto _ : state) {
    benchmark::DoNotOptimize(aperture);
    benchmark::DoNotOptimize(GetEVCorrectionForAperture(aperture, table.data()));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(BM_EVCorrection, first_f1, 1.0F);
BENCHMARK_CAPTURE(BM_EVCorrection, last_f64, 64.0F);
BENCHMARK_CAPTURE(BM_EVCorrection, off_ladder, 7.0F);

void BM_InitISOValues(benchmark::State& state) {
  std::array<float, QAVRbaISOValueCount> values{};
  for (auto _ : state) {
    InitISOValues(values.data());
    benchmark::DoNotOptimize(values.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_InitISOValues);

}  // namespace
