// Pictures the program writes, by the extension of the name given to -o, the
// same for every command: ".png" gives PNG, ".svg" gives SVG (either case), any
// other name is a usage error. A command draws its picture either as SVG (its
// overlays as vector shapes over the view, embedded as PNG), turned into PNG by
// rsvg-convert (Debian librsvg2-bin) for a ".png" name, or as a raster image,
// which for an ".svg" name is embedded whole, as PNG, in an SVG image element
// of its size. The file is written whole or not at all: an existing file of
// that name stays as it was when writing fails.
#ifndef QAVCliPicture_h
#define QAVCliPicture_h

#include <CLI/CLI.hpp>
#include <string>

#include "QAVPixelImage.h"

namespace qavcli {

enum class PictureFormat { Png, Svg };

// The format a picture file's name asks for; false for a name that is neither.
bool PictureFormatOf(const std::string& path, PictureFormat& format);

// Adds the -o,--output option of a command that writes a picture, its name
// checked at parse time (a usage error names it).
CLI::Option* AddPictureOption(CLI::App* command, std::string& path, const std::string& what);

// The opening of an SVG picture of the image's size with the image as its
// background; the caller appends its overlays and "</svg>\n".
std::string SvgOverView(const QAVPixelImage& view);
// A coordinate or length in SVG: one decimal.
std::string SvgNumber(double v);
// The bytes in base64, for images embedded as data URIs.
std::string Base64(const std::string& bytes);
// Text made safe inside SVG elements and attributes.
std::string SvgEscaped(const std::string& text);

// Writes a picture drawn as SVG: the SVG itself, or the PNG made from it. 0; 1
// with the reason printed when it cannot be written; 2 for a name that is
// neither ".png" nor ".svg".
int WritePicture(const std::string& path, const std::string& svg);
// Writes a raster picture: the PNG itself, or an SVG embedding it. The same
// statuses.
int WritePicture(const std::string& path, const QAVPixelImage& image);

}  // namespace qavcli

#endif
