// An occurrence of the navigation tree: one place of an instance in the
// expanded product structure (the same instance under two occurrences of its
// father has two occurrences). The root occurrence, that of the product
// itself, has no instance. Occurrences hold their children: the occurrences of
// the instances below and the occurrences of the representation instances.
#ifndef QAVIPLMNavOccurrence_h
#define QAVIPLMNavOccurrence_h

#include "QAVBaseUnknown.h"

class QAVIPLMNavInstance;
class QAVIPLMNavRepOccurrence;

class QAVHOST_API QAVIPLMNavOccurrence : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVIPLMNavOccurrence() = default;
  ~QAVIPLMNavOccurrence() override;

  // The instance placed here (borrowed); null for a root occurrence.
  virtual QAVIPLMNavInstance* GetInstance() const = 0;
  // The occurrences below, in order (borrowed; null out of range).
  virtual int GetChildCount() const = 0;
  virtual QAVIPLMNavOccurrence* GetChild(int index) const = 0;
  // The occurrences of representation instances held here (borrowed).
  virtual int GetRepOccurrenceCount() const = 0;
  virtual QAVIPLMNavRepOccurrence* GetRepOccurrence(int index) const = 0;
};

#endif
