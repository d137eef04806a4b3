// Atomic replacement of a whole file, used by every store the host persists
// (setting repositories, preference repositories, the rendering configuration).
//
// Write puts the new content in a temporary file of the same directory
// ("<file>.tmp.XXXXXX"), flushes it to disk, renames it over the target and
// flushes the directory. Whatever happens during the save (an error, a full disk,
// the process killed), the target holds either its old or its new content. On a
// reported failure the temporary file is removed.
#ifndef QAVAtomicFile_h
#define QAVAtomicFile_h

#include <cstddef>
#include <string>
#include <string_view>

#include "QAVHostExport.h"

class QAVHOST_API QAVAtomicFile {
 public:
  // Replaces the file at `path` by `content`, creating the directories above it
  // when needed. False on failure, with `error` (when given) telling what failed
  // and why; the file at `path` is then untouched. A new file gets the
  // permissions of any file the process creates (0666 less the umask); a
  // replaced file keeps its own.
  static bool Write(const std::string& path, std::string_view content,
                    std::string* error = nullptr);

  // Moves a file that must not be overwritten (a corrupt store) out of the way,
  // to "<path>.corrupt", or "<path>.corrupt.2", ".3"... when that name is taken.
  // Returns the new path, or an empty string (and `error`) on failure.
  static std::string MoveAside(const std::string& path, std::string* error = nullptr);

  // The stages of a save at which an interruption can strike (the substitute's
  // driver simulates them: QAVHostDriver::FailAtomicWrites).
  enum class Stage {
    None,       // no simulated failure
    Open,       // the temporary file cannot be created
    WriteData,  // writing fails once `afterBytes` bytes are in the temporary file
    Sync,       // flushing the temporary file fails
    Rename,     // the rename over the target fails
  };

 private:
  friend class QAVHostDriver;
  // Makes every following Write fail at `stage` until cleared (Stage::None).
  static void SimulateFailure(Stage stage, std::size_t afterBytes);
};

#endif
