// ICC profiles (files, installed directories, screens of windows) and the
// conversion of pixel images between profiles.
#include <gtest/gtest.h>

#include <cmath>
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

std::vector<std::string> Installed() {
  QAVListValQAVUnicodeString paths{"stale entry"};
  QAVMMColorProfile::ListInstalledProfiles(paths);
  std::vector<std::string> out;
  for (const QAVUnicodeString& p : paths)
    out.push_back(p.str());
  return out;
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
