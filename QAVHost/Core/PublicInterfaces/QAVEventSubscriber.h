// The base of host objects that subscribe to events or send them.
#ifndef QAVEventSubscriber_h
#define QAVEventSubscriber_h

#include "QAVBaseUnknown.h"

class QAVHOST_API QAVEventSubscriber : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVEventSubscriber() = default;
  QAVEventSubscriber(const QAVEventSubscriber&) = default;
  QAVEventSubscriber& operator=(const QAVEventSubscriber&) = default;
  ~QAVEventSubscriber() override;
};

#endif
