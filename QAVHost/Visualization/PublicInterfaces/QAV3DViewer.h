// A 3D viewer: a viewer that may hold a visualisation viewer.
#ifndef QAV3DViewer_h
#define QAV3DViewer_h

#include "QAV3DViewpoint.h"
#include "QAVViewer.h"
#include "QAVVizViewer.h"

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

 private:
  QAVRef<QAVVizViewer> _vizViewer;
  QAVRef<QAV3DViewpoint> _mainViewpoint;
};

#endif
