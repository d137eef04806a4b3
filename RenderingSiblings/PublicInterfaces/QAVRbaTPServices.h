// The rendering framework's services over the containers of model objects and
// the technological representations of representation references.
#ifndef QAVRbaTPServices_h
#define QAVRbaTPServices_h

#include <vector>

#include "QAV3DRep.h"
#include "QAVIPsiRepresentationReference.h"
#include "QAVModelObject.h"
#include "QAVRbaSiblingsExport.h"
#include "QAVRef.h"
#include "QAVString.h"
#include "QAVTypes.h"

class QAVRBASIBLINGS_API QAVRbaTPServices {
 public:
  // The members of `object`'s container of class `containerName` that answer the
  // interface `iid`, in the container's order, each with the reference its query
  // gave (released with the list). `members` is emptied first. S_OK (possibly
  // with no member), E_FAIL for a null object or name or a missing container.
  static HRESULT ListMembers(QAVModelObject* object, const char* containerName, const IID& iid,
                             std::vector<QAVRef<QAVBaseUnknown>>& members);

  // The technological representations of a reference are the tessellated
  // representations directly under the representation it references: the
  // geometry drawn and picked for it.
  // The class name of the first: S_OK, or E_FAIL with `type` emptied for a null
  // reference or one without any.
  static HRESULT GetTechnoRepType(QAVIPsiRepresentationReference* reference, QAVString& type);
  // Those of class `type` (or derived from it), in order, in `reps` (emptied
  // first). S_OK, possibly with none; E_FAIL for a null reference.
  static HRESULT GetTechnoRep(QAVIPsiRepresentationReference* reference, const QAVString& type,
                              std::vector<QAVRef<QAV3DRep>>& reps);

  QAVRbaTPServices() = delete;
};

#endif
