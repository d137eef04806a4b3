// The 3D representations of a scene: a tree whose inner nodes are bags
// (QAV3DBagRep, each with an optional 4 x 4 matrix placing its children) and
// whose leaves carry geometry (QAV3DTessellatedRep and its kinds: triangles;
// QAV3DCustomRep: any graphic primitives). Each representation
// may stand for a model object (a part, a sticker container, a light...).
#ifndef QAV3DRep_h
#define QAV3DRep_h

#include <cstdint>
#include <optional>
#include <vector>

#include "QAV4x4Matrix.h"
#include "QAVBaseUnknown.h"
#include "QAVGraphicPrimitive.h"
#include "QAVModelObject.h"
#include "QAVRef.h"

class QAV3DBagRep;

class QAVHOST_API QAV3DRep : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAV3DRep();
  ~QAV3DRep() override;
  QAV3DRep(const QAV3DRep&) = delete;
  QAV3DRep& operator=(const QAV3DRep&) = delete;

  // The model object represented (borrowed), or null.
  QAVModelObject* GetModelObject() const { return _object.get(); }
  void SetModelObject(QAVModelObject* object);
  // The bag holding this representation (not owned), or null for a root.
  QAV3DBagRep* GetFather() const { return _father; }
  // Makes this representation the one that shows its model object: the
  // object's QAVI3DGeoVisu gives it for as long as it lives. False without a
  // model object.
  bool PublishAsVisu();

 private:
  friend class QAV3DBagRep;
  QAVRef<QAVModelObject> _object;
  QAV3DBagRep* _father = nullptr;
  bool _published = false;
};

class QAVHOST_API QAV3DBagRep : public QAV3DRep {
  QAV_DECLARE_CLASS
 public:
  QAV3DBagRep();
  ~QAV3DBagRep() override;

  // The matrix placing the children in the bag's space; null when none
  // (the identity).
  const QAV4x4Matrix* GetMatrix() const { return _matrix ? &*_matrix : nullptr; }
  void SetMatrix(const QAV4x4Matrix& matrix) { _matrix = matrix; }

  // Adds a child (a reference is held) that has no father yet; false otherwise.
  bool AddChild(QAV3DRep* child);
  int GetChildCount() const { return static_cast<int>(_children.size()); }
  QAV3DRep* GetChild(int index) const;  // 0-based, borrowed; null out of range

 private:
  std::optional<QAV4x4Matrix> _matrix;
  std::vector<QAVRef<QAV3DRep>> _children;
};

// A leaf drawn from triangles: vertex positions and normals (x, y, z each, in
// the space of the bag above) and triangles as three vertex indices each. What
// kind of shape the triangles stand for is the subclass's; each says which of
// its graphic primitives a triangle belongs to, which is what a pick reports as
// the sub-element hit.
class QAVHOST_API QAV3DTessellatedRep : public QAV3DRep {
  QAV_DECLARE_CLASS
 public:
  QAV3DTessellatedRep();
  ~QAV3DTessellatedRep() override;

  // False, changing nothing, when the arrays do not fit (sizes not multiples of
  // three, normals not one per vertex or absent, an index out of range, a
  // coordinate that is not finite).
  virtual bool SetGeometry(std::vector<float> positions, std::vector<float> normals,
                           std::vector<std::uint32_t> triangles);
  const std::vector<float>& GetPositions() const { return _positions; }
  const std::vector<float>& GetNormals() const { return _normals; }  // may be empty
  const std::vector<std::uint32_t>& GetTriangles() const { return _triangles; }
  int GetVertexCount() const { return static_cast<int>(_positions.size() / 3); }
  int GetTriangleCount() const { return static_cast<int>(_triangles.size() / 3); }

  // The graphic primitives (borrowed); null out of range.
  virtual int GetPrimitiveCount() const { return 0; }
  virtual QAVGraphicPrimitive* GetPrimitive(int /*index*/) const { return nullptr; }
  // The index of the primitive that holds a triangle (0 when there is none).
  virtual int GetSubElementOf(int /*triangle*/) const { return 0; }

 private:
  std::vector<float> _positions;
  std::vector<float> _normals;
  std::vector<std::uint32_t> _triangles;
};

// A surface made of faces: consecutive runs of its triangles, one face over
// all of them unless SetFaces splits them.
class QAVHOST_API QAVSurfacicRep : public QAV3DTessellatedRep {
  QAV_DECLARE_CLASS
 public:
  QAVSurfacicRep();
  ~QAVSurfacicRep() override;

  // New geometry comes as one face.
  bool SetGeometry(std::vector<float> positions, std::vector<float> normals,
                   std::vector<std::uint32_t> triangles) override;
  // Splits the triangles into faces starting at the triangles given (the first
  // 0, strictly increasing, each below the triangle count); false, changing
  // nothing, otherwise.
  bool SetFaces(const std::vector<int>& firstTriangles);
  int GetPrimitiveCount() const override { return static_cast<int>(_faces.size()); }
  QAVGraphicPrimitive* GetPrimitive(int index) const override;
  int GetSubElementOf(int triangle) const override;

 private:
  std::vector<QAVRef<QAV3DFaceGP>> _faces;
};

// A cylinder, a pipe along a curve: one face over all their triangles.
class QAVHOST_API QAV3DCylinderRep : public QAV3DTessellatedRep {
  QAV_DECLARE_CLASS
 public:
  QAV3DCylinderRep();
  ~QAV3DCylinderRep() override;
  bool SetGeometry(std::vector<float> positions, std::vector<float> normals,
                   std::vector<std::uint32_t> triangles) override;
  int GetPrimitiveCount() const override { return _face ? 1 : 0; }
  QAVGraphicPrimitive* GetPrimitive(int index) const override;

 private:
  QAVRef<QAV3DFaceGP> _face;
};

class QAVHOST_API QAV3DCurvedPipeRep : public QAV3DCylinderRep {
  QAV_DECLARE_CLASS
 public:
  QAV3DCurvedPipeRep();
  ~QAV3DCurvedPipeRep() override;
};

// A canonical shape (a plane, a sphere...) known by its equation: picked on its
// triangles but drawn without graphic primitives.
class QAVHOST_API QAV3DCanonicalRep : public QAV3DTessellatedRep {
  QAV_DECLARE_CLASS
 public:
  QAV3DCanonicalRep();
  ~QAV3DCanonicalRep() override;
};

// A representation of any primitives (gizmos, markers); not picked.
class QAVHOST_API QAV3DCustomRep : public QAV3DRep {
  QAV_DECLARE_CLASS
 public:
  QAV3DCustomRep();
  ~QAV3DCustomRep() override;
  // Adds a primitive (a reference is held) drawn with the attributes given.
  void AddGP(QAVGraphicPrimitive* primitive, const QAVGraphicAttributeSet& attributes);
  int GetPrimitiveCount() const { return static_cast<int>(_primitives.size()); }
  QAVGraphicPrimitive* GetPrimitive(int index) const;  // borrowed; null out of range

 private:
  std::vector<QAVRef<QAVGraphicPrimitive>> _primitives;
};

#endif
