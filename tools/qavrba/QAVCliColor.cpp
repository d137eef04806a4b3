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
#include <iterator>
#include <string>
#include <vector>

#include <unistd.h>

#include "QAV3DViewer.h"
#include "QAVCli.h"
#include "QAVCliDemoParts.h"
#include "QAVEnvironment.h"
#include "QAVFileServices.h"
#include "QAVFrmWindow.h"
#include "QAVListValQAVUnicodeString.h"
#include "QAVMMColorProfile.h"
#include "QAVRbaColorProfile.h"
#include "QAVRbaImageServices.h"
#include "QAVRef.h"
#include "QAVSettingRepository.h"
#include "QAVVisuTextureData.h"

namespace {

constexpr const char* kName = "color";
// Far beyond any real image, and small enough that sizes never overflow.
constexpr std::uint64_t kMaxPixels = std::uint64_t{1} << 28;

using ProfileRef = QAVRef<QAVMMColorProfile>;

struct Ppm {
  int width = 0;
  int height = 0;
  int maxval = 0;
  std::vector<std::uint16_t> samples;  // width * height * 3, row after row
};

// Reads the header's next unsigned decimal number, skipping blanks and
// comments ("#" to the end of the line) before it.
bool HeaderNumber(const std::string& data, std::size_t& at, std::uint64_t& value) {
  while (at < data.size()) {
    if (std::isspace(static_cast<unsigned char>(data[at]))) {
      ++at;
    } else if (data[at] == '#') {
      while (at < data.size() && data[at] != '\n' && data[at] != '\r')
        ++at;
    } else {
      break;
    }
  }
  const std::size_t start = at;
  value = 0;
  while (at < data.size() && std::isdigit(static_cast<unsigned char>(data[at]))) {
    value = value * 10 + static_cast<std::uint64_t>(data[at] - '0');
    if (value > 0xFFFFFFFFu) return false;
    ++at;
  }
  return at > start;
}

bool ReadPpm(const std::string& path, Ppm& ppm, std::string& error) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    error = "cannot read '" + path + "'";
    return false;
  }
  const std::string data((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (in.bad()) {
    error = "cannot read '" + path + "'";
    return false;
  }
  auto bad = [&](const std::string& why) {
    error = "'" + path + "' is not a binary PPM image: " + why;
    return false;
  };
  if (data.size() < 2 || data[0] != 'P' || data[1] != '6')
    return bad("it does not start with \"P6\"");
  std::size_t at = 2;
  std::uint64_t width = 0;
  std::uint64_t height = 0;
  std::uint64_t maxval = 0;
  if (!HeaderNumber(data, at, width) || !HeaderNumber(data, at, height) ||
      !HeaderNumber(data, at, maxval))
    return bad("the header needs a width, a height and a maxval");
  if (width == 0 || height == 0) return bad("the width and the height must be at least 1");
  if (width * height > kMaxPixels) return bad("the image is too large");
  if (maxval == 0 || maxval > 65535) return bad("the maxval must be 1 to 65535");
  if (at >= data.size() || !std::isspace(static_cast<unsigned char>(data[at])))
    return bad("the maxval must be followed by one blank");
  ++at;

  const std::size_t bytesPerSample = maxval > 255 ? 2 : 1;
  const std::size_t count = width * height * 3;
  if (data.size() - at < count * bytesPerSample)
    return bad("the pixel data is truncated (" + std::to_string(data.size() - at) + " of " +
               std::to_string(count * bytesPerSample) + " bytes)");
  ppm.width = static_cast<int>(width);
  ppm.height = static_cast<int>(height);
  ppm.maxval = static_cast<int>(maxval);
  ppm.samples.resize(count);
  const auto* bytes = reinterpret_cast<const unsigned char*>(data.data() + at);
  for (std::size_t i = 0; i < count; ++i) {
    const unsigned value =
        bytesPerSample == 2 ? (unsigned{bytes[2 * i]} << 8) | bytes[2 * i + 1] : bytes[i];
    if (value > maxval) return bad("a sample is above the maxval");
    ppm.samples[i] = static_cast<std::uint16_t>(value);
  }
  return true;
}

bool WritePpm(const std::string& path, const Ppm& ppm) {
  std::string data = "P6\n" + std::to_string(ppm.width) + " " + std::to_string(ppm.height) + "\n" +
                     std::to_string(ppm.maxval) + "\n";
  for (const std::uint16_t v : ppm.samples) {
    if (ppm.maxval > 255) data += static_cast<char>(v >> 8);
    data += static_cast<char>(v & 0xFF);
  }
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(data.data(), static_cast<std::streamsize>(data.size()));
  out.close();
  return static_cast<bool>(out);
}

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

bool ParseIndex(const std::string& text, int minimum, int& value) {
  if (text.empty() || text.size() > 9) return false;
  for (const char c : text)
    if (!std::isdigit(static_cast<unsigned char>(c))) return false;
  value = std::stoi(text);
  return value >= minimum;
}

std::string Describe(const QAVUnicodeString& path) {
  const auto profile = ProfileRef::Adopt(QAVMMColorProfile::CreateFromFile(path));
  if (!profile) return "(cannot be read)";
  if (!profile->exist()) return "(not a usable RGB profile)";
  return profile->GetDescription().IsEmpty() ? "(no description)" : profile->GetDescription().str();
}

int Profiles(const qavcli::Args& args) {
  if (args.size() != 1) return qavcli::UsageError(kName, "profiles takes no argument");
  QAVListValQAVUnicodeString paths;
  QAVMMColorProfile::ListInstalledProfiles(paths);
  if (paths.Size() == 0) {
    (void)std::fprintf(stderr,
                       "qavrba color: no ICC profile installed (searched QAVHOST_ICC_PATH, then "
                       "/usr/share/color/icc, ~/.local/share/icc and ~/.color/icc, or "
                       "QAVHOST_ICC_SYSTEM_PATH)\n");
    return 0;
  }
  std::printf("  0  colour management off\n");
  for (int i = 1; i <= paths.Size(); ++i)
    std::printf("%3d  %s\n     %s\n", i, Describe(paths[i]).c_str(), paths[i].c_str());
  return 0;
}

// Runs the library's colour management on a texture: working profile `working`
// (index), screen `screen` (null: sRGB). Returns 0, or the CLI failure.
int Manage(int working, QAVMMColorProfile* screen, QAVVisuTextureData& texture,
           std::string& summary) {
  QAVSettingRepository* live = QAVSettingRepository::GetRepository("RenderingLiveSettings");
  if (!live) return qavcli::Fail("the setting repository RenderingLiveSettings is not available");
  // The choice is made in memory for this run; the previous value is put back.
  int previous = 0;
  const bool stored = SUCCEEDED(live->ReadAttr("ColorProfileSelectedIndex", &previous, 1));
  if (FAILED(live->WriteSetting("ColorProfileSelectedIndex", &working, 1)))
    return qavcli::Fail("ColorProfileSelectedIndex of RenderingLiveSettings is not an int");
  struct Restore {
    QAVSettingRepository* live;
    bool stored;
    int previous;
    ~Restore() {
      if (stored) live->WriteSetting("ColorProfileSelectedIndex", &previous, 1);
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

int Convert(const qavcli::Args& args) {
  int working = -1;
  int screenIndex = 0;
  std::vector<std::string> files;
  for (std::size_t i = 1; i < args.size(); ++i) {
    if (args[i] == "--to" && i + 1 < args.size()) {
      if (!ParseIndex(args[++i], 0, working))
        return qavcli::UsageError(kName, "--to needs a profile number (0 or more)");
    } else if (args[i] == "--screen" && i + 1 < args.size()) {
      if (!ParseIndex(args[++i], 1, screenIndex))
        return qavcli::UsageError(kName, "--screen needs a profile number (1 or more)");
    } else if (!args[i].empty() && args[i][0] != '-') {
      files.push_back(args[i]);
    } else {
      return qavcli::UsageError(kName, "unexpected argument '" + args[i] + "'");
    }
  }
  if (working < 0) return qavcli::UsageError(kName, "convert needs --to N");
  if (files.size() != 2) return qavcli::UsageError(kName, "convert needs IN.ppm and OUT.ppm");

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
  if (!ReadPpm(files[0], ppm, error)) return qavcli::Fail(error);
  const auto texture = ToTexture(ppm);
  std::string summary;
  if (const int status = Manage(working, screen.get(), *texture, summary)) return status;
  FromTexture(*texture, ppm);
  if (!WritePpm(files[1], ppm)) return qavcli::Fail("cannot write '" + files[1] + "'");
  std::printf("%s: %dx%d, maxval %d, %s\n", files[1].c_str(), ppm.width, ppm.height, ppm.maxval,
              summary.c_str());
  return 0;
}

int Color(const qavcli::Args& args) {
  if (args.empty()) return qavcli::UsageError(kName, "missing subcommand");
  if (args[0] == "profiles") return Profiles(args);
  if (args[0] == "convert") return Convert(args);
  return qavcli::UsageError(kName, "unknown subcommand '" + args[0] + "'");
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

QAV_CLI_COMMAND(kName,
                "  qavrba color profiles                     the installed ICC profiles, numbered "
                "as ColorProfileSelectedIndex\n"
                "                                            counts them (0 = colour management "
                "off)\n"
                "  qavrba color convert --to N [--screen M] IN.ppm OUT.ppm\n"
                "                                            converts a binary PPM (P6, maxval 1 "
                "to 65535) from\n"
                "                                            working profile N to the screen "
                "profile (sRGB, or profile M)",
                Color);
