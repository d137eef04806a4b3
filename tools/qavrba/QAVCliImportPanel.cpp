#include "QAVCliImportPanel.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "QAVCliPicture.h"
#include "QAVRbaMaterialCatalogImporterItem.h"
#include "QAVSYPStyleSheet.h"

namespace qavcli {

namespace {

constexpr const char* kSheet = "QAVRbaMaterialCatalogImporterPanel.QAVSYPStyle";
constexpr const char* kPanel = "QAVRbaMaterialCatalogImporterPanel";
constexpr const char* kItem = "QAVRbaMaterialCatalogImporterItem";

// Advance widths of the printable ASCII characters, from the space to the
// tilde, in thousandths of the font size, in the system's usual sans-serif face
// (regular, then bold). That face is among the widest of its kind, so text
// measured with it also fits when drawn in another. Any other character counts
// as a whole em, as wide as the widest.
constexpr unsigned short kRegularWidths[95] = {
    318, 401, 460, 838, 636, 950, 780, 275, 390, 390, 500, 838, 318, 361,  318, 337, 636, 636, 636,
    636, 636, 636, 636, 636, 636, 636, 337, 337, 838, 838, 838, 531, 1000, 684, 686, 698, 770, 632,
    575, 775, 752, 295, 295, 656, 557, 863, 748, 787, 603, 787, 695, 635,  611, 732, 684, 989, 685,
    611, 685, 390, 337, 390, 838, 500, 500, 613, 635, 550, 635, 615, 352,  635, 634, 278, 278, 579,
    278, 974, 634, 612, 635, 635, 411, 521, 392, 634, 592, 818, 592, 592,  525, 636, 337, 636, 838};
constexpr unsigned short kBoldWidths[95] = {
    348,  456, 521, 838, 696, 1002, 872, 306,  457, 457, 523, 838, 380, 415,  380, 365,
    696,  696, 696, 696, 696, 696,  696, 696,  696, 696, 400, 400, 838, 838,  838, 580,
    1000, 774, 762, 734, 830, 683,  683, 821,  837, 372, 372, 775, 637, 995,  837, 850,
    733,  850, 770, 720, 682, 812,  774, 1103, 771, 724, 725, 457, 365, 457,  838, 500,
    500,  675, 716, 593, 716, 678,  435, 716,  712, 343, 343, 665, 343, 1042, 712, 687,
    716,  716, 493, 595, 478, 712,  652, 924,  645, 652, 582, 712, 365, 712,  838};
constexpr const char* kEllipsis = "\u2026";  // as wide as one em

// The width of `text` (UTF-8) drawn at `size`.
double TextWidth(const std::string& text, double size, bool bold) {
  const unsigned short* widths = bold ? kBoldWidths : kRegularWidths;
  double thousandths = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 32 && byte <= 126)
      thousandths += widths[byte - 32];
    else if ((byte & 0xC0) != 0x80)  // the first byte of any other character
      thousandths += 1000;
  }
  return thousandths * size / 1000;
}

// `text` as it fits in `width`: whole, or cut at a character's boundary and
// ended with an ellipsis. `cut` ends it with one even when it fits whole (text
// that goes on beyond it).
std::string Fitted(const std::string& text, double width, double size, bool bold,
                   bool cut = false) {
  if (!cut && TextWidth(text, size, bold) <= width) return text;
  std::string kept = text;
  while (!kept.empty() && TextWidth(kept + kEllipsis, size, bold) > width) {
    // The last character goes whole: its first byte and those continuing it.
    std::size_t end = kept.size() - 1;
    while (end > 0 && (static_cast<unsigned char>(kept[end]) & 0xC0) == 0x80)
      --end;
    kept.erase(end);
  }
  while (!kept.empty() && kept.back() == ' ')
    kept.pop_back();
  return kept + kEllipsis;
}

// Lines that fit in `width`, cut at blanks; a word wider than a line is cut
// with an ellipsis.
std::vector<std::string> Wrap(const std::string& text, double width, double size, bool bold) {
  std::vector<std::string> lines;
  std::istringstream words(text);
  std::string line;
  for (std::string word; words >> word;) {
    std::string longer = line.empty() ? word : line;
    if (!line.empty()) longer.append(" ").append(word);
    if (!line.empty() && TextWidth(longer, size, bold) > width) {
      lines.push_back(line);
      longer = word;
    }
    line = Fitted(longer, width, size, bold);
  }
  if (!line.empty()) lines.push_back(line);
  return lines;
}

std::string Text(double x, double y, double size, const std::string& colour,
                 const std::string& text, bool bold = false) {
  return "<text x=\"" + SvgNumber(x) + "\" y=\"" + SvgNumber(y) +
         "\" font-family=\"sans-serif\" font-size=\"" + SvgNumber(size) + "\" fill=\"" + colour +
         "\"" + (bold ? " font-weight=\"bold\"" : "") + ">" + SvgEscaped(text) + "</text>\n";
}

// The PNG of an image: the path itself when it has a folder, else the first of
// `dirs` that has it as a regular file; empty when not found.
std::string ImageBytes(const std::string& name, const std::vector<std::string>& dirs) {
  std::vector<std::string> candidates;
  if (name.find('/') != std::string::npos) candidates.push_back(name);
  for (std::string dir : dirs)
    candidates.push_back((dir += '/') += name);
  for (const std::string& path : candidates) {
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) continue;  // a FIFO would never end
    std::ifstream in(path, std::ios::binary);
    if (!in) continue;
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
  }
  return {};
}

std::string Image(double x, double y, double size, const std::string& name,
                  const std::vector<std::string>& dirs) {
  const std::string png = ImageBytes(name, dirs);
  if (png.empty())
    return "<rect x=\"" + SvgNumber(x) + "\" y=\"" + SvgNumber(y) + "\" width=\"" +
           SvgNumber(size) + "\" height=\"" + SvgNumber(size) +
           "\" fill=\"#eceff3\" stroke=\"#b5bcc6\" stroke-dasharray=\"3 3\"/>\n";
  return "<image x=\"" + SvgNumber(x) + "\" y=\"" + SvgNumber(y) + "\" width=\"" + SvgNumber(size) +
         "\" height=\"" + SvgNumber(size) + "\" href=\"data:image/png;base64," + Base64(png) +
         "\"/>\n";
}

}  // namespace

std::string ImporterPanelSvg(const QAVRbaMaterialCatalogImporterPanel& panel,
                             const std::vector<std::string>& imageDirs) {
  static const QAVSYPStyleSheet empty;
  const QAVSYPStyleSheet* found = QAVSYPStyleSheet::Get(kSheet);
  const QAVSYPStyleSheet& sheet = found ? *found : empty;
  const QAVSYPStyleSheet::States none;
  const auto pn = [&](const char* key, double fallback) {
    return sheet.GetNumber(kPanel, key, none, fallback);
  };
  const auto ps = [&](const char* key, const char* fallback) {
    return sheet.GetValue(kPanel, key, none, fallback);
  };

  const double width = pn("width", 760);
  const double pad = pn("padding", 16);
  const double gap = pn("gap", 10);
  const int columns = std::max(1, static_cast<int>(pn("columns", 2)));
  const double iconSize = pn("icon-size", 56);
  const double titleSize = pn("title-size", 15);
  const double infoSize = pn("info-size", 12);
  const double tileWidth = sheet.GetNumber(kItem, "width", none, 356);
  const double tileHeight = sheet.GetNumber(kItem, "height", none, 84);

  std::string body;
  double y = 32 + pad;
  // The kind's icon, the panel's title and information beside it.
  const QAVDlgWidget* icon = panel.FindWidget("PanelIcon");
  body += Image(pad, y, iconSize, icon ? icon->GetIcon().str() : "", imageDirs);
  const double textX = pad + iconSize + 14;
  double textY = y + titleSize;
  for (const std::string& line :
       Wrap(panel.GetTitle().str(), width - textX - pad, titleSize, true)) {
    body += Text(textX, textY, titleSize, ps("title-color", "#1d2430"), line, true);
    textY += titleSize * 1.35;
  }
  textY += 4;
  for (const std::string& line :
       Wrap(panel.GetInfo().str(), width - textX - pad, infoSize, false)) {
    body += Text(textX, textY, infoSize, ps("info-color", "#55606e"), line);
    textY += infoSize * 1.35;
  }
  y = std::max(y + iconSize, textY) + pad;

  // The tiles, in rows.
  const QAVISYPCollection* items = panel.GetItems();
  const int count = items ? items->GetCount() : 0;
  for (int n = 0; n < count; ++n) {
    const auto* item = dynamic_cast<const QAVRbaMaterialCatalogImporterItem*>(items->GetItem(n));
    if (!item) continue;
    const QAVSYPStyleSheet::States states = {{"BSelect", item->GetBSelect()},
                                             {"BHighlight", item->GetBHighlight()},
                                             {"Unavailable", item->GetUnavailable()}};
    const auto is = [&](const char* key, const char* fallback) {
      return sheet.GetValue(kItem, key, states, fallback);
    };
    const auto in = [&](const char* key, double fallback) {
      return sheet.GetNumber(kItem, key, states, fallback);
    };
    const int row = n / columns;
    const int column = n % columns;
    const double x = pad + column * (tileWidth + gap);
    const double top = y + row * (tileHeight + gap);
    const double thumb = in("thumbnail-size", 64);
    char opacity[16];
    (void)std::snprintf(opacity, sizeof opacity, "%.3g", in("opacity", 1));
    body += "<g opacity=\"" + std::string(opacity) + "\">\n";
    body += "<rect x=\"" + SvgNumber(x) + "\" y=\"" + SvgNumber(top) + "\" width=\"" +
            SvgNumber(tileWidth) + "\" height=\"" + SvgNumber(tileHeight) + "\" rx=\"4\" fill=\"" +
            is("background", "#ffffff") + "\" stroke=\"" + is("border", "#cfd5dd") +
            "\" stroke-width=\"" + SvgNumber(in("border-width", 1)) + "\"/>\n";
    body +=
        Image(x + 10, top + (tileHeight - thumb) / 2, thumb, item->GetPicture().str(), imageDirs);
    // The title on one line and the description below it, both within the
    // tile: what does not fit is cut with an ellipsis.
    const double tx = x + 10 + thumb + 12;
    const double textWidth = x + tileWidth - tx - 8;
    const double itemTitleSize = in("title-size", 13);
    const double titleY = top + 10 + itemTitleSize;
    body += Text(tx, titleY, itemTitleSize, is("title-color", "#1d2430"),
                 Fitted(item->GetTitle().str(), textWidth, itemTitleSize, true), true);
    const double descriptionSize = in("description-size", 11);
    const std::vector<std::string> lines =
        Wrap(item->GetDescription().str(), textWidth, descriptionSize, false);
    double dy = titleY + descriptionSize + 6;
    for (std::size_t i = 0; i < lines.size() && dy <= top + tileHeight - 6; ++i) {
      const bool last = dy + descriptionSize * 1.3 > top + tileHeight - 6;
      const std::string line = last && i + 1 < lines.size()
                                   ? Fitted(lines[i], textWidth, descriptionSize, false, true)
                                   : lines[i];
      body += Text(tx, dy, descriptionSize, is("description-color", "#5a6573"), line);
      dy += descriptionSize * 1.3;
    }
    body += "</g>\n";
  }
  const int rows = (count + columns - 1) / columns;
  y += rows * (tileHeight + gap) + pad;

  // The check box, then the buttons on the right.
  const QAVDlgWidget* check = panel.FindWidget("CheckDoNoSHowAgain");
  const bool checked = check && check->GetCheckState() != 0;
  body += "<rect x=\"" + SvgNumber(pad) + "\" y=\"" + SvgNumber(y + 6) +
          "\" width=\"14\" height=\"14\" rx=\"2\" fill=\"#ffffff\" stroke=\"#7a8594\"/>\n";
  if (checked)
    body += "<path d=\"M" + SvgNumber(pad + 3) + " " + SvgNumber(y + 13) +
            " l3.5 3.5 l6 -7\" fill=\"none\" "
            "stroke=\"#2f6fd0\" stroke-width=\"2\"/>\n";
  body += Text(pad + 22, y + 18, 12, "#1d2430", "Do not show this again");
  const double bw = pn("button-width", 96);
  const double bh = pn("button-height", 28);
  const auto button = [&](const char* name, double x, const std::string& label, bool primary) {
    const QAVDlgWidget* widget = panel.FindWidget(name);
    const QAVSYPStyleSheet::States state = {
        {"Insensitive", widget && !widget->GetSensitivity() ? 1 : 0}};
    const std::string fill = primary ? sheet.GetValue(kPanel, "button-background", state, "#2f6fd0")
                                     : ps("cancel-background", "#e2e6ec");
    const std::string ink = primary ? ps("button-text", "#ffffff") : ps("cancel-text", "#1d2430");
    return "<rect x=\"" + SvgNumber(x) + "\" y=\"" + SvgNumber(y) + "\" width=\"" + SvgNumber(bw) +
           "\" height=\"" + SvgNumber(bh) + "\" rx=\"4\" fill=\"" + fill + "\"/>\n" + "<text x=\"" +
           SvgNumber(x + bw / 2) + "\" y=\"" + SvgNumber(y + bh / 2 + 4.5) +
           "\" text-anchor=\"middle\" font-family=\"sans-serif\" font-size=\"13\" fill=\"" + ink +
           "\">" + label + "</text>\n";
  };
  body += button("CreateButton", width - pad - 2 * bw - 8, "Create", true);
  body += button("CancelButton", width - pad - bw, "Cancel", false);
  const double height = y + bh + pad;

  const QAVDlgWidget* dialog = panel.GetFatherWidget();
  std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + SvgNumber(width) +
                    "\" height=\"" + SvgNumber(height) + "\" viewBox=\"0 0 " + SvgNumber(width) +
                    " " + SvgNumber(height) + "\">\n";
  svg += "<rect width=\"100%\" height=\"100%\" fill=\"" + ps("background", "#f3f4f6") + "\"/>\n";
  svg += "<rect width=\"100%\" height=\"32\" fill=\"" + ps("title-bar", "#2b3442") + "\"/>\n";
  svg += Text(pad, 21, 13, ps("title-bar-text", "#ffffff"),
              Fitted(dialog ? dialog->GetTitle().str() : std::string(), width - 2 * pad, 13, true),
              true);
  return svg + body + "</svg>\n";
}

}  // namespace qavcli
