// Pictures of a 3D viewer's scene, their overlays and their PNG files.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVGraphicWindow.h"
#include "QAVPngFile.h"
#include "QAVTestScenes.h"
#include "QAVTestSupport.h"
#include "QAVViewRenderer.h"

namespace {

struct Rgb {
  int r, g, b;
};

Rgb At(const QAVPixelImage& image, int x, int y) {
  const auto* p = static_cast<const std::uint8_t*>(image.GetPixels()) +
                  3 * (static_cast<std::size_t>(y) * image.GetWidth() + x);
  return {p[0], p[1], p[2]};
}

class ViewRendererTest : public qavtest::HostTest {};

TEST_F(ViewRendererTest, KindsAreToldApartAndTheBackgroundIsTheEnvironment) {
  auto viewer = QAVMakeRef<QAV3DViewer>("3D");
  Driver().Resize(viewer.get(), 201.4F, 99.6F);
  viewer->GetMain3DViewpoint()->Set({0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 90);
  QAVRef<QAVPixelImage> image;
  EXPECT_EQ(QAVViewRenderer::Render(nullptr, image), E_FAIL);
  ASSERT_EQ(QAVViewRenderer::Render(viewer.get(), image), S_OK);
  ASSERT_EQ(image->GetWidth(), 201);
  ASSERT_EQ(image->GetHeight(), 100);
  // No scene: the environment alone, lighter at the top.
  const Rgb top = At(*image, 100, 0);
  const Rgb bottom = At(*image, 100, 99);
  EXPECT_GT(top.r + top.g + top.b, bottom.r + bottom.g + bottom.b + 60);
  EXPECT_EQ(At(*image, 0, 50).g, At(*image, 200, 50).g) << "the same across a row";

  // A part at the left, a sticker in the middle, a light at the right, a
  // camera below: each takes its own colour.
  auto root = QAVMakeRef<QAV3DBagRep>();
  auto part = qavtest::Moved(qavtest::Square(1.5, "QAVPart").get(), -6, 0, 0, nullptr);
  auto sticker = qavtest::Square(1.5, "QAVStkSticker");
  auto stickers = qavtest::Moved(sticker.get(), 0, 0, 0, "QAVStkStickerContainer");
  auto light = qavtest::Square(1.5, "QAVRscLight");
  auto lights = qavtest::Moved(light.get(), 6, 0, 0, "QAVRscLightContainer");
  auto camera = qavtest::Square(1.5, "QAVCamera");
  auto cameras = qavtest::Moved(camera.get(), 0, -3.5, 0, "QAVCameraContainer");
  for (QAV3DRep* child :
       {static_cast<QAV3DRep*>(part.get()), static_cast<QAV3DRep*>(stickers.get()),
        static_cast<QAV3DRep*>(lights.get()), static_cast<QAV3DRep*>(cameras.get())})
    ASSERT_TRUE(root->AddChild(child));
  viewer->SetSceneRoot(root.get());
  ASSERT_EQ(QAVViewRenderer::Render(viewer.get(), image), S_OK);
  // 10 units of half-height over 50 pixels: x = -6 is pixel 70, +6 is 130.
  const Rgb partColour = At(*image, 70, 50);
  const Rgb stickerColour = At(*image, 100, 50);
  const Rgb lightColour = At(*image, 130, 50);
  const Rgb cameraColour = At(*image, 100, 67);
  EXPECT_GT(stickerColour.r, stickerColour.b + 60) << "a saturated accent";
  EXPECT_GT(lightColour.r + lightColour.g, 480) << "lights glow";
  EXPECT_GT(lightColour.g, lightColour.b + 40);
  EXPECT_GT(cameraColour.b, cameraColour.r + 60) << "cameras are blue";
  EXPECT_LT(std::abs(partColour.r - partColour.b), 50) << "parts are a near-neutral grey";
  EXPECT_NE(partColour.r, top.r);
}

TEST_F(ViewRendererTest, DrawnAtTheSizeAskedOrRefused) {
  auto viewer = QAVMakeRef<QAV3DViewer>("3D");
  viewer->GetMain3DViewpoint()->Set({0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 90);
  // The widest picture there is, one row high, 90 degrees vertically from 10
  // away: a column is 20 wide where the part lies. The part, 16,400 wide, is
  // seen from pixel 3686 to 4505 (its sides at 3686 and 4506): every column
  // its own ray, through its centre.
  auto part = qavtest::Square(8200, "QAVPart");
  auto root = QAVMakeRef<QAV3DBagRep>();
  ASSERT_TRUE(root->AddChild(part.get()));
  viewer->SetSceneRoot(root.get());
  Driver().Resize(viewer.get(), QAVGraphicWindow::kMaxWindowSide, 1);
  QAVRef<QAVPixelImage> image;
  ASSERT_EQ(QAVViewRenderer::Render(viewer.get(), image), S_OK);
  ASSERT_EQ(image->GetWidth(), 8192);
  ASSERT_EQ(image->GetHeight(), 1);
  const int background = At(*image, 0, 0).r;
  EXPECT_EQ(At(*image, 3685, 0).r, background);
  EXPECT_NE(At(*image, 3686, 0).r, background);
  EXPECT_NE(At(*image, 4096, 0).r, background);
  EXPECT_NE(At(*image, 4505, 0).r, background);
  EXPECT_EQ(At(*image, 4506, 0).r, background);
  // Sizes no picture of the view can have: refused, never squashed.
  for (const auto& [width, height] : std::vector<std::pair<float, float>>{
           {8193, 100}, {100, 8193}, {1e12F, 1e12F}, {0.4F, 10}, {NAN, 10}, {10, -3}}) {
    Driver().Resize(viewer.get(), width, height);
    image = QAVMakeRef<QAVPixelImage>(1, 1, QAVPixelFormat::RGB);
    EXPECT_EQ(QAVViewRenderer::Render(viewer.get(), image), E_INVALIDARG)
        << width << " x " << height;
    EXPECT_EQ(image.get(), nullptr);
  }
}

TEST_F(ViewRendererTest, RingsAndPngFiles) {
  QAVPixelImage image(40, 30, QAVPixelFormat::RGB);
  QAVViewRenderer::DrawRing(image, 20, 15, 10, 2, 255, 200, 0);
  EXPECT_EQ(At(image, 20, 15).r, 0) << "inside the ring, untouched";
  EXPECT_EQ(At(image, 29, 14).r, 255) << "on the ring";  // pixel centre 10 from the centre
  EXPECT_EQ(At(image, 29, 14).g, 200);
  EXPECT_EQ(At(image, 0, 0).r, 0);
  // Clipped at the edges, and nothing for nonsense.
  QAVViewRenderer::DrawRing(image, -5, 40, 30, 3, 1, 2, 3);
  QAVViewRenderer::DrawRing(image, 1e300, 0, 1e300, 1, 9, 9, 9);
  QAVViewRenderer::DrawRing(image, 20, 15, 5, -1, 9, 9, 9);
  EXPECT_EQ(At(image, 20, 10).r, 0);

  std::string bytes;
  std::string error;
  ASSERT_EQ(QAVPngFile::Encode(image, bytes, error), S_OK) << error;
  int width = 0;
  int height = 0;
  std::vector<unsigned char> rgb;
  ASSERT_TRUE(qavtest::DecodePng(bytes, width, height, rgb));
  EXPECT_EQ(width, 40);
  EXPECT_EQ(height, 30);
  const auto* pixels = static_cast<const unsigned char*>(image.GetPixels());
  EXPECT_EQ(rgb, std::vector<unsigned char>(pixels, pixels + image.GetByteSize()));

  qavtest::ScratchDir scratch;
  const std::filesystem::path file = scratch.path() / "ring.png";
  ASSERT_EQ(QAVPngFile::Write(image, file.string(), error), S_OK) << error;
  EXPECT_EQ(qavtest::ReadFile(file), bytes);
  EXPECT_EQ(QAVPngFile::Write(image, scratch.str(), error), E_FAIL) << "a directory";
  EXPECT_NE(error.find("cannot be written"), std::string::npos);
  EXPECT_EQ(QAVPngFile::Write(image, (scratch.path() / "no/such/dir/a.png").string(), error),
            E_FAIL);
  QAVPixelImage floats(2, 2, QAVPixelFormat::RGBFloat);
  EXPECT_EQ(QAVPngFile::Encode(floats, bytes, error), E_FAIL);
  QAVPixelImage empty;
  EXPECT_EQ(QAVPngFile::Encode(empty, bytes, error), E_FAIL);
}

}  // namespace
