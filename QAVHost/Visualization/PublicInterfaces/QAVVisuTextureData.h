// The pixels of a texture of the visualisation: a buffer of width x height
// pixels, each of `format size` components of one component type, tightly
// packed row after row.
#ifndef QAVVisuTextureData_h
#define QAVVisuTextureData_h

#include <cstddef>
#include <vector>

#include "QAVBaseUnknown.h"

class QAVHOST_API QAVVisuTextureData : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // Component types.
  static constexpr int UnsignedByte = 0;  // 8-bit, 0..255
  static constexpr int Byte = 1;
  static constexpr int UnsignedShort = 2;
  static constexpr int Short = 3;
  static constexpr int UnsignedInt = 4;
  static constexpr int Int = 5;
  static constexpr int Float = 6;  // single precision
  static constexpr int Double = 7;
  static constexpr int HalfFloat = 8;

  // An empty texture (0 x 0, four 8-bit components).
  QAVVisuTextureData();
  // A texture with a zero-filled buffer of its own. Negative sizes count as 0;
  // an unknown component type gets a buffer of 1 byte per component.
  QAVVisuTextureData(int width, int height, int formatSize, int componentType);
  QAVVisuTextureData(const QAVVisuTextureData&) = delete;
  QAVVisuTextureData& operator=(const QAVVisuTextureData&) = delete;
  ~QAVVisuTextureData() override;

  // The pixel buffer (null for an empty texture).
  unsigned char* GetPixels() { return _pixels.empty() ? nullptr : _pixels.data(); }
  const unsigned char* GetPixels() const { return _pixels.empty() ? nullptr : _pixels.data(); }
  std::size_t GetBufferSize() const { return _pixels.size(); }
  int GetWidth() const { return _width; }
  int GetHeight() const { return _height; }
  // The number of components per pixel (4 for RGBA, 3 for RGB, 1 for grey...).
  int GetFormatSize() const { return _formatSize; }
  int GetComponentType() const { return _componentType; }
  // Bytes per component of a type; 0 for an unknown type.
  static int GetComponentSize(int componentType);

 private:
  int _width = 0;
  int _height = 0;
  int _formatSize = 4;
  int _componentType = UnsignedByte;
  std::vector<unsigned char> _pixels;
};

#endif
