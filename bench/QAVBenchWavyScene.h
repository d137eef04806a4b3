// The benchmarks' picking scene as a user opens it: a wavy surface of about
// one million triangles written, once per process, as a binary STL mesh with
// its facet normals and a scene file placing it under one part, seen from
// above at an angle in an 800 x 600 window, then read back through the scene
// reader (the mesh reader gives every vertex its normal, as for any file).
#pragma once

#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "QAVBenchScratch.h"
#include "QAVSceneReader.h"

namespace qavbench {

constexpr int kWavyGrid = 708;  // 2 x 708^2 = 1,002,528 triangles
constexpr int kWaveWidth = 800;
constexpr int kWaveHeight = 600;

// A grid of n x n quads over [-1, 1]^2, heights a gentle wave, as a binary STL
// of 2 n^2 facets with their normals.
inline std::string WriteWavyStl(int n) {
  const std::filesystem::path file = Scratch() / ("wave" + std::to_string(n) + ".stl");
  std::ofstream out(file, std::ios::binary);
  const std::string header(80, ' ');
  out.write(header.data(), 80);
  const auto count = static_cast<std::uint32_t>(2 * n * n);
  out.write(reinterpret_cast<const char*>(&count), 4);
  struct Point {
    float x, y, z;
  };
  auto at = [n](int i, int j) {
    const float x = -1.0F + 2.0F * static_cast<float>(j) / static_cast<float>(n);
    const float y = -1.0F + 2.0F * static_cast<float>(i) / static_cast<float>(n);
    return Point{x, y, 0.05F * std::sin(9 * x) * std::cos(7 * y)};
  };
  auto facet = [&out](const Point& a, const Point& b, const Point& c) {
    const Point u{b.x - a.x, b.y - a.y, b.z - a.z};
    const Point v{c.x - a.x, c.y - a.y, c.z - a.z};
    const Point n{u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
    const float length = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    const Point normal{n.x / length, n.y / length, n.z / length};
    for (const Point* p : {&normal, &a, &b, &c})
      out.write(reinterpret_cast<const char*>(p), 12);
    const std::uint16_t attributes = 0;
    out.write(reinterpret_cast<const char*>(&attributes), 2);
  };
  for (int i = 0; i < n; ++i) {
    for (int j = 0; j < n; ++j) {
      facet(at(i, j), at(i, j + 1), at(i + 1, j));
      facet(at(i, j + 1), at(i + 1, j + 1), at(i + 1, j));
    }
  }
  return file.string();
}

// The scene file of the wave: its mesh under one part.
inline std::string WriteWaveScene() {
  const std::string mesh = WriteWavyStl(kWavyGrid);
  const std::filesystem::path file = Scratch() / "wave.json";
  std::ofstream(file) << R"({"format": "qav-scene", "version": 1,
  "window": {"width": )"
                      << kWaveWidth << R"(, "height": )" << kWaveHeight << R"(},
  "viewpoint": {"eye": [0, -0.5, 1.3], "target": [0, 0, 0], "up": [0, 0, 1], "fieldOfView": 60},
  "root": {"class": "QAVPart", "name": "Wave", "mesh": ")"
                      << std::filesystem::path(mesh).filename().string() << R"("}})";
  return file.string();
}

// The wave's scene as read from its file, once per process.
inline const QAVSceneDocument& WaveDocument() {
  static const QAVSceneDocument document = [] {
    QAVSceneDocument read;
    std::string error;
    if (FAILED(QAVSceneReader::Read(WriteWaveScene(), read, error))) {
      (void)std::fprintf(stderr, "the wave's scene cannot be read: %s\n", error.c_str());
      std::abort();
    }
    return read;
  }();
  return document;
}

}  // namespace qavbench
