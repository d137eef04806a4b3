#include "QAVRbaPanelManager.h"

#include <cstdint>

#include "QAV3DViewer.h"
#include "QAVCommand.h"
#include "QAVCommandHeader.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVIRbaAmbienceUpdate.h"
#include "QAVMetaClass.h"
#include "QAVProcessState.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVRbaUIEvents.h"
#include "QAVRbaUIFileDropNotification.h"
#include "QAVSettingRepository.h"
#include "QAVVidFraPanel.h"
#include "QAVVirtualNavigation.h"
#include "QAVVizViewer.h"

QAV_IMPLEMENT_CLASS(QAVRbaPanelManager, QAVBaseUnknown, "RenderingBaseUI");

QAVRbaPanelManager* QAVRbaPanelManager::_pPanelManager = nullptr;
bool QAVRbaPanelManager::_initDone = false;

struct QAVRbaPanelManagerAccess {
  // The manager lives until the library is unloaded.
  static void Unload() {
    delete QAVRbaPanelManager::_pPanelManager;
    QAVRbaPanelManager::_pPanelManager = nullptr;
    QAVRbaPanelManager::_initDone = false;
  }
};
QAV_REGISTER_RESET(QAVRbaPanelManager, QAVRbaPanelManagerAccess::Unload);

namespace {

constexpr int kMaxId = 53;
constexpr int kCameraPanel = 5;
// Ids bound to their window in IsPanelOpen: 2, 5, 27, 32, 40 and 45.
constexpr std::uint64_t kWindowBound = 0x210108000024ULL;

bool Matches(const QAVFrmWindow* stored, const QAVFrmWindow* window) {
  return stored && stored->IsEqual(window);
}

QAVFrmWindow* CurrentWindow() {
  QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout();
  return layout ? layout->GetCurrentWindow() : nullptr;
}

// The viz viewer behind the viewer of the current window, or null.
QAVVizViewer* CurrentVizViewer() {
  QAVFrmWindow* window = CurrentWindow();
  auto* viewer = window ? dynamic_cast<QAV3DViewer*>(window->GetViewer()) : nullptr;
  return viewer ? viewer->GetVizViewer() : nullptr;
}

// The ambience updater component, created for one call and released after it.
QAVRef<QAVIRbaAmbienceUpdate> AmbienceUpdater() {
  void* object = nullptr;
  if (FAILED(QAVInstantiateComponent("QAVRdgAmbienceUpdate", IID_QAVIRbaAmbienceUpdate, &object)))
    return {};
  return QAVRef<QAVIRbaAmbienceUpdate>::Adopt(
      static_cast<QAVIRbaAmbienceUpdate*>(static_cast<QAVBaseUnknown*>(object)));
}

void TellCameraChange(unsigned char flag) {
  if (const auto updater = AmbienceUpdater()) updater->OnCameraChange(flag);
}

QAVCallbackManager* LayoutCallbacks() {
  QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout();
  return layout ? layout->GetCallbackManager() : nullptr;
}

}  // namespace

QAVRbaPanelManager::QAVRbaPanelManager() = default;

QAVRbaPanelManager::~QAVRbaPanelManager() {
  // Only the callbacks of the viewer observed are ours to remove.
  QAVVizViewer* viewer = CurrentVizViewer();
  if (viewer && viewer == _observedViewer) StopObservingViewer(viewer);
  _observedViewer = nullptr;
  _reserved = nullptr;
  _panels.clear();
  _vnavs.clear();
}

QAVRbaPanelManager* QAVRbaPanelManager::GetPanelManager() {
  if (!_pPanelManager) _pPanelManager = new QAVRbaPanelManager;
  if (!_initDone) _pPanelManager->Init();
  return _pPanelManager;
}

void QAVRbaPanelManager::Init() {
  // Set up once, even when no viewer exists yet: a manager made before the
  // first 3D window observes no viewer until the observed one is destroyed.
  _initDone = true;
  QAVVizViewer* viewer = CurrentVizViewer();
  if (!viewer) return;
  QAVCallbackManager* callbacks = viewer->GetCallbackManager();
  _backgroundCallback =
      callbacks->AddCallback(QAVVizViewer::VIEWER_BACKGROUND_CHANGED(),
                             [](const char*, void*, QAVNotification*, void*, QAVCallback) {
                               if (_pPanelManager) _pPanelManager->BackgroundChanged();
                             });
  _destroyedCallback =
      callbacks->AddCallback(QAVVizViewer::VIEWER_DESTROYED(),
                             [](const char*, void*, QAVNotification*, void*, QAVCallback) {
                               if (_pPanelManager) _pPanelManager->ViewerDestroyed();
                             });
  _observedViewer = viewer;
}

void QAVRbaPanelManager::StopObservingViewer(QAVVizViewer* viewer) {
  viewer->GetCallbackManager()->RemoveCallback(_backgroundCallback);
  viewer->GetCallbackManager()->RemoveCallback(_destroyedCallback);
  _backgroundCallback = _destroyedCallback = 0;
}

void QAVRbaPanelManager::BackgroundChanged() {
  QAVFrmWindow* window = CurrentWindow();
  QAVViewer* viewer = window ? window->GetViewer() : nullptr;
  if (!viewer) return;
  auto* viewer3D = dynamic_cast<QAV3DViewer*>(viewer);
  const QAVString name = viewer3D ? viewer3D->GetInfiniteEnvironmentRootName() : QAVString();

  if (name.str() != "Custom" && FindPanel(2, window) >= 0) {
    // The panels that only serve a custom background go away.
    for (const int id : {40, 41, 42})
      if (auto* panel = dynamic_cast<QAVVidFraPanel*>(GetPanel(id, window)))
        panel->SetVisibleFlag(false);
    if (QAVCommandHeader* header =
            QAVCommandHeader::GetHeaderFromList("QAVRdgAmbienceEditorSelectCmd"))
      header->StartCommand();
  }

  QAVString imageName;
  QAVString imagePath;
  QAVRbaLiveUIServices::RetrieveAssociatedAmbience(name, imageName, imagePath);
  QAVSettingRepository* settings =
      QAVRbaRenderingSettings::Open(QAVRbaRenderingSettings::kLiveDomeImage);
  if (settings && !imagePath.IsEmpty()) {
    QAVRbaRenderingSettings::Write(*settings, QAVRbaRenderingSettings::kLiveDomeImage, imagePath);
    settings->SaveRepository();
  }
}

void QAVRbaPanelManager::ViewerDestroyed() {
  // Keep this order: the index goes on after a removal, so the entry that
  // moves into the removed one's place is passed over in this scan.
  const std::size_t count = _vnavs.size();
  for (std::size_t i = 0; i < count && i < _vnavs.size(); ++i) {
    if (!_vnavs[i].window) continue;
    if (auto* navigation = dynamic_cast<QAVVirtualNavigation*>(_vnavs[i].object.get()))
      navigation->ResetViewpoint();
    _vnavs.erase(_vnavs.begin() + static_cast<std::ptrdiff_t>(i));
  }
  if (_observedViewer) {
    StopObservingViewer(_observedViewer);
    _initDone = false;
    _observedViewer = nullptr;
  }
  _viewsUnificationCount = 0;
}

int QAVRbaPanelManager::FindPanel(int id, QAVFrmWindow* window) const {
  for (std::size_t i = 0; i < _panels.size(); ++i) {
    if (_panels[i].id != id) continue;
    if (id == kCameraPanel || Matches(_panels[i].window, window)) return static_cast<int>(i);
  }
  return -1;
}

bool QAVRbaPanelManager::HasPanelOn(int id, const QAVFrmWindow* window) const {
  for (const Registration& registration : _panels)
    if (registration.id == id && Matches(registration.window, window)) return true;
  return false;
}

bool QAVRbaPanelManager::HasPanel(int id) const {
  for (const Registration& registration : _panels)
    if (registration.id == id) return true;
  return false;
}

HRESULT QAVRbaPanelManager::AddPanel(int id, QAVCommand* panel, QAVFrmWindow* window) {
  if (!panel || !window || id > kMaxId) return E_FAIL;
  _panels.push_back({id, panel, window, _nextSerial++});
  return S_OK;
}

QAVCommand* QAVRbaPanelManager::GetPanel(int id, QAVFrmWindow* window) {
  if (id > kMaxId || !window) return nullptr;
  const int found = FindPanel(id, window);
  return found < 0 ? nullptr : _panels[static_cast<std::size_t>(found)].panel;
}

bool QAVRbaPanelManager::IsPanelOpen(int id, QAVFrmWindow* window) {
  if (!window || id > kMaxId || id < 0) return false;
  const bool bound = id < 64 && ((kWindowBound >> id) & 1U) != 0;
  for (const Registration& registration : _panels) {
    if (registration.id != id) continue;
    if (!bound || Matches(registration.window, window)) return true;
  }
  return false;
}

HRESULT QAVRbaPanelManager::ClosePanel(int id, QAVFrmWindow* window) {
  if (!window || id > kMaxId || _panels.empty()) return E_FAIL;
  const int found = FindPanel(id, window);
  if (found < 0) return E_FAIL;
  Close(static_cast<std::size_t>(found));
  return S_OK;
}

void QAVRbaPanelManager::Close(std::size_t index) {
  const std::uint64_t serial = _panels[index].serial;
  if (QAVCommand* panel = _panels[index].panel) panel->RequestDelayedDestruction();
  std::erase_if(_panels, [serial](const Registration& r) { return r.serial == serial; });
}

HRESULT QAVRbaPanelManager::RemovePanel(int id, QAVFrmWindow* window) {
  if (!window || id > kMaxId || _panels.empty()) return E_FAIL;
  // Only the first registration of the id is considered (keep this).
  for (auto it = _panels.begin(); it != _panels.end(); ++it) {
    if (it->id != id) continue;
    if (id == kCameraPanel || Matches(it->window, window)) _panels.erase(it);
    return S_OK;
  }
  return E_FAIL;
}

HRESULT QAVRbaPanelManager::CloseAllPanels(int id) {
  if (id > kMaxId) return E_FAIL;
  for (std::size_t i = 0; i < _panels.size(); ++i) {
    if (_panels[i].id != id) continue;
    Close(i);
    return S_OK;
  }
  return E_FAIL;
}

HRESULT QAVRbaPanelManager::ChangeVoodooWindow(QAVFrmWindow* oldWindow, QAVFrmWindow* newWindow) {
  if (!oldWindow || !newWindow) return E_FAIL;
  for (Registration& registration : _panels)
    if (registration.id == kCameraPanel && Matches(registration.window, oldWindow))
      registration.window = newWindow;
  return S_OK;
}

HRESULT QAVRbaPanelManager::AddVNav(QAVBaseUnknown* vnav, QAVFrmWindow* window) {
  if (!vnav || !window) return E_FAIL;
  _vnavs.push_back({window, QAVRef<QAVBaseUnknown>(vnav)});
  return S_OK;
}

QAVBaseUnknown* QAVRbaPanelManager::GetVNav(QAVFrmWindow* window) {
  for (const VNav& entry : _vnavs)
    if (Matches(entry.window, window)) return entry.object.get();
  return nullptr;
}

HRESULT QAVRbaPanelManager::CloseVNav(QAVFrmWindow* window) {
  if (!window || _vnavs.empty()) return E_FAIL;
  for (auto it = _vnavs.begin(); it != _vnavs.end(); ++it) {
    if (!Matches(it->window, window)) continue;
    if (auto* navigation = dynamic_cast<QAVVirtualNavigation*>(it->object.get()))
      navigation->ResetViewpoint();
    _vnavs.erase(it);
    return S_OK;
  }
  return E_FAIL;
}

void QAVRbaPanelManager::AttachToAmbianceGeneralPanel() {
  QAVFrmWindow* window = CurrentWindow();
  if (!window) return;
  auto* general = dynamic_cast<QAVVidFraPanel*>(GetPanel(21, window));
  auto* attached = dynamic_cast<QAVVidFraPanel*>(GetPanel(28, window));
  if (general && attached) attached->AttachToWindow(general, 6, 0);
}

HRESULT QAVRbaPanelManager::Send(const char* event) {
  if (QAVCallbackManager* callbacks = LayoutCallbacks())
    callbacks->DispatchCallbacks(event, nullptr, nullptr);
  return S_OK;
}

HRESULT QAVRbaPanelManager::StartDragAndDropAction(QAVFrmWindow* /*window*/) {
  return Send(QAVRbaUIEvents::TEXTURE_DROPPED_BEGIN());
}

HRESULT QAVRbaPanelManager::SendIfAmbiencePanel(QAVFrmWindow* window, const char* event,
                                                bool needsPanel) {
  if (!window) return E_FAIL;
  const int found = FindPanel(2, window);
  if (found < 0) return S_OK;
  if (needsPanel && !_panels[static_cast<std::size_t>(found)].panel) return S_OK;
  return Send(event);
}

HRESULT QAVRbaPanelManager::PropagateAmbienceChange(QAVFrmWindow* window) {
  return SendIfAmbiencePanel(window, QAVRbaUIEvents::AMBIENCE_CHANGED(), false);
}
HRESULT QAVRbaPanelManager::PropagateAmbienceCreation(QAVFrmWindow* window) {
  return SendIfAmbiencePanel(window, QAVRbaUIEvents::AMBIENCE_CREATED(), false);
}
HRESULT QAVRbaPanelManager::PropagateAmbienceDelete(QAVFrmWindow* window) {
  return SendIfAmbiencePanel(window, QAVRbaUIEvents::AMBIENCE_DELETED(), false);
}
HRESULT QAVRbaPanelManager::PropagateAmbienceModification(QAVFrmWindow* window) {
  return SendIfAmbiencePanel(window, QAVRbaUIEvents::AMBIENCE_MODIFIED(), false);
}
HRESULT QAVRbaPanelManager::PropagateAmbienceWorkbenchStacking(QAVFrmWindow* window) {
  return SendIfAmbiencePanel(window, QAVRbaUIEvents::AMBIENCE_WORKBENCH_STACKED(), true);
}
HRESULT QAVRbaPanelManager::PropagateSceneChange(QAVFrmWindow* window) {
  return SendIfAmbiencePanel(window, QAVRbaUIEvents::SCENE_CHANGED(), false);
}

HRESULT QAVRbaPanelManager::PropagateDragAndDropAction(const QAVUnicodeString& path,
                                                       QAVFrmWindow* window) {
  if (!window || !HasPanel(14)) return S_OK;
  QAVCallbackManager* callbacks = LayoutCallbacks();
  if (!callbacks) return S_OK;
  auto* drop = new QAVRbaUIFileDropNotification(path);
  callbacks->DispatchCallbacks(QAVRbaUIEvents::TEXTURE_DROPPED(), drop, callbacks);
  drop->Release();
  return S_OK;
}

HRESULT QAVRbaPanelManager::PropagateVoodooParameterModification(QAVFrmWindow* window) {
  if (!window) return E_FAIL;
  if (!HasPanel(6) && !HasPanel(44)) return S_OK;
  return Send(QAVRbaUIEvents::VOODOO_MODIFIED());
}

HRESULT QAVRbaPanelManager::PropagateVoodooEVModification(QAVFrmWindow* window) {
  if (!window) return E_FAIL;
  TellCameraChange(1);
  if (!HasPanel(6) && !HasPanel(44)) return S_OK;
  return Send(QAVRbaUIEvents::VOODOO_EV_MODIFIED());
}

HRESULT QAVRbaPanelManager::PropagateApertureModification(QAVFrmWindow* /*window*/) {
  TellCameraChange(1);
  return S_OK;
}

HRESULT QAVRbaPanelManager::PropagateDOF() {
  if (const auto updater = AmbienceUpdater()) updater->OnDepthOfFieldChange();
  return S_OK;
}

HRESULT QAVRbaPanelManager::PropagateCameraParameterModification(int kind, unsigned char flag,
                                                                 QAVFrmWindow* window) {
  if (!window) return E_FAIL;
  QAVCallbackManager* callbacks = LayoutCallbacks();
  if (!callbacks) return S_OK;
  static const char* (*const events[])() = {
      QAVRbaUIEvents::CAMERA_APERTURE_MODIFIED,  QAVRbaUIEvents::CAMERA_SPEED_MODIFIED,
      QAVRbaUIEvents::CAMERA_AUTOFOCUS_MODIFIED, QAVRbaUIEvents::CAMERA_ISO_MODIFIED,
      QAVRbaUIEvents::CAMERA_ZOOM_MODE_MODIFIED, QAVRbaUIEvents::EXPOSURE_APERTURE_MODIFIED};
  const bool known = kind >= 1 && kind <= 6;
  if (known && kind <= 4 && HasPanelOn(kCameraPanel, window))
    callbacks->DispatchCallbacks(events[kind - 1](), nullptr, nullptr);
  if (known && HasPanel(47)) callbacks->DispatchCallbacks(events[kind - 1](), nullptr, nullptr);
  if (const auto updater = AmbienceUpdater())
    if (kind != 5) updater->OnCameraChange(flag);
  return S_OK;
}
