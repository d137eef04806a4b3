// qavrba blackbody: the normalised colour of black bodies, as text or as a picture
// of a colour strip with a temperature scale.
//
// Hex colours: each component of the tint is clamped to 0..1 (a slightly
// negative blue of a very warm source becomes 0; nothing is above 1 after the
// normalisation) and scaled to 0..255, rounded to the nearest. The components
// are written as they are, without a display transfer curve.
//
// The computation gives a colour only within a range of temperatures, found at
// start by bisection: below it every component is 0 (the Planck terms underflow:
// the tint is black, which is said in a note), above it the components are not
// numbers (the terms overflow: refused).
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "QAVCli.h"
#include "QAVCliDemoParts.h"
#include "QAVCliPicture.h"
#include "QAVRbaBlackbody.h"

namespace {

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

bool IsBlack(const Tint& t) { return t.r == 0.0f && t.g == 0.0f && t.b == 0.0f; }
bool IsNumber(const Tint& t) {
  return std::isfinite(t.r) && std::isfinite(t.g) && std::isfinite(t.b);
}

// The temperatures from which the tint is not black, and from which it is no
// longer made of numbers.
struct Meaningful {
  float from;
  float until;
};

// The lowest temperature in (low, high] where `reached` holds, `reached` being
// false at `low` and true at `high` and switching once in between.
template <class Reached>
float Threshold(float low, float high, Reached reached) {
  while (std::nextafter(low, high) < high) {
    const float middle = std::sqrt(low) * std::sqrt(high);
    const float probe = middle > low && middle < high ? middle : low + (high - low) / 2;
    if (probe <= low || probe >= high) break;
    (reached(probe) ? high : low) = probe;
  }
  return high;
}

const Meaningful& MeaningfulRange() {
  static const Meaningful range{
      Threshold(1.0f, 6500.0f, [](float k) { return !IsBlack(TintOf(k)); }),
      Threshold(6500.0f, std::numeric_limits<float>::max(),
                [](float k) { return !IsNumber(TintOf(k)); })};
  return range;
}

std::string RangeText() {
  char text[96];
  (void)std::snprintf(text, sizeof text, "about %.4g K to %.3g K",
                      static_cast<double>(MeaningfulRange().from),
                      static_cast<double>(MeaningfulRange().until));
  return text;
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

int StripCommand(float from, float to, const std::string& output) {
  if (!IsNumber(TintOf(to)))
    return qavcli::Fail(
        "the strip reaches temperatures whose colour cannot be computed: black "
        "bodies have a colour from " +
        RangeText());
  if (to < MeaningfulRange().from)
    return qavcli::Fail(
        "every colour of the strip would be black: black bodies have a colour "
        "from " +
        RangeText());
  if (const int status = qavcli::WritePicture(output, Strip(from, to))) return status;
  std::printf("%s: %g K to %g K\n", output.c_str(), static_cast<double>(from),
              static_cast<double>(to));
  if (from < MeaningfulRange().from)
    (void)std::fprintf(stderr, "note: the strip is black below %.4g K\n",
                       static_cast<double>(MeaningfulRange().from));
  return 0;
}

int Temperatures(const std::vector<std::string>& texts) {
  std::vector<float> temperatures;
  for (const std::string& text : texts) {
    float kelvin = 0.0f;
    ParseKelvin(text, kelvin);  // checked by the parser
    if (!IsNumber(TintOf(kelvin)))
      return qavcli::Fail(text +
                          " K: the colour cannot be computed (it overflows); black bodies "
                          "have a colour from " +
                          RangeText());
    temperatures.push_back(kelvin);
  }
  bool black = false;
  for (const float kelvin : temperatures) {
    std::printf("%s\n", Line(kelvin).c_str());
    black = black || IsBlack(TintOf(kelvin));
  }
  if (black)
    (void)std::fprintf(stderr,
                       "note: below %.4g K the tint is all zero: the black body gives no "
                       "visible colour\n",
                       static_cast<double>(MeaningfulRange().from));
  return 0;
}

CLI::Validator KelvinCheck() {
  return CLI::Validator(
      [](std::string& text) {
        float kelvin = 0.0f;
        return ParseKelvin(text, kelvin)
                   ? std::string()
                   : "'" + text + "' is not a temperature in kelvin (a number >= 0)";
      },
      "KELVIN");
}

void Setup(CLI::App& program) {
  CLI::App* blackbody = program.add_subcommand(
      "blackbody", "Colours of black bodies: tints, or a picture of a colour strip with --strip.");
  blackbody->footer(
      "Tints are normalised linear RGB (0 K means 6500 K); hex colours clamp them to 0..1, with "
      "no transfer curve. Black bodies have a colour from " +
      RangeText() +
      ": below, the tint is black (a note says so); above, it cannot be computed "
      "(refused).\n");
  auto kelvins = std::make_shared<std::vector<std::string>>();
  auto range = std::make_shared<std::pair<float, float>>();
  auto output = std::make_shared<std::string>();
  CLI::Option* temperatures =
      blackbody->add_option("kelvin", *kelvins, "Temperatures in kelvin")->check(KelvinCheck());
  CLI::Option* strip =
      blackbody
          ->add_option_function<std::string>(
              "--strip",
              [range](const std::string& text) {
                const auto colon = text.find(':');
                ParseKelvin(text.substr(0, colon), range->first);
                ParseKelvin(text.substr(colon + 1), range->second);
              },
              "The range FROM:TO of the strip, in kelvin (0 < FROM < TO)")
          ->check(CLI::Validator(
              [](std::string& text) -> std::string {
                const auto colon = text.find(':');
                float from = 0.0f;
                float to = 0.0f;
                if (colon == std::string::npos || !ParseKelvin(text.substr(0, colon), from) ||
                    !ParseKelvin(text.substr(colon + 1), to))
                  return "'" + text + "' is not FROM:TO in kelvin";
                if (from <= 0.0f || to <= from) return "the strip needs 0 < FROM < TO";
                return {};
              },
              "FROM:TO"));
  CLI::Option* out = qavcli::AddPictureOption(blackbody, *output, "The strip");
  strip->needs(out);
  out->needs(strip);
  temperatures->excludes(strip);
  qavcli::OnRun(blackbody, [kelvins, range, output, strip] {
    if (strip->count() > 0) return StripCommand(range->first, range->second, *output);
    if (kelvins->empty()) return qavcli::UsageError("blackbody: give at least one temperature");
    return Temperatures(*kelvins);
  });
}

}  // namespace

int DemoBlackbody() {
  std::printf("Black-body tints (normalised linear RGB, hex clamped to 0..255):\n");
  for (const float kelvin : {1000.0f, 2000.0f, 3000.0f, 6500.0f, 10000.0f, 20000.0f})
    std::printf("  %s\n", Line(kelvin).c_str());
  return 0;
}

QAV_CLI_COMMAND("blackbody", Setup);
