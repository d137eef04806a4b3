// Fuzz target of the packaged content file reader: arbitrary bytes are a
// package file. A package is read whole or refused with a reason naming it; a
// read package lists only files it holds, within the inflation limits.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "QAVContentPackage.h"

namespace {

void Check(bool condition) {
  if (!condition) __builtin_trap();
}

const std::string& ScratchFile() {
  static const std::string path = [] {
    const char* tmp = std::getenv("TMPDIR");
    std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/qav-orlix-fuzz-XXXXXX";
    const int fd = mkstemp(pattern.data());
    if (fd < 0) __builtin_trap();
    close(fd);
    return pattern;
  }();
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string& path = ScratchFile();
  FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) return 0;
  const bool written = std::fwrite(data, 1, size, file) == size;
  if (std::fclose(file) != 0 || !written) return 0;

  QAVContentPackage::Limits limits;
  limits.maxTotalBytes = 8u << 20;
  limits.ratio = 100;
  limits.allowance = 1u << 20;
  QAVContentPackage package;
  std::string error;
  if (package.Open(path, limits, error) == S_OK) {
    Check(package.GetInflatedSize() <= limits.maxTotalBytes);
    Check(package.GetArchiveSize() == size);
    for (const QAVContentPackage::Object& object : package.GetObjects()) {
      Check(!object.id.empty());
      for (const std::string& name : object.files) {
        Check(QAVContentPackage::IsValidEntryName(name));
        Check(package.GetFile(name) != nullptr);
      }
    }
  } else {
    Check(error.rfind(path + ": ", 0) == 0);
    Check(package.GetObjects().empty());
  }
  return 0;
}
