// What a pick met: the representations from the leaf that was hit up to the
// root of the scene, the viewpoint the pick was made from, and where the ray
// met the leaf, in the scene's (global) space.
#ifndef QAVPickPath_h
#define QAVPickPath_h

#include <memory>
#include <vector>

#include "QAV3DRep.h"
#include "QAV3DViewpoint.h"
#include "QAVMathPoint.h"
#include "QAVRef.h"

class QAVHOST_API QAVPickPath : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  using Reps = std::vector<QAVRef<QAV3DRep>>;
  QAVPickPath(Reps leafToRoot, QAV3DViewpoint* viewpoint, const QAVMathPoint& intersection,
              const QAVMathVector& normal, int subElement, double distance);
  // The same with representations shared with other paths (never null): a
  // pick makes its paths without copying them.
  QAVPickPath(std::shared_ptr<const Reps> leafToRoot, QAV3DViewpoint* viewpoint,
              const QAVMathPoint& intersection, const QAVMathVector& normal, int subElement,
              double distance);
  ~QAVPickPath() override;

  // Representations, 0 being the leaf hit and the last the root. Borrowed.
  int GetRepCount() const { return static_cast<int>(_reps->size()); }
  QAV3DRep* GetRep(int index) const;
  // Walks the path upwards: each call gives the next representation, first
  // the leaf, then its fathers; null past the root.
  QAV3DRep* NextFatherRep();
  QAV3DViewpoint* GetViewpoint() const { return _viewpoint.get(); }
  const QAVMathPoint& GetGlobalIntersection() const { return _intersection; }
  const QAVMathVector& GetGlobalNormal() const { return _normal; }  // unit, facing the eye
  // The primitive hit: its index in the leaf (QAV3DTessellatedRep::GetPrimitive).
  int GetCurrentSubElement() const { return _subElement; }
  double GetDistance() const { return _distance; }  // from the eye

 private:
  std::shared_ptr<const Reps> _reps;
  int _next = 0;
  QAVRef<QAV3DViewpoint> _viewpoint;
  QAVMathPoint _intersection;
  QAVMathVector _normal;
  int _subElement;
  double _distance;
};

#endif
