// Internal helpers of the library's file searches: the graphic resource
// directories they walk and the existence test they use.
#ifndef QAVRbaGraphicPath_h
#define QAVRbaGraphicPath_h

#include "QAVListValQAVUnicodeString.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVUnicodeString.h"

namespace qavrba {

// Paths composed by the library are joined with this separator.
inline constexpr const char* kPathSeparator = "/";

// The graphic directories the searches walk: the entries of "QAVGraphicPath"
// (read at load), from the first up to but not including the last, so that a
// list of one directory is not searched at all. Empty when the variable is unset.
QAVListValQAVUnicodeString SearchedGraphicDirectories();
// Whether "QAVGraphicPath" was set at load.
bool HasGraphicPath();
// Whether a file exists (the host's access test in existence mode).
bool Exists(const QAVUnicodeString& path);
// `directory` + "/" + `name`, as text.
QAVUnicodeString Join(const QAVUnicodeString& directory, const QAVUnicodeString& name);
// The text stored under `key` in its system setting repository, or empty when
// the repository or the value is missing.
QAVUnicodeString LiveSystemSetting(const QAVRbaRenderingSettings::Key<QAVUnicodeString>& key);

}  // namespace qavrba

#endif
