// Colour management of the textures and images that the rendering panels show.
//
// Pixels are taken to be in the working colour profile, chosen by the user among
// the installed ICC profiles with the integer setting
// "ColorProfileSelectedIndex" of "RenderingLiveSettings" (0: colour management
// off; n: the n-th installed profile, from 1, in the host's listing order), and
// are converted to the profile of the screen of the current 3D window.
//
// The state is process-wide and unsynchronised: everything here runs on the
// host's interactive thread.
#ifndef QAVRbaColorProfile_h
#define QAVRbaColorProfile_h

#include <cstdint>

#include "QAVListValQAVUnicodeString.h"
#include "QAVMMColorProfile.h"
#include "QAVPixelImage.h"
#include "QAVRbaUIExport.h"
#include "QAVRef.h"
#include "QAVTypes.h"
#include "QAVViewer.h"
#include "QAVVisuTextureData.h"

class QAVRBAUI_API QAVRbaColorProfile {
 public:
  // Brings the working profile in line with the setting. E_FAIL when the
  // repository "RenderingLiveSettings" does not exist; S_OK otherwise, also when
  // the profile chosen cannot be used (the previous one is then kept).
  static HRESULT UpdateWorkingColorProfile();
  // Takes the profile of the screen that shows the viewer's window (none when
  // the viewer has no window). E_FAIL for a null viewer.
  static HRESULT UpdateScreenColorProfile(QAVViewer* viewer);

  // The current profiles (borrowed: no reference added), or null.
  static QAVMMColorProfile* GetWorkingColorProfile();
  static QAVMMColorProfile* GetScreenColorProfile();

  // Converts a texture's pixels in place from the working profile to the screen
  // profile. S_FALSE, and the pixels untouched, when colour management is off;
  // E_FAIL for a null texture, or (after the working profile was updated) for
  // components other than 8-bit (type 0) and float (type 6), or fewer than three
  // components per pixel. Four components per pixel are RGBA, any other count
  // of three or more is read as RGB.
  static HRESULT ApplyColorManagement(QAVVisuTextureData* textureData);
  // A converted copy of the image (one reference for the caller; the image is
  // not changed), or, when colour management is off, the image itself with one
  // more reference for the caller. Null for a null image.
  static QAVPixelImage* ApplyColorManagement(QAVPixelImage* image);

  QAVRbaColorProfile() = delete;

 private:
  friend struct QAVRbaColorProfileAccess;

  // Paths of the installed ICC profiles, listed once, on first need.
  static QAVListValQAVUnicodeString _iccProfiles;
  static QAVRef<QAVMMColorProfile> _workingColorProfile;
  static QAVRef<QAVMMColorProfile> _screenColorProfile;
  // 0: off; n: entry n of _iccProfiles.
  static std::int32_t _colorProfileSelectedIdx;
};

#endif
