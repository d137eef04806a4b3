// Services of the live rendering user interface (static members only).
//
// The live, batch and network renderers keep their parameters in three setting
// repositories of the host: "RenderingLiveSettings", "RenderingBatchSettings"
// and "RenderingNetworkSettings". InitSettings declares every setting of the
// three with its type and default value, so that every later reader finds one;
// the keys, types and defaults are the tables of QAVRbaRenderingSettings.h.
#ifndef QAVRbaLiveUIServices_h
#define QAVRbaLiveUIServices_h

#include "QAVISpecObject.h"
#include "QAVMathPoint.h"
#include "QAVRbaUIExport.h"
#include "QAVString.h"
#include "QAVTypes.h"
#include "QAVUnicodeString.h"

class QAVSettingRepository;
class QAVViewer;

class QAVRBAUI_API QAVRbaLiveUIServices {
 public:
  // Opens the three repositories in the order live, batch, network and declares
  // the keys of each that exists, in a fixed order; a value already stored is
  // kept, and nothing is saved. S_OK when at least one repository exists, E_FAIL
  // when none does. May be called any number of times.
  static HRESULT InitSettings();

  // Ambiences: presets resolved to environment images.
  //
  // The studio presets ("PureWhite", "WhiteMirror", "WhiteReview", "DarkMirror",
  // "DarkReview", "WhiteDesign", "BlueDesign", "DarkDesign", "Outdoor", "Studio",
  // "Indoor", "Road", "City"; exact, case-sensitive names) have an image of the
  // shipped studio folder, found in the graphic resource directories of
  // "QAVGraphicPath" (from the first entry up to, but not including, the last:
  // a list of one directory is not searched). "None" and unknown names get the
  // default image; "Custom" is the user's own image, the setting "DomeImage" of
  // "RenderingLiveSettings". Paths are joined with "/". No operation fails:
  // missing settings, files or directories give empty outputs with S_OK.
  //
  // The behaviour has three generations (levels 2, the current one, 1 and 0).
  // The level is 2, except while the host's session recorder replays a session
  // that recorded another under "AMBST_Ver_RetrieveAmb"; while it captures, the
  // level used is recorded under that key.
  //
  // Clears both outputs; for an empty preset returns at once. A studio preset
  // gives the image's base name and, when the studio folder search gave a
  // folder, folder/name.hdr. "Custom" gives no name and the stored "DomeImage"
  // when it is empty or exists; else the file of that name is looked for in
  // each searched directory D, as D/name then D/AmbienceStudio/ambiences/name,
  // then in the system setting "AmbiencePath"; empty when not found.
  static HRESULT RetrieveAssociatedAmbience(QAVString preset, QAVString& o_imageName,
                                            QAVString& o_imagePath);
  // Names a snapshot of the ambience: "NewVisu_Shot_<n><preset>" where n counts
  // the calls of both shooter operations (from 1, empty presets included), in
  // the studio folder with the extension ".dds" (".hdr" for the HDR one).
  static HRESULT RetrieveAssociatedAmbienceForShooter(QAVString preset, QAVString& o_imageName,
                                                      QAVString& o_imagePath);
  static HRESULT RetrieveAssociatedAmbienceForShooterHDR(QAVString preset, QAVString& o_imageName,
                                                         QAVString& o_imagePath);
  // The studio folder D/AmbienceStudio/ambiences of the first searched directory
  // D holding its thumbnail "Ambience_default_HQ.png". The folder is assigned
  // before the thumbnail is tested, so when no directory holds it the result is
  // the folder of the last directory searched; empty when none is searched.
  // Without "QAVGraphicPath" the argument is left untouched. Always S_OK.
  static HRESULT RetrieveAssociatedDefaultFilePath(QAVString& o_folder);
  // The member named `name` (the name shown to the user) of the container
  // "QAVRamAmbienceContainer" of the product active in the user interface, with
  // a reference for the caller; null for an empty name, no active product or no
  // such member.
  static QAVISpecObject* RetrieveCurrentModelAmbience(QAVUnicodeString name);
  // The storage folder of image-based-lighting maps: "<temp>/.ibl", created when
  // missing (an existing one is fine), where <temp> is "QAVTemp" as read at load
  // or else the host's temporary directory. Empty when there is no temporary
  // directory or the folder cannot be created.
  static QAVUnicodeString GetIBLMapStoragePath();

  // Depth of field.
  //
  // The bokeh texture of an f-number: the first row of the table whose
  // threshold the aperture is strictly above (the thresholds are the
  // single-precision values 54.5, 38.5, 27, 19, 13.5, 9.5, 6.8, 4.8, 3.4, 2.4,
  // 1.7, 1.2 of the aperture ladder, so an aperture on the ladder takes the row
  // of the next smaller one), found as D/dof/<image> in the searched graphic
  // directories. Clears the output; E_FAIL for an aperture that is 0, negative
  // or not a number, without "QAVGraphicPath" or when no directory holds it.
  static HRESULT RetrieveAssociatedBokehImage(float aperture, QAVString& o_imagePath);
  // The focus circle over the 3D view of the current window, in pixels of its
  // graphic area (W by H): centre (W/2, H/2); offset the height of the area that
  // is not usable (0 without a visualisation viewer); radius 3/4 of the half of
  // the smaller dimension, less the offset only when the view is landscape
  // (H < W). E_FAIL, with only the offset set (to 0), without a current layout,
  // window or viewer.
  static HRESULT ComputeVoodooCircle(QAVMathPoint2Df& o_center, float& o_radius, float& o_offset);
  // The focus distance of the camera whose settings are in `repository`, by
  // its integer setting "Autofocus" (1 when missing):
  // - 0: the float setting "FocalDistance" (o_focalDistance kept when missing);
  // - 1: autofocus: the distance from the eye of the viewer's main 3D viewpoint
  //   to the nearest thing at the centre pixel of its graphic area, picked with
  //   a 1 x 1 box. Paths that meet an object of class "ZRMRootOccurrence",
  //   "QAVStkStickerContainer", "QAVCameraContainer", "QAVRscLightContainer",
  //   "QAVRscEnvironmentContainer" or "QAVISO" are ignored (stickers, cameras,
  //   lights, environments never take the focus), as are paths with no model
  //   object or seen from another viewpoint; E_FAIL when no path is left;
  // - 2: the distance from the eye to the point ("FocalPointX", "FocalPointY",
  //   "FocalPointZ", each 0 when missing).
  // E_FAIL, o_focalDistance unchanged, for a null viewer or repository, another
  // mode, or a viewer without a main 3D viewpoint in modes 1 and 2.
  static HRESULT SetFocusOnViewpoint(QAVViewer* viewer, QAVSettingRepository* repository,
                                     float& o_focalDistance);

  QAVRbaLiveUIServices() = delete;
};

#endif
