// The benchmarks' picking scene: a wavy surface of about one million triangles
// under one part, seen from above at an angle.
#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVModelObject.h"

namespace qavbench {

constexpr int kWavyGrid = 708;  // 2 x 708^2 = 1,002,528 triangles

// A grid of n x n quads over [-1, 1]^2, heights a gentle wave: 2 n^2 triangles.
inline QAVRef<QAV3DBagRep> WavyScene(int n) {
  std::vector<float> positions;
  std::vector<std::uint32_t> triangles;
  positions.reserve(static_cast<std::size_t>(3 * (n + 1) * (n + 1)));
  for (int i = 0; i <= n; ++i) {
    for (int j = 0; j <= n; ++j) {
      const float x = -1.0F + 2.0F * static_cast<float>(j) / static_cast<float>(n);
      const float y = -1.0F + 2.0F * static_cast<float>(i) / static_cast<float>(n);
      positions.insert(positions.end(), {x, y, 0.05F * std::sin(9 * x) * std::cos(7 * y)});
    }
  }
  const auto row = static_cast<std::uint32_t>(n + 1);
  for (std::uint32_t i = 0; i < static_cast<std::uint32_t>(n); ++i) {
    for (std::uint32_t j = 0; j < static_cast<std::uint32_t>(n); ++j) {
      const std::uint32_t a = i * row + j;
      triangles.insert(triangles.end(), {a, a + 1, a + row, a + 1, a + row + 1, a + row});
    }
  }
  auto leaf = QAVMakeRef<QAVSurfacicRep>();
  leaf->SetGeometry(std::move(positions), {}, std::move(triangles));
  auto root = QAVMakeRef<QAV3DBagRep>();
  root->SetModelObject(QAVMakeRef<QAVModelObject>("QAVPart", QAVUnicodeString("Wave")).get());
  root->AddChild(leaf.get());
  return root;
}

// Shows the one-million-triangle wave (made once per process) in the viewer.
inline void ShowWave(QAV3DViewer* viewer) {
  static QAVRef<QAV3DBagRep> scene = WavyScene(kWavyGrid);
  viewer->GetMain3DViewpoint()->Set({0, -0.5, 1.3}, {0, 0, 0}, {0, 0, 1}, 60);
  viewer->SetSceneRoot(scene.get());
}

}  // namespace qavbench
