// A colour-managed image in memory: width x height pixels of one of four pixel
// formats, tightly packed row after row from the top, with the colour profile
// its pixels are in.
//
// An image either owns its pixel buffer or wraps a buffer that someone else
// owns: a wrapper never copies, reallocates or frees the buffer, and the owner
// keeps it alive as long as the wrapper is used.
#ifndef QAVPixelImage_h
#define QAVPixelImage_h

#include <cstddef>
#include <vector>

#include "QAVBaseUnknown.h"
#include "QAVRef.h"

class QAVMMColorProfile;

// The host's pixel formats: RGB or RGBA, with 8-bit components (0..255) or
// single-precision float components (0..1 for the displayable range).
enum class QAVPixelFormat { RGB, RGBA, RGBFloat, RGBAFloat };

class QAVHOST_API QAVPixelImage : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // An empty image (0 x 0, RGB).
  QAVPixelImage();
  // An image with a buffer of its own, zero-filled. Negative sizes count as 0.
  QAVPixelImage(int width, int height, QAVPixelFormat format);
  // Wraps `pixels` (width * height pixels of `format`), without copying it and
  // without taking ownership.
  QAVPixelImage(int width, int height, QAVPixelFormat format, void* pixels);
  QAVPixelImage(const QAVPixelImage&) = delete;
  QAVPixelImage& operator=(const QAVPixelImage&) = delete;
  ~QAVPixelImage() override;

  // A new image (one reference for the caller) with its own copy of the pixels
  // and the same size, format and colour profile.
  QAVPixelImage* CreateCopy() const;

  int GetWidth() const { return _width; }
  int GetHeight() const { return _height; }
  QAVPixelFormat GetFormat() const { return _format; }
  static int GetChannelCount(QAVPixelFormat format);
  static int GetComponentSize(QAVPixelFormat format);  // bytes per component
  std::size_t GetByteSize() const;
  void* GetPixels() const { return _pixels; }
  // True when the image wraps a buffer it does not own.
  bool IsWrapper() const { return _wrapper; }

  // The profile the pixels are in (borrowed), or null when unknown.
  QAVMMColorProfile* GetColorProfile() const { return _profile.get(); }
  // Says which profile the pixels are in, without changing them. The image
  // holds a reference to it; null makes it unknown.
  void SetColorProfile(QAVMMColorProfile* profile);

  // Converts the pixels in place from their profile to `target` (relative
  // colorimetric intent; alpha is kept as it is), and `target` becomes their
  // profile: S_OK. Nothing is converted, and S_FALSE is returned, when the
  // image's profile or `target` is null or not valid (the pixels are left as
  // they are, as the host does for images it cannot manage), or when both hold
  // the same profile (`target` then becomes the image's profile). E_FAIL, and
  // nothing changed, when the colour engine cannot make the conversion.
  HRESULT ConvertToProfile(QAVMMColorProfile* target);

 private:
  int _width = 0;
  int _height = 0;
  QAVPixelFormat _format = QAVPixelFormat::RGB;
  std::vector<unsigned char> _owned;
  void* _pixels = nullptr;
  bool _wrapper = false;
  QAVRef<QAVMMColorProfile> _profile;
};

#endif
