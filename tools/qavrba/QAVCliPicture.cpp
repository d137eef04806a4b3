#include "QAVCliPicture.h"

#include <unistd.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
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

std::string Lowered(std::string text) {
  for (char& c : text)
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

const char* const kPictureNames = "a picture is written as .png or .svg";

// A file beside `path` for the bytes to come; empty, with `error`, when none
// can be made there.
std::string TemporaryBeside(const std::string& path, std::string& error) {
  std::string name = path + ".XXXXXX";
  const int fd = ::mkstemp(name.data());
  if (fd < 0) {
    error = std::strerror(errno);
    return {};
  }
  // The permissions a file made by the user gets, not mkstemp's private ones.
  const mode_t mask = ::umask(0);
  ::umask(mask);
  (void)::fchmod(fd, 0666 & ~mask);
  ::close(fd);
  return name;
}

bool WriteBytes(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  return out && out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())) && out.flush();
}

// Puts the finished file `made` in place of `path`: 0, or 1 with the reason
// (and `made` removed).
int Replace(const std::string& made, const std::string& path) {
  if (std::rename(made.c_str(), path.c_str()) == 0) return 0;
  const std::string why = std::strerror(errno);
  std::error_code ec;
  std::filesystem::remove(made, ec);
  return Fail(path + ": cannot be written: " + why);
}

// Writes `bytes` as the whole of `path`, or nothing.
int WriteWhole(const std::string& path, const std::string& bytes) {
  std::string error;
  const std::string made = TemporaryBeside(path, error);
  if (made.empty()) return Fail(path + ": cannot be written: " + error);
  if (!WriteBytes(made, bytes)) {
    std::error_code ec;
    std::filesystem::remove(made, ec);
    return Fail(path + ": cannot be written");
  }
  return Replace(made, path);
}

// The PNG made from `svg` by rsvg-convert, as the whole of `path`.
int WriteConverted(const std::string& path, const std::string& svg) {
  std::string error;
  const std::string source = TemporaryBeside(path, error);
  if (source.empty()) return Fail(path + ": cannot be written: " + error);
  const std::string made = TemporaryBeside(path, error);
  std::error_code ec;
  if (made.empty() || !WriteBytes(source, svg)) {
    std::filesystem::remove(source, ec);
    if (!made.empty()) std::filesystem::remove(made, ec);
    return Fail(path + ": cannot be written" + (error.empty() ? "" : ": " + error));
  }
  const pid_t child = ::fork();
  if (child == 0) {
    ::execlp("rsvg-convert", "rsvg-convert", source.c_str(), "-o", made.c_str(), nullptr);
    ::_exit(127);
  }
  int status = -1;
  if (child > 0) ::waitpid(child, &status, 0);
  std::filesystem::remove(source, ec);
  if (child < 0 || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    std::filesystem::remove(made, ec);
    if (child < 0 || !WIFEXITED(status) || WEXITSTATUS(status) == 127)
      return Fail(
          "a PNG picture needs rsvg-convert: sudo apt-get install -y librsvg2-bin (or "
          "write an .svg)");
    return Fail(path + ": cannot be written: rsvg-convert failed");
  }
  return Replace(made, path);
}

int UnknownPictureName(const std::string& path) {
  return UsageError("'" + path + "': " + kPictureNames);
}

}  // namespace

bool PictureFormatOf(const std::string& path, PictureFormat& format) {
  const std::string name = std::filesystem::path(path).filename().string();
  const std::string lowered = Lowered(name);
  const auto endsWith = [&lowered](const char* extension) {
    const std::size_t n = std::strlen(extension);
    // A name that is only the extension (".png") names no picture.
    return lowered.size() > n && lowered.compare(lowered.size() - n, n, extension) == 0;
  };
  if (endsWith(".png")) {
    format = PictureFormat::Png;
    return true;
  }
  if (endsWith(".svg")) {
    format = PictureFormat::Svg;
    return true;
  }
  return false;
}

CLI::Option* AddPictureOption(CLI::App* command, std::string& path, const std::string& what) {
  return command
      ->add_option("-o,--output", path, what + ": PNG for a .png name, SVG for a .svg name")
      ->check(CLI::Validator(
          [](std::string& text) -> std::string {
            PictureFormat format{};
            return PictureFormatOf(text, format) ? std::string()
                                                 : "'" + text + "': " + kPictureNames;
          },
          "FILE.png|FILE.svg"));
}

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
  PictureFormat format{};
  if (!PictureFormatOf(path, format)) return UnknownPictureName(path);
  return format == PictureFormat::Svg ? WriteWhole(path, svg) : WriteConverted(path, svg);
}

int WritePicture(const std::string& path, const QAVPixelImage& image) {
  PictureFormat format{};
  if (!PictureFormatOf(path, format)) return UnknownPictureName(path);
  if (format == PictureFormat::Svg) return WriteWhole(path, SvgOverView(image) + "</svg>\n");
  std::string png;
  std::string error;
  if (FAILED(QAVPngFile::Encode(image, png, error))) return Fail(path + ": " + error);
  return WriteWhole(path, png);
}

}  // namespace qavcli
