#include "QAV3DRep.h"

#include <algorithm>
#include <cmath>

#include "QAVModelObjectVisu.h"

QAV_IMPLEMENT_CLASS(QAV3DRep, QAVBaseUnknown, "Visualization");
QAV_IMPLEMENT_CLASS(QAV3DBagRep, QAV3DRep, "Visualization");
QAV_IMPLEMENT_CLASS(QAV3DTessellatedRep, QAV3DRep, "Visualization");
QAV_IMPLEMENT_CLASS(QAVSurfacicRep, QAV3DTessellatedRep, "Visualization");
QAV_IMPLEMENT_CLASS(QAV3DCylinderRep, QAV3DTessellatedRep, "Visualization");
QAV_IMPLEMENT_CLASS(QAV3DCurvedPipeRep, QAV3DCylinderRep, "Visualization");
QAV_IMPLEMENT_CLASS(QAV3DCanonicalRep, QAV3DTessellatedRep, "Visualization");
QAV_IMPLEMENT_CLASS(QAV3DCustomRep, QAV3DRep, "Visualization");

QAV3DRep::QAV3DRep() = default;

namespace {
QAVModelObjectVisu* VisuOf(QAVModelObject* object) {
  const auto visu = QAVQuery<QAVI3DGeoVisu>(object);
  return dynamic_cast<QAVModelObjectVisu*>(visu.get());  // the object keeps it alive
}
}  // namespace

QAV3DRep::~QAV3DRep() { SetModelObject(nullptr); }

void QAV3DRep::SetModelObject(QAVModelObject* object) {
  // The object may outlive its representation: it must not give it any more.
  if (_published)
    if (QAVModelObjectVisu* visu = VisuOf(_object.get())) visu->ForgetRep(this);
  _published = false;
  _object = QAVRef<QAVModelObject>(object);
}

bool QAV3DRep::PublishAsVisu() {
  QAVModelObjectVisu* visu = VisuOf(_object.get());
  if (!visu) return false;
  visu->SetRep(this);
  _published = true;
  return true;
}

QAV3DBagRep::QAV3DBagRep() = default;

QAV3DBagRep::~QAV3DBagRep() {
  for (const auto& child : _children)
    child->_father = nullptr;
}

bool QAV3DBagRep::AddChild(QAV3DRep* child) {
  if (!child || child->_father) return false;
  for (const QAV3DRep* above = this; above; above = above->GetFather())
    if (above == child) return false;  // a bag cannot hold its own ancestor
  child->_father = this;
  _children.emplace_back(child);
  return true;
}

QAV3DRep* QAV3DBagRep::GetChild(int index) const {
  if (index < 0 || index >= GetChildCount()) return nullptr;
  return _children[static_cast<std::size_t>(index)].get();
}

QAV3DTessellatedRep::QAV3DTessellatedRep() = default;
QAV3DTessellatedRep::~QAV3DTessellatedRep() = default;

bool QAV3DTessellatedRep::SetGeometry(std::vector<float> positions, std::vector<float> normals,
                                      std::vector<std::uint32_t> triangles) {
  if (positions.size() % 3 != 0 || triangles.size() % 3 != 0) return false;
  if (!normals.empty() && normals.size() != positions.size()) return false;
  for (const float value : positions)
    if (!std::isfinite(value)) return false;
  for (const float value : normals)
    if (!std::isfinite(value)) return false;
  const std::size_t vertices = positions.size() / 3;
  for (const std::uint32_t index : triangles)
    if (index >= vertices) return false;
  _positions = std::move(positions);
  _normals = std::move(normals);
  _triangles = std::move(triangles);
  return true;
}

QAVSurfacicRep::QAVSurfacicRep() = default;
QAVSurfacicRep::~QAVSurfacicRep() = default;

bool QAVSurfacicRep::SetGeometry(std::vector<float> positions, std::vector<float> normals,
                                 std::vector<std::uint32_t> triangles) {
  if (!QAV3DTessellatedRep::SetGeometry(std::move(positions), std::move(normals),
                                        std::move(triangles)))
    return false;
  _faces.clear();
  if (GetTriangleCount() > 0) _faces.push_back(QAVMakeRef<QAV3DFaceGP>(0, GetTriangleCount()));
  return true;
}

bool QAVSurfacicRep::SetFaces(const std::vector<int>& firstTriangles) {
  const int count = GetTriangleCount();
  if (firstTriangles.empty() || firstTriangles.front() != 0) return false;
  for (std::size_t i = 1; i < firstTriangles.size(); ++i)
    if (firstTriangles[i] <= firstTriangles[i - 1]) return false;
  if (firstTriangles.back() >= count) return false;
  _faces.clear();
  for (std::size_t i = 0; i < firstTriangles.size(); ++i) {
    const int end = i + 1 < firstTriangles.size() ? firstTriangles[i + 1] : count;
    _faces.push_back(QAVMakeRef<QAV3DFaceGP>(firstTriangles[i], end - firstTriangles[i]));
  }
  return true;
}

QAVGraphicPrimitive* QAVSurfacicRep::GetPrimitive(int index) const {
  if (index < 0 || index >= GetPrimitiveCount()) return nullptr;
  return _faces[static_cast<std::size_t>(index)].get();
}

int QAVSurfacicRep::GetSubElementOf(int triangle) const {
  // The faces are in order: the last one starting at or before the triangle.
  const auto after = std::upper_bound(
      _faces.begin(), _faces.end(), triangle,
      [](int t, const QAVRef<QAV3DFaceGP>& face) { return t < face->GetFirstTriangle(); });
  return after == _faces.begin() ? 0 : static_cast<int>(after - _faces.begin()) - 1;
}

QAV3DCylinderRep::QAV3DCylinderRep() = default;
QAV3DCylinderRep::~QAV3DCylinderRep() = default;

bool QAV3DCylinderRep::SetGeometry(std::vector<float> positions, std::vector<float> normals,
                                   std::vector<std::uint32_t> triangles) {
  if (!QAV3DTessellatedRep::SetGeometry(std::move(positions), std::move(normals),
                                        std::move(triangles)))
    return false;
  _face = GetTriangleCount() > 0 ? QAVMakeRef<QAV3DFaceGP>(0, GetTriangleCount()) : nullptr;
  return true;
}

QAVGraphicPrimitive* QAV3DCylinderRep::GetPrimitive(int index) const {
  return index == 0 ? _face.get() : nullptr;
}

QAV3DCurvedPipeRep::QAV3DCurvedPipeRep() = default;
QAV3DCurvedPipeRep::~QAV3DCurvedPipeRep() = default;

QAV3DCanonicalRep::QAV3DCanonicalRep() = default;
QAV3DCanonicalRep::~QAV3DCanonicalRep() = default;

QAV3DCustomRep::QAV3DCustomRep() = default;
QAV3DCustomRep::~QAV3DCustomRep() = default;

void QAV3DCustomRep::AddGP(QAVGraphicPrimitive* primitive,
                           const QAVGraphicAttributeSet& attributes) {
  if (!primitive) return;
  primitive->SetAttributes(attributes);
  _primitives.emplace_back(primitive);
}

QAVGraphicPrimitive* QAV3DCustomRep::GetPrimitive(int index) const {
  if (index < 0 || index >= GetPrimitiveCount()) return nullptr;
  return _primitives[static_cast<std::size_t>(index)].get();
}
