// The host's notification: a reference-counted record sent with an event.
#ifndef QAVNotification_h
#define QAVNotification_h

#include "QAVBaseUnknown.h"

class QAVHOST_API QAVNotification : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // The integer flag is the host's; its meaning belongs to the sender.
  explicit QAVNotification(int flag = 0) : _flag(flag) {}
  QAVNotification(const QAVNotification&) = default;
  QAVNotification& operator=(const QAVNotification&) = default;
  ~QAVNotification() override;

  int GetFlag() const { return _flag; }

 private:
  int _flag;
};

#endif
