#include "QAVPixelImage.h"

#include <lcms2.h>

#include <algorithm>
#include <cstring>

#include "QAVMMColorProfile.h"

QAV_IMPLEMENT_CLASS(QAVPixelImage, QAVBaseUnknown, "System");

namespace {

cmsUInt32Number EngineFormat(QAVPixelFormat format) {
  switch (format) {
    case QAVPixelFormat::RGB:
      return TYPE_RGB_8;
    case QAVPixelFormat::RGBA:
      return TYPE_RGBA_8;
    case QAVPixelFormat::RGBFloat:
      return TYPE_RGB_FLT;
    case QAVPixelFormat::RGBAFloat:
      return TYPE_RGBA_FLT;
  }
  return TYPE_RGB_8;
}

bool HasAlpha(QAVPixelFormat format) {
  return format == QAVPixelFormat::RGBA || format == QAVPixelFormat::RGBAFloat;
}

bool Usable(const QAVMMColorProfile* profile) { return profile && profile->exist(); }

}  // namespace

QAVPixelImage::QAVPixelImage() = default;

QAVPixelImage::QAVPixelImage(int width, int height, QAVPixelFormat format)
    : _width(std::max(width, 0)), _height(std::max(height, 0)), _format(format) {
  _owned.assign(GetByteSize(), 0);
  _pixels = _owned.empty() ? nullptr : _owned.data();
}

QAVPixelImage::QAVPixelImage(int width, int height, QAVPixelFormat format, void* pixels)
    : _width(std::max(width, 0)),
      _height(std::max(height, 0)),
      _format(format),
      _pixels(pixels),
      _wrapper(pixels != nullptr) {}

QAVPixelImage::~QAVPixelImage() = default;

int QAVPixelImage::GetChannelCount(QAVPixelFormat format) { return HasAlpha(format) ? 4 : 3; }

int QAVPixelImage::GetComponentSize(QAVPixelFormat format) {
  return format == QAVPixelFormat::RGBFloat || format == QAVPixelFormat::RGBAFloat
             ? static_cast<int>(sizeof(float))
             : 1;
}

std::size_t QAVPixelImage::GetByteSize() const {
  return static_cast<std::size_t>(_width) * static_cast<std::size_t>(_height) *
         static_cast<std::size_t>(GetChannelCount(_format) * GetComponentSize(_format));
}

QAVPixelImage* QAVPixelImage::CreateCopy() const {
  auto* copy = new QAVPixelImage(_width, _height, _format);
  if (_pixels && copy->_pixels) std::memcpy(copy->_pixels, _pixels, GetByteSize());
  copy->_profile = _profile;
  return copy;
}

void QAVPixelImage::SetColorProfile(QAVMMColorProfile* profile) {
  _profile = QAVRef<QAVMMColorProfile>(profile);
}

HRESULT QAVPixelImage::ConvertToProfile(QAVMMColorProfile* target) {
  if (!Usable(target) || !Usable(_profile.get())) return S_FALSE;
  if (_profile->IsSameProfile(target)) {
    SetColorProfile(target);
    return S_FALSE;
  }
  const cmsUInt32Number format = EngineFormat(_format);
  cmsHTRANSFORM transform =
      cmsCreateTransform(_profile->GetHandle(), format, target->GetHandle(), format,
                         INTENT_RELATIVE_COLORIMETRIC, HasAlpha(_format) ? cmsFLAGS_COPY_ALPHA : 0);
  if (!transform) return E_FAIL;
  // Row by row: the engine counts pixels in 32 bits, and rows keep every call
  // well within that. Input and output are the same buffer, of the same format.
  const std::size_t rowBytes =
      GetByteSize() / (_height > 0 ? static_cast<std::size_t>(_height) : 1);
  auto* row = static_cast<unsigned char*>(_pixels);
  for (int y = 0; row && y < _height; ++y, row += rowBytes)
    cmsDoTransform(transform, row, row, static_cast<cmsUInt32Number>(_width));
  cmsDeleteTransform(transform);
  SetColorProfile(target);
  return S_OK;
}
