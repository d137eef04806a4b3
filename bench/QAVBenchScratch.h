// The scratch directory of a benchmark program: made on first use under the
// system's temporary directory and removed with everything in it when the
// program ends.
#ifndef QAVBenchScratch_h
#define QAVBenchScratch_h

#include <stdlib.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace qavbench {

class ScratchDir {
 public:
  ScratchDir() {
    std::error_code ec;
    std::string pattern = (std::filesystem::temp_directory_path(ec) / "qav-bench-XXXXXX").string();
    if (::mkdtemp(pattern.data())) _path = pattern;
  }
  ~ScratchDir() {
    std::error_code ec;
    if (!_path.empty()) std::filesystem::remove_all(_path, ec);
  }
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;
  const std::filesystem::path& path() const { return _path; }

 private:
  std::filesystem::path _path;
};

// The program's one scratch directory.
inline const std::filesystem::path& Scratch() {
  static const ScratchDir scratch;
  return scratch.path();
}

}  // namespace qavbench

#endif
