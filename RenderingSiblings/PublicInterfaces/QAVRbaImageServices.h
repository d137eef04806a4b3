// The rendering framework's image services: the helpers its modules share for
// image files and the directories that hold them.
#ifndef QAVRbaImageServices_h
#define QAVRbaImageServices_h

#include "QAVFrmWindow.h"
#include "QAVListValQAVUnicodeString.h"
#include "QAVRbaSiblingsExport.h"
#include "QAVUnicodeString.h"

class QAVMMColorProfile;

class QAVRBASIBLINGS_API QAVRbaImageServices {
 public:
  // Splits a path list on ":" into `paths` (emptied first), in order. Empty
  // entries are dropped: "a::b:" gives a, b. A null list gives an empty list.
  static void ExtractPathList(const char* list, QAVListValQAVUnicodeString& paths);

  // Splits a file name at the last "." of its final component (the text after
  // the last "/" or "\"): `base` is everything before that dot, directories
  // included, and `extension` everything after it, without the dot.
  //   "sky.HDR"      -> "sky",       "HDR"
  //   "a.b.hdr"      -> "a.b",       "hdr"  (only the last dot counts)
  //   "sky"          -> "sky",       ""     (no dot)
  //   "sky."         -> "sky",       ""     (a trailing dot is dropped)
  //   ".hdr"         -> ".hdr",      ""     (a leading dot starts a name, not an
  //                                          extension)
  //   "dir.d/sky"    -> "dir.d/sky", ""     (dots of directories do not count)
  static void SplitPath(const QAVUnicodeString& name, QAVUnicodeString& base,
                        QAVUnicodeString& extension);

  // The colour profile of the screen that shows a native window: a reference
  // for the caller to release, or null for the handle 0 (no window). A screen
  // is sRGB unless SetScreenProfile said otherwise for that window.
  static QAVMMColorProfile* GetScreenProfile(QAVNativeWindowHandle windowHandle);
  // Plays the platform's display settings: the window is shown on a screen of
  // this profile (a reference is kept; null brings back the sRGB default).
  static void SetScreenProfile(QAVNativeWindowHandle windowHandle, QAVMMColorProfile* profile);

  QAVRbaImageServices() = delete;
};

#endif
