// Fuzz target of the message catalog reader: arbitrary bytes are a catalog
// file, whose messages are built with parameters. Every lookup gives either the
// catalog's text or the default, and building never fails.
#include <stdlib.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "QAVHostDriver.h"
#include "QAVMsgCatalog.h"

namespace {

// One session of the substitute host for the whole run; each input restarts it,
// as a new process would find the file.
QAVHostDriver& Driver() {
  static QAVHostDriver* const driver = new QAVHostDriver;
  return *driver;
}

namespace fs = std::filesystem;

void Check(bool condition) {
  if (!condition) __builtin_trap();
}

// A resource directory for the run, in memory when the system offers one, removed
// at exit.
class ScratchDir {
 public:
  ScratchDir() {
    const fs::path base = fs::exists("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
    std::string pattern = (base / "qav-catalog-fuzz-XXXXXX").string();
    if (!::mkdtemp(pattern.data())) std::abort();
    fs::create_directories(fs::path(pattern) / "msgcatalog");
    ::setenv("QAVHOST_RESOURCE_PATH", pattern.c_str(), 1);
    _path = pattern;
  }
  ~ScratchDir() {
    std::error_code ec;
    fs::remove_all(_path, ec);
  }
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;
  const std::string& Path() const { return _path; }

 private:
  std::string _path;
};

const std::string& ResourceDir() {
  static const ScratchDir dir;
  return dir.Path();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string path = ResourceDir() + "/msgcatalog/Fuzz.catalog";
  if (FILE* file = std::fopen(path.c_str(), "wb")) {
    if (size) (void)std::fwrite(data, 1, size, file);
    std::fclose(file);
  }
  Driver().Restart();

  const QAVUnicodeString parameters[] = {"one", "{2}", "three {1}"};
  const QAVUnicodeString fallback("default {1}");
  for (const char* key : {"Title", "Resolution", "Padded", "k", "=", ""}) {
    QAVUnicodeString raw;
    const bool found = QAVMsgCatalog::GetText("Fuzz", key, raw);
    const QAVUnicodeString message =
        QAVMsgCatalog::BuildMessage("Fuzz", key, parameters, 3, fallback);
    if (!found) Check(message.str() == "default one");
    if (found && raw.str().find('{') == std::string::npos) Check(message.str() == raw.str());
  }
  return 0;
}
