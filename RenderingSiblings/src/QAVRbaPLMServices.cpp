#include "QAVRbaPLMServices.h"

#include "QAVProcessState.h"
#include "QAVRef.h"

namespace {
QAVRef<QAVIPrdObject>& ActiveProduct() {
  static auto* const product = new QAVRef<QAVIPrdObject>;
  return *product;
}
void ForgetActiveProduct() { ActiveProduct().Reset(); }
QAV_REGISTER_RESET(QAVRbaPLMServices, ForgetActiveProduct);
}  // namespace

HRESULT QAVRbaPLMServices::GetUIActiveProduct(QAVIPrdObject*& product) {
  product = ActiveProduct().get();
  if (!product) return E_FAIL;
  product->AddRef();
  return S_OK;
}

void QAVRbaPLMServices::SetUIActiveProduct(QAVIPrdObject* product) {
  ActiveProduct() = QAVRef<QAVIPrdObject>(product);
}
