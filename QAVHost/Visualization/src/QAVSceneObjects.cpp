#include "QAVSceneObjects.h"

#include <vector>

#include "QAVIPrdObject.h"

namespace {

struct Search {
  const QAVSceneDocument& scene;
  std::string_view name;
  std::vector<QAVIPLMComponent*> path;  // borrowed from the scene

  QAVRef<QAVOmbObjectInContext> Walk(QAV3DRep* rep) {
    const auto found = scene.components.find(rep);
    QAVIPLMComponent* own = found == scene.components.end() ? nullptr : found->second.get();
    if (own) path.push_back(own);
    QAVRef<QAVOmbObjectInContext> result;
    if (QAVModelObject* object = rep->GetModelObject();
        object && object->GetAlias().str() == name) {
      result = QAVMakeRef<QAVOmbObjectInContext>();
      result->SetLeafObject(object);
      result->SetLeafInstance(own);
      for (QAVIPLMComponent* component : path)
        result->AddComponent(component);
    } else if (const auto* bag = dynamic_cast<const QAV3DBagRep*>(rep)) {
      for (int i = 0; i < bag->GetChildCount() && !result; ++i)
        result = Walk(bag->GetChild(i));
    }
    if (own) path.pop_back();
    return result;
  }
};

}  // namespace

QAVRef<QAVOmbObjectInContext> QAVSceneObjects::Find(const QAVSceneDocument& scene,
                                                    std::string_view name) {
  if (!scene.root) return nullptr;
  Search search{scene, name, {}};
  const auto product = QAVQuery<QAVIPrdObject>(scene.product.get());
  if (product) search.path.push_back(product.get());
  return search.Walk(scene.root.get());
}
