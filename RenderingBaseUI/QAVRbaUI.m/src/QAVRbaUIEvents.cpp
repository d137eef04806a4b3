#include "QAVRbaUIEvents.h"

#include <string>

#include "QAVMetaClass.h"
#include "QAVNotification.h"

QAV_IMPLEMENT_CLASS(QAVRbaUIEvents, QAVEventSubscriber, "RenderingBaseUI");

QAVRbaUIEvents::QAVRbaUIEvents() = default;
QAVRbaUIEvents::~QAVRbaUIEvents() = default;

namespace {
// The event's meta-class, created if needed; its name is the event name.
// Meta-classes live as long as the process, so the pointer stays valid.
const char* CreateEventName(const char* event) {
  const std::string name = std::string("QAVRbaUIEvents") + event + "Evt";
  const QAVMetaClass* meta =
      QAVMetaClass::Create(name.c_str(), QAVNotification::MetaObject(), "RenderingBaseUI");
  return meta ? meta->GetName() : nullptr;
}
}  // namespace

// The function-local static makes the first call create the meta-class once,
// even when several threads make it at the same time.
#define QAV_RBA_UI_EVENT(Event)                              \
  const char* QAVRbaUIEvents::Event() {                      \
    static const char* const name = CreateEventName(#Event); \
    return name;                                             \
  }

QAV_RBA_UI_EVENT(AMBIENCE_CHANGED)
QAV_RBA_UI_EVENT(AMBIENCE_CREATED)
QAV_RBA_UI_EVENT(AMBIENCE_DELETED)
QAV_RBA_UI_EVENT(AMBIENCE_MODIFIED)
QAV_RBA_UI_EVENT(AMBIENCE_WORKBENCH_STACKED)
QAV_RBA_UI_EVENT(ANIMATION_DURATION_CHANGED)
QAV_RBA_UI_EVENT(ANIMATION_FRAMERATE_CHANGED)
QAV_RBA_UI_EVENT(CAMERA_ANIMATION_CREATED)
QAV_RBA_UI_EVENT(CAMERA_APERTURE_MODIFIED)
QAV_RBA_UI_EVENT(CAMERA_SPEED_MODIFIED)
QAV_RBA_UI_EVENT(CAMERA_AUTOFOCUS_MODIFIED)
QAV_RBA_UI_EVENT(CAMERA_ISO_MODIFIED)
QAV_RBA_UI_EVENT(CAMERA_ZOOM_MODE_MODIFIED)
QAV_RBA_UI_EVENT(EXPOSURE_APERTURE_MODIFIED)
QAV_RBA_UI_EVENT(CONTEXT_BAR_BEGIN_ACTION)
QAV_RBA_UI_EVENT(CONTEXT_BAR_END_ACTION)
QAV_RBA_UI_EVENT(SCENE_CHANGED)
QAV_RBA_UI_EVENT(TEXTURE_DROPPED_BEGIN)
QAV_RBA_UI_EVENT(TEXTURE_DROPPED)
QAV_RBA_UI_EVENT(VOODOO_MODIFIED)
QAV_RBA_UI_EVENT(VOODOO_EV_MODIFIED)
QAV_RBA_UI_EVENT(VOODOO_APERTURE_MODIFIED)
QAV_RBA_UI_EVENT(VOODOO_SPEED_MODIFIED)
QAV_RBA_UI_EVENT(VOODOO_FOCAL_MODIFIED)
QAV_RBA_UI_EVENT(VOODOO_FOCUSDISTANCE_MODIFIED)
QAV_RBA_UI_EVENT(VOODOO_ROLL_MODIFIED)
