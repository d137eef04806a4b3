#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVFrmWindow.h"
#include "QAVRbaColorProfile.h"
#include "QAVRbaImageServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVRef.h"
#include "QAVSettingRepository.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

using ProfileRef = QAVRef<QAVMMColorProfile>;

double LinearToSrgb(double v) {
  return v <= 0.0031308 ? 12.92 * v : 1.055 * std::pow(v, 1.0 / 2.4) - 0.055;
}

// Installed profiles, in listing order: 1 to 5 the host's built-in profiles, then
// the files 6 sRGB, 7 linear sRGB, 8 not a profile, 9 linear again (removed by a
// test after the listing). Nothing else installed on the machine is seen.
constexpr int kSrgbFile = 6;
constexpr int kLinearFile = 7;
constexpr int kBrokenFile = 8;
constexpr int kGoneFile = 9;

class ColorManagementTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    _iccDir = _scratch.path() / "icc";
    fs::create_directories(_iccDir);
    _iccPath.emplace("QAVHOST_ICC_PATH", _iccDir.string());
    _systemPath.emplace("QAVHOST_ICC_SYSTEM_PATH", "");
    Save(ProfileRef::Adopt(QAVMMColorProfile::CreateSRGB()), "1-srgb.icc");
    Save(Linear(), "2-linear.icc");
    _scratch.Write("icc/3-broken.icc", "definitely not an ICC profile");
    Save(Linear(), "4-gone.icc");

    _window = QAVMakeRef<QAVFrmWindow>("3D");
    _viewer = QAVMakeRef<QAV3DViewer>("viewer");
    _window->SetViewer(_viewer.get());
  }
  void TearDown() override {
    _window.Reset();
    _viewer.Reset();
    HostTest::TearDown();
    _systemPath.reset();
    _iccPath.reset();
  }

  static ProfileRef Linear() {
    return ProfileRef::Adopt(
        QAVMMColorProfile::CreateRGB("Linear", QAVRGBChromaticities::SRGB(), 1.0));
  }
  void Save(const ProfileRef& profile, const char* name) {
    ASSERT_EQ(profile->SaveToFile(QAVUnicodeString((_iccDir / name).string())), S_OK);
  }
  static void SelectProfile(int index) {
    namespace Schema = QAVRbaRenderingSettings;
    QAVSettingRepository* live = Schema::Open(Schema::kLiveColorProfileSelectedIndex);
    ASSERT_NE(live, nullptr);
    ASSERT_EQ(Schema::Write(*live, Schema::kLiveColorProfileSelectedIndex, index), S_OK);
  }
  static std::string WorkingFile() {
    QAVMMColorProfile* working = QAVRbaColorProfile::GetWorkingColorProfile();
    return working ? fs::path(working->GetPath().str()).filename().string() : "<none>";
  }
  // The screen of the test's window: sRGB unless given.
  void UseScreen(QAVMMColorProfile* profile = nullptr) {
    QAVRbaImageServices::SetScreenProfile(_window->GetNativeHandle(), profile);
    ASSERT_EQ(QAVRbaColorProfile::UpdateScreenColorProfile(_viewer.get()), S_OK);
  }
  // An 8-bit RGB texture of one pixel, and its pixel.
  static QAVRef<QAVVisuTextureData> Texture(std::uint8_t r, std::uint8_t g, std::uint8_t b) {
    auto texture = QAVMakeRef<QAVVisuTextureData>(1, 1, 3, QAVVisuTextureData::UnsignedByte);
    const std::uint8_t rgb[3] = {r, g, b};
    std::memcpy(texture->GetPixels(), rgb, 3);
    return texture;
  }
  static std::vector<int> Rgb(const QAVRef<QAVVisuTextureData>& texture) {
    const unsigned char* p = texture->GetPixels();
    return {p[0], p[1], p[2]};
  }

  fs::path _iccDir;
  std::optional<qavtest::ScopedEnv> _iccPath;
  std::optional<qavtest::ScopedEnv> _systemPath;
  QAVRef<QAVFrmWindow> _window;
  QAVRef<QAV3DViewer> _viewer;
};

TEST_F(ColorManagementTest, OffLeavesTexturesAndImagesAlone) {
  UseScreen();
  const auto texture = Texture(10, 128, 250);
  EXPECT_EQ(QAVRbaColorProfile::ApplyColorManagement(texture.get()), S_FALSE);
  EXPECT_EQ(Rgb(texture), (std::vector<int>{10, 128, 250}));
  EXPECT_EQ(QAVRbaColorProfile::GetWorkingColorProfile(), nullptr);

  const auto image = QAVMakeRef<QAVPixelImage>(2, 2, QAVPixelFormat::RGB);
  QAVPixelImage* same = QAVRbaColorProfile::ApplyColorManagement(image.get());
  EXPECT_EQ(same, image.get());
  EXPECT_EQ(image->GetRefCount(), 2u);  // the caller's new reference
  same->Release();

  // Switching off after a profile was in use releases it.
  SelectProfile(kLinearFile);
  ASSERT_EQ(QAVRbaColorProfile::UpdateWorkingColorProfile(), S_OK);
  const ProfileRef held(QAVRbaColorProfile::GetWorkingColorProfile());
  ASSERT_TRUE(held);
  EXPECT_EQ(held->GetRefCount(), 2u);
  SelectProfile(0);
  EXPECT_EQ(QAVRbaColorProfile::ApplyColorManagement(texture.get()), S_FALSE);
  EXPECT_EQ(QAVRbaColorProfile::GetWorkingColorProfile(), nullptr);
  EXPECT_EQ(held->GetRefCount(), 1u);
  EXPECT_EQ(Rgb(texture), (std::vector<int>{10, 128, 250}));

  EXPECT_EQ(QAVRbaColorProfile::ApplyColorManagement(static_cast<QAVVisuTextureData*>(nullptr)),
            E_FAIL);
  EXPECT_EQ(QAVRbaColorProfile::ApplyColorManagement(static_cast<QAVPixelImage*>(nullptr)),
            nullptr);
}

TEST_F(ColorManagementTest, TexturesInPlaceImagesIntoACopy) {
  SelectProfile(kLinearFile);  // linear light, shown on an sRGB screen
  UseScreen();
  // Other sample types, and one or two components per pixel, cannot be read as
  // RGB; the pixels stay. The working profile is made before the type is looked at.
  for (const auto& [components, type] :
       {std::pair{3, QAVVisuTextureData::UnsignedShort}, std::pair{4, QAVVisuTextureData::Double},
        std::pair{1, QAVVisuTextureData::UnsignedByte}}) {
    const auto other = QAVMakeRef<QAVVisuTextureData>(2, 2, components, type);
    std::memset(other->GetPixels(), 55, other->GetBufferSize());
    EXPECT_EQ(QAVRbaColorProfile::ApplyColorManagement(other.get()), E_FAIL) << components;
    EXPECT_EQ(other->GetPixels()[0], 55);
  }
  EXPECT_EQ(WorkingFile(), "2-linear.icc");

  const auto texture = Texture(0, 55, 255);
  const unsigned char* buffer = texture->GetPixels();
  ASSERT_EQ(QAVRbaColorProfile::ApplyColorManagement(texture.get()), S_OK);
  EXPECT_EQ(texture->GetPixels(), buffer);
  EXPECT_EQ(QAVRbaColorProfile::GetWorkingColorProfile()->GetRefCount(), 1u);
  EXPECT_EQ(buffer[0], 0);
  EXPECT_NEAR(buffer[1], 255.0 * LinearToSrgb(55.0 / 255.0), 1.0);  // about 128
  EXPECT_EQ(buffer[2], 255);

  // Floats with four components: RGBA, alpha untouched.
  const auto floats = QAVMakeRef<QAVVisuTextureData>(2, 1, 4, QAVVisuTextureData::Float);
  const float source[8] = {0.2140f, 0.0f, 1.0f, 0.25f, 0.05f, 0.5f, 0.9f, 1.0f};
  std::memcpy(floats->GetPixels(), source, sizeof source);
  ASSERT_EQ(QAVRbaColorProfile::ApplyColorManagement(floats.get()), S_OK);
  float out[8];
  std::memcpy(out, floats->GetPixels(), sizeof out);
  for (int i = 0; i < 8; ++i)
    EXPECT_NEAR(out[i], i % 4 == 3 ? source[i] : LinearToSrgb(source[i]), 2e-3) << i;

  // An image is converted into a copy; the input is not changed.
  const auto image = QAVMakeRef<QAVPixelImage>(1, 1, QAVPixelFormat::RGBA);
  std::memcpy(image->GetPixels(), "\x37\x37\x37\x4d", 4);
  const auto copy =
      QAVRef<QAVPixelImage>::Adopt(QAVRbaColorProfile::ApplyColorManagement(image.get()));
  ASSERT_TRUE(copy);
  EXPECT_NE(copy.get(), image.get());
  EXPECT_EQ(copy->GetRefCount(), 1u);
  EXPECT_EQ(image->GetRefCount(), 1u);
  EXPECT_EQ(static_cast<const std::uint8_t*>(image->GetPixels())[0], 55);
  EXPECT_EQ(image->GetColorProfile(), nullptr);
  const auto* px = static_cast<const std::uint8_t*>(copy->GetPixels());
  EXPECT_NEAR(px[0], 128, 1);
  EXPECT_EQ(px[0], px[2]);
  EXPECT_EQ(px[3], 77);
  EXPECT_EQ(copy->GetColorProfile(), QAVRbaColorProfile::GetScreenColorProfile());
}

TEST_F(ColorManagementTest, UnusableChoicesKeepThePreviousProfile) {
  UseScreen();
  SelectProfile(kLinearFile);
  ASSERT_EQ(QAVRbaColorProfile::UpdateWorkingColorProfile(), S_OK);
  QAVMMColorProfile* linear = QAVRbaColorProfile::GetWorkingColorProfile();
  ASSERT_NE(linear, nullptr);
  // The same choice again keeps the profile already made.
  ASSERT_EQ(QAVRbaColorProfile::UpdateWorkingColorProfile(), S_OK);
  EXPECT_EQ(QAVRbaColorProfile::GetWorkingColorProfile(), linear);

  // The listing is made once: a profile installed later and a profile removed
  // later are not noticed.
  Save(Linear(), "5-late.icc");
  fs::remove(_iccDir / "4-gone.icc");

  for (const int index : {kGoneFile + 1, 99, kBrokenFile, kGoneFile, -1}) {
    SCOPED_TRACE(index);
    SelectProfile(index);
    EXPECT_EQ(QAVRbaColorProfile::UpdateWorkingColorProfile(), S_OK);
    EXPECT_EQ(QAVRbaColorProfile::GetWorkingColorProfile(), linear);
    // Still converting from the linear profile: the previous index holds.
    const auto texture = Texture(55, 55, 55);
    EXPECT_EQ(QAVRbaColorProfile::ApplyColorManagement(texture.get()), S_OK);
    EXPECT_NEAR(texture->GetPixels()[0], 128, 1);
  }

  // A usable choice replaces it; pixels already in the screen's profile stay.
  SelectProfile(kSrgbFile);
  const auto texture = Texture(3, 128, 254);
  EXPECT_EQ(QAVRbaColorProfile::ApplyColorManagement(texture.get()), S_OK);
  EXPECT_EQ(WorkingFile(), "1-srgb.icc");
  EXPECT_EQ(Rgb(texture), (std::vector<int>{3, 128, 254}));
}

TEST_F(ColorManagementTest, BuiltInProfilesAreChosenByTheirIndex) {
  UseScreen();
  // 2: Display P3. Its colour of sRGB red, 0.9175 0.2003 0.1387, is red on the
  // sRGB screen.
  SelectProfile(2);
  auto texture = Texture(234, 51, 35);
  ASSERT_EQ(QAVRbaColorProfile::ApplyColorManagement(texture.get()), S_OK);
  ASSERT_NE(QAVRbaColorProfile::GetWorkingColorProfile(), nullptr);
  EXPECT_EQ(QAVRbaColorProfile::GetWorkingColorProfile()->GetPath().str(), "builtin:display-p3");
  const std::vector<int> shown = Rgb(texture);
  EXPECT_GE(shown[0], 254);
  EXPECT_LE(shown[1], 3);
  EXPECT_LE(shown[2], 3);

  // 1: sRGB, the screen's own profile: the pixels stay.
  SelectProfile(1);
  texture = Texture(234, 51, 35);
  ASSERT_EQ(QAVRbaColorProfile::ApplyColorManagement(texture.get()), S_OK);
  EXPECT_EQ(QAVRbaColorProfile::GetWorkingColorProfile()->GetPath().str(), "builtin:srgb");
  EXPECT_EQ(Rgb(texture), (std::vector<int>{234, 51, 35}));
}

TEST_F(ColorManagementTest, ScreenProfileFollowsTheViewersWindow) {
  // No screen profile yet: nothing to convert to, the pixels stay.
  SelectProfile(kSrgbFile);
  auto texture = Texture(128, 128, 128);
  EXPECT_EQ(QAVRbaColorProfile::ApplyColorManagement(texture.get()), S_OK);
  EXPECT_EQ(texture->GetPixels()[0], 128);
  EXPECT_EQ(QAVRbaColorProfile::UpdateScreenColorProfile(nullptr), E_FAIL);

  // sRGB working pixels shown on a linear screen.
  const ProfileRef linear = Linear();
  UseScreen(linear.get());
  EXPECT_EQ(QAVRbaColorProfile::GetScreenColorProfile(), linear.get());
  EXPECT_EQ(linear->GetRefCount(), 3u);  // ours, the window's, the screen's
  EXPECT_EQ(QAVRbaColorProfile::ApplyColorManagement(texture.get()), S_OK);
  EXPECT_NEAR(texture->GetPixels()[0], 55, 1);

  // Another window's screen (sRGB): the previous screen profile is released.
  const auto window = QAVMakeRef<QAVFrmWindow>("other");
  const auto viewer = QAVMakeRef<QAV3DViewer>("v2");
  window->SetViewer(viewer.get());
  ASSERT_EQ(QAVRbaColorProfile::UpdateScreenColorProfile(viewer.get()), S_OK);
  EXPECT_EQ(linear->GetRefCount(), 2u);
  ASSERT_NE(QAVRbaColorProfile::GetScreenColorProfile(), nullptr);
  EXPECT_TRUE(QAVRbaColorProfile::GetScreenColorProfile()->IsSameProfile(
      ProfileRef::Adopt(QAVMMColorProfile::CreateSRGB()).get()));

  // A viewer shown in no window has no screen.
  const auto alone = QAVMakeRef<QAV3DViewer>("alone");
  EXPECT_EQ(QAVRbaColorProfile::UpdateScreenColorProfile(alone.get()), S_OK);
  EXPECT_EQ(QAVRbaColorProfile::GetScreenColorProfile(), nullptr);
}

TEST_F(ColorManagementTest, UnreadableSetting) {
  // Without the repository the update fails and management stays off.
  QAVSettingRepository::SetAvailable(QAVRbaRenderingSettings::kLiveRepository, false);
  EXPECT_EQ(QAVRbaColorProfile::UpdateWorkingColorProfile(), E_FAIL);
  const auto texture = Texture(55, 55, 55);
  EXPECT_EQ(QAVRbaColorProfile::ApplyColorManagement(texture.get()), S_FALSE);
  QAVSettingRepository::SetAvailable(QAVRbaRenderingSettings::kLiveRepository, true);

  // A value of another type cannot be read: nothing changes, and it succeeds.
  ResetProcessState();
  _scratch.Write("settings/RenderingLiveSettings.settings",
                 "QAVHostSettings 1\nColorProfileSelectedIndex\tfloat\t1\t2\n");
  EXPECT_EQ(QAVRbaColorProfile::UpdateWorkingColorProfile(), S_OK);
  EXPECT_EQ(QAVRbaColorProfile::GetWorkingColorProfile(), nullptr);
  EXPECT_EQ(QAVRbaColorProfile::ApplyColorManagement(texture.get()), S_FALSE);
}

}  // namespace
