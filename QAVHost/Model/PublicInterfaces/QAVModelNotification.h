// The base of the notifications that report a change of the model.
#ifndef QAVModelNotification_h
#define QAVModelNotification_h

#include "QAVNotification.h"

class QAVHOST_API QAVModelNotification : public QAVNotification {
  QAV_DECLARE_CLASS
 public:
  explicit QAVModelNotification(int flag = 0) : QAVNotification(flag) {}
  QAVModelNotification(const QAVModelNotification&) = default;
  QAVModelNotification& operator=(const QAVModelNotification&) = default;
  ~QAVModelNotification() override;

  // A new notification of the same class with the same content; the caller owns
  // its one reference. Every derived class overrides it.
  virtual QAVModelNotification* Clone() const;
};

#endif
