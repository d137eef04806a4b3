// The change of a floating-point parameter of a model object: the named
// modification with the value before and after the change.
#ifndef QAVRbaFloatConnexionModifyNotification_h
#define QAVRbaFloatConnexionModifyNotification_h

#include "QAVAttributKind.h"
#include "QAVRbaModifyParameterNotification.h"
#include "QAVRbaUIExport.h"
#include "QAVRef.h"

class QAVRBAUI_API QAVRbaFloatConnexionModifyNotification
    : public QAVRbaModifyParameterNotification {
  QAV_DECLARE_CLASS
 public:
  QAVRbaFloatConnexionModifyNotification(const QAVString& name, QAVBaseUnknown* object,
                                         const GUID& iid, double previous, double next);
  // An unnamed change with both values 0.0; the handle and the kind are not kept.
  QAVRbaFloatConnexionModifyNotification(QAVBaseUnknown* object, QAVBaseUnknown_var handle,
                                         const GUID& iid, QAVAttributKind kind);
  QAVRbaFloatConnexionModifyNotification(const QAVRbaFloatConnexionModifyNotification& other);
  ~QAVRbaFloatConnexionModifyNotification() override;

  double GetPrevious() const { return _previous; }
  double GetNext() const { return _next; }

  // A new record with the same name, object, identifier and values.
  QAVModelNotification* Clone() const override;

 private:
  double _previous;
  double _next;
};

#endif
