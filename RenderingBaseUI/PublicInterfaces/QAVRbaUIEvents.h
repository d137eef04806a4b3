// The named events that the rendering workbench's panels, commands and context
// bars exchange through the callback manager of the current layout.
//
// Each accessor returns the name of a meta-class created on its first call
// ("QAVRbaUIEvents" + EVENT + "Evt", derived from QAVNotification) and kept for
// the life of the process: every call returns the same pointer, so receivers may
// compare names by pointer or by text.
#ifndef QAVRbaUIEvents_h
#define QAVRbaUIEvents_h

#include "QAVEventSubscriber.h"
#include "QAVRbaUIExport.h"

class QAVRBAUI_API QAVRbaUIEvents : public QAVEventSubscriber {
  QAV_DECLARE_CLASS
 public:
  QAVRbaUIEvents();
  ~QAVRbaUIEvents() override;

  static const char* AMBIENCE_CHANGED();
  static const char* AMBIENCE_CREATED();
  static const char* AMBIENCE_DELETED();
  static const char* AMBIENCE_MODIFIED();
  static const char* AMBIENCE_WORKBENCH_STACKED();
  static const char* ANIMATION_DURATION_CHANGED();
  static const char* ANIMATION_FRAMERATE_CHANGED();
  static const char* CAMERA_ANIMATION_CREATED();
  static const char* CAMERA_APERTURE_MODIFIED();
  static const char* CAMERA_SPEED_MODIFIED();
  static const char* CAMERA_AUTOFOCUS_MODIFIED();
  static const char* CAMERA_ISO_MODIFIED();
  static const char* CAMERA_ZOOM_MODE_MODIFIED();
  static const char* EXPOSURE_APERTURE_MODIFIED();
  static const char* CONTEXT_BAR_BEGIN_ACTION();
  static const char* CONTEXT_BAR_END_ACTION();
  static const char* SCENE_CHANGED();
  static const char* TEXTURE_DROPPED_BEGIN();
  // Sent with a QAVRbaUIFileDropNotification.
  static const char* TEXTURE_DROPPED();
  // "Voodoo" is the camera view of the live renderer.
  static const char* VOODOO_MODIFIED();
  static const char* VOODOO_EV_MODIFIED();
  static const char* VOODOO_APERTURE_MODIFIED();
  static const char* VOODOO_SPEED_MODIFIED();
  static const char* VOODOO_FOCAL_MODIFIED();
  static const char* VOODOO_FOCUSDISTANCE_MODIFIED();
  static const char* VOODOO_ROLL_MODIFIED();
};

#endif
