#include "QAVRbaPLMServices.h"

#include "QAVProcessState.h"
#include "QAVRef.h"

namespace {
QAVRef<QAVModelObject>& ActiveProduct() {
  static auto* const product = new QAVRef<QAVModelObject>;
  return *product;
}
void ForgetActiveProduct() { ActiveProduct().Reset(); }
QAV_REGISTER_RESET(QAVRbaPLMServices, ForgetActiveProduct);
}  // namespace

HRESULT QAVRbaPLMServices::GetUIActiveProduct(QAVModelObject*& product) {
  product = ActiveProduct().get();
  if (!product) return E_FAIL;
  product->AddRef();
  return S_OK;
}

void QAVRbaPLMServices::SetUIActiveProduct(QAVModelObject* product) {
  ActiveProduct() = QAVRef<QAVModelObject>(product);
}
