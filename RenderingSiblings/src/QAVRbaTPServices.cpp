#include "QAVRbaTPServices.h"

HRESULT QAVRbaTPServices::ListMembers(QAVModelObject* object, const char* containerName,
                                      const IID& iid,
                                      std::vector<QAVRef<QAVBaseUnknown>>& members) {
  members.clear();
  if (!object || !containerName) return E_FAIL;
  QAVModelObject* container = object->GetContainer(containerName);
  if (!container) return E_FAIL;
  for (const auto& member : container->GetMembers()) {
    void* answer = nullptr;
    if (SUCCEEDED(member->QueryInterface(iid, &answer)))
      members.push_back(QAVRef<QAVBaseUnknown>::Adopt(static_cast<QAVBaseUnknown*>(answer)));
  }
  return S_OK;
}
