// What every element of a product structure is: a product, an instance of a
// product or part under its father, a representation instance. Each stands
// for a reference model object (the product or part that it is or places).
#ifndef QAVIPLMComponent_h
#define QAVIPLMComponent_h

#include "QAVBaseUnknown.h"

class QAVModelObject;

class QAVHOST_API QAVIPLMComponent : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVIPLMComponent() = default;
  ~QAVIPLMComponent() override;
  // The reference model object (borrowed), or null.
  virtual QAVModelObject* GetReference() const = 0;
};

#endif
