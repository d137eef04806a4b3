#include "QAVCliBarPicture.h"

#include <map>

#include "QAVCliPicture.h"

namespace qavcli {

namespace {

constexpr double kButton = 44;    // a square button
constexpr double kGap = 4;        // between items
constexpr double kSeparator = 9;  // the width a separator takes
constexpr double kPad = 8;        // inside the bar
constexpr double kLabel = 12;     // the label line under the buttons

// The icon of a header, drawn in a 24 x 24 box at the origin.
std::string Icon(const std::string& h) {
  const std::string s = "fill=\"none\" stroke=\"#f4f4f4\" stroke-width=\"1.6\" ";
  if (h == "QAVRbaContextBarTypePlanarHdr")
    return "<path " + s + "d=\"M3 17 L9 6 L21 6 L15 17 Z\"/>";
  if (h == "QAVRbaContextBarTypeSphericalHdr")
    return "<circle " + s + "cx=\"12\" cy=\"12\" r=\"9\"/><ellipse " + s +
           "cx=\"12\" cy=\"12\" rx=\"9\" ry=\"3\"/>";
  if (h == "QAVRbaContextBarTypeFiniteCylindricalHdr")
    return "<ellipse " + s + "cx=\"12\" cy=\"5\" rx=\"7\" ry=\"2.5\"/><path " + s +
           "d=\"M5 5 V19 M19 5 V19 M5 19 A7 2.5 0 0 0 19 19\"/>";
  if (h == "QAVRbaContextBarTypeInfiniteCylindricalHdr")
    return "<ellipse " + s + "cx=\"12\" cy=\"12\" rx=\"7\" ry=\"2.5\"/><path " + s +
           "stroke-dasharray=\"2 2\" d=\"M5 1 V23 M19 1 V23\"/>";
  if (h == "QAVRbaContextBarTypeCubicalHdr")
    return "<path " + s + "d=\"M4 8 H16 V20 H4 Z M4 8 L8 4 H20 V16 L16 20 M16 8 L20 4\"/>";
  if (h == "QAVRbaContextBarTypeUVHdr")
    return "<text x=\"12\" y=\"17\" text-anchor=\"middle\" font-family=\"sans-serif\" "
           "font-size=\"13\" font-weight=\"bold\" fill=\"#f4f4f4\">UV</text>";
  if (h == "QAVRbaContextBarDisplayDrawingZoneManipHdr")
    return "<rect " + s + "stroke-dasharray=\"3 2\" x=\"3\" y=\"5\" width=\"18\" height=\"14\"/>";
  if (h == "QAVRbaContextBarDisplayManipRepHdr")
    return "<path " + s +
           "d=\"M6 18 H21 M18 15 L21 18 L18 21 M6 18 V3 M3 6 L6 3 L9 6 M6 18 L15 9\"/>";
  if (h == "QAVRbaContextBarMaterialSnapperHdr")
    return "<circle " + s + "cx=\"12\" cy=\"12\" r=\"6\"/><path " + s +
           "d=\"M12 2 V8 M12 16 V22 M2 12 H8 M16 12 H22\"/>";
  if (h == "QAVRbaContextBarFitToSupportScaleHdr")
    return "<rect " + s + "x=\"7\" y=\"7\" width=\"10\" height=\"10\"/><path " + s +
           "d=\"M2 6 V2 H6 M18 2 H22 V6 M22 18 V22 H18 M6 22 H2 V18\"/>";
  if (h == "QAVRbaContextBarFitToTextureScaleHdr")
    return "<rect " + s + "x=\"4\" y=\"4\" width=\"16\" height=\"16\"/><path " + s +
           "d=\"M4 16 L10 10 L14 14 L20 8\"/>";
  if (h == "QAVRbaContextBarAlignWithCameraViewHdr")
    return "<rect " + s + "x=\"2\" y=\"8\" width=\"13\" height=\"10\" rx=\"1.5\"/><path " + s +
           "d=\"M15 11 L22 7 V19 L15 15\"/>";
  if (h == "QAVRbaContextBarEditMatrixPositionHdr")
    return "<text x=\"12\" y=\"16\" text-anchor=\"middle\" font-family=\"sans-serif\" "
           "font-size=\"9\" fill=\"#f4f4f4\">xyz</text><path " +
           s + "d=\"M1 3 V21 M23 3 V21\"/>";
  if (h == "QAVRbaContextBarEnableCropModeHdr" || h == "QAVRbaContextBarDisableCropModeHdr")
    return "<path " + s + "d=\"M6 2 V18 H22 M2 6 H18 V22\"/>" +
           (h == "QAVRbaContextBarDisableCropModeHdr"
                ? "<path fill=\"none\" stroke=\"#ff8a65\" stroke-width=\"2\" d=\"M3 21 L21 3\"/>"
                : "");
  return "<text x=\"12\" y=\"17\" text-anchor=\"middle\" font-family=\"sans-serif\" "
         "font-size=\"14\" fill=\"#f4f4f4\">?</text>";
}

std::string Button(const std::string& header, double x, double y, bool container) {
  std::string svg = "<g transform=\"translate(" + SvgNumber(x) + " " + SvgNumber(y) +
                    ")\"><title>" + SvgEscaped(header.empty() ? "(nameless)" : header) + "</title>";
  svg += "<rect width=\"" + SvgNumber(kButton) + "\" height=\"" + SvgNumber(kButton) +
         "\" rx=\"6\" fill=\"#3b4652\" stroke=\"#5d6b79\"/>";
  svg += "<g transform=\"translate(10 7)\">" + Icon(header) + "</g>";
  if (container) svg += "<path d=\"M34 38 L40 38 L40 32 Z\" fill=\"#9fd3ff\"/>";
  svg += "</g>";
  return svg;
}

std::string Label(const std::string& header, double x, double y) {
  return "<text x=\"" + SvgNumber(x + kButton / 2) + "\" y=\"" + SvgNumber(y) +
         "\" text-anchor=\"middle\" font-family=\"sans-serif\" font-size=\"9\" "
         "fill=\"#c9d1d9\">" +
         SvgEscaped(ButtonLabel(header)) + "</text>";
}

std::string Command(const QAVICAfrComponent& item) {
  QAVString command;
  item.GetProperties().GetString(QAVString("Command"), command);
  return command.str();
}

}  // namespace

std::string ButtonLabel(const std::string& header) {
  static const std::map<std::string, std::string> labels = {
      {"QAVRbaContextBarTypePlanarHdr", "Planar"},
      {"QAVRbaContextBarTypeSphericalHdr", "Sphere"},
      {"QAVRbaContextBarTypeFiniteCylindricalHdr", "Cylinder"},
      {"QAVRbaContextBarTypeInfiniteCylindricalHdr", "Tube"},
      {"QAVRbaContextBarTypeCubicalHdr", "Box"},
      {"QAVRbaContextBarTypeUVHdr", "UV"},
      {"QAVRbaContextBarDisplayDrawingZoneManipHdr", "Zone"},
      {"QAVRbaContextBarDisplayManipRepHdr", "Manip"},
      {"QAVRbaContextBarMaterialSnapperHdr", "Snap"},
      {"QAVRbaContextBarFitToSupportScaleHdr", "Fit"},
      {"QAVRbaContextBarFitToTextureScaleHdr", "Tex size"},
      {"QAVRbaContextBarAlignWithCameraViewHdr", "Align"},
      {"QAVRbaContextBarEditMatrixPositionHdr", "Position"},
      {"QAVRbaContextBarEnableCropModeHdr", "Crop"},
      {"QAVRbaContextBarDisableCropModeHdr", "Uncrop"},
      {"", "(none)"}};
  const auto it = labels.find(header);
  return it == labels.end() ? header : it->second;
}

std::string BarSvg(const QAVICAfrComponent& row, double x, double y, double& width,
                   double& height) {
  std::string items;
  std::string popup;
  double at = kPad;
  double below = 0;  // how far the open container reaches under the bar
  const double barHeight = kPad * 2 + kButton + kLabel;
  for (int i = 0; i < row.GetComponentCount(); ++i) {
    const QAVICAfrComponent& item = *row.GetComponent(i);
    const std::string type = item.GetComponentType().str();
    if (type == "QAVCmdSeparator") {
      items += "<line x1=\"" + SvgNumber(at + kSeparator / 2) + "\" y1=\"" + SvgNumber(kPad + 4) +
               "\" x2=\"" + SvgNumber(at + kSeparator / 2) + "\" y2=\"" +
               SvgNumber(kPad + kButton - 4) + "\" stroke=\"#6b7885\" stroke-width=\"1\"><title>" +
               SvgEscaped(item.GetComponentName().str()) + "</title></line>";
      at += kSeparator + kGap;
      continue;
    }
    const bool container = type == "QAVCmdContainer";
    const QAVICAfrComponent* shown = container && item.GetComponentCount() > 0
                                         ? item.GetComponent(0)
                                         : (container ? nullptr : &item);
    const std::string header = shown ? Command(*shown) : std::string();
    items += Button(header, at, kPad, container);
    items += Label(header, at, kPad + kButton + 10);
    if (container && item.GetComponentCount() > 1) {
      // The container open: its other starters in a column under the bar.
      const int others = item.GetComponentCount() - 1;
      const double top = barHeight + 6;
      const double listHeight = others * (kButton * 0.75 + 2) + 8;
      popup += "<rect x=\"" + SvgNumber(at - 4) + "\" y=\"" + SvgNumber(top) + "\" width=\"" +
               SvgNumber(kButton + 86) + "\" height=\"" + SvgNumber(listHeight) +
               "\" rx=\"6\" fill=\"#2a323b\" stroke=\"#9fd3ff\" stroke-opacity=\"0.6\"/>";
      for (int k = 1; k <= others; ++k) {
        const std::string other = Command(*item.GetComponent(k));
        const double rowY = top + 4 + (k - 1) * (kButton * 0.75 + 2);
        popup += "<g transform=\"translate(" + SvgNumber(at) + " " + SvgNumber(rowY) +
                 ") scale(0.75)\">" + Button(other, 0, 0, false) + "</g>";
        popup += "<text x=\"" + SvgNumber(at + kButton * 0.75 + 8) + "\" y=\"" +
                 SvgNumber(rowY + kButton * 0.75 / 2 + 4) +
                 "\" font-family=\"sans-serif\" font-size=\"11\" fill=\"#e6edf3\">" +
                 SvgEscaped(ButtonLabel(other)) + "</text>";
      }
      below = std::max(below, 6 + listHeight);
    }
    at += kButton + kGap;
  }
  width = std::max(at - kGap + kPad, 2 * kPad + kButton);
  height = barHeight + below;
  return "<g transform=\"translate(" + SvgNumber(x) + " " + SvgNumber(y) + ")\"><rect width=\"" +
         SvgNumber(width) + "\" height=\"" + SvgNumber(barHeight) +
         "\" rx=\"10\" fill=\"#232a31\" fill-opacity=\"0.94\" stroke=\"#4a5663\"/>" + items +
         popup + "</g>\n";
}

std::string BarPicture(const QAVICAfrComponent& row, const std::string& title) {
  double width = 0;
  double height = 0;
  const std::string bar = BarSvg(row, 16, 40, width, height);
  const double w = std::max(width + 32, 320.0);
  const double h = height + 56;
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + SvgNumber(w) + "\" height=\"" +
         SvgNumber(h) + "\" viewBox=\"0 0 " + SvgNumber(w) + " " + SvgNumber(h) +
         "\">\n<rect width=\"100%\" height=\"100%\" " +
         "fill=\"#e9edf1\"/>\n<text x=\"16\" y=\"26\" font-family=\"sans-serif\" font-size=\"14\" "
         "fill=\"#1f2328\">" +
         SvgEscaped(title) + "</text>\n" + bar + "</svg>\n";
}

}  // namespace qavcli
