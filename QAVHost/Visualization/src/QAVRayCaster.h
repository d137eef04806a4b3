// Rays cast into the triangles of a scene, for picking and for drawing views.
// The scene's leaves are flattened into the global space (their bags' matrices
// applied) and handed to the ray-tracing kernel, which finds the hits.
// Internal to the visualisation area.
#ifndef QAVRayCaster_h
#define QAVRayCaster_h

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "QAV3DRep.h"
#include "QAVMathPoint.h"
#include "QAVRef.h"

class QAVRayCaster {
 public:
  struct Hit {
    unsigned leaf = 0;      // index of the leaf, see PathOf
    unsigned triangle = 0;  // in the leaf
    double distance = 0.0;  // from the origin, along the unit direction
    QAVMathVector normal;   // unit, facing the origin: the triangle's own
    float u = 0.0F;         // where in the triangle: the weights of its second
    float v = 0.0F;         // and third corners
  };

  // Takes the scene under `root` as it is now (null: an empty scene).
  explicit QAVRayCaster(QAV3DBagRep* root);
  ~QAVRayCaster();
  QAVRayCaster(const QAVRayCaster&) = delete;
  QAVRayCaster& operator=(const QAVRayCaster&) = delete;

  // The nearest hit of every leaf the ray meets, nearest first (at one
  // distance, in the leaves' order), from one pass of the ray through the
  // scene that sees every hit: parts that touch and decals lying on a face are
  // all met. `direction` need not be a unit vector.
  void CastAll(const QAVMathPoint& origin, const QAVMathVector& direction,
               std::vector<Hit>& hits) const;
  // The nearest hit at least `from` away; false when the ray meets nothing.
  bool CastNearest(const QAVMathPoint& origin, const QAVMathVector& direction, double from,
                   Hit& hit) const;
  // The normal for shading at a hit of a ray of that direction: interpolated
  // from the leaf's vertex normals when it has them (else the triangle's own),
  // unit and facing the ray's origin. Only a caller that shades asks for it:
  // it reads the leaf's triangles and normals.
  QAVMathVector ShadingNormal(const Hit& hit, const QAVMathVector& direction) const;

  // The representations from a leaf up to the root, shared with the paths of
  // picks (which may outlive the caster).
  const std::shared_ptr<const std::vector<QAVRef<QAV3DRep>>>& PathOf(unsigned leaf) const {
    return _paths[leaf];
  }
  // The leaf's sub-element of one of its triangles: the primitive that holds it.
  int SubElementOf(unsigned leaf, unsigned triangle) const {
    return _leaves[leaf]->GetSubElementOf(static_cast<int>(triangle));
  }
  unsigned GetLeafCount() const { return static_cast<unsigned>(_paths.size()); }
  std::size_t GetTriangleCount() const { return _triangles; }

 private:
  struct Kernel;
  void Flatten(QAV3DRep* rep, const QAV4x4Matrix& toGlobal, std::vector<QAVRef<QAV3DRep>>& path);

  Kernel* _kernel;
  std::vector<std::shared_ptr<const std::vector<QAVRef<QAV3DRep>>>> _paths;
  // Per leaf: its vertex normals in global space (empty when it has none) and
  // its triangles, for smooth shading normals.
  std::vector<std::vector<float>> _normals;
  std::vector<const std::vector<std::uint32_t>*> _triangleLists;
  std::vector<const QAV3DTessellatedRep*> _leaves;  // held by the paths
  std::size_t _triangles = 0;
};

#endif
