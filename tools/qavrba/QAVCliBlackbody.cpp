// qavrba blackbody: the normalised colour of black bodies, as text or as an SVG
// colour strip with a temperature scale.
//
// Hex colours: each component of the tint is clamped to 0..1 (a slightly
// negative blue of a very warm source becomes 0; nothing is above 1 after the
// normalisation) and scaled to 0..255, rounded to the nearest. The components
// are written as they are, without a display transfer curve.
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "QAVCli.h"
#include "QAVCliDemoParts.h"
#include "QAVRbaBlackbody.h"

namespace {

constexpr const char* kName = "blackbody";

struct Tint {
  float r, g, b;
};

Tint TintOf(float kelvin) {
  Tint t{0.0f, 0.0f, 0.0f};
  BlackbodyColor(kelvin, &t.r, &t.g, &t.b);
  return t;
}

int ToByte(float v) {
  const float clamped = std::clamp(v, 0.0f, 1.0f);
  return static_cast<int>(std::lround(clamped * 255.0f));
}

std::string Hex(const Tint& t) {
  char text[8];
  (void)std::snprintf(text, sizeof text, "#%02x%02x%02x", ToByte(t.r), ToByte(t.g), ToByte(t.b));
  return text;
}

// A temperature in kelvin: a finite number, not negative (0 stands for 6500 K).
bool ParseKelvin(const std::string& text, float& kelvin) {
  if (text.empty()) return false;
  errno = 0;
  char* end = nullptr;
  const float value = std::strtof(text.c_str(), &end);
  if (errno != 0 || end != text.c_str() + text.size() || !std::isfinite(value) || value < 0.0f)
    return false;
  kelvin = value;
  return true;
}

std::string Line(float kelvin) {
  const Tint t = TintOf(kelvin);
  char text[112];
  (void)std::snprintf(text, sizeof text, "%g K%s  %.4f %.4f %.4f  %s", static_cast<double>(kelvin),
                      kelvin == 0.0f ? " (6500 K)" : "", static_cast<double>(t.r),
                      static_cast<double>(t.g), static_cast<double>(t.b), Hex(t).c_str());
  return text;
}

// A round tick spacing giving five to ten ticks over the range.
double TickStep(double range) {
  const double magnitude = std::pow(10.0, std::floor(std::log10(range)));
  for (const double factor : {0.1, 0.2, 0.5, 1.0, 2.0, 5.0})
    if (range / (factor * magnitude) <= 10.0) return factor * magnitude;
  return 10.0 * magnitude;
}

std::string Strip(float from, float to) {
  constexpr int kWidth = 960;
  constexpr int kMargin = 40;
  constexpr int kBands = 440;
  constexpr int kStripTop = 20;
  constexpr int kStripHeight = 100;
  constexpr int kHeight = 170;
  const double bandWidth = double(kWidth - 2 * kMargin) / kBands;

  std::ostringstream svg;
  svg << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << kWidth << "\" height=\"" << kHeight
      << "\" viewBox=\"0 0 " << kWidth << ' ' << kHeight << "\">\n"
      << "  <title>Black-body colours from " << from << " K to " << to << " K</title>\n"
      << "  <rect width=\"100%\" height=\"100%\" fill=\"#202020\"/>\n"
      << "  <g shape-rendering=\"crispEdges\">\n";
  for (int i = 0; i < kBands; ++i) {
    // Each band shows the temperature at its middle.
    const double kelvin = from + (to - from) * (i + 0.5) / kBands;
    // Bands overlap by a fraction of a pixel so no seam shows between them.
    svg << "    <rect x=\"" << kMargin + i * bandWidth << "\" y=\"" << kStripTop << "\" width=\""
        << bandWidth + 0.5 << "\" height=\"" << kStripHeight << "\" fill=\""
        << Hex(TintOf(static_cast<float>(kelvin))) << "\"/>\n";
  }
  svg << "  </g>\n"
      << "  <g stroke=\"#e0e0e0\" fill=\"#e0e0e0\" font-family=\"sans-serif\" font-size=\"12\" "
         "text-anchor=\"middle\">\n";
  const int axis = kStripTop + kStripHeight + 4;
  svg << "    <line x1=\"" << kMargin << "\" y1=\"" << axis << "\" x2=\"" << kWidth - kMargin
      << "\" y2=\"" << axis << "\"/>\n";
  const double step = TickStep(double(to) - from);
  const auto firstTick = static_cast<long>(std::ceil(from / step));
  const auto lastTick = static_cast<long>(std::floor(to / step + 1e-9));
  for (long n = firstTick; n <= lastTick; ++n) {
    const double tick = static_cast<double>(n) * step;
    const double x = kMargin + (tick - from) / (double(to) - from) * (kWidth - 2 * kMargin);
    svg << "    <line x1=\"" << x << "\" y1=\"" << axis << "\" x2=\"" << x << "\" y2=\"" << axis + 6
        << "\"/>\n"
        << "    <text x=\"" << x << "\" y=\"" << axis + 22 << "\" stroke=\"none\">";
    if (step >= 1.0)
      svg << std::lround(tick);
    else
      svg << std::round(tick / step) * step;
    svg << "</text>\n";
  }
  svg << "    <text x=\"" << kWidth / 2 << "\" y=\"" << kHeight - 6
      << "\" stroke=\"none\">colour temperature (K)</text>\n"
      << "  </g>\n</svg>\n";
  return svg.str();
}

int StripCommand(const qavcli::Args& args) {
  std::string range;
  std::string output;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--strip" && i + 1 < args.size() && range.empty()) {
      range = args[++i];
    } else if (args[i] == "-o" && i + 1 < args.size() && output.empty()) {
      output = args[++i];
    } else {
      return qavcli::UsageError(kName, "unexpected argument '" + args[i] + "'");
    }
  }
  if (range.empty()) return qavcli::UsageError(kName, "--strip needs FROM:TO");
  if (output.empty()) return qavcli::UsageError(kName, "--strip needs -o OUT.svg");
  const auto colon = range.find(':');
  float from = 0.0f;
  float to = 0.0f;
  if (colon == std::string::npos || !ParseKelvin(range.substr(0, colon), from) ||
      !ParseKelvin(range.substr(colon + 1), to))
    return qavcli::UsageError(kName, "'" + range + "' is not FROM:TO in kelvin");
  if (from <= 0.0f || to <= from)
    return qavcli::UsageError(kName, "the strip needs 0 < FROM < TO, got '" + range + "'");

  std::ofstream out(output, std::ios::binary | std::ios::trunc);
  out << Strip(from, to);
  out.close();
  if (!out) return qavcli::Fail("cannot write '" + output + "'");
  std::printf("%s: %g K to %g K\n", output.c_str(), static_cast<double>(from),
              static_cast<double>(to));
  return 0;
}

int Blackbody(const qavcli::Args& args) {
  if (args.empty()) return qavcli::UsageError(kName, "give at least one temperature");
  for (const std::string& a : args)
    if (a == "--strip" || a == "-o") return StripCommand(args);

  std::vector<float> temperatures;
  for (const std::string& a : args) {
    float kelvin = 0.0f;
    if (!ParseKelvin(a, kelvin))
      return qavcli::UsageError(kName, "'" + a + "' is not a temperature in kelvin (>= 0)");
    temperatures.push_back(kelvin);
  }
  for (const float kelvin : temperatures)
    std::printf("%s\n", Line(kelvin).c_str());
  return 0;
}

}  // namespace

int DemoBlackbody() {
  std::printf("Black-body tints (normalised linear RGB, hex clamped to 0..255):\n");
  for (const float kelvin : {1000.0f, 2000.0f, 3000.0f, 6500.0f, 10000.0f, 20000.0f})
    std::printf("  %s\n", Line(kelvin).c_str());
  return 0;
}

QAV_CLI_COMMAND(kName,
                "  qavrba blackbody KELVIN...                normalised RGB and hex colour of "
                "black bodies\n"
                "                                            (0 K means 6500 K; hex clamps to "
                "0..1, no transfer curve)\n"
                "  qavrba blackbody --strip FROM:TO -o OUT.svg  an SVG colour strip with a "
                "temperature scale",
                Blackbody);
