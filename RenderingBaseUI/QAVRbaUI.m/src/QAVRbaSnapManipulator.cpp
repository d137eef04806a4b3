#include "QAVRbaSnapManipulator.h"

#include <cstring>
#include <string_view>

#include "QAV3DRep.h"
#include "QAV3DViewer.h"
#include "QAVCallbackManager.h"
#include "QAVFrmContext.h"
#include "QAVFrmEditor.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVGraphicPrimitive.h"
#include "QAVI3DGeoVisu.h"
#include "QAVILinkableObject.h"
#include "QAVManipulator.h"
#include "QAVManipulatorOnPath.h"
#include "QAVModelObject.h"
#include "QAVPathElement.h"
#include "QAVPickPath.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVRbaSnapManipulatorNotification.h"
#include "QAVSysSettingRepository.h"
#include "QAVTrace.h"
#include "QAVViewerEvent.h"

QAV_IMPLEMENT_CLASS(QAVRbaSnapManipulator, QAVCommand, "RenderingBaseUI");

namespace {

QAVTrace* g_trace = nullptr;

constexpr const char* kAmbienceWorkbench = "RenderingAmbienceWorkbench";

// The viewer's cursors: a snap target under the pointer, a drag under way, no
// target.
constexpr int kHoverCursor = 3;
constexpr int kDragCursor = 14;
constexpr int kNoTargetCursor = 15;

// The gizmo's colour: a green that none of the scene's own colours comes near.
constexpr QAVGraphicAttributeSet kGizmoColour{40, 200, 90, 255};

QAVString WorkbenchName() {
  const QAVFrmContext* context = QAVFrmContext::GetContext();
  return context ? context->GetWorkbenchName() : QAVString();
}

bool InAmbienceWorkbench() { return WorkbenchName() == kAmbienceWorkbench; }

// The features that are never snapped to outside the ambience workbench.
bool NeverSnapped(const char* className) {
  static constexpr std::string_view kClasses[] = {
      "QAVRscNewLight",          "QAVCameraFeat",
      "QAVRscNewWall",           "QAVRscNewSphereEnvironment",
      "QAVRscNewBoxEnvironment", "QAVRscNewCylinderEnvironment",
      "QAVRscTurntable"};
  if (!className) return false;
  for (const std::string_view name : kClasses)
    if (name == className) return true;
  return false;
}

void Trace(int level, const char* text) {
  if (g_trace) g_trace->TraPrint(level, "%s", text);
}

}  // namespace

QAVTrace* QAVRbaSnapManipulator::GetTrace() { return g_trace; }
void QAVRbaSnapManipulator::SetTrace(QAVTrace* trace) { g_trace = trace; }

QAVRbaSnapManipulator::QAVRbaSnapManipulator() : QAVCommand() {
  g_trace = nullptr;
  _settings = QAVSysSettingRepository::GetRepository(
      QAVRbaRenderingSettings::kOptionsLightManipMode.repository);

  const QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout();
  const QAVFrmWindow* window = layout ? layout->GetCurrentWindow() : nullptr;
  _viewer = QAVRef<QAVViewer>(window ? window->GetViewer() : nullptr);

  _feedback = CreateRep();
  if (_feedback && _viewer) _viewer->AddRep(_feedback.get());

  if (!InAmbienceWorkbench()) {
    _editedRoot = GetEditedRoot();
    if (_editedRoot) _path = QAVMakeRef<QAVPathElement>(_editedRoot.get());
  } else if (_viewer) {
    // The whole viewer: its top element.
    const auto* viewer3D = dynamic_cast<const QAV3DViewer*>(_viewer.get());
    QAVBaseUnknown* top = viewer3D && viewer3D->GetSceneRoot()
                              ? static_cast<QAVBaseUnknown*>(viewer3D->GetSceneRoot())
                              : static_cast<QAVBaseUnknown*>(_viewer.get());
    _path = QAVMakeRef<QAVPathElement>(top);
  }

  // A command made with new belongs to the host (see QAVCommand.h); this one
  // shares it until Destroy hands it back.
  // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
  _selector = QAVRef<QAVSelector>(new QAVSelector(this, "selector"));

  if (_path && _selector && _editedRoot) {
    const auto attach =
        QAVMakeRef<QAVAddManipulatorOnPath>(_path.get(), _selector.get(), QAVI3DGeoVisu::ClassId());
    attach->SendTo(_editedRoot.get());
  }

  _callbacks[0] = AddAnalyseNotificationCB(_selector.get(), QAVManipulator::GetQAVMove(),
                                           &QAVRbaSnapManipulator::MoveCB, nullptr);
  _callbacks[1] = AddAnalyseNotificationCB(_selector.get(), QAVManipulator::GetQAVBeginManipulate(),
                                           &QAVRbaSnapManipulator::BeginManipulateCB, nullptr);
  _callbacks[2] = AddAnalyseNotificationCB(_selector.get(), QAVManipulator::GetQAVManipulate(),
                                           &QAVRbaSnapManipulator::ManipulateCB, nullptr);
  _callbacks[3] = AddAnalyseNotificationCB(_selector.get(), QAVManipulator::GetQAVEndManipulate(),
                                           &QAVRbaSnapManipulator::EndManipulateCB, nullptr);
}

QAVRbaSnapManipulator::QAVRbaSnapManipulator(const QAVRbaSnapManipulator& other) = default;

QAVRbaSnapManipulator& QAVRbaSnapManipulator::operator=(const QAVRbaSnapManipulator& other) =
    default;

QAVRbaSnapManipulator::~QAVRbaSnapManipulator() {
  Trace(2, "QAVRbaSnapManipulator::~QAVRbaSnapManipulator()");
  if (_selector) {
    for (const std::uint64_t callback : _callbacks)
      RemoveAnalyseNotificationCB(callback);
    if (_path && _editedRoot) {
      const auto detach = QAVMakeRef<QAVRemoveManipulatorOnPath>(_path.get(), _selector.get(),
                                                                 QAVI3DGeoVisu::ClassId());
      detach->SendTo(_editedRoot.get());
    }
    _selector->Destroy();
  }
  _selector = nullptr;
  _path = nullptr;
  if (_feedback && _viewer) _viewer->RemoveRep(_feedback.get());
  _feedback = nullptr;
  _viewer = nullptr;
  _settings = nullptr;
  _editedRoot = nullptr;
}

QAVRef<QAV3DBagRep> QAVRbaSnapManipulator::CreateRep() {
  Trace(2, "QAVRbaSnapManipulator::CreateRep()");
  int mode = 0;
  if (!_settings ||
      FAILED(QAVRbaRenderingSettings::ReadAttr(
          *_settings, QAVRbaRenderingSettings::kOptionsLightManipMode, mode)) ||
      mode == 0)
    return nullptr;
  auto bag = QAVMakeRef<QAV3DBagRep>();
  auto plane = QAVMakeRef<QAV3DCustomRep>();
  plane->AddGP(QAVMakeRef<QAV3DFixedPlanGP>(QAVMathPointf(0, 0, 0), QAVMathVectorf(1, 0, 0),
                                            QAVMathVectorf(0, 1, 0), 15.0F)
                   .get(),
               kGizmoColour);
  auto arrow = QAVMakeRef<QAV3DCustomRep>();
  arrow->AddGP(QAVMakeRef<QAV3DFixedArrowGP>(QAVMathPointf(0, 0, 0), QAVMathVectorf(0, 0, -1),
                                             15.0F, 5.0F, 0)
                   .get(),
               kGizmoColour);
  bag->AddChild(plane.get());
  bag->AddChild(arrow.get());
  return bag;
}

QAVIPrdObject_var QAVRbaSnapManipulator::GetEditedRoot() {
  const QAVFrmEditor* editor = QAVFrmEditor::GetCurrentEditor();
  if (!editor) return nullptr;
  const QAVPathElement path = editor->GetPathElement();
  const QAVBaseUnknown_var found = path.FindElement(QAVIPrdObject::ClassId());
  return QAVIPrdObject_var(dynamic_cast<QAVIPrdObject*>(found.get()));
}

int QAVRbaSnapManipulator::UpdatePosition(QAVCommand* sender, QAVNotification* notification) {
  if (!sender || !notification) return 0;
  auto* path = dynamic_cast<QAVPathElement*>(
      sender->SendCommandSpecificObject("QAVPathElement", notification));
  if (!path) return 0;

  if (!InAmbienceWorkbench()) {
    const QAVBaseUnknown_var linkable = path->FindElement(QAVILinkableObject::ClassId());
    const auto* feature = dynamic_cast<const QAVILinkableObject*>(linkable.get());
    const QAVModelObject* object = feature ? feature->GetObject() : nullptr;
    if (object && NeverSnapped(object->IsA())) return 0;
  }

  if (g_trace)
    g_trace->TraPrint(4, "QAVRbaSnapManipulator::UpdatePosition() notif=%s\n", notification->IsA());

  const auto* vue = dynamic_cast<QAVVueNotification*>(notification);
  const auto* event = vue ? dynamic_cast<QAVViewerEvent*>(vue->GetDataNotification()) : nullptr;
  if (event) {
    QAVPickPath* pick = event->GetPickPathUnder();
    if (!pick) {
      Trace(4, "QAVRbaSnapManipulator::UpdatePosition() pickPath=NULL\n");
      return 0;
    }
    const QAVMathPoint& hit = pick->GetGlobalIntersection();
    _origin = QAVMathPointf(static_cast<float>(hit.x), static_cast<float>(hit.y),
                            static_cast<float>(hit.z));
    const QAV3DRep* rep = pick->NextFatherRep();
    const int subElement = pick->GetCurrentSubElement();
    if (!rep) {
      Trace(4, "QAVRbaSnapManipulator::UpdatePosition() rep=NULL\n");
      return 0;
    }
    if (g_trace)
      g_trace->TraPrint(4, "QAVRbaSnapManipulator::UpdatePosition() rep=%s gp=%d\n", rep->IsA(),
                        subElement);
    const QAVGraphicPrimitive* primitive = nullptr;
    bool canonical = false;
    if (const auto* surface = dynamic_cast<const QAVSurfacicRep*>(rep)) {
      if (subElement < surface->GetPrimitiveCount()) primitive = surface->GetPrimitive(subElement);
    } else if (const auto* custom = dynamic_cast<const QAV3DCustomRep*>(rep)) {
      primitive = custom->GetPrimitive(subElement);
    } else if (const auto* tube = dynamic_cast<const QAV3DCylinderRep*>(rep)) {
      // Cylinders and curved pipes alike.
      primitive = tube->GetPrimitive(0);
    } else if (dynamic_cast<const QAV3DCanonicalRep*>(rep)) {
      canonical = true;
    }
    if (primitive || canonical) {
      if (primitive && g_trace)
        g_trace->TraPrint(4, "QAVRbaSnapManipulator::UpdatePosition() gp=%s\n", primitive->IsA());
      const QAVMathVector& n = pick->GetGlobalNormal();
      _normal.x = static_cast<float>(n.x);
      _normal.y = static_cast<float>(n.y);
      _normal.z = static_cast<float>(n.z);
    } else {
      Trace(4, "QAVRbaSnapManipulator::UpdatePosition() gp=NULL and isCanonicalRep=FALSE\n");
    }
  }

  // The frame, in single precision.
  QAVMathVectorf x(1.0F, 0.0F, 0.0F);
  QAVMathVectorf z = _normal;
  const QAVMathPointf o = _origin;
  if (const auto* viewer3D = dynamic_cast<const QAV3DViewer*>(_viewer.get())) {
    const QAVMathPoint& eye = viewer3D->GetMain3DViewpoint()->GetOrigin();
    const QAVMathPointf e(static_cast<float>(eye.x), static_cast<float>(eye.y),
                          static_cast<float>(eye.z));
    if ((e - o) * z > 0.0F) z = -z;  // away from the eye
  }
  if ((z.x == 1.0F || z.x == -1.0F) && z.y == 0.0F && z.z == 0.0F) x = QAVMathVectorf(0, 1, 0);
  QAVMathVectorf y = z ^ x;
  x = y ^ z;
  x.Normalize();
  y.Normalize();
  z.Normalize();
  static_cast<QAVMathVectorf&>(_normal) = z;

  if (_feedback) {
    _feedback->SetMatrix(QAV4x4Matrix(x, y, z, o));
    if (_viewer) _viewer->Draw();
  }
  return 1;
}

void QAVRbaSnapManipulator::Notify(QAVCommand* /*sender*/, QAVNotification* /*notification*/,
                                   int event) {
  QAVCallbackManager* manager = GetDefaultCallbackManager(this);
  if (!manager) return;
  const QAVMathVector normal(_normal.x, _normal.y, _normal.z);
  const QAVMathVector origin(_origin.x, _origin.y, _origin.z);
  const auto notification = QAVMakeRef<QAVRbaSnapManipulatorNotification>(event, normal, origin);
  manager->DispatchCallbacks(NOTIFICATION(), notification.get(), this);
}

void QAVRbaSnapManipulator::Follow(QAVCommand* sender, QAVNotification* notification,
                                   int successCursor, int event) {
  const int updated = UpdatePosition(sender, notification);
  if (_viewer) _viewer->SetCursor(updated ? successCursor : kNoTargetCursor);
  Notify(sender, notification, event);
}

void QAVRbaSnapManipulator::MoveCB(QAVCommand* sender, QAVNotification* notification,
                                   void* /*data*/) {
  Trace(2, "QAVRbaSnapManipulator::MoveCB()");
  Follow(sender, notification, kHoverCursor, 3);
}

void QAVRbaSnapManipulator::ManipulateCB(QAVCommand* sender, QAVNotification* notification,
                                         void* /*data*/) {
  Trace(2, "QAVRbaSnapManipulator::ManipulateCB()");
  Follow(sender, notification, kDragCursor, 1);
}

void QAVRbaSnapManipulator::BeginManipulateCB(QAVCommand* sender, QAVNotification* notification,
                                              void* /*data*/) {
  Trace(2, "QAVRbaSnapManipulator::BeginManipulateCB()");
  if (sender && notification) Notify(sender, notification, 0);
}

void QAVRbaSnapManipulator::EndManipulateCB(QAVCommand* sender, QAVNotification* notification,
                                            void* /*data*/) {
  Trace(2, "QAVRbaSnapManipulator::EndManipulateCB()");
  if (sender && notification) Notify(sender, notification, 2);
}
