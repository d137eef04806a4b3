#include "QAVRbaColorProfile.h"

#include "QAVFrmWindow.h"
#include "QAVProcessState.h"
#include "QAVRbaImageServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"

QAVListValQAVUnicodeString QAVRbaColorProfile::_iccProfiles;
QAVRef<QAVMMColorProfile> QAVRbaColorProfile::_workingColorProfile;
QAVRef<QAVMMColorProfile> QAVRbaColorProfile::_screenColorProfile;
std::int32_t QAVRbaColorProfile::_colorProfileSelectedIdx = 0;

struct QAVRbaColorProfileAccess {
  static void Reset() {
    QAVRbaColorProfile::_iccProfiles.RemoveAll();
    QAVRbaColorProfile::_workingColorProfile.Reset();
    QAVRbaColorProfile::_screenColorProfile.Reset();
    QAVRbaColorProfile::_colorProfileSelectedIdx = 0;
  }
};
QAV_REGISTER_RESET(QAVRbaColorProfile, QAVRbaColorProfileAccess::Reset);

namespace {

// The profile if it can be used for a conversion, null otherwise.
QAVMMColorProfile* Valid(const QAVRef<QAVMMColorProfile>& profile) {
  return profile && profile->exist() ? profile.get() : nullptr;
}

// Gives the image the working profile and converts it to the screen profile.
void Convert(QAVPixelImage& image, const QAVRef<QAVMMColorProfile>& working,
             const QAVRef<QAVMMColorProfile>& screen) {
  image.SetColorProfile(Valid(working));
  image.ConvertToProfile(Valid(screen));
}

}  // namespace

HRESULT QAVRbaColorProfile::UpdateWorkingColorProfile() {
  namespace Schema = QAVRbaRenderingSettings;
  QAVSettingRepository* live = Schema::Open(Schema::kLiveColorProfileSelectedIndex);
  if (!live) return E_FAIL;

  int index = _colorProfileSelectedIdx;
  if (FAILED(Schema::ReadWithDefault(*live, Schema::kLiveColorProfileSelectedIndex, index))) {
    if (_colorProfileSelectedIdx == 0) _workingColorProfile.Reset();
    return S_OK;
  }

  if (index == 0) {
    _colorProfileSelectedIdx = 0;
    _workingColorProfile.Reset();
    return S_OK;
  }
  if (index == _colorProfileSelectedIdx && _workingColorProfile) return S_OK;

  if (_iccProfiles.Size() == 0) QAVMMColorProfile::ListInstalledProfiles(_iccProfiles);
  if (index > _iccProfiles.Size()) return S_OK;

  // A negative index names no entry: the list gives an empty path, of which no
  // profile is created.
  const auto created =
      QAVRef<QAVMMColorProfile>::Adopt(QAVMMColorProfile::CreateFromFile(_iccProfiles[index]));
  if (!created) return S_OK;
  if (created->exist()) {
    _colorProfileSelectedIdx = index;
    _workingColorProfile = created;
  }
  return S_OK;
}

HRESULT QAVRbaColorProfile::UpdateScreenColorProfile(QAVViewer* viewer) {
  if (!viewer) return E_FAIL;
  _screenColorProfile.Reset();
  const QAVFrmWindow* window = viewer->GetFrmWindow();
  const QAVNativeWindowHandle handle = window ? window->GetNativeHandle() : 0;
  _screenColorProfile =
      QAVRef<QAVMMColorProfile>::Adopt(QAVRbaImageServices::GetScreenProfile(handle));
  return S_OK;
}

QAVMMColorProfile* QAVRbaColorProfile::GetWorkingColorProfile() {
  return _workingColorProfile.get();
}

QAVMMColorProfile* QAVRbaColorProfile::GetScreenColorProfile() { return _screenColorProfile.get(); }

HRESULT QAVRbaColorProfile::ApplyColorManagement(QAVVisuTextureData* textureData) {
  if (!textureData) return E_FAIL;
  UpdateWorkingColorProfile();
  if (_colorProfileSelectedIdx == 0) return S_FALSE;

  const int width = textureData->GetWidth();
  const int height = textureData->GetHeight();
  const int formatSize = textureData->GetFormatSize();
  const int componentType = textureData->GetComponentType();

  QAVPixelFormat format;
  if (componentType == QAVVisuTextureData::UnsignedByte)
    format = formatSize == 4 ? QAVPixelFormat::RGBA : QAVPixelFormat::RGB;
  else if (componentType == QAVVisuTextureData::Float)
    format = formatSize == 4 ? QAVPixelFormat::RGBAFloat : QAVPixelFormat::RGBFloat;
  else
    return E_FAIL;
  // One or two components per pixel would be read as three: past the buffer.
  if (formatSize < 3) return E_FAIL;

  // The wrapper writes straight into the texture's buffer.
  const auto image = QAVMakeRef<QAVPixelImage>(width, height, format, textureData->GetPixels());
  Convert(*image, _workingColorProfile, _screenColorProfile);
  return S_OK;
}

QAVPixelImage* QAVRbaColorProfile::ApplyColorManagement(QAVPixelImage* image) {
  if (!image) return nullptr;
  UpdateWorkingColorProfile();
  if (_colorProfileSelectedIdx == 0) {
    image->AddRef();
    return image;
  }
  auto copy = QAVRef<QAVPixelImage>::Adopt(image->CreateCopy());
  Convert(*copy, _workingColorProfile, _screenColorProfile);
  return copy.Detach();
}
