// Fuzz target of the rendering configuration reader: arbitrary bytes are the
// configuration file. Lookups must not fail in any other way than by finding
// nothing; then a value taken from the input is set, and must read back exactly,
// both at once and from the saved file in a fresh process state.
#include <stdlib.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "QAVHostDriver.h"
#include "QAVRbaConfiguration.h"

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

// A settings directory for the run, in memory when the system offers one, removed
// at exit.
class ScratchDir {
 public:
  ScratchDir() {
    const fs::path base = fs::exists("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
    std::string pattern = (base / "qav-conf-fuzz-XXXXXX").string();
    if (!::mkdtemp(pattern.data())) std::abort();
    ::setenv("QAVHOST_SETTINGS_DIR", pattern.c_str(), 1);
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

const std::string& SettingsDir() {
  static const ScratchDir dir;
  return dir.Path();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string path = SettingsDir() + "/RenderingConfiguration.conf";
  fs::remove_all(SettingsDir());
  fs::create_directories(SettingsDir());
  if (FILE* file = std::fopen(path.c_str(), "wb")) {
    if (size) (void)std::fwrite(data, 1, size, file);
    std::fclose(file);
  }
  Driver().Restart();

  const std::string text(reinterpret_cast<const char*>(data), size);
  QAVString value("untouched");
  for (const char* section : {"", "Rendering", "Rendering/Live", "a/b/c"})
    for (const char* key : {"UseGPU", "MaxSamples", "Label", "k"}) {
      const HRESULT hr = QAVRbaConfiguration::GetHierarchicalValue(section, key, value);
      Check(hr == S_OK || hr == E_FAIL);
    }

  // Any text, control characters and quotes included, must come back as set.
  const QAVString section("Rendering/Fuzz");
  const QAVString set(text.substr(0, 64));
  if (SUCCEEDED(QAVRbaConfiguration::SetHierarchicalValue(section, "Value", set))) {
    QAVString back;
    Check(QAVRbaConfiguration::GetHierarchicalValue(section, "Value", back) == S_OK);
    Check(back.str() == set.str());
    Driver().Restart();
    QAVString reread;
    Check(QAVRbaConfiguration::GetHierarchicalValue(section, "Value", reread) == S_OK);
    Check(reread.str() == set.str());
  }
  return 0;
}
