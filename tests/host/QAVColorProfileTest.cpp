// ICC profiles (files, installed directories, screens of windows) and the
// conversion of pixel images between profiles.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "QAVFrmWindow.h"
#include "QAVMMColorProfile.h"
#include "QAVPixelImage.h"
#include "QAVRbaImageServices.h"
#include "QAVRef.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

using ProfileRef = QAVRef<QAVMMColorProfile>;

ProfileRef SRGB() { return ProfileRef::Adopt(QAVMMColorProfile::CreateSRGB()); }
ProfileRef Linear() {
  return ProfileRef::Adopt(
      QAVMMColorProfile::CreateRGB("Linear sRGB", QAVRGBChromaticities::SRGB(), 1.0));
}

// The sRGB transfer function, to the linear light it encodes.
double SrgbToLinear(double v) {
  return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

const std::vector<std::string> kBuiltIns = {"builtin:srgb", "builtin:display-p3", "builtin:oprgb",
                                            "builtin:rec2020", "builtin:romm-rgb"};

// Every listed entry.
std::vector<std::string> Listed() {
  QAVListValQAVUnicodeString paths{"stale entry"};
  QAVMMColorProfile::ListInstalledProfiles(paths);
  std::vector<std::string> out;
  for (const QAVUnicodeString& p : paths)
    out.push_back(p.str());
  return out;
}

// The listed profile files, after the built-in entries that always come first.
std::vector<std::string> Installed() {
  std::vector<std::string> all = Listed();
  if (all.size() < kBuiltIns.size() ||
      !std::equal(kBuiltIns.begin(), kBuiltIns.end(), all.begin())) {
    ADD_FAILURE() << "the listing does not start with the built-in profiles";
    return all;
  }
  all.erase(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(kBuiltIns.size()));
  return all;
}

// 3x3 matrices and vectors for the reference colour computations below.
using Vec3 = std::array<double, 3>;
using Mat3 = std::array<Vec3, 3>;

Vec3 Mul(const Mat3& m, const Vec3& v) {
  return {m[0][0] * v[0] + m[0][1] * v[1] + m[0][2] * v[2],
          m[1][0] * v[0] + m[1][1] * v[1] + m[1][2] * v[2],
          m[2][0] * v[0] + m[2][1] * v[1] + m[2][2] * v[2]};
}
Mat3 Mul(const Mat3& a, const Mat3& b) {
  Mat3 out{};
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j)
      out[i][j] = a[i][0] * b[0][j] + a[i][1] * b[1][j] + a[i][2] * b[2][j];
  return out;
}
Mat3 Inverse(const Mat3& m) {
  const double det = m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
                     m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
                     m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
  Mat3 out{};
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) {
      // The cofactor of m[j][i], divided by the determinant.
      const int r0 = (j + 1) % 3, r1 = (j + 2) % 3, c0 = (i + 1) % 3, c1 = (i + 2) % 3;
      out[i][j] = (m[r0][c0] * m[r1][c1] - m[r0][c1] * m[r1][c0]) / det;
    }
  return out;
}
Vec3 XyzOf(double x, double y) { return {x / y, 1.0, (1.0 - x - y) / y}; }

// An RGB space as its standard defines it: chromaticities and the encoding of
// linear light.
struct RgbSpace {
  double rx, ry, gx, gy, bx, by, wx, wy;
  double (*encode)(double linear);

  Vec3 White() const { return XyzOf(wx, wy); }
  // Linear RGB to XYZ (white Y = 1).
  Mat3 ToXyz() const {
    const Vec3 r = XyzOf(rx, ry), g = XyzOf(gx, gy), b = XyzOf(bx, by);
    const Mat3 primaries = {Vec3{r[0], g[0], b[0]}, Vec3{r[1], g[1], b[1]}, Vec3{r[2], g[2], b[2]}};
    const Vec3 s = Mul(Inverse(primaries), White());
    Mat3 out = primaries;
    for (auto& row : out)
      for (int j = 0; j < 3; ++j)
        row[j] *= s[j];
    return out;
  }
};

double SrgbEncode(double v) {
  return v <= 0.0031308 ? 12.92 * v : 1.055 * std::pow(v, 1 / 2.4) - 0.055;
}
double OpRgbEncode(double v) { return std::pow(v, 256.0 / 563.0); }
double Rec2020Encode(double v) {
  const double alpha = 1.09929682680944, beta = 0.018053968510807;
  return v < beta ? 4.5 * v : alpha * std::pow(v, 0.45) - (alpha - 1);
}
double RommEncode(double v) { return v < 1.0 / 512 ? 16 * v : std::pow(v, 1 / 1.8); }

const RgbSpace kSrgb = {0.64, 0.33, 0.30, 0.60, 0.15, 0.06, 0.3127, 0.3290, SrgbEncode};

// sRGB-encoded `rgb` in `target`, relative colorimetric: through XYZ, with the
// Bradford adaptation when the white points differ.
Vec3 FromSrgb(const Vec3& rgb, const RgbSpace& target) {
  Vec3 linear{};
  for (int i = 0; i < 3; ++i)
    linear[i] = rgb[i] <= 0.04045 ? rgb[i] / 12.92 : std::pow((rgb[i] + 0.055) / 1.055, 2.4);
  const Mat3 bradford = {Vec3{0.8951, 0.2664, -0.1614}, Vec3{-0.7502, 1.7135, 0.0367},
                         Vec3{0.0389, -0.0685, 1.0296}};
  const Vec3 from = Mul(bradford, kSrgb.White()), to = Mul(bradford, target.White());
  const Mat3 scale = {Vec3{to[0] / from[0], 0, 0}, Vec3{0, to[1] / from[1], 0},
                      Vec3{0, 0, to[2] / from[2]}};
  const Mat3 adapt = Mul(Inverse(bradford), Mul(scale, bradford));
  const Vec3 out = Mul(Inverse(target.ToXyz()), Mul(adapt, Mul(kSrgb.ToXyz(), linear)));
  return {target.encode(out[0]), target.encode(out[1]), target.encode(out[2])};
}

class ColorProfileTest : public qavtest::HostTest {
 protected:
  // Writes a valid profile file and returns its path.
  std::string SaveProfile(const std::string& relative) {
    const fs::path file = _scratch.path() / relative;
    fs::create_directories(file.parent_path());
    EXPECT_EQ(Linear()->SaveToFile(QAVUnicodeString(file.string())), S_OK);
    return file.string();
  }
};

TEST_F(ColorProfileTest, ProfilesFromFilesBuiltInAndInvalid) {
  const ProfileRef srgb = SRGB();
  ASSERT_TRUE(srgb && srgb->exist());
  EXPECT_TRUE(srgb->GetPath().IsEmpty());

  // Saved and read back: the same profile content, its description and path.
  const std::string path = SaveProfile("linear.icc");
  const ProfileRef read = ProfileRef::Adopt(QAVMMColorProfile::CreateFromFile(path.c_str()));
  ASSERT_TRUE(read && read->exist());
  EXPECT_EQ(read->GetPath().str(), path);
  EXPECT_EQ(read->GetDescription().str(), "Linear sRGB");
  EXPECT_TRUE(read->IsSameProfile(Linear().get()));
  EXPECT_FALSE(read->IsSameProfile(srgb.get()));
  EXPECT_FALSE(read->IsSameProfile(nullptr));
  // Made at another moment: only the header's creation date (bytes 24 to 35)
  // differs, and the profile is still the same.
  std::string other = qavtest::ReadFile(path);
  ASSERT_GT(other.size(), 36U);
  other.replace(24, 12, "\x07\xd0\x00\x01\x00\x01\x00\x00\x00\x00\x00\x00", 12);
  const fs::path older = _scratch.Write("older.icc", other);
  const ProfileRef dated = ProfileRef::Adopt(QAVMMColorProfile::CreateFromFile(older.c_str()));
  ASSERT_TRUE(dated && dated->exist());
  EXPECT_TRUE(dated->IsSameProfile(read.get()));

  // Nothing to read: no profile at all.
  EXPECT_EQ(QAVMMColorProfile::CreateFromFile(""), nullptr);
  EXPECT_EQ(QAVMMColorProfile::CreateFromFile((_scratch.str() + "/missing.icc").c_str()), nullptr);
  EXPECT_EQ(QAVMMColorProfile::CreateFromFile(_scratch.str().c_str()), nullptr);

  // A readable file that is no profile (junk, empty, truncated): an object that
  // does not exist.
  const std::string whole = qavtest::ReadFile(path);
  for (const std::string& content :
       {std::string("not a profile"), std::string(), whole.substr(0, whole.size() / 2)}) {
    const fs::path junk = _scratch.Write("junk.icc", content);
    const ProfileRef bad = ProfileRef::Adopt(QAVMMColorProfile::CreateFromFile(junk.c_str()));
    ASSERT_TRUE(bad);
    EXPECT_FALSE(bad->exist());
    EXPECT_EQ(bad->GetHandle(), nullptr);
    EXPECT_FALSE(bad->IsSameProfile(bad.get()));
    EXPECT_EQ(bad->SaveToFile((_scratch.str() + "/copy.icc").c_str()), E_FAIL);
  }
  EXPECT_EQ(QAVMMColorProfile::CreateRGB("x", QAVRGBChromaticities::SRGB(), 0.0), nullptr);
  EXPECT_EQ(srgb->SaveToFile((_scratch.str() + "/no/such/dir/x.icc").c_str()), E_FAIL);
}

TEST_F(ColorProfileTest, BuiltInProfilesComeFirstAndConvertAsTheirStandardsSay) {
  const std::string system = SaveProfile("system/s.icc");
  qavtest::ScopedEnv icc("QAVHOST_ICC_PATH", std::nullopt);
  qavtest::ScopedEnv systemPath("QAVHOST_ICC_SYSTEM_PATH", _scratch.str() + "/system");
  std::vector<std::string> expected = kBuiltIns;
  expected.push_back(system);
  EXPECT_EQ(Listed(), expected);

  const RgbSpace spaces[] = {
      kSrgb,
      {0.680, 0.320, 0.265, 0.690, 0.150, 0.060, 0.3127, 0.3290, SrgbEncode},
      {0.64, 0.33, 0.21, 0.71, 0.15, 0.06, 0.3127, 0.3290, OpRgbEncode},
      {0.708, 0.292, 0.170, 0.797, 0.131, 0.046, 0.3127, 0.3290, Rec2020Encode},
      {0.7347, 0.2653, 0.1596, 0.8404, 0.0366, 0.0001, 0.3457, 0.3585, RommEncode},
  };
  // The reference computation itself: sRGB red in Display P3, as published to
  // four places (0.1386 or 0.1387 for blue, depending on rounding).
  const Vec3 p3Red = FromSrgb({1, 0, 0}, spaces[1]);
  EXPECT_NEAR(p3Red[0], 0.9175, 1e-4);
  EXPECT_NEAR(p3Red[1], 0.2003, 1e-4);
  EXPECT_NEAR(p3Red[2], 0.1386, 1e-4);

  const ProfileRef srgb = SRGB();
  std::vector<ProfileRef> made;
  for (std::size_t i = 0; i < kBuiltIns.size(); ++i) {
    SCOPED_TRACE(kBuiltIns[i]);
    const ProfileRef profile =
        ProfileRef::Adopt(QAVMMColorProfile::CreateFromFile(kBuiltIns[i].c_str()));
    ASSERT_TRUE(profile && profile->exist());
    EXPECT_EQ(profile->GetPath().str(), kBuiltIns[i]);
    EXPECT_FALSE(profile->GetDescription().IsEmpty());
    for (const ProfileRef& other : made)
      EXPECT_FALSE(profile->IsSameProfile(other.get())) << other->GetPath().str();
    EXPECT_EQ(profile->IsSameProfile(srgb.get()), i == 0);  // CreateSRGB's profile
    made.push_back(profile);

    // Red, a mid colour and a dark grey on the linear toes of the curves.
    std::vector<float> pixels = {1, 0, 0, 0.2f, 0.5f, 0.8f, 0.01f, 0.01f, 0.01f};
    const std::vector<float> source = pixels;
    const auto image = QAVMakeRef<QAVPixelImage>(3, 1, QAVPixelFormat::RGBFloat, pixels.data());
    image->SetColorProfile(srgb.get());
    image->ConvertToProfile(profile.get());
    for (std::size_t p = 0; p < 3; ++p) {
      const Vec3 reference =
          FromSrgb({source[3 * p], source[3 * p + 1], source[3 * p + 2]}, spaces[i]);
      for (std::size_t c = 0; c < 3; ++c)
        EXPECT_NEAR(pixels[3 * p + c], reference[c], 1e-3) << "pixel " << p << " channel " << c;
    }
  }
  // A file that bears a reserved name is still read as a file through "./".
  EXPECT_EQ(QAVMMColorProfile::CreateFromFile("./builtin:srgb"), nullptr);
}

TEST_F(ColorProfileTest, InstalledProfilesInDocumentedOrder) {
  const std::string a = _scratch.str() + "/a";
  const std::string b = _scratch.str() + "/b";
  const std::string b1 = SaveProfile("b/zeta.icc");
  const std::string b2 = SaveProfile("b/Alpha.ICM");
  const std::string b3 = SaveProfile("b/sub/deep/x.icc");
  const std::string b4 = SaveProfile("b/m.icc");
  _scratch.Write("b/readme.txt", "not a profile");
  _scratch.Write("b/noext", "not a profile");
  fs::create_directories(_scratch.path() / "b/dir.icc");  // a directory, not a file
  const std::string a1 = SaveProfile("a/one.icm");
  fs::create_symlink(b1, _scratch.path() / "a/link-to-zeta.icc");
  const std::string local = SaveProfile("home/.local/share/icc/l.icc");
  const std::string color = SaveProfile("home/.color/icc/c.icc");
  qavtest::ScopedEnv home("HOME", _scratch.str() + "/home");
  {
    // Only the directories given here are searched: b first, then a; the link
    // in a reaches a file already listed.
    qavtest::ScopedEnv system("QAVHOST_ICC_SYSTEM_PATH", "");
    qavtest::ScopedEnv icc("QAVHOST_ICC_PATH", b + ":" + a + "::" + _scratch.str() + "/none");
    EXPECT_EQ(Installed(), (std::vector<std::string>{b2, b4, b3, b1, a1}));
    // The same directory twice lists its files once.
    qavtest::ScopedEnv twice("QAVHOST_ICC_PATH", a + ":" + a);
    EXPECT_EQ(Installed(), (std::vector<std::string>{a + "/link-to-zeta.icc", a1}));
    qavtest::ScopedEnv none("QAVHOST_ICC_PATH", std::nullopt);
    EXPECT_TRUE(Installed().empty());
  }
  qavtest::ScopedEnv icc("QAVHOST_ICC_PATH", a);
  {
    // The default system directories come after the user's path; what the
    // machine has in /usr/share comes before the home directories.
    qavtest::ScopedEnv system("QAVHOST_ICC_SYSTEM_PATH", std::nullopt);
    const std::vector<std::string> all = Installed();
    ASSERT_GE(all.size(), 4u);
    EXPECT_EQ(all.front(), a + "/link-to-zeta.icc");
    EXPECT_EQ(all[all.size() - 2], local);
    EXPECT_EQ(all.back(), color);
  }
  qavtest::ScopedEnv system("QAVHOST_ICC_SYSTEM_PATH", _scratch.str() + "/home/.color");
  EXPECT_EQ(Installed(), (std::vector<std::string>{a + "/link-to-zeta.icc", a1, color}));
}

TEST_F(ColorProfileTest, ScreenProfilesOfWindows) {
  EXPECT_EQ(QAVRbaImageServices::GetScreenProfile(0), nullptr);
  const auto window = QAVMakeRef<QAVFrmWindow>("w");
  const auto other = QAVMakeRef<QAVFrmWindow>("o");
  const ProfileRef srgb = SRGB();
  auto screenOf = [](const QAVRef<QAVFrmWindow>& w) {
    return ProfileRef::Adopt(QAVRbaImageServices::GetScreenProfile(w->GetNativeHandle()));
  };
  ASSERT_TRUE(screenOf(window) && screenOf(window)->exist());
  EXPECT_TRUE(screenOf(window)->IsSameProfile(srgb.get()));

  const ProfileRef linear = Linear();
  QAVRbaImageServices::SetScreenProfile(window->GetNativeHandle(), linear.get());
  EXPECT_EQ(linear->GetRefCount(), 2u);  // ours and the window's
  {
    const ProfileRef screen = screenOf(window);
    EXPECT_EQ(screen.get(), linear.get());
    EXPECT_EQ(linear->GetRefCount(), 3u);  // the caller got a reference of its own
    EXPECT_TRUE(screenOf(other)->IsSameProfile(srgb.get()));
  }
  QAVRbaImageServices::SetScreenProfile(window->GetNativeHandle(), nullptr);
  EXPECT_EQ(linear->GetRefCount(), 1u);
  EXPECT_TRUE(screenOf(window)->IsSameProfile(srgb.get()));
}

TEST(PixelImageTest, CopiesAndConversionInPlace) {
  const ProfileRef srgb = SRGB();
  const ProfileRef linear = Linear();
  // Three floats a pixel through a wrapper: the caller's buffer is converted.
  const std::vector<float> original = {0.0f, 0.25f, 0.5f, 0.75f, 1.0f, 0.04f};
  std::vector<float> rgb = original;
  const auto image = QAVMakeRef<QAVPixelImage>(1, 2, QAVPixelFormat::RGBFloat, rgb.data());
  image->SetColorProfile(srgb.get());

  // A copy owns its pixels and shares the profile.
  const auto copy = QAVRef<QAVPixelImage>::Adopt(image->CreateCopy());
  EXPECT_FALSE(copy->IsWrapper());
  EXPECT_EQ(copy->GetColorProfile(), srgb.get());
  const auto* copied = static_cast<const float*>(copy->GetPixels());

  ASSERT_EQ(image->ConvertToProfile(linear.get()), S_OK);
  EXPECT_EQ(image->GetColorProfile(), linear.get());
  for (std::size_t i = 0; i < rgb.size(); ++i) {
    EXPECT_NEAR(rgb[i], SrgbToLinear(original[i]), 1e-3) << i;
    EXPECT_EQ(copied[i], original[i]) << "the copy is independent";
  }
  // And back again: the round trip comes home.
  ASSERT_EQ(image->ConvertToProfile(srgb.get()), S_OK);
  for (std::size_t i = 0; i < rgb.size(); ++i)
    EXPECT_NEAR(rgb[i], original[i], 1e-3f) << i;
}

TEST(PixelImageTest, IdentityOrUnknownProfilesLeavePixelsAlone) {
  const ProfileRef srgb = SRGB();
  const ProfileRef otherSrgb = SRGB();                        // another object, the same profile
  const ProfileRef broken = QAVMakeRef<QAVMMColorProfile>();  // not valid
  std::vector<std::uint8_t> bytes(std::size_t{4} * 4 * 3);
  for (std::size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<std::uint8_t>(i * 5 + 1);
  const std::vector<std::uint8_t> before = bytes;
  const auto image = QAVMakeRef<QAVPixelImage>(4, 4, QAVPixelFormat::RGB, bytes.data());

  // No profile on either side.
  EXPECT_EQ(image->ConvertToProfile(srgb.get()), S_FALSE);
  EXPECT_EQ(image->GetColorProfile(), nullptr);
  image->SetColorProfile(srgb.get());
  EXPECT_EQ(image->ConvertToProfile(nullptr), S_FALSE);
  EXPECT_EQ(image->ConvertToProfile(broken.get()), S_FALSE);
  EXPECT_EQ(image->GetColorProfile(), srgb.get());
  // The same profile: nothing to do, bit for bit.
  EXPECT_EQ(image->ConvertToProfile(srgb.get()), S_FALSE);
  EXPECT_EQ(image->ConvertToProfile(otherSrgb.get()), S_FALSE);
  EXPECT_EQ(image->GetColorProfile(), otherSrgb.get());
  EXPECT_EQ(bytes, before);
}

}  // namespace
