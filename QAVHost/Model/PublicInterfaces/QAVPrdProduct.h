// The product interface of model objects of class "QAVProduct" and of the
// classes derived from it: an extension made for each such object on its first
// query of QAVIPrdObject, holding the product's root occurrence.
#ifndef QAVPrdProduct_h
#define QAVPrdProduct_h

#include "QAVIPrdObject.h"
#include "QAVMetaClass.h"

class QAVHOST_API QAVPrdProduct : public QAVIPrdObject {
  QAV_DECLARE_CLASS
 public:
  QAVPrdProduct();
  ~QAVPrdProduct() override;

  // The model object extended (borrowed).
  QAVModelObject* GetReference() const override;
  QAVIPLMNavOccurrence* GetRootOccurrence() const override { return _root.get(); }
  void SetRootOccurrence(QAVIPLMNavOccurrence* root) { _root = QAVRef<QAVIPLMNavOccurrence>(root); }

  // The meta-class of a product class of that name (empty: "QAVProduct"),
  // created derived from "QAVProduct" when it does not exist yet, so that
  // model objects made with that class name are products.
  static QAVMetaClass* ProductClass(const char* className);

 private:
  QAVRef<QAVIPLMNavOccurrence> _root;
};

#endif
