// qavrba ambience: presets resolved to environment images, the shooter's image
// names and the IBL storage folder.
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "QAVCli.h"
#include "QAVRbaEnvironment.h"
#include "QAVRbaLiveUIServices.h"

namespace {

// Why a resolved path may be empty, said once.
void NoteEmptyPath() {
  (void)std::fprintf(
      stderr,
      "qavrba: note: no studio folder: QAVGraphicPath is %s; its last entry is never "
      "searched, so it needs at least two\n",
      QAVRbaEnvironment::GraphicPath() ? "searched without a studio folder" : "not set");
}

// The presets the panel offers; the service takes any other name for the
// default image, which would hide a misspelt one.
constexpr const char* kPresets[] = {"PureWhite",  "WhiteMirror", "WhiteReview", "DarkMirror",
                                    "DarkReview", "WhiteDesign", "BlueDesign",  "DarkDesign",
                                    "Outdoor",    "Studio",      "Indoor",      "Road",
                                    "City",       "None",        "Custom"};

bool KnownPreset(const std::string& name) {
  for (const char* preset : kPresets)
    if (name == preset) return true;
  return false;
}

int Resolve(const std::vector<std::string>& presets) {
  for (const std::string& preset : presets)
    if (!KnownPreset(preset)) {
      std::string message = "unknown preset \"" + preset + "\" (";
      for (const char* known : kPresets) {
        if (message.back() != '(') message += ' ';
        message += known;
      }
      return qavcli::UsageError(message + ")");
    }
  bool noted = false;
  for (const std::string& preset : presets) {
    QAVString name;
    QAVString path;
    QAVRbaLiveUIServices::RetrieveAssociatedAmbience(QAVString(preset.c_str()), name, path);
    std::printf("%s\t%s\t%s\n", preset.c_str(), name.IsEmpty() ? "-" : name.c_str(),
                path.IsEmpty() ? "-" : path.c_str());
    if (path.IsEmpty() && preset != "Custom" && !preset.empty() && !noted) {
      NoteEmptyPath();
      noted = true;
    }
  }
  return 0;
}

int Shooter(const std::string& preset, bool hdr, int count) {
  for (int i = 0; i < count; ++i) {
    QAVString name;
    QAVString path;
    if (hdr)
      QAVRbaLiveUIServices::RetrieveAssociatedAmbienceForShooterHDR(preset.c_str(), name, path);
    else
      QAVRbaLiveUIServices::RetrieveAssociatedAmbienceForShooter(preset.c_str(), name, path);
    std::printf("%s\t%s\n", name.c_str(), path.IsEmpty() ? "-" : path.c_str());
  }
  return 0;
}

int IblPath() {
  const QAVUnicodeString path = QAVRbaLiveUIServices::GetIBLMapStoragePath();
  if (path.IsEmpty())
    return qavcli::Fail("the IBL folder cannot be made under QAVTemp or the temporary directory");
  std::printf("%s\n", path.c_str());
  return 0;
}

void Setup(CLI::App& program) {
  CLI::App* ambience = program.add_subcommand(
      "ambience", "Ambience presets resolved to environment images along QAVGraphicPath.");
  ambience->require_subcommand(1);
  ambience->footer(
      "Presets: PureWhite WhiteMirror WhiteReview DarkMirror DarkReview WhiteDesign BlueDesign "
      "DarkDesign Outdoor Studio Indoor Road City, None, Custom (the DomeImage setting). The "
      "studio folder is <dir>/AmbienceStudio/ambiences of the entries of QAVGraphicPath, the "
      "last entry excepted.");

  auto presets = std::make_shared<std::vector<std::string>>();
  CLI::App* resolve = ambience->add_subcommand(
      "resolve", "Each PRESET's image name and path, tab-separated ('-' when empty).");
  resolve->add_option("preset", *presets, "Preset names")->required();
  qavcli::OnRun(resolve, [presets] { return Resolve(*presets); });

  auto preset = std::make_shared<std::string>();
  auto hdr = std::make_shared<bool>(false);
  auto count = std::make_shared<int>(1);
  CLI::App* shooter = ambience->add_subcommand(
      "shooter", "The names of COUNT successive snapshots of PRESET (the counter starts at 1).");
  shooter->add_option("preset", *preset, "A preset name")->required();
  shooter->add_flag("--hdr", *hdr, "HDR snapshots (.hdr rather than .dds)");
  shooter->add_option("--count", *count, "How many names")->check(CLI::Range(1, 10000));
  qavcli::OnRun(shooter, [preset, hdr, count] { return Shooter(*preset, *hdr, *count); });

  CLI::App* ibl = ambience->add_subcommand(
      "ibl-path",
      "The storage folder of IBL maps (<QAVTemp or the temporary directory>/.ibl), "
      "made when missing.");
  qavcli::OnRun(ibl, [] { return IblPath(); });
}

}  // namespace

QAV_CLI_COMMAND("ambience", Setup);
