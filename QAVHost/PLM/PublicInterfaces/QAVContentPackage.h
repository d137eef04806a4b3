// A packaged content file (".orlix"): materials, ambiences, humans or props
// shipped as one file and imported into a PLM repository.
//
// The file is a zip archive. At its root lies "manifest.json", which describes
// the content; the content's files lie beside it, under the names the manifest
// gives them ("/" separates folders). The manifest is a JSON object:
//
//   {
//     "format": "orlix",                 required, exactly this text
//     "version": 1,                      required, integer, exactly 1
//     "kind": "Material",                required: "Material", "Ambience",
//                                        "Human" or "Props"
//     "title": "Brushed metals",         required, text
//     "objects": [                       required, array (may be empty)
//       {
//         "id": "steel-01",              required, non-empty text, unique in
//                                        the package
//         "type": "Material",            required, text
//         "name": "Brushed steel",       required, text
//         "files": ["steel/albedo.png"], optional, array of entry names;
//                                        each must be a file of the
//                                        archive (not a folder entry
//                                        "name/"), listed once
//         "attributes": {"Finish": "Brushed"}
//                                        optional, object of text values
//       }
//     ]
//   }
//
// Members not listed are ignored. Entry names are relative: never empty, never
// starting with "/", without a "." or ".." component, an empty component, a
// backslash or a NUL. Archive entries that no object lists are allowed and
// ignored.
//
// Open reads only a regular file: a folder, a FIFO or a device is refused
// before anything is read from it. It reads and checks the whole package before
// giving anything back: the archive's structure, every entry's checksum (each is
// inflated to its end), the manifest, and the amount of data. A package may not inflate to more
// than Limits::maxTotalBytes, nor beyond max(Limits::allowance, Limits::ratio times the archive's
// size); both are counted on the bytes actually inflated, whatever the entries' headers claim. A
// refused package leaves the object empty, with an error naming the package and the reason.
#ifndef QAVContentPackage_h
#define QAVContentPackage_h

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "QAVHostExport.h"
#include "QAVTypes.h"

class QAVHOST_API QAVContentPackage {
 public:
  struct Object {
    std::string id;
    std::string type;
    std::string name;
    std::vector<std::string> files;  // entry names, in the manifest's order
    std::vector<std::pair<std::string, std::string>> attributes;  // sorted by name
  };

  struct Limits {
    std::uint64_t maxTotalBytes = std::uint64_t{1} << 30;  // 1 GiB inflated at most
    std::uint64_t ratio = 200;                             // inflated bytes per archive byte
    std::uint64_t allowance = std::uint64_t{1} << 20;      // always allowed (1 MiB)
  };

  // Reads the package at `path`. S_OK, or E_FAIL with `error` ("<path>: <reason>")
  // and the object emptied.
  HRESULT Open(const std::string& path, std::string& error);
  HRESULT Open(const std::string& path, const Limits& limits, std::string& error);

  // Writes the package of the folder `dir`, which holds "manifest.json" and the
  // files it lists, to `out` (replaced atomically: a temporary file renamed over
  // it). The manifest is checked as Open checks it, and every file it lists must
  // be a regular file of the folder. Only the manifest and the listed files go
  // into the archive. S_OK, or E_FAIL with `error` and `out` untouched.
  static HRESULT Pack(const std::string& dir, const std::string& out, std::string& error);

  const std::string& GetPath() const { return _path; }
  const std::string& GetKind() const { return _kind; }
  const std::string& GetTitle() const { return _title; }
  const std::vector<Object>& GetObjects() const { return _objects; }
  // The bytes of an entry the manifest lists, or null.
  const std::string* GetFile(const std::string& name) const;
  std::uint64_t GetArchiveSize() const { return _archiveSize; }
  std::uint64_t GetInflatedSize() const { return _inflatedSize; }

  // Whether an entry name is acceptable (see above).
  static bool IsValidEntryName(const std::string& name);

 private:
  void Clear();

  std::string _path;
  std::string _kind;
  std::string _title;
  std::vector<Object> _objects;
  std::map<std::string, std::string> _files;
  std::uint64_t _archiveSize = 0;
  std::uint64_t _inflatedSize = 0;
};

#endif
