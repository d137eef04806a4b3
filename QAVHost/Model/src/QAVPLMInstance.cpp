#include "QAVPLMInstance.h"

QAV_IMPLEMENT_CLASS(QAVPLMInstance, QAVIPLMNavInstance, "Model");
QAV_IMPLEMENT_CLASS(QAVPLMRepInstance, QAVIPLMNavRepInstance, "Model");

namespace {

template <class Visit>
void Walk(QAVIPLMNavOccurrence* occurrence, const Visit& visit) {
  visit(occurrence);
  for (int i = 0; i < occurrence->GetChildCount(); ++i)
    if (QAVIPLMNavOccurrence* child = occurrence->GetChild(i)) Walk(child, visit);
}

}  // namespace

QAVPLMInstance::QAVPLMInstance(QAVModelObject* reference) : _reference(reference) {}
QAVPLMInstance::~QAVPLMInstance() = default;

HRESULT QAVPLMInstance::ListOccurrences(QAVIPLMNavOccurrence* root,
                                        std::vector<QAVRef<QAVIPLMNavOccurrence>>& occurrences) {
  if (!root) return E_FAIL;
  Walk(root, [&](QAVIPLMNavOccurrence* occurrence) {
    if (occurrence->GetInstance() == this) occurrences.emplace_back(occurrence);
  });
  return S_OK;
}

QAVPLMRepInstance::QAVPLMRepInstance(QAVModelObject* reference) : _reference(reference) {}
QAVPLMRepInstance::~QAVPLMRepInstance() = default;

HRESULT QAVPLMRepInstance::ListRepOccurrences(
    QAVIPLMNavOccurrence* root, std::vector<QAVRef<QAVIPLMNavRepOccurrence>>& occurrences) {
  if (!root) return E_FAIL;
  Walk(root, [&](QAVIPLMNavOccurrence* occurrence) {
    for (int i = 0; i < occurrence->GetRepOccurrenceCount(); ++i) {
      QAVIPLMNavRepOccurrence* repOccurrence = occurrence->GetRepOccurrence(i);
      if (repOccurrence && repOccurrence->GetRepInstance() == this)
        occurrences.emplace_back(repOccurrence);
    }
  });
  return S_OK;
}
