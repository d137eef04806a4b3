// Fuzz target of the scene file reader: arbitrary bytes are a scene file. A
// scene is read whole or refused with a reason; a read scene has a root, a
// window and a viewpoint that make a view.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "QAVSceneReader.h"

namespace {

void Check(bool condition) {
  if (!condition) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  QAVSceneDocument scene;
  std::string error;
  // Meshes are looked for in a directory that does not exist: the fuzzer
  // exercises the scene's own structure, not the 3D file readers.
  if (QAVSceneReader::Parse(text, "/nonexistent-qav-fuzz", scene, error) == S_OK) {
    Check(scene.root.get() != nullptr);
    Check(scene.width > 0 && scene.height > 0);
    Check(scene.usableWidth <= scene.width && scene.usableHeight <= scene.height);
    Check(scene.fieldOfView > 0 && scene.fieldOfView < 180);
    Check(scene.leafCount >= 0 && scene.triangleCount >= 0);
  } else {
    Check(!error.empty());
    Check(scene.root.get() == nullptr);
  }
  return 0;
}
