// Measuring geometry: the box of a generated tree of ten million vertices in
// vertices per second, beside a plain loop doing the same work: it walks the
// same tree composing the same placements (the root's own left out: the box
// is in the root's space), then places every vertex of the same arrays by its
// leaf's matrix in single precision and folds their minimum and maximum.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <limits>
#include <vector>

#include "QAV3DRep.h"
#include "QAVRbaManipulatorServices.h"

namespace {

constexpr int kBranches = 10;            // bags per level, two levels of bags
constexpr int kLeavesPerBag = 10;        // leaves under each bag of the second level
constexpr int kVerticesPerLeaf = 10000;  // 10 x 10 x 10 x 10,000 = 10,000,000 vertices

// A bag turning its children by `degrees` about z and moving them.
QAVRef<QAV3DBagRep> Placed(double degrees, double dx, double dy, double dz) {
  const double a = degrees * 3.14159265358979 / 180.0;
  auto bag = QAVMakeRef<QAV3DBagRep>();
  bag->SetMatrix(QAV4x4Matrix({std::cos(a), -std::sin(a), 0, dx, std::sin(a), std::cos(a), 0, dy, 0,
                               0, 1, dz, 0, 0, 0, 1}));
  return bag;
}

struct Tree {
  QAVRef<QAV3DBagRep> root;
  long long vertices = 0;
};

const Tree& GeneratedTree() {
  static const Tree tree = [] {
    Tree t;
    t.root = Placed(10, 100, 0, 0);
    std::uint32_t seed = 12345;
    auto next = [&seed] {
      seed = seed * 1664525U + 1013904223U;
      return static_cast<float>(seed >> 8U) / static_cast<float>(1U << 24U) - 0.5F;
    };
    for (int i = 0; i < kBranches; ++i) {
      auto level1 = Placed(36.0 * i, 50.0 * i, 0, 0);
      for (int j = 0; j < kBranches; ++j) {
        auto level2 = Placed(7.0 * j, 0, 20.0 * j, 1);
        for (int k = 0; k < kLeavesPerBag; ++k) {
          std::vector<float> positions(3 * kVerticesPerLeaf);
          for (float& value : positions)
            value = 10.0F * next() + static_cast<float>(k);
          auto leaf = QAVMakeRef<QAVSurfacicRep>();
          leaf->SetGeometry(std::move(positions), {}, {});
          t.vertices += leaf->GetVertexCount();
          level2->AddChild(leaf.get());
        }
        level1->AddChild(level2.get());
      }
      t.root->AddChild(level1.get());
    }
    return t;
  }();
  return tree;
}

// Places every vertex of the leaves under `rep` by the placements above it
// (`toRoot` those already met) and folds the extremes.
void PlacedFold(const QAV3DRep* rep, const QAV4x4Matrix& toRoot, float (&lo)[3], float (&hi)[3]) {
  if (const auto* bag = dynamic_cast<const QAV3DBagRep*>(rep)) {
    for (int i = 0; i < bag->GetChildCount(); ++i) {
      const QAV3DRep* child = bag->GetChild(i);
      const auto* inner = dynamic_cast<const QAV3DBagRep*>(child);
      PlacedFold(child, inner && inner->GetMatrix() ? toRoot * *inner->GetMatrix() : toRoot, lo,
                 hi);
    }
    return;
  }
  const auto* leaf = dynamic_cast<const QAVSurfacicRep*>(rep);
  if (!leaf) return;
  float m[12];
  for (std::size_t i = 0; i < 12; ++i)
    m[i] = static_cast<float>(toRoot.RowMajor()[i]);
  const std::vector<float>& p = leaf->GetPositions();
  const std::size_t n = p.size();
  for (std::size_t i = 0; i + 2 < n; i += 3) {
    const float x = p[i];
    const float y = p[i + 1];
    const float z = p[i + 2];
    const float px = m[0] * x + m[1] * y + m[2] * z + m[3];
    const float py = m[4] * x + m[5] * y + m[6] * z + m[7];
    const float pz = m[8] * x + m[9] * y + m[10] * z + m[11];
    lo[0] = std::min(lo[0], px);
    lo[1] = std::min(lo[1], py);
    lo[2] = std::min(lo[2], pz);
    hi[0] = std::max(hi[0], px);
    hi[1] = std::max(hi[1], py);
    hi[2] = std::max(hi[2], pz);
  }
}

float PlacedFoldOf(const Tree& tree) {
  constexpr float big = std::numeric_limits<float>::max();
  float lo[3] = {big, big, big};
  float hi[3] = {-big, -big, -big};
  PlacedFold(tree.root.get(), QAV4x4Matrix(), lo, hi);
  const float size[3] = {hi[0] - lo[0], hi[1] - lo[1], hi[2] - lo[2]};
  return size[0] + size[1] + size[2];
}

// The least processor time of this thread over `runs` calls: what a call
// costs whatever else the machine runs.
double SecondsOf(float (*fold)(const Tree&), const Tree& tree, int runs) {
  auto now = [] {
    timespec t{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
  };
  double best = 1e30;
  for (int r = 0; r < runs; ++r) {
    const double start = now();
    benchmark::DoNotOptimize(fold(tree));
    best = std::min(best, now() - start);
  }
  return best;
}

float Measured(const Tree& tree) {
  float s[3];
  float c[3];
  QAVRbaManipulatorServices::ComputeBoundingBoxFor3DRep(tree.root.get(), s[0], s[1], s[2], c[0],
                                                        c[1], c[2]);
  return s[0] + s[1] + s[2];
}

void BM_ComputeBoundingBoxFor3DRep(benchmark::State& state) {
  const Tree& tree = GeneratedTree();
  for (auto _ : state)
    benchmark::DoNotOptimize(Measured(tree));
  state.SetItemsProcessed(state.iterations() * tree.vertices);
  // The speed against the plain placed fold, both timed here (processor
  // time), best of five each; the two boxes must agree.
  const double measured = SecondsOf(Measured, tree, 5);
  const double folded = SecondsOf(PlacedFoldOf, tree, 5);
  state.counters["vs_placed_fold"] = folded / measured;
  if (Measured(tree) != PlacedFoldOf(tree)) {
    state.SkipWithError("the boxes differ");
  }
}
BENCHMARK(BM_ComputeBoundingBoxFor3DRep)->Unit(benchmark::kMillisecond);

void BM_PlacedFold(benchmark::State& state) {
  const Tree& tree = GeneratedTree();
  for (auto _ : state)
    benchmark::DoNotOptimize(PlacedFoldOf(tree));
  state.SetItemsProcessed(state.iterations() * tree.vertices);
}
BENCHMARK(BM_PlacedFold)->Unit(benchmark::kMillisecond);

}  // namespace
