// Black-body colour benchmarks: nanoseconds per BlackbodyColor call over a
// spread of temperatures (41 Planck terms and 123 observer look-ups each), and
// per CIEColorimetricObserver look-up on and off the 10 nm grid.
#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>

#include "QAVRbaBlackbody.h"

namespace {

constexpr std::array<float, 8> kTemperatures = {1000.0f, 1850.0f, 2700.0f, 4100.0f,
                                                5600.0f, 6500.0f, 9300.0f, 20000.0f};

void BM_BlackbodyColor(benchmark::State& state) {
  std::size_t i = 0;
  for (auto _ : state) {
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    BlackbodyColor(kTemperatures[i++ % kTemperatures.size()], &r, &g, &b);
    benchmark::DoNotOptimize(r);
    benchmark::DoNotOptimize(g);
    benchmark::DoNotOptimize(b);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_BlackbodyColor);

void BM_CIEColorimetricObserver(benchmark::State& state) {
  // On the grid (a multiple of 10 nm) or between grid points.
  const float offset = state.range(0) == 0 ? 0.0f : 3.7f;
  float wavelength = 380.0f;
  for (auto _ : state) {
    benchmark::DoNotOptimize(CIEColorimetricObserver('y', wavelength + offset));
    wavelength = wavelength >= 770.0f ? 380.0f : wavelength + 10.0f;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_CIEColorimetricObserver)->Arg(0)->Arg(1)->ArgNames({"offGrid"});

}  // namespace
