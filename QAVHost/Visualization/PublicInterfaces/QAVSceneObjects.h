// The objects of a scene in their context: what a user selects in the scene's
// product structure.
#ifndef QAVSceneObjects_h
#define QAVSceneObjects_h

#include <string_view>

#include "QAVOmbObjectInContext.h"
#include "QAVRef.h"
#include "QAVSceneReader.h"

class QAVHOST_API QAVSceneObjects {
 public:
  // The first model object of the scene's tree (depth first, parents before
  // their children) whose name is `name`, in its context: its leaf object is
  // that model object; its components are the product (when the scene has
  // one) and the instances of the "plm" nodes from the root down to it, itself
  // included; its leaf instance is its own node's instance, if any. Null when
  // no object has that name.
  static QAVRef<QAVOmbObjectInContext> Find(const QAVSceneDocument& scene, std::string_view name);

  QAVSceneObjects() = delete;
};

#endif
