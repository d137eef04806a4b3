// The host's ICC colour profiles: read from a profile file or built in, tested
// for validity with exist(), and used by QAVPixelImage to convert pixels from
// one profile to another.
//
// Built-in profiles. Five RGB colour spaces are always available, made in
// memory (no file), each under a reserved name that CreateFromFile recognises:
//   "builtin:srgb"        sRGB: its primaries, D65, the sRGB curve (the same
//                         profile as CreateSRGB);
//   "builtin:display-p3"  Display P3: P3 primaries, D65, the sRGB curve;
//   "builtin:oprgb"       opRGB, compatible with the 1998 wide-gamut RGB space:
//                         red 0.64/0.33, green 0.21/0.71, blue 0.15/0.06, D65,
//                         a pure power curve of exponent 563/256;
//   "builtin:rec2020"     Rec. 2020: its primaries, D65, the BT.709/BT.2020
//                         camera curve (a linear toe of slope 4.5 below
//                         0.018054, then 1.099297 L^0.45 - 0.099297);
//   "builtin:romm-rgb"    ROMM RGB: its primaries, D50, exponent 1.8 with a
//                         linear toe of slope 16 below 1/512.
// A listed file path always holds a '/' and a reserved name never does, so the
// two cannot be confused; a file in the current directory that bears a reserved
// name is read as "./" followed by that name.
//
// Installed profiles. ListInstalledProfiles gives the five built-in names first,
// in the order above, then the paths of the ICC profiles found in these
// directories, in this order:
//   1. the directories of the environment variable QAVHOST_ICC_PATH
//      (separated by ':'), in the order given;
//   2. the system's directories: those of QAVHOST_ICC_SYSTEM_PATH when it is set
//      (separated by ':'; set and empty means none), otherwise
//      /usr/share/color/icc, $HOME/.local/share/icc and $HOME/.color/icc.
// Every directory is searched with all its subfolders. Within one directory the
// files found are sorted by their path relative to it, byte by byte, so the
// order never depends on the file system. A profile file is a regular file whose
// name ends in ".icc" or ".icm" (in any case). A file reached twice (the same
// real path, through two entries or a link) is listed once, at its first place.
// The files are not opened: a listed path may turn out not to be a valid
// profile when it is created.
#ifndef QAVMMColorProfile_h
#define QAVMMColorProfile_h

#include <array>
#include <cstdint>

#include "QAVBaseUnknown.h"
#include "QAVListValQAVUnicodeString.h"
#include "QAVUnicodeString.h"

// The chromaticities (CIE xy) of an RGB profile's white point and primaries.
struct QAVRGBChromaticities {
  double whiteX, whiteY;
  double redX, redY;
  double greenX, greenY;
  double blueX, blueY;

  // sRGB's (and Rec. 709's) primaries with the D65 white point.
  static QAVRGBChromaticities SRGB() {
    return {0.3127, 0.3290, 0.64, 0.33, 0.30, 0.60, 0.15, 0.06};
  }
  // Wide-gamut primaries (red 0.64/0.33, green 0.21/0.71, blue 0.15/0.06), D65.
  static QAVRGBChromaticities WideGamut() {
    return {0.3127, 0.3290, 0.64, 0.33, 0.21, 0.71, 0.15, 0.06};
  }
};

class QAVHOST_API QAVMMColorProfile : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // The reserved names of the built-in profiles, in listing order (see above).
  static constexpr std::array<const char*, 5> kBuiltInNames = {
      "builtin:srgb", "builtin:display-p3", "builtin:oprgb", "builtin:rec2020", "builtin:romm-rgb"};

  // The profile of an ICC file, or the built-in profile of a reserved name: a
  // new object, with one reference for the caller; null when the file cannot be
  // read (an empty path, a missing or unreadable file, a directory). A file that
  // can be read but is not an ICC profile of RGB colours gives an object whose
  // exist() is false. GetPath() gives `path` as it was given.
  static QAVMMColorProfile* CreateFromFile(const QAVUnicodeString& path);
  // The built-in sRGB profile (always valid); a new object with one reference.
  static QAVMMColorProfile* CreateSRGB();
  // A new RGB display profile of these chromaticities whose three channels
  // follow a pure power curve of exponent `gamma` (1 = linear light). Null for
  // a gamma that is not positive or chromaticities no profile can be made of.
  static QAVMMColorProfile* CreateRGB(const char* description, const QAVRGBChromaticities& c,
                                      double gamma);

  // The built-in names, then the paths of the installed ICC profiles (see
  // above); `paths` is emptied first.
  static void ListInstalledProfiles(QAVListValQAVUnicodeString& paths);

  // True when the object holds a usable RGB profile.
  bool exist() const { return _handle != nullptr; }
  // The file (or reserved name) the profile was created from; empty for a
  // profile made by CreateSRGB or CreateRGB.
  const QAVUnicodeString& GetPath() const { return _path; }
  // The profile's description (English when it has several); empty without one.
  const QAVUnicodeString& GetDescription() const { return _description; }
  // True when both hold the same profile content (by its ICC profile identifier
  // computed over the whole profile). False when either is not valid.
  bool IsSameProfile(const QAVMMColorProfile* other) const;
  // Writes the profile as an ICC file. E_FAIL when it is not valid or the file
  // cannot be written.
  HRESULT SaveToFile(const QAVUnicodeString& path) const;

  // The colour engine's handle of the profile, for the host's own use; null when
  // the profile is not valid.
  void* GetHandle() const { return _handle; }

  QAVMMColorProfile();
  QAVMMColorProfile(const QAVMMColorProfile&) = delete;
  QAVMMColorProfile& operator=(const QAVMMColorProfile&) = delete;
  ~QAVMMColorProfile() override;

 private:
  // Takes ownership of an engine handle (closed at once when it is not RGB).
  void Adopt(void* handle);

  void* _handle = nullptr;
  QAVUnicodeString _path;
  QAVUnicodeString _description;
  std::array<std::uint8_t, 16> _id{};
};

#endif
