// Scenes opened by the program as a user opens a document: the substitute
// host's driver shows the file in the current window, and its product becomes
// the active one.
#ifndef QAVCliScene_h
#define QAVCliScene_h

#include <memory>
#include <string>

#include "QAVHostDriver.h"

namespace qavcli {

// The largest side of a window the program takes, in pixels: the renderer
// draws views of 1 to 8192 pixels a side (QAVViewRenderer.h).
constexpr int kMaxWindowSide = 8192;

// A host session showing one scene; null (with the reason printed) when the
// file cannot be used or its window is not 1 to kMaxWindowSide pixels a side.
std::unique_ptr<QAVHostDriver> OpenScene(const std::string& path);

// The shipped showroom scene.
std::string ShowroomScene();

}  // namespace qavcli

#endif
