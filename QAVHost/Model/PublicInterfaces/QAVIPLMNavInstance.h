// An instance of a product or part placed under its father product.
#ifndef QAVIPLMNavInstance_h
#define QAVIPLMNavInstance_h

#include <vector>

#include "QAVIPLMComponent.h"
#include "QAVIPLMNavOccurrence.h"
#include "QAVRef.h"
#include "QAVTypes.h"

class QAVHOST_API QAVIPLMNavInstance : public QAVIPLMComponent {
  QAV_DECLARE_CLASS
 public:
  QAVIPLMNavInstance() = default;
  ~QAVIPLMNavInstance() override;
  // The occurrences of this instance in the tree under `root` (the root
  // included), depth first, appended to `occurrences`. E_FAIL for a null root.
  virtual HRESULT ListOccurrences(QAVIPLMNavOccurrence* root,
                                  std::vector<QAVRef<QAVIPLMNavOccurrence>>& occurrences) = 0;
};

#endif
