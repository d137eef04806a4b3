#include "QAVOmbObjectInContext.h"

QAV_IMPLEMENT_CLASS(QAVOmbObjectInContext, QAVBaseUnknown, "Model");

QAVOmbObjectInContext::QAVOmbObjectInContext() = default;
QAVOmbObjectInContext::~QAVOmbObjectInContext() = default;

HRESULT QAVOmbObjectInContext::ListComponents(std::vector<QAVIPLMComponent*>& components) const {
  for (const auto& component : _components) {
    component->AddRef();
    components.push_back(component.get());
  }
  return S_OK;
}

void QAVOmbObjectInContext::AddComponent(QAVIPLMComponent* component) {
  if (component) _components.emplace_back(component);
}
