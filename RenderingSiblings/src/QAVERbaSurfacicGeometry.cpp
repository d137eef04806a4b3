// The geometry of surfacic representations for the rendering model: one part,
// the representation's triangles.
#include "QAV3DRep.h"
#include "QAVExtension.h"
#include "QAVIRbaGeometry.h"

class QAVERbaSurfacicGeometry : public QAVIRbaGeometry {
  QAV_DECLARE_CLASS
 public:
  int GetGeometryCount() const override { return Rep() ? 1 : 0; }

  HRESULT GetGeometry(int index, const float*& vertices, int& vertexLength, const float*& normals,
                      int& normalLength, const std::uint32_t*& indices,
                      int& indexLength) const override {
    const QAVSurfacicRep* rep = Rep();
    if (!rep || index != 0) return E_FAIL;
    vertices = rep->GetPositions().data();
    vertexLength = static_cast<int>(rep->GetPositions().size());
    normals = rep->GetNormals().data();
    normalLength = static_cast<int>(rep->GetNormals().size());
    indices = rep->GetTriangles().data();
    indexLength = static_cast<int>(rep->GetTriangles().size());
    return S_OK;
  }

 private:
  const QAVSurfacicRep* Rep() const { return dynamic_cast<const QAVSurfacicRep*>(GetOuter()); }
};

QAV_IMPLEMENT_CLASS(QAVERbaSurfacicGeometry, QAVIRbaGeometry, "RenderingSiblings");
QAV_REGISTER_EXTENSION(QAVERbaSurfacicGeometry, "QAVSurfacicRep", QAVIRbaGeometry);
