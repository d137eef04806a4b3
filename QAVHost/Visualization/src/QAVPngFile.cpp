#include "QAVPngFile.h"

#include <png.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

HRESULT QAVPngFile::Encode(const QAVPixelImage& image, std::string& bytes, std::string& error) {
  const QAVPixelFormat format = image.GetFormat();
  if (format != QAVPixelFormat::RGB && format != QAVPixelFormat::RGBA) {
    error = "only 8-bit RGB and RGBA images are written as PNG";
    return E_FAIL;
  }
  if (image.GetWidth() < 1 || image.GetHeight() < 1) {
    error = "an empty image";
    return E_FAIL;
  }
  // The simplified API reports errors in the structure instead of jumping out.
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  png.width = static_cast<png_uint_32>(image.GetWidth());
  png.height = static_cast<png_uint_32>(image.GetHeight());
  png.format = format == QAVPixelFormat::RGB ? PNG_FORMAT_RGB : PNG_FORMAT_RGBA;
  png_alloc_size_t size = 0;
  if (!png_image_write_to_memory(&png, nullptr, &size, 0, image.GetPixels(), 0, nullptr)) {
    error = std::string("PNG encoding failed: ") + png.message;
    png_image_free(&png);
    return E_FAIL;
  }
  bytes.assign(size, '\0');
  if (!png_image_write_to_memory(&png, bytes.data(), &size, 0, image.GetPixels(), 0, nullptr)) {
    error = std::string("PNG encoding failed: ") + png.message;
    png_image_free(&png);
    bytes.clear();
    return E_FAIL;
  }
  bytes.resize(size);
  png_image_free(&png);
  return S_OK;
}

HRESULT QAVPngFile::Write(const QAVPixelImage& image, const std::string& path, std::string& error) {
  std::string bytes;
  if (FAILED(Encode(image, bytes, error))) return E_FAIL;
  {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (out && out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())) && out.flush())
      return S_OK;
  }
  std::error_code ec;
  if (std::filesystem::is_regular_file(path, ec)) std::filesystem::remove(path, ec);
  error = path + ": cannot be written";
  return E_FAIL;
}
