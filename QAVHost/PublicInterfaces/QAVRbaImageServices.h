// The rendering framework's image services: the helpers its modules share for
// image files and the directories that hold them.
#ifndef QAVRbaImageServices_h
#define QAVRbaImageServices_h

#include "QAVHostExport.h"
#include "QAVListValQAVUnicodeString.h"
#include "QAVUnicodeString.h"

class QAVHOST_API QAVRbaImageServices {
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

  QAVRbaImageServices() = delete;
};

#endif
