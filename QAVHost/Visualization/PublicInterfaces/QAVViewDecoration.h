// Something drawn over the picture of a 3D viewer's scene, such as a ruler: a
// viewer holds a list of decorations (QAV3DViewer::AddDecoration) and the view
// renderer draws them in that order over the scene. The helpers below draw
// anti-aliased lines and small numbers onto an 8-bit RGB or RGBA picture.
#ifndef QAVViewDecoration_h
#define QAVViewDecoration_h

#include "QAVBaseUnknown.h"
#include "QAVMathPoint.h"

class QAV3DViewer;
class QAVPixelImage;

// An 8-bit colour of a decoration.
struct QAVDecorationInk {
  unsigned char red = 0;
  unsigned char green = 0;
  unsigned char blue = 0;
};

class QAVHOST_API QAVViewDecoration : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVViewDecoration();
  QAVViewDecoration(const QAVViewDecoration&) = delete;
  QAVViewDecoration& operator=(const QAVViewDecoration&) = delete;
  ~QAVViewDecoration() override;

  // Draws onto the picture of what `viewer` shows. The picture may be a little
  // larger or smaller than the viewer's graphic area (it has whole pixels):
  // place points with ProjectOnto.
  virtual void Draw(QAVPixelImage& image, const QAV3DViewer& viewer) const = 0;

  // Where a point of the scene is seen on the picture of the viewer, in pixels
  // from its top left: false for a point not in front of the eye.
  static bool ProjectOnto(const QAVPixelImage& image, const QAV3DViewer& viewer,
                          const QAVMathPoint& point, double& x, double& y);
  // A segment with round ends, `width` pixels wide, blended with anti-aliased
  // edges; clipped to the picture. Nothing is drawn for a coordinate or width
  // that is not a number or beyond 1e7 pixels, nor onto float pictures.
  static void DrawLine(QAVPixelImage& image, double x0, double y0, double x1, double y1,
                       double width, QAVDecorationInk ink);
  // A number with one decimal (a degree sign after it on request), in a small
  // digit font `scale` pixels per dot on a light box, centred on (x, y).
  static void DrawValue(QAVPixelImage& image, double x, double y, double value, bool degrees,
                        int scale, QAVDecorationInk ink);
};

#endif
