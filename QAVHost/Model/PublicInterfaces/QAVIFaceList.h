// The faces of a model object's geometry. Every model object answers it; an
// object without faces (or whose faces are not known) lists none.
#ifndef QAVIFaceList_h
#define QAVIFaceList_h

#include <vector>

#include "QAVBaseUnknown.h"
#include "QAVFace.h"
#include "QAVRef.h"
#include "QAVTypes.h"

class QAVHOST_API QAVIFaceList : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVIFaceList() = default;
  ~QAVIFaceList() override;
  // The faces, in order, appended to `faces` (S_OK even when there are none).
  virtual HRESULT ListFaces(std::vector<QAVRef<QAVFace>>& faces) const = 0;
};

#endif
