// Shader classification: nanoseconds per CheckShaderType call for the first
// supported name, the last one, and a name that is not supported (the whole
// list compared), once the list is made.
#include <benchmark/benchmark.h>

#include "QAVRbaUIServices.h"

namespace {

void BM_CheckShaderType(benchmark::State& state, const char* name) {
  QAVString type(name);
  QAVRbaUIServices::CheckShaderType(type);
  for (auto _ : state) {
    benchmark::DoNotOptimize(type);
    benchmark::DoNotOptimize(QAVRbaUIServices::CheckShaderType(type));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(BM_CheckShaderType, first, "EVisu_PBR_22x_Basic");
BENCHMARK_CAPTURE(BM_CheckShaderType, last, "mip_metallic_paint");
BENCHMARK_CAPTURE(BM_CheckShaderType, unsupported, "EVisu_PBR_23x_Metal");

}  // namespace
