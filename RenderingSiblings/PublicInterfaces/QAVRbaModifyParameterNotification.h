// A named modification of a parameter of a model object: the parameter's name,
// the object (held with a reference) and the interface through which the
// parameter was changed.
#ifndef QAVRbaModifyParameterNotification_h
#define QAVRbaModifyParameterNotification_h

#include "QAVModelNotification.h"
#include "QAVRbaSiblingsExport.h"
#include "QAVRef.h"
#include "QAVString.h"

class QAVRBASIBLINGS_API QAVRbaModifyParameterNotification : public QAVModelNotification {
  QAV_DECLARE_CLASS
 public:
  QAVRbaModifyParameterNotification(const QAVString& name, QAVBaseUnknown* object, const GUID& iid);
  // An unnamed modification.
  QAVRbaModifyParameterNotification(QAVBaseUnknown* object, const GUID& iid);
  QAVRbaModifyParameterNotification(const QAVRbaModifyParameterNotification&) = default;
  QAVRbaModifyParameterNotification& operator=(const QAVRbaModifyParameterNotification&) = default;
  ~QAVRbaModifyParameterNotification() override;

  const QAVString& GetName() const { return _name; }
  // Borrowed; may be null.
  QAVBaseUnknown* GetObject() const { return _object.get(); }
  const GUID& GetInterfaceIID() const { return _iid; }

  QAVModelNotification* Clone() const override;

 private:
  QAVString _name;
  QAVBaseUnknown_var _object;
  GUID _iid;
};

#endif
