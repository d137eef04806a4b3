// A picture of what a 3D viewer shows: its scene seen from the main viewpoint,
// at the viewer's graphic size, ray cast by the kernel that picks. Shading is
// plain but tells things apart: parts are a warm grey lit from the eye and from
// above, stickers a saturated accent, lights glow yellow, cameras are blue,
// environments a pale translucent-looking green; what no ray meets shows the
// viewer's environment as a soft vertical gradient. The viewer's decorations
// (QAV3DViewer::AddDecoration) are drawn over the scene, in their order.
#ifndef QAVViewRenderer_h
#define QAVViewRenderer_h

#include "QAVPixelImage.h"
#include "QAVRef.h"
#include "QAVTypes.h"

class QAV3DViewer;

class QAVHOST_API QAVViewRenderer {
 public:
  // An RGB image (8 bits per component) of the viewer's graphic size rounded
  // to whole pixels, each pixel the ray through its centre: S_OK. E_FAIL for a
  // null viewer; E_INVALIDARG, and no image, when a rounded side is not within
  // QAVGraphicWindow::kMinWindowSide to kMaxWindowSide (1 to 8192).
  static HRESULT Render(QAV3DViewer* viewer, QAVRef<QAVPixelImage>& image);

  // Overlays: a ring of the given centre and radius (pixels, from the top
  // left) and line width, blended over an 8-bit RGB or RGBA image with
  // anti-aliased edges. Parts outside the image are clipped; a ring with a
  // coordinate, radius or width that is not a number or beyond 1e7 pixels is
  // not drawn.
  static void DrawRing(QAVPixelImage& image, double centerX, double centerY, double radius,
                       double lineWidth, unsigned char red, unsigned char green,
                       unsigned char blue);

  QAVViewRenderer() = delete;
};

#endif
