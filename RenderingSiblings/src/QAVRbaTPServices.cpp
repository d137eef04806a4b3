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

namespace {

// Calls `visit` on each tessellated representation directly under the
// representation that `reference` references.
template <class Visit>
void ForEachTechnoRep(QAVIPsiRepresentationReference& reference, Visit visit) {
  auto* bag = dynamic_cast<QAV3DBagRep*>(reference.GetRepresentation());
  if (!bag) return;
  for (int i = 0; i < bag->GetChildCount(); ++i)
    if (auto* rep = dynamic_cast<QAV3DTessellatedRep*>(bag->GetChild(i))) visit(rep);
}

}  // namespace

HRESULT QAVRbaTPServices::GetTechnoRepType(QAVIPsiRepresentationReference* reference,
                                           QAVString& type) {
  type = QAVString();
  if (!reference) return E_FAIL;
  ForEachTechnoRep(*reference, [&type](const QAV3DRep* rep) {
    if (type.IsEmpty()) type = QAVString(rep->IsA());
  });
  return type.IsEmpty() ? E_FAIL : S_OK;
}

HRESULT QAVRbaTPServices::GetTechnoRep(QAVIPsiRepresentationReference* reference,
                                       const QAVString& type, std::vector<QAVRef<QAV3DRep>>& reps) {
  reps.clear();
  if (!reference) return E_FAIL;
  ForEachTechnoRep(*reference, [&](QAV3DRep* rep) {
    if (rep->IsAKindOf(type.c_str())) reps.emplace_back(rep);
  });
  return S_OK;
}
