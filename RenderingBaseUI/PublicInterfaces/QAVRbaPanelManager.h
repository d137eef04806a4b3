// The registry of the rendering workbench's open panels, one per process.
//
// Every panel (a dialog command) registers under a small id (0 to 53; larger
// ids are refused everywhere) with the 3D window it belongs to; the same id may
// be registered several times. Commands ask whether a panel is open, fetch it,
// close it, and ask the manager to propagate a change to the interested panels
// as a named event (QAVRbaUIEvents), sent through the callback manager of the
// host's current layout; without a current layout or callback manager nothing
// is sent and the result is S_OK. The manager also keeps the virtual navigation
// object of each 3D window, follows the background of the viewer of the current
// window to keep the setting "DomeImage" up to date, and holds display flags
// that panels share and that only go one way.
//
// Ids with a role here: 2 the ambience panel, 5 the camera panel (it matches
// any window), 6 and 44 the live camera panels, 14 the texture drop target,
// 21 and 28 the ambience general panel and the one attached to it, 40 to 42 the
// panels of a custom background, 47 the camera listener. Ids 2, 5, 27, 32, 40
// and 45 are bound to their window in IsPanelOpen; any other id is open in every
// window once registered.
//
// Panels are not owned: a panel is destroyed only by ClosePanel and
// CloseAllPanels (RequestDelayedDestruction). Virtual navigation objects are held
// with a reference of their entry. Interactive thread only.
#ifndef QAVRbaPanelManager_h
#define QAVRbaPanelManager_h

#include <cstddef>
#include <cstdint>
#include <vector>

#include "QAVBaseUnknown.h"
#include "QAVCallbackManager.h"
#include "QAVRbaUIExport.h"
#include "QAVRef.h"
#include "QAVString.h"
#include "QAVUnicodeString.h"

class QAVCommand;
class QAVFrmWindow;
class QAVVizViewer;

class QAVRBAUI_API QAVRbaPanelManager : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // The manager, created on the first call; whenever the viewer callbacks are
  // not set up it sets them up first (on the viewer of the current window, if
  // there is one then).
  static QAVRbaPanelManager* GetPanelManager();

  // Registers (id, panel, window) after the others. E_FAIL for a null panel or
  // window or an id above 53. No duplicate check.
  HRESULT AddPanel(int id, QAVCommand* panel, QAVFrmWindow* window);
  // The first panel of that id registered on the window (for id 5, on any
  // window); null when none, for a null window or an id above 53.
  QAVCommand* GetPanel(int id, QAVFrmWindow* window);
  // At the first registration of the id: true for an id that is not bound to its
  // window; for a bound one, true if it is this window's, else the scan goes on.
  bool IsPanelOpen(int id, QAVFrmWindow* window);
  // Finds the registration as GetPanel does, asks the panel to destroy itself
  // and removes the registration. E_FAIL when there is none.
  HRESULT ClosePanel(int id, QAVFrmWindow* window);
  // Removes, without closing, the first registration of the id if it is the
  // window's (any window for id 5). When the first one belongs to another window
  // nothing is removed and the result is still S_OK. E_FAIL when the id is not
  // registered at all (or for a null window, an id above 53).
  HRESULT RemovePanel(int id, QAVFrmWindow* window);
  // Closes and removes only the first registration of the id, whatever its
  // window. E_FAIL when there is none or for an id above 53.
  HRESULT CloseAllPanels(int id);
  // Moves every camera panel (id 5) of oldWindow to newWindow.
  HRESULT ChangeVoodooWindow(QAVFrmWindow* oldWindow, QAVFrmWindow* newWindow);

  // Virtual navigation objects, one per window (the first entry of a window
  // counts). AddVNav holds a reference; CloseVNav resets the viewpoint of the
  // window's object and releases it. E_FAIL for null arguments or no entry.
  HRESULT AddVNav(QAVBaseUnknown* vnav, QAVFrmWindow* window);
  QAVBaseUnknown* GetVNav(QAVFrmWindow* window);
  HRESULT CloseVNav(QAVFrmWindow* window);

  // Display flags: each starts at its initial value and can only be set once.
  bool HdrDropInfoPanelDisplayed() const { return _hdrDropInfoPanelDisplayed; }
  void SetHdrDropInfoPanelDisplayState() { _hdrDropInfoPanelDisplayed = true; }
  bool InfosPanelDisplayed() const { return _infosPanelDisplayed; }
  void SetInfosPanelDisplayState() { _infosPanelDisplayed = true; }
  bool IsItCamSelectPanelFirstOpen() const { return _camSelectPanelFirstOpen; }
  void SetCamSelectPanelFirstOpen() { _camSelectPanelFirstOpen = false; }
  // Counts the views unification instances; set back to 0 when the viewer dies.
  int GetViewsUnificationInstantiation() const { return _viewsUnificationCount; }
  void ViewUnificationInstantiate() { ++_viewsUnificationCount; }

  // Attaches the panel 28 of the current window to its panel 21 (snap area 6),
  // when both are there.
  void AttachToAmbianceGeneralPanel();
  // Sends TEXTURE_DROPPED_BEGIN. Always S_OK.
  HRESULT StartDragAndDropAction(QAVFrmWindow* window);

  // Propagations. Each returns S_OK when there is nothing to do and E_FAIL for a
  // null window where noted.
  HRESULT PropagateAmbienceChange(QAVFrmWindow* window);             // AMBIENCE_CHANGED
  HRESULT PropagateAmbienceCreation(QAVFrmWindow* window);           // AMBIENCE_CREATED
  HRESULT PropagateAmbienceDelete(QAVFrmWindow* window);             // AMBIENCE_DELETED
  HRESULT PropagateAmbienceModification(QAVFrmWindow* window);       // AMBIENCE_MODIFIED
  HRESULT PropagateAmbienceWorkbenchStacking(QAVFrmWindow* window);  // AMBIENCE_WORKBENCH_STACKED
  HRESULT PropagateSceneChange(QAVFrmWindow* window);                // SCENE_CHANGED
  // TEXTURE_DROPPED with a file drop record of `path` when a panel 14 is
  // registered; a null window sends nothing (S_OK).
  HRESULT PropagateDragAndDropAction(const QAVUnicodeString& path, QAVFrmWindow* window);
  HRESULT PropagateVoodooParameterModification(QAVFrmWindow* window);  // VOODOO_MODIFIED
  HRESULT PropagateVoodooEVModification(QAVFrmWindow* window);         // VOODOO_EV_MODIFIED
  // Tells the ambience updater of a camera change (flag 1); sends nothing.
  HRESULT PropagateApertureModification(QAVFrmWindow* window);
  // Tells the ambience updater of a depth-of-field change; sends nothing.
  HRESULT PropagateDOF();
  // kind: 1 aperture, 2 speed, 3 autofocus, 4 ISO, 5 zoom mode, 6 exposure
  // aperture. A camera panel (5) on the window gets the events of kinds 1 to 4,
  // a camera listener (47) on any window those of kinds 1 to 6 (so an event may
  // be sent twice); then the ambience updater is told (flag), except for kind 5.
  HRESULT PropagateCameraParameterModification(int kind, unsigned char flag, QAVFrmWindow* window);

  ~QAVRbaPanelManager() override;
  QAVRbaPanelManager(const QAVRbaPanelManager&) = delete;
  QAVRbaPanelManager& operator=(const QAVRbaPanelManager&) = delete;

 private:
  QAVRbaPanelManager();
  friend struct QAVRbaPanelManagerAccess;

  struct Registration {
    int id;
    QAVCommand* panel;
    QAVFrmWindow* window;
    std::uint64_t serial;  // tells a registration from an equal one
  };
  struct VNav {
    QAVFrmWindow* window;
    QAVRef<QAVBaseUnknown> object;
  };

  void Init();
  void BackgroundChanged();
  void ViewerDestroyed();
  void StopObservingViewer(QAVVizViewer* viewer);
  // The first registration found as GetPanel finds it, or -1.
  int FindPanel(int id, QAVFrmWindow* window) const;
  bool HasPanel(int id) const;  // registered on any window
  bool HasPanelOn(int id, const QAVFrmWindow* window) const;
  HRESULT Send(const char* event);
  // Asks the panel of the registration at `index` to go, then removes that
  // registration, wherever it is by then: the panel may unregister itself
  // meanwhile.
  void Close(std::size_t index);
  HRESULT SendIfAmbiencePanel(QAVFrmWindow* window, const char* event, bool needsPanel);

  std::vector<Registration> _panels;
  std::uint64_t _nextSerial = 0;
  std::vector<VNav> _vnavs;
  QAVVizViewer* _observedViewer = nullptr;
  QAVCallback _backgroundCallback = 0;
  QAVCallback _destroyedCallback = 0;
  bool _hdrDropInfoPanelDisplayed = false;
  bool _infosPanelDisplayed = false;
  bool _camSelectPanelFirstOpen = true;
  void* _reserved = nullptr;
  int _viewsUnificationCount = 0;

  static QAVRbaPanelManager* _pPanelManager;
  static bool _initDone;
};

#endif
