#include "QAVMMColorProfile.h"

#include <lcms2.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include "QAVEnvironment.h"
#include "QAVFileServices.h"

QAV_IMPLEMENT_CLASS(QAVMMColorProfile, QAVBaseUnknown, "System");

namespace {

namespace fs = std::filesystem;

// ICC files are small; anything far larger is not read into memory.
constexpr std::uintmax_t kMaxProfileBytes = std::uintmax_t{64} << 20;

void AppendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x110000) {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

// The description tag in UTF-8, English preferred.
QAVUnicodeString ReadDescription(cmsHPROFILE handle) {
  const cmsUInt32Number bytes =
      cmsGetProfileInfo(handle, cmsInfoDescription, "en", "US", nullptr, 0);
  if (bytes == 0) return QAVUnicodeString();
  std::vector<wchar_t> wide(bytes / sizeof(wchar_t) + 1, L'\0');
  cmsGetProfileInfo(handle, cmsInfoDescription, "en", "US", wide.data(),
                    static_cast<cmsUInt32Number>(wide.size() * sizeof(wchar_t)));
  std::string text;
  for (const wchar_t c : wide) {
    if (c == L'\0') break;
    AppendUtf8(text, static_cast<char32_t>(c));
  }
  return QAVUnicodeString(std::move(text));
}

// A profile that pixels can be converted from and to: RGB data, and a class
// that describes a device or a colour space (not a link or a named palette).
bool IsUsableRgb(cmsHPROFILE handle) {
  if (cmsGetColorSpace(handle) != cmsSigRgbData) return false;
  switch (cmsGetDeviceClass(handle)) {
    case cmsSigDisplayClass:
    case cmsSigInputClass:
    case cmsSigOutputClass:
    case cmsSigColorSpaceClass:
      return true;
    default:
      return false;
  }
}

// Whether pixels can actually be converted from and to the profile: the engine
// reads a profile's tags only when it needs them, so a damaged profile shows
// here, not when it is opened.
bool Converts(cmsHPROFILE handle) {
  cmsHPROFILE reference = cmsCreate_sRGBProfile();
  if (!reference) return false;
  bool ok = true;
  for (const bool forward : {true, false}) {
    cmsHTRANSFORM transform = cmsCreateTransform(
        forward ? handle : reference, TYPE_RGB_16, forward ? reference : handle, TYPE_RGB_16,
        INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_NOCACHE | cmsFLAGS_NOOPTIMIZE);
    if (!transform) {
      ok = false;
      break;
    }
    cmsDeleteTransform(transform);
  }
  cmsCloseProfile(reference);
  return ok;
}

bool HasProfileExtension(const fs::path& file) {
  std::string extension = file.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension == ".icc" || extension == ".icm";
}

// The profile files under `root`, sorted by their path relative to it.
std::vector<fs::path> ProfilesUnder(const fs::path& root) {
  std::vector<fs::path> found;
  std::error_code ec;
  if (!fs::is_directory(root, ec)) return found;
  fs::recursive_directory_iterator it(root, fs::directory_options::skip_permission_denied, ec);
  for (; !ec && it != fs::recursive_directory_iterator(); it.increment(ec)) {
    std::error_code fileError;
    if (it->is_regular_file(fileError) && HasProfileExtension(it->path()))
      found.push_back(it->path());
  }
  std::sort(found.begin(), found.end(), [&root](const fs::path& a, const fs::path& b) {
    return a.lexically_relative(root).string() < b.lexically_relative(root).string();
  });
  return found;
}

void AppendList(const char* list, std::vector<fs::path>& dirs) {
  QAVListValQAVUnicodeString split;
  QAVSplitPathList(list, split);
  for (const QAVUnicodeString& dir : split)
    dirs.emplace_back(dir.ToNarrow());
}

std::vector<fs::path> SearchDirectories() {
  std::vector<fs::path> dirs;
  AppendList(QAVGetEnv("QAVHOST_ICC_PATH"), dirs);
  if (const char* system = QAVGetEnv("QAVHOST_ICC_SYSTEM_PATH")) {
    AppendList(system, dirs);
  } else {
    dirs.emplace_back("/usr/share/color/icc");
    if (const char* home = QAVGetEnv("HOME"); home && *home) {
      dirs.push_back(fs::path(home) / ".local" / "share" / "icc");
      dirs.push_back(fs::path(home) / ".color" / "icc");
    }
  }
  return dirs;
}

bool ReadWholeFile(const fs::path& path, std::vector<char>& bytes) {
  std::error_code ec;
  if (!fs::is_regular_file(path, ec)) return false;
  const std::uintmax_t size = fs::file_size(path, ec);
  if (ec) return false;
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  if (size > kMaxProfileBytes) return true;  // readable, but not a profile
  bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  return !in.bad();
}

// An RGB profile of these chromaticities whose three channels follow `curve`,
// with an English description; null when no profile can be made.
cmsHPROFILE MakeRgbProfile(const char* description, const QAVRGBChromaticities& c,
                           cmsToneCurve* curve) {
  const cmsCIExyY white = {c.whiteX, c.whiteY, 1.0};
  const cmsCIExyYTRIPLE primaries = {
      {c.redX, c.redY, 1.0}, {c.greenX, c.greenY, 1.0}, {c.blueX, c.blueY, 1.0}};
  // The engine copies the curves into the profile.
  cmsToneCurve* const curves[3] = {curve, curve, curve};
  cmsHPROFILE handle = cmsCreateRGBProfile(&white, &primaries, curves);
  if (!handle) return nullptr;
  if (description && *description) {
    if (cmsMLU* mlu = cmsMLUalloc(nullptr, 1)) {
      cmsMLUsetASCII(mlu, "en", "US", description);
      cmsWriteTag(handle, cmsSigProfileDescriptionTag, mlu);
      cmsMLUfree(mlu);
    }
  }
  return handle;
}

// The curve Y = (aX + b)^g above X = d, Y = cX below (the ICC parametric curve
// of type 4), from encoded values to linear light.
cmsHPROFILE MakeRgbProfile(const char* description, const QAVRGBChromaticities& c,
                           const std::array<double, 5>& gabcd) {
  cmsToneCurve* curve = cmsBuildParametricToneCurve(nullptr, 4, gabcd.data());
  if (!curve) return nullptr;
  cmsHPROFILE handle = MakeRgbProfile(description, c, curve);
  cmsFreeToneCurve(curve);
  return handle;
}

// The BT.709 / BT.2020 camera curve, L^0.45 scaled above its linear toe, in
// the precision of BT.2020: V = alpha L^0.45 - (alpha - 1) for L >= beta,
// V = 4.5 L below. Inverted for the profile: L = ((V + alpha - 1) / alpha)^(1 /
// 0.45) for V >= 4.5 beta, L = V / 4.5 below.
constexpr double kRec2020Alpha = 1.09929682680944;
constexpr double kRec2020Beta = 0.018053968510807;

// The built-in profile of entry `index` of QAVMMColorProfile::kBuiltInNames.
cmsHPROFILE MakeBuiltIn(std::size_t index) {
  constexpr double d65x = 0.3127;
  constexpr double d65y = 0.3290;
  // The sRGB curve: ((V + 0.055) / 1.055)^2.4 above 0.04045, V / 12.92 below.
  constexpr std::array<double, 5> srgbCurve = {2.4, 1.0 / 1.055, 0.055 / 1.055, 1.0 / 12.92,
                                               0.04045};
  switch (index) {
    case 0:
      return cmsCreate_sRGBProfile();
    case 1:
      return MakeRgbProfile("Display P3", {d65x, d65y, 0.680, 0.320, 0.265, 0.690, 0.150, 0.060},
                            srgbCurve);
    case 2:
      return MakeRgbProfile("opRGB (1998-compatible)",
                            {d65x, d65y, 0.64, 0.33, 0.21, 0.71, 0.15, 0.06},
                            {563.0 / 256.0, 1.0, 0.0, 0.0, 0.0});
    case 3:
      return MakeRgbProfile("Rec. 2020", {d65x, d65y, 0.708, 0.292, 0.170, 0.797, 0.131, 0.046},
                            {1.0 / 0.45, 1.0 / kRec2020Alpha, (kRec2020Alpha - 1.0) / kRec2020Alpha,
                             1.0 / 4.5, 4.5 * kRec2020Beta});
    case 4:
      // D50; 1.8 above the toe, which ends at 1/512 in linear light (1/32 encoded).
      return MakeRgbProfile("ROMM RGB",
                            {0.3457, 0.3585, 0.7347, 0.2653, 0.1596, 0.8404, 0.0366, 0.0001},
                            {1.8, 1.0, 0.0, 1.0 / 16.0, 1.0 / 32.0});
    default:
      return nullptr;
  }
}

// A digest of the profile's content. The one stored in a file may be absent, and
// the header's creation date differs between two profiles made the same way at
// different moments, so the digest is computed here on a copy whose date is
// cleared: equal contents compare equal.
std::array<std::uint8_t, 16> ContentId(cmsHPROFILE handle) {
  std::array<std::uint8_t, 16> id{};
  cmsUInt32Number size = 0;
  if (!cmsSaveProfileToMem(handle, nullptr, &size) || size < 128) return id;
  std::vector<std::uint8_t> bytes(size);
  if (!cmsSaveProfileToMem(handle, bytes.data(), &size)) return id;
  constexpr std::size_t kDateOffset = 24, kDateSize = 12;  // ICC header, dateTimeNumber
  std::fill_n(bytes.begin() + kDateOffset, kDateSize, std::uint8_t{0});
  const cmsHPROFILE copy = cmsOpenProfileFromMem(bytes.data(), size);
  if (!copy) return id;
  cmsMD5computeID(copy);
  cmsGetHeaderProfileID(copy, id.data());
  cmsCloseProfile(copy);
  return id;
}

}  // namespace

QAVMMColorProfile::QAVMMColorProfile() = default;

QAVMMColorProfile::~QAVMMColorProfile() {
  if (_handle) cmsCloseProfile(_handle);
}

void QAVMMColorProfile::Adopt(void* handle) {
  if (!handle) return;
  if (!IsUsableRgb(handle) || !Converts(handle)) {
    cmsCloseProfile(handle);
    return;
  }
  _handle = handle;
  _description = ReadDescription(handle);
  _id = ContentId(handle);
}

QAVMMColorProfile* QAVMMColorProfile::CreateFromFile(const QAVUnicodeString& path) {
  if (path.IsEmpty()) return nullptr;
  for (std::size_t i = 0; i < kBuiltInNames.size(); ++i) {
    if (path.str() != kBuiltInNames[i]) continue;
    auto* profile = new QAVMMColorProfile;
    profile->_path = path;
    profile->Adopt(MakeBuiltIn(i));
    return profile;
  }
  std::vector<char> bytes;
  if (!ReadWholeFile(fs::path(path.ToNarrow()), bytes)) return nullptr;
  auto* profile = new QAVMMColorProfile;
  profile->_path = path;
  if (!bytes.empty())
    profile->Adopt(cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())));
  return profile;
}

QAVMMColorProfile* QAVMMColorProfile::CreateSRGB() {
  auto* profile = new QAVMMColorProfile;
  profile->Adopt(cmsCreate_sRGBProfile());
  return profile;
}

QAVMMColorProfile* QAVMMColorProfile::CreateRGB(const char* description,
                                                const QAVRGBChromaticities& c, double gamma) {
  if (!(gamma > 0.0)) return nullptr;
  cmsToneCurve* curve = cmsBuildGamma(nullptr, gamma);
  if (!curve) return nullptr;
  cmsHPROFILE handle = MakeRgbProfile(description, c, curve);
  cmsFreeToneCurve(curve);
  if (!handle) return nullptr;
  auto* profile = new QAVMMColorProfile;
  profile->Adopt(handle);
  if (!profile->exist()) {
    profile->Release();
    return nullptr;
  }
  return profile;
}

bool QAVMMColorProfile::IsSameProfile(const QAVMMColorProfile* other) const {
  if (!other || !exist() || !other->exist()) return false;
  return other == this || other->_id == _id;
}

HRESULT QAVMMColorProfile::SaveToFile(const QAVUnicodeString& path) const {
  if (!exist() || path.IsEmpty()) return E_FAIL;
  cmsUInt32Number size = 0;
  if (!cmsSaveProfileToMem(_handle, nullptr, &size) || size == 0) return E_FAIL;
  std::vector<char> bytes(size);
  if (!cmsSaveProfileToMem(_handle, bytes.data(), &size)) return E_FAIL;
  std::ofstream out(path.ToNarrow(), std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(size));
  out.close();
  return out ? S_OK : E_FAIL;
}

void QAVMMColorProfile::ListInstalledProfiles(QAVListValQAVUnicodeString& paths) {
  paths.RemoveAll();
  for (const char* name : kBuiltInNames)
    paths.Append(QAVUnicodeString(name));
  std::set<fs::path> seen;
  for (const fs::path& dir : SearchDirectories()) {
    for (const fs::path& file : ProfilesUnder(dir)) {
      std::error_code ec;
      fs::path real = fs::canonical(file, ec);
      if (ec) real = file;
      if (!seen.insert(real).second) continue;
      paths.Append(QAVUnicodeString(file.string()));
    }
  }
}
