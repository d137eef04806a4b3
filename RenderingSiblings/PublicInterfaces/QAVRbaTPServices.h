// The rendering framework's services over the containers of model objects.
#ifndef QAVRbaTPServices_h
#define QAVRbaTPServices_h

#include <vector>

#include "QAVModelObject.h"
#include "QAVRbaSiblingsExport.h"
#include "QAVRef.h"
#include "QAVTypes.h"

class QAVRBASIBLINGS_API QAVRbaTPServices {
 public:
  // The members of `object`'s container of class `containerName` that answer the
  // interface `iid`, in the container's order, each with the reference its query
  // gave (released with the list). `members` is emptied first. S_OK (possibly
  // with no member), E_FAIL for a null object or name or a missing container.
  static HRESULT ListMembers(QAVModelObject* object, const char* containerName, const IID& iid,
                             std::vector<QAVRef<QAVBaseUnknown>>& members);

  QAVRbaTPServices() = delete;
};

#endif
