// The snap manipulator: slides a placement frame over the surfaces of the
// scene with the pointer. While the pointer hovers or drags over geometry it
// takes the picked point and surface normal, builds an orthonormal frame whose
// Z axis is the normal turned away from the eye, shows it as a small plane and
// arrow gizmo (when the setting "LightManipMode" of "RenderingOptionsSettings"
// is not 0), and tells its subscribers where the frame is: a
// QAVRbaSnapManipulatorNotification sent through the command's callback
// manager (GetDefaultCallbackManager) with event 0 (begin of a drag), 1 (drag
// step), 2 (end of a drag) or 3 (hover step), under the event name
// QAVRbaSnapManipulator::NOTIFICATION().
//
// Made with new, owned by the host like every command; it ends with
// RequestDelayedDestruction. Outside the ambience workbench, lights, cameras,
// walls, environments and the turntable are never snapped to.
#ifndef QAVRbaSnapManipulator_h
#define QAVRbaSnapManipulator_h

#include "QAVCommand.h"
#include "QAVIPrdObject.h"
#include "QAVMathDirectionf.h"
#include "QAVMathPointf.h"
#include "QAVRbaUIExport.h"
#include "QAVRef.h"
#include "QAVViewer.h"

class QAV3DBagRep;
class QAVPathElement;
class QAVSelector;
class QAVSysSettingRepository;
class QAVTrace;

class QAVRBAUI_API QAVRbaSnapManipulator : public QAVCommand {
  QAV_DECLARE_CLASS
 public:
  QAVRbaSnapManipulator();
  // Member-wise: the copy shares the selector, path, gizmo, viewer, settings
  // and edited root of the original (each reference counted once more).
  QAVRbaSnapManipulator(const QAVRbaSnapManipulator& other);
  QAVRbaSnapManipulator& operator=(const QAVRbaSnapManipulator& other);
  ~QAVRbaSnapManipulator() override;

  // The event name of the notifications sent.
  static const char* NOTIFICATION() { return "QAVRbaSnapManipulatorNotification"; }

  // The gizmo (one reference for the caller), or null when "LightManipMode"
  // is 0 or the settings repository is missing.
  QAVRef<QAV3DBagRep> CreateRep();
  // The root product of the current editor, or null.
  QAVIPrdObject_var GetEditedRoot();
  // Recomputes the frame from a notification; 1 when it was applied, else 0.
  int UpdatePosition(QAVCommand* sender, QAVNotification* notification);

  // The selector's callbacks.
  void MoveCB(QAVCommand* sender, QAVNotification* notification, void* data);
  void BeginManipulateCB(QAVCommand* sender, QAVNotification* notification, void* data);
  void ManipulateCB(QAVCommand* sender, QAVNotification* notification, void* data);
  void EndManipulateCB(QAVCommand* sender, QAVNotification* notification, void* data);

  // The frame as it stands.
  const QAVMathDirectionf& GetNormal() const { return _normal; }
  const QAVMathPointf& GetOrigin() const { return _origin; }
  // The gizmo, the selector, the viewer and the selector's path (borrowed;
  // null when none).
  QAV3DBagRep* GetFeedbackRep() const { return _feedback.get(); }
  QAVSelector* GetSelector() const { return _selector.get(); }
  QAVViewer* GetViewer() const { return _viewer.get(); }
  QAVPathElement* GetPathElement() const { return _path.get(); }

  // The class-wide trace (not owned); the constructor resets it to null.
  static QAVTrace* GetTrace();
  static void SetTrace(QAVTrace* trace);

 private:
  void Notify(QAVCommand* sender, QAVNotification* notification, int event);
  void Follow(QAVCommand* sender, QAVNotification* notification, int successCursor, int event);

  QAVRef<QAVSelector> _selector;
  QAVRef<QAVPathElement> _path;
  QAVRef<QAV3DBagRep> _feedback;
  QAVRef<QAVViewer> _viewer;  // held so that the gizmo can leave it safely
  QAVIPrdObject_var _editedRoot;
  QAVMathDirectionf _normal;
  QAVMathPointf _origin;
  QAVSysSettingRepository* _settings = nullptr;
  std::uint64_t _callbacks[4] = {0, 0, 0, 0};
};

#endif
