// Light profile benchmarks.
//
// Parsing, in MB/s: the reader on the largest corpus file and on a generated
// 721 x 361 table, each beside a baseline that only reads the same file into
// memory and converts every number in it with strtod. Each parsing benchmark
// also runs the baseline on its file right after its own timed loop, as many
// times, and reports the counter vs_baseline: how many times faster than the
// baseline the reader was within that run (the MB/s of separate benchmarks
// drift with the load of a shared machine; their ratio in one run does less).
// Sampling, in samples per second: a rotational 1 x 19 table, a bilateral
// 73 x 37 table and a full 361 x 181 table, at pre-generated random directions.
//
// Generated tables are written to a directory of this process under the
// temporary directory, removed when the program ends.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <system_error>
#include <vector>

#include <unistd.h>

#include "QAVBenchScratch.h"
#include "QAVRbaLightProfile.h"

namespace fs = std::filesystem;

namespace {

std::string CorpusFile() {
  return std::string(QAV_SHARED_DIR) + "/ies-corpus/eu_1995_263x361_large_crlf.ies";
}

// Writes a type C file with `horizontal` planes evenly over [0, hRange] and
// `vertical` angles evenly over [0, vRange]; returns its path.
std::string WriteTable(const std::string& name, int horizontal, double hRange, int vertical,
                       double vRange) {
  const fs::path path = qavbench::Scratch() / (name + ".ies");
  FILE* file = std::fopen(path.c_str(), "w");
  if (!file) return {};
  (void)std::fprintf(
      file,
      "IESNA:LM-63-2002\n[TEST] generated benchmark table\n[MANUFAC] qav\nTILT=NONE\n"
      "1 -1 1.0 %d %d 1 2 0.1 0.1 0.0\n1.0 1.0 50\n",
      vertical, horizontal);
  auto list = [&](int count, double range) {
    for (int k = 0; k < count; ++k)
      (void)std::fprintf(file, "%g%c", count > 1 ? range * k / (count - 1) : 0.0,
                         (k % 10 == 9 || k + 1 == count) ? '\n' : ' ');
  };
  list(vertical, vRange);
  list(horizontal, hRange);
  for (int i = 0; i < horizontal; ++i)
    for (int j = 0; j < vertical; ++j) {
      const double value = 1000.0 * std::pow(std::cos(j * M_PI / (2.0 * vertical)), 1.5) *
                           (1.0 + 0.2 * std::sin(i * 0.1));
      (void)std::fprintf(file, "%.1f%c", value, (j % 10 == 9 || j + 1 == vertical) ? '\n' : ' ');
    }
  (void)std::fclose(file);
  return path.string();
}

const std::string& Generated721x361() {
  static const std::string path = WriteTable("721x361", 721, 360.0, 361, 180.0);
  return path;
}

// The baseline: the file into memory, then every number in it through strtod.
// `text` is the caller's buffer, kept from one call to the next: a new buffer
// each time would measure the allocator's page faults (a file of a megabyte
// is above the size at which it maps fresh memory) more than the reading.
double ReadAndConvert(const std::string& path, std::string& text) {
  text.clear();
  FILE* file = std::fopen(path.c_str(), "rb");
  if (!file) return 0.0;
  char chunk[1 << 16];
  std::size_t got;
  while ((got = std::fread(chunk, 1, sizeof chunk, file)) > 0)
    text.append(chunk, got);
  (void)std::fclose(file);
  double sum = 0.0;
  const char* p = text.c_str();
  const char* const end = p + text.size();
  while (p < end) {
    char* next = nullptr;
    const double value = std::strtod(p, &next);
    if (next == p) {
      ++p;
      continue;
    }
    sum += value;
    p = next;
  }
  return sum;
}

void ParseProfile(benchmark::State& state, const std::string& path) {
  std::error_code ec;
  if (path.empty() || !fs::exists(path, ec)) {
    state.SkipWithError(("missing " + path).c_str());
    return;
  }
  using Clock = std::chrono::steady_clock;
  const auto size = static_cast<std::int64_t>(fs::file_size(path));
  QAVRbaLightProfile profile;
  const QAVUnicodeString file(path);
  const Clock::time_point readerStart = Clock::now();
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
    if (!profile.ReadIESFile(file)) {
      state.SkipWithError(profile.GetLastError().c_str());
      return;
    }
    benchmark::DoNotOptimize(profile.GetCandelaValue(0, 0));
  }
  const Clock::duration reader = Clock::now() - readerStart;
  state.SetBytesProcessed(state.iterations() * size);

  // The baseline on the same file, as many times, outside the timed loop.
  std::string text;
  const Clock::time_point baselineStart = Clock::now();
  for (benchmark::IterationCount i = 0; i < state.iterations(); ++i)
    benchmark::DoNotOptimize(ReadAndConvert(path, text));
  const Clock::duration baseline = Clock::now() - baselineStart;
  if (reader.count() > 0)
    state.counters["vs_baseline"] = std::chrono::duration<double>(baseline).count() /
                                    std::chrono::duration<double>(reader).count();
}

void ParseBaseline(benchmark::State& state, const std::string& path) {
  std::error_code ec;
  if (path.empty() || !fs::exists(path, ec)) {
    state.SkipWithError(("missing " + path).c_str());
    return;
  }
  std::string text;
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
    benchmark::DoNotOptimize(ReadAndConvert(path, text));
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void BM_ParseCorpus263x361(benchmark::State& state) { ParseProfile(state, CorpusFile()); }
void BM_BaselineCorpus263x361(benchmark::State& state) { ParseBaseline(state, CorpusFile()); }
void BM_ParseGenerated721x361(benchmark::State& state) { ParseProfile(state, Generated721x361()); }
void BM_BaselineGenerated721x361(benchmark::State& state) {
  ParseBaseline(state, Generated721x361());
}
BENCHMARK(BM_ParseCorpus263x361)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BaselineCorpus263x361)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ParseGenerated721x361)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BaselineGenerated721x361)->Unit(benchmark::kMillisecond);

void Sample(benchmark::State& state, const std::string& name, int horizontal, double hRange,
            int vertical, double vRange) {
  static std::vector<double> directions = [] {
    std::mt19937 random(2024);
    std::uniform_real_distribution<double> h(0.0, 360.0);
    std::uniform_real_distribution<double> v(0.0, 180.0);
    std::vector<double> d;
    for (int k = 0; k < 4096; ++k) {
      d.push_back(h(random));
      d.push_back(v(random));
    }
    return d;
  }();
  const std::string path = WriteTable(name, horizontal, hRange, vertical, vRange);
  QAVRbaLightProfile profile;
  const bool read = profile.ReadIESFile(QAVUnicodeString(path));
  std::error_code ec;
  fs::remove(path, ec);  // the table is in memory now
  if (!read) {
    state.SkipWithError(profile.GetLastError().c_str());
    return;
  }
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
    double sum = 0.0;
    for (std::size_t k = 0; k < directions.size(); k += 2)
      sum += profile.GetLightProfileValue(directions[k], directions[k + 1]);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(directions.size() / 2));
}

void BM_SampleRotational1x19(benchmark::State& state) { Sample(state, "1x19", 1, 0.0, 19, 90.0); }
void BM_SampleBilateral73x37(benchmark::State& state) {
  Sample(state, "73x37", 73, 180.0, 37, 90.0);
}
void BM_SampleFull361x181(benchmark::State& state) {
  Sample(state, "361x181", 361, 360.0, 181, 180.0);
}
BENCHMARK(BM_SampleRotational1x19);
BENCHMARK(BM_SampleBilateral73x37);
BENCHMARK(BM_SampleFull361x181);

}  // namespace
