// An instance of a geometric representation under a product or part.
#ifndef QAVIPLMNavRepInstance_h
#define QAVIPLMNavRepInstance_h

#include <vector>

#include "QAVIPLMComponent.h"
#include "QAVIPLMNavOccurrence.h"
#include "QAVIPLMNavRepOccurrence.h"
#include "QAVRef.h"
#include "QAVTypes.h"

class QAVHOST_API QAVIPLMNavRepInstance : public QAVIPLMComponent {
  QAV_DECLARE_CLASS
 public:
  QAVIPLMNavRepInstance() = default;
  ~QAVIPLMNavRepInstance() override;
  // The occurrences of this representation instance in the tree under `root`,
  // depth first, appended to `occurrences`. E_FAIL for a null root.
  virtual HRESULT ListRepOccurrences(QAVIPLMNavOccurrence* root,
                                     std::vector<QAVRef<QAVIPLMNavRepOccurrence>>& occurrences) = 0;
};

#endif
