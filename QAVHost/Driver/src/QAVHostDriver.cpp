#include "QAVHostDriver.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

#include "QAV3DViewer.h"
#include "QAVAdpPublicSecurityServices.h"
#include "QAVApplication.h"
#include "QAVAtomicFile.h"
#include "QAVCallbackManager.h"
#include "QAVCtxBarSwitch.h"
#include "QAVFrmContext.h"
#include "QAVFrmEditor.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVGraphicWindow.h"
#include "QAVMutex.h"
#include "QAVPLMConnectionService.h"
#include "QAVPLMRepository.h"
#include "QAVPointerEvent.h"
#include "QAVProcessState.h"
#include "QAVRulerDecoratedEditor.h"
#include "QAVSceneObjects.h"
#include "QAVSessionRecorder.h"
#include "QAVSysPreferenceRepository.h"
#include "QAVViewer.h"
#include "QAVVizViewer.h"

namespace {
std::atomic<QAVHostDriver*> current{nullptr};
}  // namespace

// What the driver made for the session: the scene shown and its window.
struct QAVHostDriver::State {
  QAVSceneDocument scene;
  QAVRef<QAVFrmWindow> window;
  QAVRef<QAV3DViewer> viewer;
};

QAVHostDriver::QAVHostDriver() : _state(std::make_unique<State>()) {
  QAVHostDriver* expected = nullptr;
  if (!current.compare_exchange_strong(expected, this)) {
    (void)std::fprintf(stderr, "qavhost: a second host driver while one is alive\n");
    std::abort();
  }
  ResetSession();
}

QAVHostDriver::~QAVHostDriver() {
  ResetSession();
  _state.reset();
  qavjournal::SetRecording(false);
  qavjournal::Clear();
  current = nullptr;
}

QAVHostDriver* QAVHostDriver::Current() { return current; }

void QAVHostDriver::ResetSession() {
  QAVProcessState::ResetAll();
  QAVAtomicFile::SimulateFailure(QAVAtomicFile::Stage::None, 0);
  QAVMutex::SetCreationFails(false);
  qavctxbar::SetUnavailable(false);
  QAVPLMRepository::SimulateUnopenable("");
  QAVPLMRepository::SimulateKillDuringImport(-1);
  QAVPLMConnectionService::ResetCurrentSpace();
  QAVAdpPublicSecurityServices::ResetToDefaults();
}

void QAVHostDriver::Restart() {
  QAVProcessState::ResetAll();
  *_state = State();
}

void QAVHostDriver::StartRecording() { qavjournal::SetRecording(true); }
void QAVHostDriver::StopRecording() { qavjournal::SetRecording(false); }
bool QAVHostDriver::IsRecording() const { return qavjournal::Recording(); }
std::vector<QAVJournalEntry> QAVHostDriver::GetJournal() const { return qavjournal::Entries(); }

std::vector<QAVJournalEntry> QAVHostDriver::GetJournal(std::string_view kind) const {
  std::vector<QAVJournalEntry> entries;
  for (QAVJournalEntry& entry : qavjournal::Entries())
    if (entry.kind == kind) entries.push_back(std::move(entry));
  return entries;
}

void QAVHostDriver::ClearJournal() { qavjournal::Clear(); }

int QAVHostDriver::Idle() { return QAVApplication::MainApplication()->ProcessPendingWork(); }

void QAVHostDriver::Resize(QAVViewer* viewer, float width, float height) {
  if (viewer) viewer->GetSupport()->Resize(width, height);
}

namespace {

void SendPointer(QAVViewer* viewer, const char* event, double x, double y, int button) {
  if (!viewer) return;
  QAVPointerEvent pointer;
  pointer.x = x;
  pointer.y = y;
  pointer.button = button;
  // Outside the graphic area nothing lies under the pointer.
  float width = 0.0F;
  float height = 0.0F;
  viewer->GetGraphicSize(width, height);
  if (x >= 0 && y >= 0 && x < width && y < height)
    viewer->Pick(static_cast<int>(x), static_cast<int>(y), 1, 1, 0, pointer.paths);
  viewer->GetCallbackManager()->DispatchCallbacks(event, nullptr, &pointer);
}

}  // namespace

void QAVHostDriver::PointerMove(QAVViewer* viewer, double x, double y) {
  SendPointer(viewer, QAVPointerEvent::POINTER_MOVED(), x, y, 0);
}

void QAVHostDriver::PointerPress(QAVViewer* viewer, double x, double y, int button) {
  SendPointer(viewer, QAVPointerEvent::POINTER_PRESSED(), x, y, button);
}

void QAVHostDriver::PointerRelease(QAVViewer* viewer, double x, double y, int button) {
  SendPointer(viewer, QAVPointerEvent::POINTER_RELEASED(), x, y, button);
}

void QAVHostDriver::TypeRulerValue(QAVRulerDecoratedEditor* editor, double value) {
  if (!editor) return;
  editor->SetValue(value);
  editor->GetCallbackManager()->DispatchCallbacks(
      QAVRulerDecoratedEditor::EDIT_MODIFY(), editor->GetVidEditModifyExtNotification(), editor);
}

HRESULT QAVHostDriver::OpenScene(const std::string& path, std::string& error) {
  QAVSceneDocument scene;
  if (FAILED(QAVSceneReader::Read(path, scene, error))) return E_FAIL;
  ShowScene(scene);
  return S_OK;
}

void QAVHostDriver::ShowScene(const QAVSceneDocument& scene) {
  QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout();
  if (!layout) {
    QAVFrmLayout::SetCurrentLayout(QAVMakeRef<QAVFrmLayout>().get());
    layout = QAVFrmLayout::GetCurrentLayout();
  }
  auto window = QAVMakeRef<QAVFrmWindow>("3D");
  auto viewer = QAVMakeRef<QAV3DViewer>("3D viewer");
  auto viz = QAVMakeRef<QAVVizViewer>("visualization viewer");
  viewer->SetVizViewer(viz.get());
  viewer->GetSupport()->Resize(scene.width, scene.height);
  viz->SetUsableArea(scene.usableWidth, scene.usableHeight);
  viz->SetInfiniteEnvironmentRootName(QAVString(scene.environment.c_str()));
  viewer->GetMain3DViewpoint()->Set(scene.eye, scene.target, scene.up, scene.fieldOfView);
  viewer->SetSceneRoot(scene.root.get());
  window->SetViewer(viewer.get());
  layout->AddWindow(window.get());
  layout->SetCurrentWindow(window.get());
  // The scene's workbench is the user's, and the editor's path runs from the
  // scene's document down to its root object, what the user edits.
  QAVFrmContext::SetContext(QAVMakeRef<QAVFrmContext>(scene.workbench.c_str()).get());
  auto editor = QAVMakeRef<QAVFrmEditor>();
  if (QAVModelObject* edited = scene.root ? scene.root->GetModelObject() : nullptr) {
    QAVPathElement path(QAVMakeRef<QAVModelObject>("QAVDocument", QAVUnicodeString("Scene")).get());
    path.AddChildElement(edited);
    editor->SetPathElement(path);
  }
  QAVFrmEditor::SetCurrentEditor(editor.get());
  _state->scene = scene;
  _state->window = window;
  _state->viewer = viewer;
}

const QAVSceneDocument* QAVHostDriver::GetScene() const {
  return _state->viewer ? &_state->scene : nullptr;
}

QAV3DViewer* QAVHostDriver::GetSceneViewer() const { return _state->viewer.get(); }

QAVRef<QAVOmbObjectInContext> QAVHostDriver::FindObject(const std::string& name) const {
  if (!_state->viewer) return nullptr;
  return QAVSceneObjects::Find(_state->scene, name);
}

int QAVHostDriver::GetCommandCount() const {
  return QAVApplication::MainApplication()->GetCommandCount();
}

QAVCommand* QAVHostDriver::FindCommand(const char* name) const {
  return QAVApplication::MainApplication()->FindCommand(name);
}

int QAVHostDriver::GetPendingDestructionCount() const {
  return QAVApplication::MainApplication()->GetPendingDestructionCount();
}

void QAVHostDriver::FailAtomicWrites(QAVAtomicFile::Stage stage, std::size_t afterBytes) {
  QAVAtomicFile::SimulateFailure(stage, afterBytes);
}

void QAVHostDriver::FailMutexCreation(bool fail) { QAVMutex::SetCreationFails(fail); }

void QAVHostDriver::FailPreferenceWrites(QAVSysPreferenceRepository* repository, bool fail) {
  if (repository) repository->SimulateWriteFailure(fail);
}

void QAVHostDriver::MakeRepositoryUnopenable(const std::string& name) {
  QAVPLMRepository::SimulateUnopenable(name);
}

void QAVHostDriver::KillDuringImport(int objects) {
  QAVPLMRepository::SimulateKillDuringImport(objects);
}

void QAVHostDriver::SetCollaborativeSpace(const std::string& name) {
  QAVPLMConnectionService::SetCurrentSpace(QAVString(name));
}

void QAVHostDriver::SetSecurityParameters(const std::string& first, const std::string& second,
                                          const std::string& third, const std::string& fourth) {
  QAVAdpPublicSecurityServices::SetParameters(QAVString(first), QAVString(second), QAVString(third),
                                              QAVString(fourth));
}

void QAVHostDriver::SetSecurityUnavailable(bool unavailable) {
  QAVAdpPublicSecurityServices::SetUnavailable(unavailable);
}

void QAVHostDriver::CaptureSession() {
  QAVSessionRecorder* recorder = QAVSessionRecorder::Create();
  recorder->_values.clear();
  recorder->_mode = QAVSessionRecorder::Mode::Capturing;
}

void QAVHostDriver::ReplaySession(const std::map<std::string, int>& values) {
  QAVSessionRecorder* recorder = QAVSessionRecorder::Create();
  recorder->_values = values;
  recorder->_mode = QAVSessionRecorder::Mode::Replaying;
}

void QAVHostDriver::StopSession() {
  QAVSessionRecorder::Create()->_mode = QAVSessionRecorder::Mode::Off;
}

std::map<std::string, int> QAVHostDriver::GetSessionValues() const {
  const QAVSessionRecorder* recorder = QAVSessionRecorder::GetRecorder();
  return recorder ? recorder->_values : std::map<std::string, int>();
}
