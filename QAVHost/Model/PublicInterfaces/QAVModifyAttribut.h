// The modification of an attribute of a model object: the object and a handle
// on it (both held with a reference), the interface of the attribute, its kind
// and a copy of the path of the object in the model tree.
#ifndef QAVModifyAttribut_h
#define QAVModifyAttribut_h

#include "QAVAttributKind.h"
#include "QAVModelNotification.h"
#include "QAVPathElement.h"
#include "QAVRef.h"

class QAVHOST_API QAVModifyAttribut : public QAVModelNotification {
  QAV_DECLARE_CLASS
 public:
  QAVModifyAttribut(QAVBaseUnknown* object, QAVBaseUnknown_var handle, const GUID& iid,
                    QAVAttributKind kind, QAVPathElement path);
  QAVModifyAttribut(const QAVModifyAttribut&) = default;
  QAVModifyAttribut& operator=(const QAVModifyAttribut&) = default;
  ~QAVModifyAttribut() override;

  // Borrowed; may be null.
  QAVBaseUnknown* GetObject() const { return _object.get(); }
  const QAVBaseUnknown_var& GetHandle() const { return _handle; }
  const GUID& GetInterfaceIID() const { return _iid; }
  QAVAttributKind GetAttributKind() const { return _kind; }
  const QAVPathElement& GetPathElement() const { return _path; }

  QAVModelNotification* Clone() const override;

 private:
  QAVBaseUnknown_var _object;
  QAVBaseUnknown_var _handle;
  GUID _iid;
  QAVAttributKind _kind;
  QAVPathElement _path;
};

#endif
