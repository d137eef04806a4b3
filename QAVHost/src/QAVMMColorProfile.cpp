#include "QAVMMColorProfile.h"

#include <lcms2.h>

#include <algorithm>
#include <cctype>
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
  // The identifier is a digest of the whole profile; it is computed here (the
  // one stored in a file may be absent) so that equal contents compare equal.
  cmsMD5computeID(handle);
  cmsGetHeaderProfileID(handle, _id.data());
}

QAVMMColorProfile* QAVMMColorProfile::CreateFromFile(const QAVUnicodeString& path) {
  if (path.IsEmpty()) return nullptr;
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
  const cmsCIExyY white = {c.whiteX, c.whiteY, 1.0};
  const cmsCIExyYTRIPLE primaries = {
      {c.redX, c.redY, 1.0}, {c.greenX, c.greenY, 1.0}, {c.blueX, c.blueY, 1.0}};
  cmsToneCurve* curve = cmsBuildGamma(nullptr, gamma);
  if (!curve) return nullptr;
  cmsToneCurve* curves[3] = {curve, curve, curve};
  cmsHPROFILE handle = cmsCreateRGBProfile(&white, &primaries, curves);
  cmsFreeToneCurve(curve);
  if (!handle) return nullptr;

  if (description && *description) {
    if (cmsMLU* mlu = cmsMLUalloc(nullptr, 1)) {
      cmsMLUsetASCII(mlu, "en", "US", description);
      cmsWriteTag(handle, cmsSigProfileDescriptionTag, mlu);
      cmsMLUfree(mlu);
    }
  }
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
