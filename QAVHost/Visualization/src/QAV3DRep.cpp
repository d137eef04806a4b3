#include "QAV3DRep.h"

#include <cmath>

#include "QAVModelObjectVisu.h"

QAV_IMPLEMENT_CLASS(QAV3DRep, QAVBaseUnknown, "Visualization");
QAV_IMPLEMENT_CLASS(QAV3DBagRep, QAV3DRep, "Visualization");
QAV_IMPLEMENT_CLASS(QAVSurfacicRep, QAV3DRep, "Visualization");

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

QAVSurfacicRep::QAVSurfacicRep() = default;
QAVSurfacicRep::~QAVSurfacicRep() = default;

bool QAVSurfacicRep::SetGeometry(std::vector<float> positions, std::vector<float> normals,
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
