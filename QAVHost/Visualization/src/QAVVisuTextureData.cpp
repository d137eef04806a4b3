#include "QAVVisuTextureData.h"

#include <algorithm>

QAV_IMPLEMENT_CLASS(QAVVisuTextureData, QAVBaseUnknown, "System");

QAVVisuTextureData::QAVVisuTextureData() = default;

QAVVisuTextureData::QAVVisuTextureData(int width, int height, int formatSize, int componentType)
    : _width(std::max(width, 0)),
      _height(std::max(height, 0)),
      _formatSize(std::max(formatSize, 0)),
      _componentType(componentType) {
  const int componentSize = std::max(GetComponentSize(componentType), 1);
  _pixels.assign(static_cast<std::size_t>(_width) * static_cast<std::size_t>(_height) *
                     static_cast<std::size_t>(_formatSize) *
                     static_cast<std::size_t>(componentSize),
                 0);
}

QAVVisuTextureData::~QAVVisuTextureData() = default;

int QAVVisuTextureData::GetComponentSize(int componentType) {
  switch (componentType) {
    case UnsignedByte:
    case Byte:
      return 1;
    case UnsignedShort:
    case Short:
    case HalfFloat:
      return 2;
    case UnsignedInt:
    case Int:
    case Float:
      return 4;
    case Double:
      return 8;
    default:
      return 0;
  }
}
