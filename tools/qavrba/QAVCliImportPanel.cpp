#include "QAVCliImportPanel.h"

#include <algorithm>
#include <cstdio>
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

// Lines of at most `width` characters, cut at blanks.
std::vector<std::string> Wrap(const std::string& text, std::size_t width) {
  std::vector<std::string> lines;
  std::istringstream words(text);
  std::string line;
  for (std::string word; words >> word;) {
    if (!line.empty() && line.size() + 1 + word.size() > width) {
      lines.push_back(line);
      line.clear();
    }
    line += (line.empty() ? "" : " ") + word;
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
// `dirs` that has it; empty when not found.
std::string ImageBytes(const std::string& name, const std::vector<std::string>& dirs) {
  std::vector<std::string> candidates;
  if (name.find('/') != std::string::npos) candidates.push_back(name);
  for (std::string dir : dirs)
    candidates.push_back((dir += '/') += name);
  for (const std::string& path : candidates) {
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
  const std::size_t textChars = static_cast<std::size_t>((width - textX - pad) / (titleSize * 0.6));
  double textY = y + titleSize;
  for (const std::string& line : Wrap(panel.GetTitle().str(), textChars)) {
    body += Text(textX, textY, titleSize, ps("title-color", "#1d2430"), line, true);
    textY += titleSize * 1.35;
  }
  textY += 4;
  const std::size_t infoChars = static_cast<std::size_t>((width - textX - pad) / (infoSize * 0.52));
  for (const std::string& line : Wrap(panel.GetInfo().str(), infoChars)) {
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
    const double tx = x + 10 + thumb + 12;
    const double titleY = top + 10 + in("title-size", 13);
    body += Text(tx, titleY, in("title-size", 13), is("title-color", "#1d2430"),
                 item->GetTitle().str(), true);
    const double descriptionSize = in("description-size", 11);
    const std::size_t chars =
        static_cast<std::size_t>((x + tileWidth - tx - 8) / (descriptionSize * 0.52));
    double dy = titleY + descriptionSize + 6;
    for (const std::string& line : Wrap(item->GetDescription().str(), chars)) {
      if (dy > top + tileHeight - 6) break;
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
              dialog ? dialog->GetTitle().str() : std::string(), true);
  return svg + body + "</svg>\n";
}

}  // namespace qavcli
