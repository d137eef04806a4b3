#include "QAVTestScenes.h"

#include <gtest/gtest.h>
#include <png.h>

#include "QAVModelObject.h"

namespace qavtest {

QAVRef<QAVSurfacicRep> Square(double half, const char* className) {
  auto square = QAVMakeRef<QAVSurfacicRep>();
  const auto h = static_cast<float>(half);
  EXPECT_TRUE(square->SetGeometry({-h, -h, 0, h, -h, 0, h, h, 0, -h, h, 0},
                                  {0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1}, {0, 1, 2, 0, 2, 3}));
  if (className) square->SetModelObject(QAVMakeRef<QAVModelObject>(className).get());
  return square;
}

QAVRef<QAV3DBagRep> Moved(QAV3DRep* child, double dx, double dy, double dz, const char* className) {
  auto bag = QAVMakeRef<QAV3DBagRep>();
  bag->SetMatrix(QAV4x4Matrix({1, 0, 0, dx, 0, 1, 0, dy, 0, 0, 1, dz, 0, 0, 0, 1}));
  EXPECT_TRUE(bag->AddChild(child));
  if (className) bag->SetModelObject(QAVMakeRef<QAVModelObject>(className).get());
  return bag;
}

bool DecodePng(const std::string& bytes, int& width, int& height, std::vector<unsigned char>& rgb) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&image, bytes.data(), bytes.size())) return false;
  image.format = PNG_FORMAT_RGB;
  rgb.assign(PNG_IMAGE_SIZE(image), 0);
  if (!png_image_finish_read(&image, nullptr, rgb.data(), 0, nullptr)) {
    png_image_free(&image);
    return false;
  }
  width = static_cast<int>(image.width);
  height = static_cast<int>(image.height);
  return true;
}

}  // namespace qavtest
