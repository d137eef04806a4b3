// Scenes opened by the program as a user opens a document: the substitute
// host's driver shows the file in the current window, and its product becomes
// the active one.
#ifndef QAVCliScene_h
#define QAVCliScene_h

#include <memory>
#include <string>

#include "QAVHostDriver.h"

namespace qavcli {

// A host session showing one scene; null (with the reason printed) when the
// file cannot be used (the scene reader refuses, among others, windows outside
// the sizes a view is drawn at).
std::unique_ptr<QAVHostDriver> OpenScene(const std::string& path);

// The shipped showroom scene.
std::string ShowroomScene();

}  // namespace qavcli

#endif
