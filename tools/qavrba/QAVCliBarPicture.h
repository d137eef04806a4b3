// Pictures of context bars: the row of a bar as its frame holds it, drawn as a
// floating bar of buttons (an icon and a short label each), separators, and the
// mapping container open below its button.
#ifndef QAVCliBarPicture_h
#define QAVCliBarPicture_h

#include <string>

#include "QAVICAfrComponent.h"

namespace qavcli {

// The short label of a button's header ("Planar", "Snap", ...); the header
// itself when it is not one of the bars' headers.
std::string ButtonLabel(const std::string& header);
// An SVG group drawing `row` with its top left at (x, y), and the width and
// height it takes (the open container included).
std::string BarSvg(const QAVICAfrComponent& row, double x, double y, double& width, double& height);
// A whole SVG picture of the row, titled.
std::string BarPicture(const QAVICAfrComponent& row, const std::string& title);

}  // namespace qavcli

#endif
