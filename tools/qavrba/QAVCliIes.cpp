// qavrba ies: IES light profiles on the command line: what a file holds, its
// intensity in any direction, a CSV grid and a polar candela diagram.
#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "QAVCli.h"
#include "QAVCliDemoParts.h"
#include "QAVCliPicture.h"
#include "QAVRbaLightProfile.h"
#include "QAVRef.h"

namespace {

using Symmetry = QAVRbaLightProfile::HorizontalSymmetry;
using Coverage = QAVRbaLightProfile::VerticalCoverage;

// The shortest text that reads back as the same double.
std::string Num(double value) {
  char text[64];
  const auto result = std::to_chars(text, text + sizeof text, value);
  return std::string(text, result.ptr);
}

// Reads a profile; on failure prints the reason and returns null.
QAVRef<QAVRbaLightProfile> Load(const std::string& path) {
  if (const std::string why = qavcli::UnreadableFile(path); !why.empty()) {
    qavcli::Fail("cannot read the IES file " + why);
    return nullptr;
  }
  auto profile = QAVMakeRef<QAVRbaLightProfile>();
  if (!profile->ReadIESFile(QAVUnicodeString(path))) {
    qavcli::Fail("cannot read the IES file '" + path + "': " + profile->GetLastError().str());
    return nullptr;
  }
  return profile;
}

const char* SymmetryText(Symmetry symmetry) {
  switch (symmetry) {
    case Symmetry::NoTable:
      return "no table (every direction gives 0)";
    case Symmetry::Rotational:
      return "rotational (horizontal range 0: one plane for every azimuth)";
    case Symmetry::Quadrant:
      return "quadrant (horizontal range 90: mirrored into 0-90)";
    case Symmetry::Bilateral:
      return "bilateral (horizontal range 180: mirrored about the C0-C180 plane)";
    case Symmetry::Full:
      return "none (horizontal range 360: every azimuth listed)";
    case Symmetry::Unsupported:
      break;
  }
  return "unsupported horizontal range (every direction gives 0)";
}

const char* CoverageText(Symmetry symmetry, Coverage coverage) {
  switch (coverage) {
    case Coverage::NoTable:
      return "-";
    case Coverage::Single:
      return "range 0: the one vertical angle for every direction";
    case Coverage::Hemisphere:
      return "range 90: no light above 90 degrees";
    case Coverage::Sphere:
      return "range 180";
    case Coverage::Range360:
      if (symmetry == Symmetry::Full) break;
      return "range 360: the far half of the azimuths is folded back";
    case Coverage::Unsupported:
      if (symmetry == Symmetry::Full || symmetry == Symmetry::Unsupported) break;
      return "unsupported range (every direction gives 0)";
  }
  return symmetry == Symmetry::Unsupported ? "-" : "unsupported range (every direction gives 0)";
}

std::string Range(const std::vector<double>& angles) {
  if (angles.empty()) return "none";
  return std::to_string(angles.size()) + " (" + Num(angles.front()) + " to " + Num(angles.back()) +
         ")";
}

int Info(const std::string& file) {
  const auto profile = Load(file);
  if (!profile) return 1;
  const QAVRbaLightProfile& p = *profile;
  static const char* const kTypes[] = {"", "C", "B", "A"};
  static const char* const kUnits[] = {"", "feet", "metres"};
  std::printf("file                 %s\n", p.GetFileName().c_str());
  std::printf("lamps                %d\n", p.GetNumberOfLamps());
  std::printf("lumens per lamp      %s\n", Num(p.GetLumensPerLamp()).c_str());
  std::printf("candela multiplier   %s\n", Num(p.GetCandelaMultiplier()).c_str());
  std::printf("photometric type     %d (type %s)\n", p.GetPhotometricType(),
              kTypes[p.GetPhotometricType()]);
  std::printf("units type           %d (%s)\n", p.GetUnitsType(), kUnits[p.GetUnitsType()]);
  std::printf("width length height  %s %s %s\n", Num(p.GetWidth()).c_str(),
              Num(p.GetLength()).c_str(), Num(p.GetHeight()).c_str());
  std::printf("ballast factor       %s\n", Num(p.GetBallastFactor()).c_str());
  std::printf("input watts          %s\n", Num(p.GetInputWatts()).c_str());
  std::printf("vertical angles      %s\n", Range(p.GetVerticalAngles()).c_str());
  std::printf("horizontal angles    %s\n", Range(p.GetHorizontalAngles()).c_str());
  const Symmetry symmetry = p.GetHorizontalSymmetry();
  std::printf("horizontal symmetry  %s\n", SymmetryText(symmetry));
  std::printf("vertical rule        %s\n", CoverageText(symmetry, p.GetVerticalCoverage()));

  double peak = 0.0;
  int peakH = -1;
  int peakV = -1;
  const int rows = p.GetNumberOfHorizontalAngles();
  const int columns = p.GetNumberOfVerticalAngles();
  for (int i = 0; i < rows; ++i)
    for (int j = 0; j < columns; ++j)
      if (peakH < 0 || p.GetCandelaValue(i, j) > peak) {
        peak = p.GetCandelaValue(i, j);
        peakH = i;
        peakV = j;
      }
  if (peakH < 0) {
    std::printf("peak intensity       none (empty table)\n");
  } else {
    const double scale = p.GetCandelaMultiplier() * p.GetBallastFactor();
    std::printf(
        "peak intensity       %s cd raw at H %s V %s; %s cd scaled (x %s multiplier x %s "
        "ballast)\n",
        Num(peak).c_str(), Num(p.GetHorizontalAngles()[peakH]).c_str(),
        Num(p.GetVerticalAngles()[peakV]).c_str(), Num(peak * scale).c_str(),
        Num(p.GetCandelaMultiplier()).c_str(), Num(p.GetBallastFactor()).c_str());
  }
  return 0;
}

int Sample(const std::string& file, const std::vector<double>& angles) {
  if (angles.size() % 2 != 0) return qavcli::UsageError("ies sample: the angles go in pairs H V");
  const auto profile = Load(file);
  if (!profile) return 1;
  for (std::size_t k = 0; k < angles.size(); k += 2)
    std::printf("%s %s %s\n", Num(angles[k]).c_str(), Num(angles[k + 1]).c_str(),
                Num(profile->GetLightProfileValue(angles[k], angles[k + 1])).c_str());
  return 0;
}

int Grid(const std::string& file, double step) {
  const auto profile = Load(file);
  if (!profile) return 1;
  std::printf("h,v,candela\n");
  // Angles are multiples of the step, computed from the index so that errors do
  // not accumulate.
  for (long a = 0;; ++a) {
    const double h = static_cast<double>(a) * step;
    if (h >= 360.0 - 1e-9) break;
    for (long b = 0;; ++b) {
      const double v = static_cast<double>(b) * step;
      if (v > 180.0 + 1e-9) break;
      std::printf("%s,%s,%s\n", Num(h).c_str(), Num(v).c_str(),
                  Num(profile->GetLightProfileValue(h, v)).c_str());
    }
  }
  return 0;
}

// ---------------------------------------------------------------------------
// Polar candela diagram.

std::string Fixed(double value, int decimals = 1) {
  char text[64];
  (void)std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

// The smallest 1, 2, 2.5 or 5 times a power of ten at or above `value`.
double NiceCeiling(double value) {
  if (!(value > 0.0)) return 1.0;
  const double power = std::pow(10.0, std::floor(std::log10(value)));
  for (const double m : {1.0, 2.0, 2.5, 5.0, 10.0})
    if (m * power >= value * (1.0 - 1e-12)) return m * power;
  return 10.0 * power;
}

std::string CandelaLabel(double value) {
  char text[64];
  if (value >= 10000.0)
    (void)std::snprintf(text, sizeof text, "%.0f", value);
  else
    (void)std::snprintf(text, sizeof text, "%g", value);
  return std::string(text) + " cd";
}

// One closed curve of a plane pair: the left half (`left` azimuth) from the
// zenith down to the nadir, then the right half (`right` azimuth) back up.
std::string PlanePath(const QAVRbaLightProfile& p, double right, double left, double cx, double cy,
                      double radius, double scaleMax, double stepDeg) {
  std::string d;
  const int steps = static_cast<int>(std::lround(180.0 / stepDeg));
  auto point = [&](double h, double v, double side) {
    const double value = std::max(0.0, p.GetLightProfileValue(h, v));
    const double r = radius * std::min(value / scaleMax, 1.05);
    const double rad = v * M_PI / 180.0;
    const double x = cx + side * r * std::sin(rad);
    const double y = cy + r * std::cos(rad);
    d += (d.empty() ? "M" : " L") + Fixed(x, 2) + "," + Fixed(y, 2);
  };
  for (int k = steps; k >= 0; --k)
    point(left, k * stepDeg, -1.0);
  for (int k = 0; k <= steps; ++k)
    point(right, k * stepDeg, 1.0);
  return d + " Z";
}

std::string PlotSvg(const QAVRbaLightProfile& p, const std::string& title) {
  constexpr double kWidth = 640;
  constexpr double kHeight = 780;
  constexpr double cx = 320;
  constexpr double cy = 370;
  constexpr double radius = 250;
  constexpr double kStep = 0.5;
  const char* const kPlane0 = "#c0392b";
  const char* const kPlane90 = "#1f5fa8";

  double peak = 0.0;
  for (const double h : {0.0, 90.0, 180.0, 270.0})
    for (int k = 0; k <= 360; ++k)
      peak = std::max(peak, p.GetLightProfileValue(h, k * kStep));
  // Rings every nice step, as few as reach the peak (at most five).
  const double ringStep = NiceCeiling(peak / 5.0);
  const int rings = std::max(1, static_cast<int>(std::ceil(peak / ringStep * (1.0 - 1e-12))));
  const double scaleMax = ringStep * rings;

  std::string svg;
  auto add = [&svg](const std::string& text) { svg += text + "\n"; };
  add("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
  add("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + Fixed(kWidth, 0) + "\" height=\"" +
      Fixed(kHeight, 0) + "\" viewBox=\"0 0 " + Fixed(kWidth, 0) + " " + Fixed(kHeight, 0) +
      "\" font-family=\"DejaVu Sans, Arial, Helvetica, sans-serif\">");
  add("<rect width=\"100%\" height=\"100%\" fill=\"white\"/>");
  add("<text x=\"" + Fixed(cx) + "\" y=\"34\" text-anchor=\"middle\" font-size=\"18\" " +
      "font-weight=\"bold\">" + qavcli::SvgEscaped(title) + "</text>");
  add("<text x=\"" + Fixed(cx) + "\" y=\"56\" text-anchor=\"middle\" font-size=\"12\" " +
      "fill=\"#555\">luminous intensity in candela (x candela multiplier x ballast factor)" +
      "</text>");

  // Scale rings with their candela labels, spokes and angle labels.
  add("<g fill=\"none\" stroke=\"#bbb\" stroke-width=\"0.8\">");
  for (int k = 1; k <= rings; ++k)
    add("<circle cx=\"" + Fixed(cx) + "\" cy=\"" + Fixed(cy) + "\" r=\"" +
        Fixed(radius * k / rings) + "\"/>");
  for (int a = 0; a < 360; a += 15) {
    const double rad = a * M_PI / 180.0;
    add("<line x1=\"" + Fixed(cx) + "\" y1=\"" + Fixed(cy) + "\" x2=\"" +
        Fixed(cx + radius * std::sin(rad), 2) + "\" y2=\"" + Fixed(cy + radius * std::cos(rad), 2) +
        "\"" + (a % 90 == 0 ? " stroke=\"#888\"" : "") + "/>");
  }
  add("</g>");
  add("<g font-size=\"11\" fill=\"#333\">");
  // Ring labels just inside each ring, right of the upward axis, clear of the
  // angle labels outside the outer ring.
  for (int k = 1; k <= rings; ++k)
    add("<text x=\"" + Fixed(cx + 4) + "\" y=\"" + Fixed(cy - radius * k / rings + 12) + "\">" +
        CandelaLabel(scaleMax * k / rings) + "</text>");
  for (int a = 0; a <= 180; a += 30) {
    const double rad = a * M_PI / 180.0;
    const double r = radius + 16;
    const std::string label = std::to_string(a) + "\u00b0";
    for (const double side : {1.0, -1.0}) {
      if (side < 0 && (a == 0 || a == 180)) continue;
      const double x = cx + side * r * std::sin(rad);
      const double y = cy + r * std::cos(rad) + 4;
      const char* anchor = a == 0 || a == 180 ? "middle" : side > 0 ? "start" : "end";
      add("<text x=\"" + Fixed(x) + "\" y=\"" + Fixed(y) + "\" text-anchor=\"" + anchor + "\">" +
          label + "</text>");
    }
  }
  add("</g>");

  // The curves: C0-C180 solid, C90-C270 dashed; the right half is C0 (C90).
  add("<path d=\"" + PlanePath(p, 0.0, 180.0, cx, cy, radius, scaleMax, kStep) +
      "\" fill=\"none\" stroke=\"" + kPlane0 + "\" stroke-width=\"2\" stroke-linejoin=\"round\"/>");
  add("<path d=\"" + PlanePath(p, 90.0, 270.0, cx, cy, radius, scaleMax, kStep) +
      "\" fill=\"none\" stroke=\"" + kPlane90 +
      "\" stroke-width=\"2\" stroke-dasharray=\"7 4\" stroke-linejoin=\"round\"/>");

  // A profile that samples as 0 everywhere draws no curve: say why on the diagram.
  if (!(peak > 0.0)) {
    const Symmetry symmetry = p.GetHorizontalSymmetry();
    const Coverage coverage = p.GetVerticalCoverage();
    std::string why = "every candela value in these planes is 0";
    if (symmetry == Symmetry::Unsupported || symmetry == Symmetry::NoTable)
      why = std::string("horizontal symmetry: ") + SymmetryText(symmetry);
    else if (coverage == Coverage::Unsupported)
      why = std::string("vertical angles: ") + CoverageText(symmetry, coverage);
    add("<g text-anchor=\"middle\" fill=\"#8a1c1c\">");
    add("<rect x=\"" + Fixed(cx - 230) + "\" y=\"" + Fixed(cy - 40) +
        "\" width=\"460\" height=\"80\" rx=\"6\" fill=\"#fff4f4\" stroke=\"#8a1c1c\"/>");
    add("<text x=\"" + Fixed(cx) + "\" y=\"" + Fixed(cy - 12) +
        "\" font-size=\"16\" font-weight=\"bold\">Every direction samples as 0 cd</text>");
    add("<text x=\"" + Fixed(cx) + "\" y=\"" + Fixed(cy + 10) + "\" font-size=\"11\">" +
        qavcli::SvgEscaped(why) + "</text>");
    if (p.GetPhotometricType() != 1)
      add("<text x=\"" + Fixed(cx) + "\" y=\"" + Fixed(cy + 28) + "\" font-size=\"11\">(a type " +
          (p.GetPhotometricType() == 2 ? "B" : "A") +
          " file: its angles are sampled as type C angles)</text>");
    add("</g>");
  }

  // Legend.
  const double ly = cy + radius + 52;
  add("<g font-size=\"12\" fill=\"#222\">");
  add("<line x1=\"60\" y1=\"" + Fixed(ly) + "\" x2=\"100\" y2=\"" + Fixed(ly) + "\" stroke=\"" +
      kPlane0 + "\" stroke-width=\"2\"/>");
  add("<text x=\"108\" y=\"" + Fixed(ly + 4) + "\">C0 - C180 plane (right: C0, left: C180)</text>");
  add("<line x1=\"60\" y1=\"" + Fixed(ly + 22) + "\" x2=\"100\" y2=\"" + Fixed(ly + 22) +
      "\" stroke=\"" + kPlane90 + "\" stroke-width=\"2\" stroke-dasharray=\"7 4\"/>");
  add("<text x=\"108\" y=\"" + Fixed(ly + 26) +
      "\">C90 - C270 plane (right: C90, left: C270)</text>");
  add("<text x=\"60\" y=\"" + Fixed(ly + 50) + "\" fill=\"#555\">peak in these planes " +
      CandelaLabel(std::round(peak * 10) / 10) + "</text>");
  add("<text x=\"60\" y=\"" + Fixed(ly + 68) + "\" fill=\"#555\">symmetry: " +
      qavcli::SvgEscaped(SymmetryText(p.GetHorizontalSymmetry())) + "</text>");
  add("<text x=\"60\" y=\"" + Fixed(ly + 86) +
      "\" fill=\"#555\">0\u00b0 is the nadir (straight down), 180\u00b0 the zenith</text>");
  add("</g>");
  add("</svg>");
  return svg;
}

int Plot(const std::string& file, const std::string& out) {
  const auto profile = Load(file);
  if (!profile) return 1;
  const std::string svg = PlotSvg(*profile, std::filesystem::path(file).filename().string());
  if (const int status = qavcli::WritePicture(out, svg)) return status;
  std::printf("%s\n", out.c_str());
  return 0;
}

void Setup(CLI::App& program) {
  CLI::App* ies = program.add_subcommand("ies", "IES light profiles: read, sample, plot.");
  ies->require_subcommand(1);
  struct Arguments {
    std::string file;
    std::vector<double> angles;
    double step = 0.0;
    std::string output;
  };
  auto arguments = std::make_shared<Arguments>();
  const auto fileOption = [&arguments](CLI::App* command) {
    command->add_option("file", arguments->file, "An IES file")->required();
  };

  CLI::App* info =
      ies->add_subcommand("info", "Header numbers, angle ranges, symmetry and peak intensity.");
  fileOption(info);
  qavcli::OnRun(info, [arguments] { return Info(arguments->file); });

  CLI::App* sample =
      ies->add_subcommand("sample", "Intensity in candela towards each direction H V (degrees).");
  fileOption(sample);
  sample->add_option("angles", arguments->angles, "Pairs of angles H V in degrees")
      ->required()
      ->check(qavcli::FiniteNumber(-1e300, 1e300));
  qavcli::OnRun(sample, [arguments] { return Sample(arguments->file, arguments->angles); });

  CLI::App* grid = ies->add_subcommand(
      "grid", "CSV h,v,candela over h in [0,360) and v in [0,180], every --step degrees.");
  fileOption(grid);
  grid->add_option("--step", arguments->step, "The step in degrees")
      ->required()
      ->check(qavcli::FiniteNumber(0.01, 180.0));
  qavcli::OnRun(grid, [arguments] { return Grid(arguments->file, arguments->step); });

  CLI::App* plot =
      ies->add_subcommand("plot", "Polar candela diagram of the C0-C180 and C90-C270 planes.");
  fileOption(plot);
  qavcli::AddPictureOption(plot, arguments->output, "The diagram")->required();
  qavcli::OnRun(plot, [arguments] { return Plot(arguments->file, arguments->output); });
}

}  // namespace

int DemoIes(const std::string& resourcesDir) {
  const std::string path = resourcesDir + "/ies/qav_downlight_wide.ies";
  const auto profile = Load(path);
  if (!profile) return 1;
  const QAVRbaLightProfile& p = *profile;
  std::printf("%s: %d x %d angles, %s, peak along the axis %s cd\n",
              std::filesystem::path(path).filename().c_str(), p.GetNumberOfHorizontalAngles(),
              p.GetNumberOfVerticalAngles(), SymmetryText(p.GetHorizontalSymmetry()),
              Num(p.GetLightProfileValue(0.0, 0.0)).c_str());
  const struct {
    double h;
    double v;
    const char* note;
  } directions[] = {{0, 30, "in the C0 plane"},
                    {90, 30, "in the C90 plane: the beam is narrower across"},
                    {45, 32.5, "between planes and angles: interpolated"},
                    {135, 30, "mirrored onto C45 by the quadrant symmetry"},
                    {0, 95, "above the horizontal: no light"}};
  for (const auto& d : directions)
    std::printf("  H %-5s V %-5s -> %8.1f cd  (%s)\n", Num(d.h).c_str(), Num(d.v).c_str(),
                p.GetLightProfileValue(d.h, d.v), d.note);
  return 0;
}

QAV_CLI_COMMAND("ies", Setup);
