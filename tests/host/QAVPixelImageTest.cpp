#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "QAVMMColorProfile.h"
#include "QAVPixelImage.h"
#include "QAVRef.h"

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

TEST(PixelImageTest, CopiesOwnTheirPixelsAndShareTheProfile) {
  std::vector<std::uint8_t> external = {1, 2, 3, 4, 5, 6};
  const auto wrapper = QAVMakeRef<QAVPixelImage>(2, 1, QAVPixelFormat::RGB, external.data());
  const ProfileRef srgb = SRGB();
  wrapper->SetColorProfile(srgb.get());
  EXPECT_EQ(srgb->GetRefCount(), 2u);

  const auto copy = QAVRef<QAVPixelImage>::Adopt(wrapper->CreateCopy());
  EXPECT_EQ(copy->GetRefCount(), 1u);
  EXPECT_FALSE(copy->IsWrapper());
  EXPECT_EQ(copy->GetColorProfile(), srgb.get());
  auto* pixels = static_cast<std::uint8_t*>(copy->GetPixels());
  EXPECT_EQ(std::vector<std::uint8_t>(pixels, pixels + 6), external);
  pixels[0] = 99;
  EXPECT_EQ(external[0], 1);  // independent of the wrapped buffer
}

TEST(PixelImageTest, SrgbToLinearConvertsInPlace) {
  // 8-bit RGBA through a wrapper: the caller's buffer is converted, alpha kept.
  std::vector<std::uint8_t> bytes = {0, 128, 255, 7, 64, 192, 32, 200};
  const auto image = QAVMakeRef<QAVPixelImage>(2, 1, QAVPixelFormat::RGBA, bytes.data());
  const ProfileRef srgb = SRGB();
  const ProfileRef linear = Linear();
  image->SetColorProfile(srgb.get());
  ASSERT_EQ(image->ConvertToProfile(linear.get()), S_OK);
  EXPECT_EQ(image->GetColorProfile(), linear.get());
  const std::array<int, 8> source = {0, 128, 255, 7, 64, 192, 32, 200};
  for (int i = 0; i < 8; ++i) {
    SCOPED_TRACE(i);
    if (i % 4 == 3) {
      EXPECT_EQ(bytes[static_cast<std::size_t>(i)], source[static_cast<std::size_t>(i)]);
      continue;
    }
    // 8-bit results: within one step of the exact curve.
    const double expected = 255.0 * SrgbToLinear(source[static_cast<std::size_t>(i)] / 255.0);
    EXPECT_NEAR(bytes[static_cast<std::size_t>(i)], expected, 1.0);
  }

  // Floats, and back again: the round trip comes home.
  std::vector<float> rgb = {0.0f, 0.25f, 0.5f, 0.75f, 1.0f, 0.04f};
  const auto floats = QAVMakeRef<QAVPixelImage>(1, 2, QAVPixelFormat::RGBFloat, rgb.data());
  floats->SetColorProfile(srgb.get());
  ASSERT_EQ(floats->ConvertToProfile(linear.get()), S_OK);
  EXPECT_NEAR(rgb[2], SrgbToLinear(0.5), 1e-3);
  EXPECT_NEAR(rgb[5], SrgbToLinear(0.04), 1e-3);
  ASSERT_EQ(floats->ConvertToProfile(srgb.get()), S_OK);
  const std::array<float, 6> original = {0.0f, 0.25f, 0.5f, 0.75f, 1.0f, 0.04f};
  for (std::size_t i = 0; i < rgb.size(); ++i)
    EXPECT_NEAR(rgb[i], original[i], 1e-3f) << i;
}

TEST(PixelImageTest, IdentityOrUnknownProfilesLeavePixelsAlone) {
  const ProfileRef srgb = SRGB();
  const ProfileRef otherSrgb = SRGB();                        // another object, the same profile
  const ProfileRef broken = QAVMakeRef<QAVMMColorProfile>();  // not valid
  ASSERT_FALSE(broken->exist());

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
