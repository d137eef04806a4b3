// The host's viewers. QAVViewer is the viewer a window shows, with its own
// callback manager for the events it sends; QAV3DViewer is a 3D viewer, which
// may hold the visualisation viewer (QAVVizViewer) that draws its scene.
#ifndef QAVViewer_h
#define QAVViewer_h

#include <vector>

#include "QAVEventSubscriber.h"
#include "QAVRef.h"
#include "QAVString.h"

class QAVCallbackManager;
class QAVGraphicWindow;
class QAVPickPath;
class QAV3DRep;
class QAVFrmWindow;

class QAVHOST_API QAVViewer : public QAVEventSubscriber {
  QAV_DECLARE_CLASS
 public:
  explicit QAVViewer(const char* name = nullptr);
  QAVViewer(const QAVViewer&) = delete;
  QAVViewer& operator=(const QAVViewer&) = delete;
  ~QAVViewer() override;

  const QAVString& GetName() const { return _name; }
  // Never null.
  QAVCallbackManager* GetCallbackManager() const { return _callbacks.get(); }
  // The window that shows this viewer (not owned), or null.
  QAVFrmWindow* GetFrmWindow() const { return _window; }

  // The graphic window the viewer draws in (never null), and its size in pixels.
  QAVGraphicWindow* GetSupport() const { return _support.get(); }
  void GetGraphicSize(float& width, float& height) const;

  // The pointer's shape over the graphic area, by the host's cursor numbers
  // (0 the default; 3 a snap target, 14 a drag under way, 15 no target).
  int GetCursor() const { return _cursor; }
  void SetCursor(int cursor) { _cursor = cursor; }

  // Representations shown over the scene (gizmos, feedback), in their order:
  // the viewer holds a reference. AddRep: E_INVALIDARG for null, S_FALSE when
  // shown already. RemoveRep: E_FAIL when not shown.
  HRESULT AddRep(QAV3DRep* rep);
  HRESULT RemoveRep(QAV3DRep* rep);
  int GetRepCount() const { return static_cast<int>(_reps.size()); }
  QAV3DRep* GetRep(int index) const;  // 0-based, borrowed; null out of range

  // Asks for the view to be drawn again; the substitute counts the requests.
  void Draw() { ++_redraws; }
  int GetRedrawCount() const { return _redraws; }

  // Picks at the pixel (x, y) of the graphic area (from its top left corner)
  // with a box of boxWidth by boxHeight pixels around it: `paths` receives every
  // pick path met, nearest first (it is emptied first). `style` is the host's
  // picking style (the first, 0, is the only one). E_FAIL for a viewer without
  // a scene or an empty box; S_OK, possibly with no path, otherwise.
  virtual HRESULT Pick(int x, int y, int boxWidth, int boxHeight, int style,
                       std::vector<QAVRef<QAVPickPath>>& paths);

 private:
  friend class QAVFrmWindow;

  QAVString _name;
  QAVRef<QAVCallbackManager> _callbacks;
  QAVRef<QAVGraphicWindow> _support;
  QAVFrmWindow* _window = nullptr;
  int _cursor = 0;
  std::vector<QAVRef<QAV3DRep>> _reps;
  int _redraws = 0;
};

#endif
