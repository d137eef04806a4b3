// The host's file system services, on POSIX.
//
// Paths are UTF-8 byte strings handed to the file system unchanged; names with
// blanks, non-ASCII characters and names of up to 255 bytes work. A path that the
// system cannot take (empty, holding a NUL byte, too long) simply fails: no call
// here crashes on an odd path, and none throws.
#ifndef QAVFileServices_h
#define QAVFileServices_h

#include <cstdint>

#include "QAVHostExport.h"
#include "QAVListValQAVUnicodeString.h"
#include "QAVTypes.h"
#include "QAVUnicodeString.h"

// Mode bits of QAVStatInfo::mode: the kind of file in the high bits, the POSIX
// permission bits (0777) in the low ones.
inline constexpr unsigned int QAV_S_IFMT = 0xF000;
inline constexpr unsigned int QAV_S_IFDIR = 0x4000;
inline constexpr unsigned int QAV_S_IFREG = 0x8000;

// Modes of _QAVFileAccess, combinable: 0 tests existence only.
inline constexpr int QAV_ACCESS_EXISTS = 0;
inline constexpr int QAV_ACCESS_WRITE = 2;
inline constexpr int QAV_ACCESS_READ = 4;

// The separator QAVMakePath joins with and the separator of path lists.
inline constexpr char QAV_PATH_SEPARATOR = '/';
inline constexpr char QAV_PATH_LIST_SEPARATOR = ':';

struct QAVStatInfo {
  unsigned int mode = 0;          // QAV_S_IFDIR / QAV_S_IFREG | permission bits
  std::int64_t size = 0;          // bytes
  std::int64_t modifiedTime = 0;  // seconds since 1970-01-01 UTC
};

// `directory` + "/" + `name`. No separator is added when `directory` is empty or
// already ends with "/"; nothing else is normalised.
QAVHOST_API QAVUnicodeString QAVMakePath(const QAVUnicodeString& directory,
                                         const QAVUnicodeString& name);

// The status of a file, following symbolic links. S_OK and `info` filled, or
// E_FAIL and `info` untouched when the status cannot be read.
QAVHOST_API HRESULT QAVGetFileInfo(const QAVUnicodeString& path, QAVStatInfo& info);

// Directory reading. QAVOpenDirectory gives a handle (null and E_FAIL when the
// directory cannot be opened); QAVReadDirectory gives the entries one by one in
// the system's order, "." and ".." included: S_OK with `name` set, S_FALSE at the
// end, E_FAIL on a read error (`name` untouched at the end and on error). Every
// handle opened is closed with QAVCloseDirectory; a null handle is accepted.
struct QAVDirectory;
QAVHOST_API HRESULT QAVOpenDirectory(const QAVUnicodeString& path, QAVDirectory*& directory);
QAVHOST_API HRESULT QAVReadDirectory(QAVDirectory* directory, QAVUnicodeString& name);
QAVHOST_API void QAVCloseDirectory(QAVDirectory* directory);

// 0 when `path` exists and allows `mode` (QAV_ACCESS_...), -1 otherwise. `flags`
// is the host's and is not used here.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the host's name for this test
QAVHOST_API int _QAVFileAccess(const QAVUnicodeString& path, int mode, int flags);

// Creates a directory and its missing parents (permissions 0777 less the umask).
// S_OK when the directory exists afterwards, E_FAIL otherwise (for instance when
// a file of that name is in the way).
QAVHOST_API HRESULT QAVMkdir(const QAVUnicodeString& path);

// Splits a path at its last separator (a slash or a backslash): `folder` is what comes
// before it (without it) and `name` what follows. A path without a separator is
// all name, with an empty folder; "/name" has the folder "".
QAVHOST_API void QAVSplitPath(const QAVUnicodeString& path, QAVUnicodeString& folder,
                              QAVUnicodeString& name);

// The temporary directory: $TMPDIR when set and not empty, "/tmp" otherwise,
// without a trailing "/".
QAVHOST_API QAVUnicodeString QAVGetTempDirectory();

// Splits a path list on ":" into `paths` (which is emptied first). Empty entries
// (from "::", or a leading or trailing ":") are dropped, so every element names
// a directory; the order is kept and duplicates are kept. A null or empty list
// gives an empty result.
QAVHOST_API void QAVSplitPathList(const char* list, QAVListValQAVUnicodeString& paths);

// Finds `relativePath` (folders separated by "/") in the directories of the
// search path held by the environment variable `pathVariable` (a ":" list, as
// "QAVStartupPath"): S_OK with `found` = the first directory + "/" +
// `relativePath` that exists; E_FAIL and `found` untouched when none does, the
// variable is unset or an argument is null or empty.
QAVHOST_API HRESULT QAVFindPath(const char* pathVariable, const QAVUnicodeString& relativePath,
                                QAVUnicodeString& found);

#endif
