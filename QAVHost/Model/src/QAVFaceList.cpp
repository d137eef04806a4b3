#include "QAVFaceList.h"

#include "QAVExtension.h"

QAV_IMPLEMENT_CLASS(QAVFaceList, QAVIFaceList, "Model");
QAV_REGISTER_EXTENSION(QAVFaceList, "QAVModelObject", QAVIFaceList);

QAVFaceList::QAVFaceList() = default;
QAVFaceList::~QAVFaceList() = default;

HRESULT QAVFaceList::ListFaces(std::vector<QAVRef<QAVFace>>& faces) const {
  faces.insert(faces.end(), _faces.begin(), _faces.end());
  return S_OK;
}

void QAVFaceList::AddFace(QAVFace* face) {
  if (face) _faces.emplace_back(face);
}
