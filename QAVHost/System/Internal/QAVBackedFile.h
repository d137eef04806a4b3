// A file that backs one of the host's persisted stores (setting and preference
// repositories, the rendering configuration) and that several processes may
// save at the same time.
//
// Saves are serialised between processes by an advisory lock (flock) on
// "<file>.lock", which is created beside the file and never removed. Under the
// lock a save re-reads the file as the other processes left it, merges its own
// changes into that content and replaces the file atomically (QAVAtomicFile).
// So a save never loses what another process saved, a reader (who takes no
// lock) sees either the old or the new file, and a process killed in the middle
// of a save leaves the old file; the kernel releases its lock, and the next save
// removes the temporary file it left ("<file>.tmp.*": only a saver holding the
// lock makes one, so any found under the lock is an orphan).
//
// A file that cannot be read or does not follow its format is reported on
// standard error (once for the same problem), reads as empty and is moved aside
// as "<file>.corrupt" before a save replaces it: a bad file is never silently
// overwritten.
#ifndef QAVBackedFile_h
#define QAVBackedFile_h

#include <functional>
#include <string>
#include <string_view>

#include "QAVHostExport.h"

namespace qavstore {

class QAVHOST_API BackedFile {
 public:
  // `kind` names the file in messages ("settings file", ...). Problems go to
  // standard error, one line each, prefixed "qavhost: ".
  BackedFile(std::string path, std::string kind) : _path(std::move(path)), _kind(std::move(kind)) {}
  const std::string& Path() const { return _path; }

  // The file's content as it is now, and whether it exists. False, with the
  // problem reported, when it exists but cannot be read.
  bool Read(std::string& content, bool& exists);
  // Reports that the content read is not valid; the next save keeps it aside.
  void ReportCorrupt(const std::string& reason);

  // Saves under the lock: re-reads the file, passes its content (null when the
  // file is missing or unreadable) to `merge`, which may call ReportCorrupt, and
  // writes what `merge` returns. False, with a line on standard error and the
  // file unchanged, when the lock cannot be had within ten seconds or the file
  // cannot be written.
  bool Update(const std::function<std::string(const std::string* current)>& merge);

 private:
  bool Write(std::string_view content);
  void RemoveOrphans() const;
  void Report(const std::string& problem);

  std::string _path;
  std::string _kind;
  std::string _lastReport;  // the last problem reported, not repeated
  bool _keepAside = false;
};

}  // namespace qavstore

#endif
