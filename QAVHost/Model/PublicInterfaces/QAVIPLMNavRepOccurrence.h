// An occurrence of a representation instance: where one instance of a
// geometric representation sits in the expanded product structure.
#ifndef QAVIPLMNavRepOccurrence_h
#define QAVIPLMNavRepOccurrence_h

#include "QAVBaseUnknown.h"

class QAVIPLMNavRepInstance;

class QAVHOST_API QAVIPLMNavRepOccurrence : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVIPLMNavRepOccurrence() = default;
  ~QAVIPLMNavRepOccurrence() override;
  // The representation instance (borrowed).
  virtual QAVIPLMNavRepInstance* GetRepInstance() const = 0;
};

#endif
