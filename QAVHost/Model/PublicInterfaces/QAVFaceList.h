// The faces of model objects: an extension made for each model object on its
// first query of QAVIFaceList, holding the faces given to it (none at first).
#ifndef QAVFaceList_h
#define QAVFaceList_h

#include "QAVIFaceList.h"

class QAVHOST_API QAVFaceList : public QAVIFaceList {
  QAV_DECLARE_CLASS
 public:
  QAVFaceList();
  ~QAVFaceList() override;
  HRESULT ListFaces(std::vector<QAVRef<QAVFace>>& faces) const override;
  void AddFace(QAVFace* face);  // a reference is held; null is ignored

 private:
  std::vector<QAVRef<QAVFace>> _faces;
};

#endif
