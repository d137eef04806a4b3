// The shipped resources of the camera and ambience services (made by
// resources/generate.py): the studio images and their thumbnail, the bokeh
// textures and the live HUD's message catalog, read back with small readers of
// their formats and looked up through the library's own searches.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "QAVMsgCatalog.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVTestScenes.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

const fs::path kGraphic = fs::path(QAV_RESOURCES_DIR) / "graphic";
const fs::path kStudio = kGraphic / "AmbienceStudio" / "ambiences";

const std::array<const char*, 14> kAmbiences = {
    "studio_pure_white_2K",  "studio_white_mirror_2K", "studio_white_review_2K",
    "studio_panel_2_4K",     "studio_dark_review_2K",  "studio_white_design_2K",
    "studio_blue_design_2K", "studio_dark_design_2K",  "outdoor",
    "studio_spot_1_2K",      "interior_hall_3_a_4K",   "exterior_road_2_2K",
    "exterior_plaza_1_4K",   "neo_pure_white_2K"};

// In the order of the aperture ladder, from the smallest aperture to the widest.
const std::array<const char*, 13> kBokeh = {"Circle_5.dds",
                                            "Circle_5_10_progressive.dds",
                                            "Circle_5_15_progressive.dds",
                                            "Circle_5_20_progressive.dds",
                                            "Circle_10_20_progressive.dds",
                                            "Circle_10_25_progressive.dds",
                                            "Circle_15_25_progressive.dds",
                                            "Circle_20_30_progressive.dds",
                                            "Circle_25_40_progressive.dds",
                                            "Circle_35_50_progressive.dds",
                                            "Circle_45_60_progressive.dds",
                                            "Circle_60_80_progressive.dds",
                                            "Circle_80_100_progressive.dds"};

std::uint32_t Le32(const std::string& data, std::size_t at) {
  std::uint32_t value = 0;
  for (int i = 3; i >= 0; --i)
    value = value << 8 | static_cast<unsigned char>(data[at + i]);
  return value;
}

// Reads the decimal number at text[pos] and moves past it; false when there is none.
bool Number(std::string_view text, std::size_t& pos, int& value) {
  const char* end = text.data() + text.size();
  const auto [next, error] = std::from_chars(text.data() + pos, end, value);
  if (error != std::errc()) return false;
  pos = static_cast<std::size_t>(next - text.data());
  return true;
}

// ---- Radiance RGBE -------------------------------------------------------

struct HdrImage {
  int width = 0;
  int height = 0;
  std::vector<std::array<float, 3>> pixels;  // top row first
};

// Reads a whole Radiance file; returns what is wrong with it, or "" when it is valid
// and its scanlines hold exactly width x height pixels.
std::string ReadHdr(const std::string& data, HdrImage& image) {
  std::size_t pos = 0;
  auto line = [&](std::string& out) {
    const std::size_t end = data.find('\n', pos);
    if (end == std::string::npos) return false;
    out = data.substr(pos, end - pos);
    pos = end + 1;
    return true;
  };
  std::string text;
  if (!line(text) || (text != "#?RADIANCE" && text != "#?RGBE")) return "no #?RADIANCE line";
  std::string format;
  while (true) {
    if (!line(text)) return "header not ended by a blank line";
    if (text.empty()) break;
    if (text.rfind("FORMAT=", 0) == 0) format = text.substr(7);
  }
  if (format != "32-bit_rle_rgbe") return "FORMAT is '" + format + "'";
  std::size_t at = 3;  // "-Y H +X W": rows from the top, pixels from the left
  if (!line(text) || text.rfind("-Y ", 0) != 0 || !Number(text, at, image.height) ||
      text.compare(at, 4, " +X ") != 0 || !Number(text, at += 4, image.width) ||
      at != text.size() || image.width <= 0 || image.height <= 0)
    return "bad resolution line '" + text + "'";

  const auto w = static_cast<std::size_t>(image.width);
  std::vector<std::array<std::uint8_t, 4>> scanline(w);
  auto byte = [&](std::size_t offset) { return static_cast<std::uint8_t>(data[offset]); };
  for (int y = 0; y < image.height; ++y) {
    const bool rle = w >= 8 && w < 0x8000 && pos + 4 <= data.size() && byte(pos) == 2 &&
                     byte(pos + 1) == 2 && (byte(pos + 2) & 0x80) == 0;
    if (rle) {
      if ((static_cast<std::size_t>(byte(pos + 2)) << 8 | byte(pos + 3)) != w)
        return "scanline " + std::to_string(y) + " announces another width";
      pos += 4;
      for (int channel = 0; channel < 4; ++channel) {
        for (std::size_t x = 0; x < w;) {
          if (pos >= data.size()) return "truncated scanline " + std::to_string(y);
          const std::size_t code = byte(pos++);
          const bool run = code > 128;
          const std::size_t count = run ? code - 128 : code;
          if (count == 0 || x + count > w || pos + (run ? 1 : count) > data.size())
            return "bad run in scanline " + std::to_string(y);
          for (std::size_t i = 0; i < count; ++i)
            scanline[x++][channel] = byte(run ? pos : pos + i);
          pos += run ? 1 : count;
        }
      }
    } else {
      if (pos + 4 * w > data.size()) return "truncated scanline " + std::to_string(y);
      for (std::size_t x = 0; x < w; ++x, pos += 4)
        scanline[x] = {byte(pos), byte(pos + 1), byte(pos + 2), byte(pos + 3)};
    }
    for (const auto& p : scanline) {
      const float unit = p[3] == 0 ? 0.0F : std::ldexp(1.0F, p[3] - 136);
      image.pixels.push_back({p[0] * unit, p[1] * unit, p[2] * unit});
    }
  }
  if (pos != data.size()) return std::to_string(data.size() - pos) + " bytes after the pixels";
  return "";
}

float Median(std::vector<float> values) {
  std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
  return values[values.size() / 2];
}

TEST(ShippedResources, AmbienceImagesAreEquirectangularHighDynamicRange) {
  for (const char* name : kAmbiences) {
    SCOPED_TRACE(name);
    const fs::path path = kStudio / (std::string(name) + ".hdr");
    ASSERT_TRUE(fs::is_regular_file(path));
    HdrImage image;
    ASSERT_EQ(ReadHdr(qavtest::ReadFile(path), image), "");
    EXPECT_EQ(image.width, 2 * image.height);  // 360 by 180 degrees
    ASSERT_EQ(image.pixels.size(), static_cast<std::size_t>(image.width) * image.height);

    float brightest = 0.0F;
    std::size_t brightestAt = 0;
    std::array<std::vector<float>, 3> channels;
    std::array<std::vector<float>, 3> sky;  // the upper half
    std::vector<float> luminance;
    for (std::size_t i = 0; i < image.pixels.size(); ++i) {
      const auto& p = image.pixels[i];
      const float value = std::max({p[0], p[1], p[2]});
      if (value > brightest) {
        brightest = value;
        brightestAt = i;
      }
      for (int c = 0; c < 3; ++c) {
        channels[c].push_back(p[c]);
        if (i < image.pixels.size() / 2) sky[c].push_back(p[c]);
      }
      luminance.push_back(0.2126F * p[0] + 0.7152F * p[1] + 0.0722F * p[2]);
    }
    // A light source well above the range of a plain image.
    EXPECT_GT(brightest, 2.0F);

    // The look the name promises.
    const std::string n = name;
    if (n.find("dark") != std::string::npos) {
      EXPECT_LT(Median(luminance), 0.1F);
    }
    if (n.find("white") != std::string::npos) {
      EXPECT_GT(Median(luminance), 0.5F);
    }
    if (n.find("blue") != std::string::npos) {
      EXPECT_GT(Median(channels[2]), 2.0F * Median(channels[0]));
    }
    if (n.find("outdoor") != std::string::npos || n.find("exterior") != std::string::npos) {
      // A blue sky over the horizon, and the sun in it: the image is not upside down.
      EXPECT_GT(Median(sky[2]), Median(sky[0]));
      EXPECT_LT(brightestAt, image.pixels.size() / 2);
    }
  }
}

// ---- PNG thumbnail -------------------------------------------------------

TEST(ShippedResources, StudioThumbnailIsAValidPng) {
  int width = 0;
  int height = 0;
  std::vector<unsigned char> rgb;
  ASSERT_TRUE(qavtest::DecodePng(qavtest::ReadFile(kStudio / "Ambience_default_HQ.png"), width,
                                 height, rgb));
  EXPECT_TRUE(width > 0 && width <= 256 && height > 0 && height <= 256) << width << "x" << height;
  EXPECT_EQ(rgb.size(), static_cast<std::size_t>(width) * height * 3);
}

// ---- DDS bokeh textures --------------------------------------------------

struct Texture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;
  int at(int x, int y) const { return pixels[static_cast<std::size_t>(y) * width + x]; }
};

// Reads an uncompressed 8-bit luminance DDS file; returns what is wrong with it,
// or "" when the header is consistent and the data is exactly one image.
std::string ReadDds(const std::string& data, Texture& texture) {
  if (data.size() < 128 || data.compare(0, 4, "DDS ") != 0) return "no DDS magic";
  if (Le32(data, 4) != 124) return "header size is not 124";
  const std::uint32_t flags = Le32(data, 8);
  constexpr std::uint32_t kRequired = 0x1 | 0x2 | 0x4 | 0x1000;  // caps, height, width, format
  if ((flags & kRequired) != kRequired) return "header flags miss a required field";
  texture.height = static_cast<int>(Le32(data, 12));
  texture.width = static_cast<int>(Le32(data, 16));
  if (texture.width <= 0 || texture.height <= 0) return "empty image";
  if (Le32(data, 76) != 32) return "pixel format size is not 32";
  const std::uint32_t format = Le32(data, 80);
  if ((format & 0x20000) == 0 || (format & 0x4) != 0 || Le32(data, 88) != 8 ||
      Le32(data, 92) != 0xFF)
    return "not an uncompressed 8-bit luminance format";
  if ((flags & 0x8) != 0 && Le32(data, 20) != static_cast<std::uint32_t>(texture.width))
    return "pitch is not one byte per pixel";
  if ((Le32(data, 108) & 0x1000) == 0) return "not flagged as a texture";
  const std::size_t size = static_cast<std::size_t>(texture.width) * texture.height;
  if ((flags & 0x20000) != 0 && Le32(data, 28) > 1) return "mipmaps";
  if (data.size() != 128 + size) return "data is not one width x height image";
  texture.pixels.assign(data.begin() + 128, data.end());
  return "";
}

// The documented reading of "Circle_E" (A = B = E) and "Circle_A_B_progressive":
// full intensity out to (100 - B)% of the radius, half at (100 - A)%, zero at the
// rim; one straight ramp for Circle_E. The disc has a radius of 60 pixels.
constexpr double kBokehRadius = 60.0;

double Falloff(double r, int a, int b) {
  const double full = (1.0 - b / 100.0) * kBokehRadius;
  const double knee = (1.0 - a / 100.0) * kBokehRadius;
  if (r <= full) return 1.0;
  if (r >= kBokehRadius) return 0.0;
  if (a == b) return (kBokehRadius - r) / (kBokehRadius - full);
  if (r <= knee) return 1.0 - 0.5 * (r - full) / (knee - full);
  return 0.5 * (kBokehRadius - r) / (kBokehRadius - knee);
}

// The edges A and B of "Circle_A_B_progressive.dds", or E twice for "Circle_E.dds".
bool EdgesOf(std::string_view name, int& a, int& b) {
  std::size_t pos = 7;
  if (name.substr(0, pos) != "Circle_" || !Number(name, pos, a)) return false;
  b = a;
  if (name.substr(pos) == ".dds") return true;
  return pos < name.size() && name[pos] == '_' && Number(name, ++pos, b) &&
         name.substr(pos) == "_progressive.dds";
}

TEST(ShippedResources, BokehTexturesAreDiscsWithTheFalloffOfTheirNames) {
  std::vector<long> light;  // the sum of the pixels of each texture
  for (const char* name : kBokeh) {
    SCOPED_TRACE(name);
    int a = 0;
    int b = 0;
    ASSERT_TRUE(EdgesOf(name, a, b));
    ASSERT_TRUE(0 < a && a <= b && b <= 100);
    Texture t;
    ASSERT_EQ(ReadDds(qavtest::ReadFile(kGraphic / "dof" / name), t), "");
    ASSERT_EQ(t.width, 128);
    ASSERT_EQ(t.height, 128);
    const int c = t.width / 2;
    // The centre is bright (a pixel centre of the softest disc already lies off its
    // one point of full intensity) and the brightest; the corners are black.
    EXPECT_GE(t.at(c, c), 240);
    EXPECT_EQ(t.at(c, c), *std::max_element(t.pixels.begin(), t.pixels.end()));
    EXPECT_EQ(
        t.at(0, 0) + t.at(t.width - 1, 0) + t.at(0, t.height - 1) + t.at(t.width - 1, t.height - 1),
        0);

    // Along a radius the intensity never rises again.
    for (int x = c + 1; x < t.width; ++x)
      EXPECT_LE(t.at(x, c), t.at(x - 1, c)) << "at x = " << x;

    // Every pixel follows the profile of its name within one pixel of radius.
    int wrong = 0;
    std::string first;
    long sum = 0;
    for (int y = 0; y < t.height; ++y) {
      for (int x = 0; x < t.width; ++x) {
        const double r = std::hypot(x + 0.5 - c, y + 0.5 - c);
        const int value = t.at(x, y);
        sum += value;
        if (value < 255.0 * Falloff(r + 1.0, a, b) - 1.0 ||
            value > 255.0 * Falloff(r - 1.0, a, b) + 1.0) {
          if (wrong++ == 0)
            first = std::to_string(value) + " at (" + std::to_string(x) + ", " + std::to_string(y) +
                    "), r = " + std::to_string(r);
        }
      }
    }
    EXPECT_EQ(wrong, 0) << "first: " << first;
    light.push_back(sum);
  }
  // Up the ladder every texture is softer, so it holds less light, than the one before.
  for (std::size_t i = 1; i < light.size(); ++i)
    EXPECT_LT(light[i], light[i - 1]) << kBokeh[i] << " after " << kBokeh[i - 1];
}

// ---- Through the library -------------------------------------------------

class ShippedResourcesTest : public qavtest::HostTest {};

TEST_F(ShippedResourcesTest, LibraryFindsAShippedFileForEveryPresetAndAperture) {
  // The last entry of the graphic path is never searched.
  SetEnvAndReload("QAVGraphicPath", kGraphic.string() + ":" + (_scratch.path() / "x").string());
  QAVString folder;
  QAVRbaLiveUIServices::RetrieveAssociatedDefaultFilePath(folder);
  EXPECT_EQ(fs::path(folder.str()), kGraphic / "AmbienceStudio/ambiences");

  std::vector<std::string> images;
  for (const char* preset :
       {"PureWhite", "WhiteMirror", "WhiteReview", "DarkMirror", "DarkReview", "WhiteDesign",
        "BlueDesign", "DarkDesign", "Outdoor", "Studio", "Indoor", "Road", "City", "None"}) {
    QAVString name;
    QAVString path;
    ASSERT_EQ(QAVRbaLiveUIServices::RetrieveAssociatedAmbience(preset, name, path), S_OK);
    EXPECT_TRUE(fs::is_regular_file(path.str())) << preset << ": " << path.str();
    images.emplace_back(name.str());
  }
  std::sort(images.begin(), images.end());
  std::vector<std::string> shipped(kAmbiences.begin(), kAmbiences.end());
  std::sort(shipped.begin(), shipped.end());
  EXPECT_EQ(images, shipped);

  // One aperture in each step of the ladder, from the smallest to the widest.
  const std::array<float, 13> apertures = {64.0F, 45.0F, 32.0F, 22.0F, 16.0F, 11.0F, 8.0F,
                                           5.6F,  4.0F,  2.8F,  2.0F,  1.4F,  1.0F};
  for (std::size_t i = 0; i < apertures.size(); ++i) {
    QAVString path;
    ASSERT_EQ(QAVRbaLiveUIServices::RetrieveAssociatedBokehImage(apertures[i], path), S_OK)
        << apertures[i];
    EXPECT_EQ(fs::path(path.str()), kGraphic / "dof" / kBokeh[i]);
  }
}

TEST_F(ShippedResourcesTest, HudCatalogHasEveryKeyWithItsParameters) {
  SetEnvAndReload("QAVHOST_RESOURCE_PATH", QAV_RESOURCES_DIR);
  const struct {
    const char* key;
    int parameters;
  } keys[] = {{"Resolution", 2},          {"Ambience", 1},       {"Backplate", 1},
              {"Resources", 1},           {"Render", 1},         {"Total", 1},
              {"RenderingInProgress", 0}, {"InfosRendering", 0}, {"Infos", 0}};
  const QAVString catalog("QAVRbaLiveHUDDlg");
  const QAVUnicodeString parameters[] = {QAVUnicodeString("1920"), QAVUnicodeString("1080")};

  testing::internal::CaptureStderr();  // the catalog reader reports malformed lines there
  QAVUnicodeString text;
  const bool found = QAVMsgCatalog::GetText(catalog, "Resolution", text);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  ASSERT_TRUE(found);
  EXPECT_EQ(fs::path(QAVMsgCatalog::GetCatalogPath(catalog)),
            fs::path(QAV_RESOURCES_DIR) / "msgcatalog/QAVRbaLiveHUDDlg.catalog");

  for (const auto& k : keys) {
    SCOPED_TRACE(k.key);
    ASSERT_TRUE(QAVMsgCatalog::GetText(catalog, k.key, text));
    const std::string raw = text.ToNarrow();
    EXPECT_FALSE(raw.empty());
    for (int n = 1; n <= 2; ++n) {
      const bool has = raw.find("{" + std::to_string(n) + "}") != std::string::npos;
      EXPECT_EQ(has, n <= k.parameters) << "{" << n << "} in '" << raw << "'";
    }
    // With its parameters every placeholder is filled in.
    const std::string message =
        QAVMsgCatalog::BuildMessage(catalog, k.key, parameters, k.parameters).ToNarrow();
    EXPECT_EQ(message.find('{'), std::string::npos) << message;
    for (int n = 0; n < k.parameters; ++n)
      EXPECT_NE(message.find(parameters[n].ToNarrow()), std::string::npos) << message;
  }
}

}  // namespace
