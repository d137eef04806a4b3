// Finding files: whether a path names a directory, the files of a directory
// filtered by extension, and where a backplate image or an ambience texture
// named only by its file name lies.
//
// The searches walk the graphic resource directories of "QAVGraphicPath" (read
// when the library loads, split on ":"), then fall back on a directory stored in
// the system setting repository "RenderingLiveSettings". Only the entries from
// the first up to, but not including, the last one of the graphic path list are
// searched: a list of one directory is not searched at all and the search goes
// straight to the fallback. Paths are joined as text with "/", without
// normalising repeated separators.
#ifndef QAVRbaPathAndFileServices_h
#define QAVRbaPathAndFileServices_h

#include "QAVListValQAVUnicodeString.h"
#include "QAVRbaUIExport.h"
#include "QAVTypes.h"
#include "QAVUnicodeString.h"

class QAVRBAUI_API QAVRbaPathAndFileServices {
 public:
  // Sets `isDirectory` to 0, then reads the status of directory + name: S_OK with
  // `isDirectory` 1 for a directory and 0 otherwise, or E_FAIL (and 0) when the
  // status cannot be read.
  static HRESULT GetFileInfo(const QAVUnicodeString& directory, const QAVUnicodeString& name,
                             int& isDirectory);

  // The bare names of the files (not the subdirectories) of `directory`, in the
  // order of the directory reader, as a new list that the caller deletes; an
  // empty list when the directory cannot be read. With extensions, a name is kept
  // when one of them, in all lower case or in all upper case, occurs in its last
  // four characters: "jpg" keeps a.jpg and b.JPG but not c.Jpg.
  static QAVListValQAVUnicodeString* GetListOfDirectoryFile(const char* directory,
                                                            QAVListValQAVUnicodeString& extensions);

  // Sets `foundPath` to the first existing candidate, for each searched graphic
  // directory d: d/base.ext (extension in lower case), d/base.EXT (upper case),
  // d/backplates/fileName; then, when "BackplatePath" of "RenderingLiveSettings"
  // is not empty, that directory/base.ext in lower case only. Leaves `foundPath`
  // untouched when nothing is found or the name is empty.
  static void RetreiveBackplatePath(const QAVUnicodeString& fileName, QAVUnicodeString& foundPath);

  // The same for ambience textures: d/fileName, d/ambiences/fileName, then the
  // directory of "AmbiencePath" + "/" + fileName.
  static void RetreiveTexturePath(const QAVUnicodeString& fileName, QAVUnicodeString& foundPath);

  QAVRbaPathAndFileServices() = delete;
};

#endif
