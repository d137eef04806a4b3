// A 3D viewer: a viewer that may hold a visualisation viewer.
#ifndef QAV3DViewer_h
#define QAV3DViewer_h

#include <memory>
#include <vector>

#include "QAV3DRep.h"
#include "QAV3DViewpoint.h"
#include "QAVPickPath.h"
#include "QAVViewDecoration.h"
#include "QAVViewer.h"
#include "QAVVizViewer.h"

class QAVRayCaster;

class QAVHOST_API QAV3DViewer : public QAVViewer {
  QAV_DECLARE_CLASS
 public:
  explicit QAV3DViewer(const char* name = nullptr);
  ~QAV3DViewer() override;

  // Borrowed; null when the viewer has none.
  QAVVizViewer* GetVizViewer() const { return _vizViewer.get(); }
  // Holds a reference to the new one (null removes it) and releases the old one.
  void SetVizViewer(QAVVizViewer* vizViewer);
  // The background root name of the viz viewer, empty without one.
  QAVString GetInfiniteEnvironmentRootName() const;
  // The main 3D viewpoint, from which the scene is seen (never null).
  QAV3DViewpoint* GetMain3DViewpoint() const { return _mainViewpoint.get(); }

  // The scene shown: the root bag of its representations (borrowed), or null.
  QAV3DBagRep* GetSceneRoot() const { return _root.get(); }
  // Shows a scene (a reference is held; null shows none). After changing the
  // representations of the scene shown, call SceneChanged.
  void SetSceneRoot(QAV3DBagRep* root);
  void SceneChanged();

  // Casts the rays of the box's pixels from the main viewpoint through the
  // scene's triangles; the box is centred on (x, y), so a 1 x 1 box casts the
  // ray through that very point (pixel (i, j) covers i..i+1, j..j+1 from the
  // graphic area's top left: its centre is i + 0.5, j + 0.5). Every leaf met
  // gives one path, at its nearest hit over the box's rays, nearest first (at
  // one distance, in the scene's order); parts that touch and decals lying on
  // a face are all listed. E_FAIL without a scene or for a box side outside
  // 1 to QAVGraphicWindow::kMaxWindowSide; S_OK (maybe no path) otherwise.
  HRESULT Pick(int x, int y, int boxWidth, int boxHeight, int style,
               std::vector<QAVRef<QAVPickPath>>& paths) override;
  // The ray of a point of the graphic area (in pixels from its top left), from
  // the eye of the main viewpoint, with a unit direction.
  void GetRay(double x, double y, QAVMathPoint& origin, QAVMathVector& direction) const;
  // The point of the graphic area where a point of the scene is seen (the
  // inverse of GetRay); false, leaving x and y, for a point not in front of
  // the eye.
  bool Project(const QAVMathPoint& point, double& x, double& y) const;

  // Decorations drawn over the scene (rulers...), in the order they were added;
  // the viewer holds a reference to each.
  HRESULT AddDecoration(QAVViewDecoration* decoration);     // E_INVALIDARG null, S_FALSE present
  HRESULT RemoveDecoration(QAVViewDecoration* decoration);  // E_FAIL when absent
  int GetDecorationCount() const { return static_cast<int>(_decorations.size()); }
  QAVViewDecoration* GetDecoration(int index) const;  // 0-based; null out of range

 private:
  QAVRef<QAVVizViewer> _vizViewer;
  QAVRef<QAV3DViewpoint> _mainViewpoint;
  QAVRef<QAV3DBagRep> _root;
  std::vector<QAVRef<QAVViewDecoration>> _decorations;
  // The ray caster over the scene, made on the first pick after a change.
  mutable std::unique_ptr<QAVRayCaster> _caster;
  // The main viewpoint's frame as rays and projections use it, for the
  // viewpoint and graphic size it was made from: made again when they change.
  struct Frame {
    QAVMathPoint eye, target;
    QAVMathVector up;
    double fieldOfView = -1.0;
    float width = -1.0F, height = -1.0F;
    QAVMathVector forward, right, upward;  // unit
    double halfHeight = 0.0;               // tan(field of view / 2)
  };
  mutable Frame _frame;
  const Frame& CurrentFrame() const;
  friend class QAVViewRenderer;
  const QAVRayCaster* Caster() const;
};

#endif
