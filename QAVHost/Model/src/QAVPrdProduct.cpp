#include "QAVPrdProduct.h"

#include "QAVExtension.h"
#include "QAVModelObject.h"

QAV_IMPLEMENT_CLASS(QAVPrdProduct, QAVIPrdObject, "Model");
QAV_REGISTER_EXTENSION(QAVPrdProduct, "QAVProduct", QAVIPrdObject);

QAVPrdProduct::QAVPrdProduct() = default;
QAVPrdProduct::~QAVPrdProduct() = default;

QAVModelObject* QAVPrdProduct::GetReference() const {
  return dynamic_cast<QAVModelObject*>(GetOuter());
}

QAVMetaClass* QAVPrdProduct::ProductClass(const char* className) {
  static QAVMetaClass* const product =
      QAVMetaClass::Create("QAVProduct", QAVModelObject::MetaObject(), "Model");
  if (!className || !*className) return product;
  return QAVMetaClass::Create(className, product, "Model");
}
