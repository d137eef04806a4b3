// PNG files of 8-bit images.
#ifndef QAVPngFile_h
#define QAVPngFile_h

#include <string>

#include "QAVPixelImage.h"
#include "QAVTypes.h"

class QAVHOST_API QAVPngFile {
 public:
  // The PNG encoding of an RGB or RGBA image with 8-bit components: S_OK with
  // `bytes`; E_FAIL (with `error`) for an empty image or float components.
  static HRESULT Encode(const QAVPixelImage& image, std::string& bytes, std::string& error);
  // Encodes and writes the file: S_OK, or E_FAIL with `error` (the file is then
  // not written, or removed when the write failed half-way).
  static HRESULT Write(const QAVPixelImage& image, const std::string& path, std::string& error);

  QAVPngFile() = delete;
};

#endif
