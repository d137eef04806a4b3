// A product: the model object at the top of a product structure. Model objects
// of class "QAVProduct" (or of a class derived from it) answer this interface;
// the product's reference is that model object.
#ifndef QAVIPrdObject_h
#define QAVIPrdObject_h

#include "QAVIPLMComponent.h"
#include "QAVIPLMNavOccurrence.h"
#include "QAVRef.h"

class QAVHOST_API QAVIPrdObject : public QAVIPLMComponent {
  QAV_DECLARE_CLASS
 public:
  QAVIPrdObject() = default;
  ~QAVIPrdObject() override;
  // The occurrence of the product itself, root of its expanded structure
  // (borrowed), or null when the product has no structure.
  virtual QAVIPLMNavOccurrence* GetRootOccurrence() const = 0;
};

using QAVIPrdObject_var = QAVRef<QAVIPrdObject>;

#endif
