// Draws the representations a viewer shows over its scene (QAVViewer::AddRep):
// bags place their children with their matrices; custom representations draw
// their fixed-size planes and arrows at a constant size in pixels, in
// perspective, over everything else.
#ifndef QAVFixedGPDrawing_h
#define QAVFixedGPDrawing_h

class QAV3DViewer;
class QAVPixelImage;

void QAVDrawViewerReps(QAVPixelImage& image, const QAV3DViewer& viewer);

#endif
