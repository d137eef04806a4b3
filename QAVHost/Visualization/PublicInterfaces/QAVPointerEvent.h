// The pointer over a viewer: moved, pressed or released at a pixel of its
// graphic area. A viewer sends these events through its callback manager with
// the QAVPointerEvent as the dispatch's data, valid during the dispatch only;
// the event carries what lies under the pointer, picked with a 1 x 1 box.
#ifndef QAVPointerEvent_h
#define QAVPointerEvent_h

#include <vector>

#include "QAVHostExport.h"
#include "QAVPickPath.h"
#include "QAVRef.h"

struct QAVHOST_API QAVPointerEvent {
  static const char* POINTER_MOVED();
  static const char* POINTER_PRESSED();
  static const char* POINTER_RELEASED();

  double x = 0.0;  // pixels from the top left of the graphic area
  double y = 0.0;
  int button = 0;                          // 0 none (a move), 1 the first button, ...
  std::vector<QAVRef<QAVPickPath>> paths;  // under the pointer, nearest first
};

#endif
