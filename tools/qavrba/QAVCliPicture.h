// Pictures the program writes: a drawn view with overlays, as SVG (the view
// embedded as PNG) or, for a file ending in ".png", as PNG rendered from that
// SVG by rsvg-convert (Debian librsvg2-bin).
#ifndef QAVCliPicture_h
#define QAVCliPicture_h

#include <string>

#include "QAVPixelImage.h"

namespace qavcli {

// The opening of an SVG picture of the image's size with the image as its
// background; the caller appends its overlays and "</svg>\n".
std::string SvgOverView(const QAVPixelImage& view);
// A coordinate or length in SVG: one decimal.
std::string SvgNumber(double v);
// The bytes in base64, for images embedded as data URIs.
std::string Base64(const std::string& bytes);
// Text made safe inside SVG elements and attributes.
std::string SvgEscaped(const std::string& text);
// Writes the SVG, or the PNG made from it when `path` ends in ".png": 0, or 1
// with the reason printed.
int WritePicture(const std::string& path, const std::string& svg);

}  // namespace qavcli

#endif
