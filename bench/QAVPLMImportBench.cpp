// Import of content packages into a PLM repository: many small objects
// (objects/s) and a few large files (bytes/s), in wall-clock time since the
// commit waits for the disk. Each iteration imports into a
// fresh repository of a scratch data directory.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "QAVBenchScratch.h"
#include "QAVContentPackage.h"
#include "QAVPLMBriefcaseProtectedServices.h"

namespace fs = std::filesystem;

namespace {

// The program's scratch directory, the PLM repositories in it.
const fs::path& ScratchRoot() {
  static const bool plm =
      ::setenv("QAVHOST_PLM_DIR", (qavbench::Scratch() / "plm").c_str(), 1) == 0;
  (void)plm;
  return qavbench::Scratch();
}

void WriteFile(const fs::path& path, const std::string& content) {
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary | std::ios::trunc) << content;
}

// A package of `objects` objects sharing `files` files of `fileBytes` bytes of
// noise (which does not compress, as images and meshes mostly do not).
std::string MakePackage(const std::string& name, int objects, int files, std::size_t fileBytes) {
  const fs::path dir = ScratchRoot() / name;
  std::string manifest = R"({"format":"orlix","version":1,"kind":"Props","title":")";
  manifest.append(name).append(R"(","objects":[)");
  std::uint64_t state = 88172645463325252ULL;
  for (int f = 0; f < files; ++f) {
    std::string noise(fileBytes, '\0');
    for (char& c : noise) {
      state ^= state << 13;
      state ^= state >> 7;
      state ^= state << 17;
      c = static_cast<char>(state);
    }
    WriteFile(dir / (std::to_string(f).insert(0, 1, 'f') + ".bin"), noise);
  }
  for (int i = 0; i < objects; ++i) {
    const std::string index = std::to_string(i);
    manifest.append(i ? "," : "").append(R"({"id":"o)").append(index);
    manifest.append(R"(","type":"Prop","name":"Object )").append(index);
    manifest.append(R"(","attributes":{"Index":")").append(index).append("\"}");
    if (i < files) manifest.append(R"(,"files":["f)").append(index).append(R"(.bin"])");
    manifest += "}";
  }
  WriteFile(dir / "manifest.json", manifest + "]}");
  std::string out = (ScratchRoot() / (name + ".orlix")).string();
  std::string error;
  if (QAVContentPackage::Pack(dir.string(), out, error) != S_OK) std::abort();
  return out;
}

void Import(benchmark::State& state, const std::string& package) {
  int repository = 0;
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
    QAVListValQAVUnicodeString ids;
    const HRESULT hr = QAVPLMBriefcaseProtectedServices::ImportAsRef(
        QAVString("BENCH" + std::to_string(repository++)), QAVUnicodeString(package),
        {{"Maturity", "PRIVATE"}}, ids);
    if (hr != S_OK) state.SkipWithError("import failed");
    benchmark::DoNotOptimize(ids);
  }
}

void BM_ImportManyObjects(benchmark::State& state) {
  static const std::string package = MakePackage("objects", 10000, 0, 0);
  Import(state, package);
  state.counters["objects/s"] = benchmark::Counter(
      10000.0 * static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_ImportManyObjects)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

void BM_ImportLargeFiles(benchmark::State& state) {
  constexpr std::size_t kFileBytes = 10u << 20;
  static const std::string package = MakePackage("files", 10, 10, kFileBytes);
  Import(state, package);
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * 10 * kFileBytes);
}
BENCHMARK(BM_ImportLargeFiles)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

}  // namespace
