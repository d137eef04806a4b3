#include "QAVCliPicture.h"

#include <unistd.h>

#include <sys/wait.h>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "QAVCli.h"
#include "QAVPngFile.h"

namespace qavcli {

std::string SvgNumber(double v) {
  char text[32];
  (void)std::snprintf(text, sizeof text, "%.1f", v);
  return text;
}

std::string Base64(const std::string& bytes) {
  static const char* const kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  out.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t n = bytes.size() - i;
    const unsigned v = static_cast<unsigned char>(bytes[i]) << 16U |
                       (n > 1 ? static_cast<unsigned char>(bytes[i + 1]) << 8U : 0U) |
                       (n > 2 ? static_cast<unsigned char>(bytes[i + 2]) : 0U);
    out += kDigits[(v >> 18U) & 63U];
    out += kDigits[(v >> 12U) & 63U];
    out += n > 1 ? kDigits[(v >> 6U) & 63U] : '=';
    out += n > 2 ? kDigits[v & 63U] : '=';
  }
  return out;
}

namespace {

bool WriteFile(const std::string& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  return out && out.write(text.data(), static_cast<std::streamsize>(text.size())) && out.flush();
}

}  // namespace

std::string SvgOverView(const QAVPixelImage& view) {
  std::string png;
  std::string error;
  if (FAILED(QAVPngFile::Encode(view, png, error))) png.clear();
  const std::string w = std::to_string(view.GetWidth());
  const std::string h = std::to_string(view.GetHeight());
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + w + "\" height=\"" + h +
         "\" viewBox=\"0 0 " + w + " " + h + "\">\n<image x=\"0\" y=\"0\" width=\"" + w +
         "\" height=\"" + h + "\" href=\"data:image/png;base64," + Base64(png) + "\"/>\n";
}

std::string SvgEscaped(const std::string& text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        // Control bytes are not allowed in XML text.
        out += static_cast<unsigned char>(c) < 0x20 ? '?' : c;
    }
  }
  return out;
}

int WritePicture(const std::string& path, const std::string& svg) {
  const bool png = path.size() > 4 && path.compare(path.size() - 4, 4, ".png") == 0;
  if (!png) return WriteFile(path, svg) ? 0 : Fail(path + ": cannot be written");
  // The SVG beside the target, converted, then removed.
  const std::string svgPath = path + ".svg";
  if (!WriteFile(svgPath, svg)) return Fail(path + ": cannot be written");
  const pid_t child = ::fork();
  if (child == 0) {
    ::execlp("rsvg-convert", "rsvg-convert", svgPath.c_str(), "-o", path.c_str(), nullptr);
    ::_exit(127);
  }
  int status = -1;
  if (child > 0) ::waitpid(child, &status, 0);
  std::error_code ec;
  std::filesystem::remove(svgPath, ec);
  if (child < 0 || !WIFEXITED(status) || WEXITSTATUS(status) == 127)
    return Fail(
        "a PNG picture needs rsvg-convert: sudo apt-get install -y librsvg2-bin (or "
        "write an .svg)");
  if (WEXITSTATUS(status) != 0) return Fail(path + ": cannot be written");
  return 0;
}

}  // namespace qavcli
