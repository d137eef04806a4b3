#include "QAVManipulator.h"

#include <algorithm>

#include "QAV3DRep.h"
#include "QAVCallbackManager.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVPointerEvent.h"
#include "QAVViewer.h"
#include "QAVViewerEvent.h"

QAV_IMPLEMENT_CLASS(QAVManipulator, QAVCommand, "UserInterface");
QAV_IMPLEMENT_CLASS(QAVSelector, QAVManipulator, "UserInterface");

const char* QAVManipulator::GetQAVMove() { return "QAVMove"; }
const char* QAVManipulator::GetQAVBeginManipulate() { return "QAVBeginManipulate"; }
const char* QAVManipulator::GetQAVManipulate() { return "QAVManipulate"; }
const char* QAVManipulator::GetQAVEndManipulate() { return "QAVEndManipulate"; }

QAVManipulator::QAVManipulator(QAVCommand* father, const char* name) : QAVCommand(father, name) {
  const QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout();
  const QAVFrmWindow* window = layout ? layout->GetCurrentWindow() : nullptr;
  _viewer = QAVRef<QAVViewer>(window ? window->GetViewer() : nullptr);
  if (!_viewer) return;
  QAVCallbackManager* callbacks = _viewer->GetCallbackManager();
  for (const char* event : {QAVPointerEvent::POINTER_MOVED(), QAVPointerEvent::POINTER_PRESSED(),
                            QAVPointerEvent::POINTER_RELEASED()})
    _listening.push_back(callbacks->AddCallback(
        event, [this](const char* name, void* data, QAVNotification*, void*, QAVCallback) {
          if (data) OnPointer(name, *static_cast<const QAVPointerEvent*>(data));
        }));
}

QAVManipulator::~QAVManipulator() {
  if (_viewer)
    for (const std::uint64_t id : _listening)
      _viewer->GetCallbackManager()->RemoveCallback(id);
}

void QAVManipulator::Destroy() {
  if (_destroyed) return;
  _destroyed = true;
  if (_viewer)
    for (const std::uint64_t id : _listening)
      _viewer->GetCallbackManager()->RemoveCallback(id);
  _listening.clear();
  _attached.clear();
  _dragging = false;
  RequestDelayedDestruction();
}

void QAVManipulator::AttachTo(QAV3DRep* rep) {
  if (rep && std::find(_attached.begin(), _attached.end(), QAVRef(rep)) == _attached.end())
    _attached.emplace_back(rep);
}

void QAVManipulator::DetachFrom(QAV3DRep* rep) { std::erase(_attached, QAVRef(rep)); }

bool QAVManipulator::Takes(const QAVPointerEvent& pointer) const {
  if (pointer.paths.empty() || _attached.empty()) return true;
  const QAVPickPath& nearest = *pointer.paths.front();
  for (int i = 0; i < nearest.GetRepCount(); ++i)
    if (std::find(_attached.begin(), _attached.end(), QAVRef(nearest.GetRep(i))) != _attached.end())
      return true;
  return false;
}

void QAVManipulator::Send(const char* event, const QAVPointerEvent& pointer) {
  QAVPickPath* under = pointer.paths.empty() ? nullptr : pointer.paths.front().get();
  auto data =
      QAVMakeRef<QAVViewerEvent>(_viewer.get(), pointer.x, pointer.y, pointer.button, under);
  auto notification = QAVMakeRef<QAVVueNotification>(data.get());
  // The manipulator may be destroyed by what its subscribers do.
  const QAVRef<QAVManipulator> self(this);
  GetCallbackManager()->DispatchCallbacks(event, notification.get(), nullptr);
}

void QAVManipulator::OnPointer(const char* event, const QAVPointerEvent& pointer) {
  if (_destroyed) return;
  const std::string_view name(event);
  if (name == QAVPointerEvent::POINTER_PRESSED()) {
    if (_dragging || !Takes(pointer)) return;
    _dragging = true;
    _button = pointer.button;
    Send(GetQAVBeginManipulate(), pointer);
  } else if (name == QAVPointerEvent::POINTER_RELEASED()) {
    if (!_dragging || pointer.button != _button) return;
    _dragging = false;
    Send(GetQAVEndManipulate(), pointer);
  } else if (_dragging) {
    Send(GetQAVManipulate(), pointer);
  } else if (Takes(pointer)) {
    Send(GetQAVMove(), pointer);
  }
}

QAVSelector::QAVSelector(QAVCommand* father, const char* name, QAV3DRep* /*rep*/)
    : QAVManipulator(father, name) {}

QAVSelector::~QAVSelector() = default;
