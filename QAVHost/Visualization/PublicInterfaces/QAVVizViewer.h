// The visualisation viewer behind a 3D viewer: it owns the scene's background
// (the infinite environment) and announces its changes and its destruction on
// its callback manager.
#ifndef QAVVizViewer_h
#define QAVVizViewer_h

#include "QAVViewer.h"

class QAVHOST_API QAVVizViewer : public QAVViewer {
  QAV_DECLARE_CLASS
 public:
  // Sent with the viz viewer as data and no notification when the background
  // changes.
  static const char* VIEWER_BACKGROUND_CHANGED();
  // Sent with the viz viewer as data and no notification from its destructor.
  // Receivers must not take a reference to the viewer.
  static const char* VIEWER_DESTROYED();

  explicit QAVVizViewer(const char* name = nullptr);
  ~QAVVizViewer() override;

  // The name of the root of the infinite environment shown as background (empty
  // when none).
  const QAVString& GetInfiniteEnvironmentRootName() const { return _environmentRoot; }
  // Changes the background and sends VIEWER_BACKGROUND_CHANGED, even when the
  // name is the same, as the host does for every new background.
  void SetInfiniteEnvironmentRootName(const QAVString& name);

  // The part of the graphic area that a picture can use, in pixels (an overlay
  // band may take the rest). Leaves the arguments as they are while no usable
  // area was set: the whole area is usable.
  void GetUsableArea(float& width, float& height) const;
  void SetUsableArea(float width, float height);

 private:
  QAVString _environmentRoot;
  bool _hasUsableArea = false;
  float _usableWidth = 0.0F;
  float _usableHeight = 0.0F;
};

#endif
