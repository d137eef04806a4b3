// qavrba color: the installed ICC profiles, and the conversion of a PPM image
// through the library's colour management.
//
// convert reads a binary PPM ("P6") of any maxval from 1 to 65535. Its pixels
// are taken to be in the working profile N (the N-th installed profile, as
// "ColorProfileSelectedIndex" counts them; 0 turns colour management off and
// copies the pixels) and converted to the screen profile: sRGB, or the M-th
// installed profile with --screen M. Images of maxval 255 go through an 8-bit
// texture; any other maxval through a float texture, written back with the
// same maxval (values clamped to 0..maxval). The setting is changed in memory
// only: the user's settings file is not written.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

#include "QAV3DViewer.h"
#include "QAVCli.h"
#include "QAVCliDemoParts.h"
#include "QAVCliPpm.h"
#include "QAVEnvironment.h"
#include "QAVFileServices.h"
#include "QAVFrmWindow.h"
#include "QAVListValQAVUnicodeString.h"
#include "QAVMMColorProfile.h"
#include "QAVRbaColorProfile.h"
#include "QAVRbaImageServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVRef.h"
#include "QAVSettingRepository.h"
#include "QAVVisuTextureData.h"

namespace {

using ProfileRef = QAVRef<QAVMMColorProfile>;

using qavcli::Ppm;

QAVRef<QAVVisuTextureData> ToTexture(const Ppm& ppm) {
  const bool bytes = ppm.maxval == 255;
  auto texture = QAVMakeRef<QAVVisuTextureData>(
      ppm.width, ppm.height, 3,
      bytes ? QAVVisuTextureData::UnsignedByte : QAVVisuTextureData::Float);
  unsigned char* out = texture->GetPixels();
  for (std::size_t i = 0; i < ppm.samples.size(); ++i) {
    if (bytes) {
      out[i] = static_cast<unsigned char>(ppm.samples[i]);
    } else {
      const float v = static_cast<float>(ppm.samples[i]) / static_cast<float>(ppm.maxval);
      std::memcpy(out + i * sizeof(float), &v, sizeof v);
    }
  }
  return texture;
}

void FromTexture(const QAVVisuTextureData& texture, Ppm& ppm) {
  const unsigned char* in = texture.GetPixels();
  for (std::size_t i = 0; i < ppm.samples.size(); ++i) {
    if (ppm.maxval == 255) {
      ppm.samples[i] = in[i];
    } else {
      float v = 0.0f;
      std::memcpy(&v, in + i * sizeof(float), sizeof v);
      if (!std::isfinite(v)) v = 0.0f;
      const float scaled = std::clamp(v, 0.0f, 1.0f) * static_cast<float>(ppm.maxval);
      ppm.samples[i] = static_cast<std::uint16_t>(std::lround(scaled));
    }
  }
}

std::string Describe(const QAVUnicodeString& path) {
  const auto profile = ProfileRef::Adopt(QAVMMColorProfile::CreateFromFile(path));
  if (!profile) return "(cannot be read)";
  if (!profile->exist()) return "(not a usable RGB profile)";
  return profile->GetDescription().IsEmpty() ? "(no description)" : profile->GetDescription().str();
}

int Profiles() {
  QAVListValQAVUnicodeString paths;
  QAVMMColorProfile::ListInstalledProfiles(paths);
  std::printf("  0  colour management off\n");
  for (int i = 1; i <= paths.Size(); ++i)
    std::printf("%3d  %s\n     %s\n", i, Describe(paths[i]).c_str(), paths[i].c_str());
  return 0;
}

// Runs the library's colour management on a texture: working profile `working`
// (index), screen `screen` (null: sRGB). Returns 0, or the CLI failure.
int Manage(int working, QAVMMColorProfile* screen, QAVVisuTextureData& texture,
           std::string& summary) {
  namespace Schema = QAVRbaRenderingSettings;
  const auto& key = Schema::kLiveColorProfileSelectedIndex;
  QAVSettingRepository* live = Schema::Open(key);
  if (!live)
    return qavcli::Fail(std::string("the setting repository ") + key.repository +
                        " is not available");
  // The choice is made in memory for this run; the previous value is put back.
  int previous = 0;
  const bool stored = SUCCEEDED(Schema::ReadAttr(*live, key, previous));
  if (FAILED(Schema::Write(*live, key, working)))
    return qavcli::Fail(std::string(key.name()) + " of " + key.repository + " is not an int");
  struct Restore {
    QAVSettingRepository* live;
    bool stored;
    int previous;
    ~Restore() {
      if (stored) Schema::Write(*live, Schema::kLiveColorProfileSelectedIndex, previous);
    }
  } restore{live, stored, previous};

  const auto window = QAVMakeRef<QAVFrmWindow>("qavrba");
  const auto viewer = QAVMakeRef<QAV3DViewer>("qavrba");
  window->SetViewer(viewer.get());
  QAVRbaImageServices::SetScreenProfile(window->GetNativeHandle(), screen);
  QAVRbaColorProfile::UpdateScreenColorProfile(viewer.get());

  const HRESULT hr = QAVRbaColorProfile::ApplyColorManagement(&texture);
  QAVRbaImageServices::SetScreenProfile(window->GetNativeHandle(), nullptr);
  if (FAILED(hr)) return qavcli::Fail("the colour management of the image failed");
  QAVMMColorProfile* used = QAVRbaColorProfile::GetWorkingColorProfile();
  if (working != 0 && !used)
    return qavcli::Fail("profile " + std::to_string(working) +
                        " is not a usable RGB ICC profile (see qavrba color profiles)");
  QAVMMColorProfile* shown = QAVRbaColorProfile::GetScreenColorProfile();
  summary = hr == S_FALSE ? std::string("colour management off: pixels copied")
                          : "from '" + used->GetDescription().str() + "' to '" +
                                (shown ? shown->GetDescription().str() : "?") + "'";
  return 0;
}

int Convert(int working, int screenIndex, const std::string& input, const std::string& output) {
  QAVListValQAVUnicodeString paths;
  QAVMMColorProfile::ListInstalledProfiles(paths);
  for (const int index : {working, screenIndex})
    if (index > paths.Size())
      return qavcli::Fail("there is no profile " + std::to_string(index) + ": " +
                          std::to_string(paths.Size()) + " installed (see qavrba color profiles)");
  ProfileRef screen;
  if (screenIndex > 0) {
    screen = ProfileRef::Adopt(QAVMMColorProfile::CreateFromFile(paths[screenIndex]));
    if (!screen || !screen->exist())
      return qavcli::Fail("profile " + std::to_string(screenIndex) +
                          " is not a usable RGB ICC profile (see qavrba color profiles)");
  }

  Ppm ppm;
  std::string error;
  if (!qavcli::ReadPpmFile(input, ppm, error)) return qavcli::Fail(error);
  const auto texture = ToTexture(ppm);
  std::string summary;
  if (const int status = Manage(working, screen.get(), *texture, summary)) return status;
  FromTexture(*texture, ppm);
  if (!qavcli::WritePpmFile(output, ppm)) return qavcli::Fail("cannot write '" + output + "'");
  std::printf("%s: %dx%d, maxval %d, %s\n", output.c_str(), ppm.width, ppm.height, ppm.maxval,
              summary.c_str());
  return 0;
}

void Setup(CLI::App& program) {
  CLI::App* color = program.add_subcommand(
      "color", "The installed ICC profiles and the library's colour management of images.");
  color->require_subcommand(1);
  CLI::App* profiles =
      color->add_subcommand("profiles",
                            "The installed ICC profiles, the built-in ones first, numbered as "
                            "ColorProfileSelectedIndex counts them (0 = colour management off).");
  qavcli::OnRun(profiles, [] { return Profiles(); });

  struct Choice {
    int working = 0;
    int screen = 0;
    std::string input;
    std::string output;
  };
  auto choice = std::make_shared<Choice>();
  CLI::App* convert = color->add_subcommand(
      "convert",
      "Converts a binary PPM (P6, maxval 1 to 65535) from working profile N to the screen "
      "profile (sRGB, or profile M).");
  convert->add_option("--to", choice->working, "The working profile N (0: off)")
      ->required()
      ->check(CLI::Range(0, 999999));
  convert->add_option("--screen", choice->screen, "The screen profile M (default: sRGB)")
      ->check(CLI::Range(1, 999999));
  convert->add_option("in", choice->input, "The PPM image to convert")->required();
  convert->add_option("out", choice->output, "The PPM image written")->required();
  qavcli::OnRun(convert, [choice] {
    return Convert(choice->working, choice->screen, choice->input, choice->output);
  });
}

}  // namespace

int DemoColor(const std::string& resourcesDir) {
  (void)resourcesDir;  // the demo makes the profile it needs
  namespace fs = std::filesystem;
  std::error_code ec;
  const fs::path dir = fs::path(QAVGetTempDirectory().ToNarrow()) /
                       ("qavrba-demo-icc-" + std::to_string(::getpid()));
  fs::create_directories(dir, ec);
  const auto linear = ProfileRef::Adopt(
      QAVMMColorProfile::CreateRGB("Linear sRGB (demo)", QAVRGBChromaticities::SRGB(), 1.0));
  if (ec || !linear ||
      FAILED(linear->SaveToFile(QAVUnicodeString((dir / "linear.icc").string())))) {
    (void)std::fprintf(stderr, "qavrba demo: cannot write a demo profile in %s\n", dir.c_str());
    fs::remove_all(dir, ec);
    return 1;
  }
  // The demo's folder is searched first, so its profile comes right after the
  // built-in ones.
  const char* old = QAVGetEnv("QAVHOST_ICC_PATH");
  const std::string saved = old ? old : "";
  ::setenv("QAVHOST_ICC_PATH", (dir.string() + (old ? ":" + saved : "")).c_str(), 1);

  const unsigned char levels[] = {0, 10, 55, 128, 200, 255};
  const auto texture = QAVMakeRef<QAVVisuTextureData>(6, 1, 3, QAVVisuTextureData::UnsignedByte);
  for (std::size_t i = 0; i < 6; ++i)
    std::memset(texture->GetPixels() + 3 * i, levels[i], 3);
  std::string summary;
  const int status = Manage(static_cast<int>(QAVMMColorProfile::kBuiltInNames.size()) + 1, nullptr,
                            *texture, summary);
  if (status == 0) {
    std::printf("Colour management, %s:\n ", summary.c_str());
    for (std::size_t i = 0; i < 6; ++i)
      std::printf(" %3d->%3d", levels[i], texture->GetPixels()[3 * i]);
    std::printf("\n");
  }

  if (old)
    ::setenv("QAVHOST_ICC_PATH", saved.c_str(), 1);
  else
    ::unsetenv("QAVHOST_ICC_PATH");
  fs::remove_all(dir, ec);
  return status;
}

QAV_CLI_COMMAND("color", Setup);
