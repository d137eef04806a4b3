// qavrba camera: the photographic ladders and the exposure correction of an
// aperture.
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "QAVCli.h"
#include "QAVRbaPhotoDataInit.h"

namespace {

// The shortest text that reads back as the same float (66.666, not the
// 66.66600036621094 of its double).
std::string Text(float value) {
  std::array<char, 32> text{};
  const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
  return {text.data(), result.ptr};
}

// The float as a JSON number written with that shortest text.
nlohmann::json Number(float value) { return std::strtod(Text(value).c_str(), nullptr); }

struct Ladder {
  const char* key;
  const char* title;
  void (*init)(float*);
  int count;
  const char* prefix;
};

constexpr std::array<Ladder, 4> kLadders = {{
    {"aperture", "Aperture (f-number)", InitApertureValues, QAVRbaApertureValueCount, "f/"},
    {"iso", "ISO", InitISOValues, QAVRbaISOValueCount, ""},
    {"extraIso", "Extra low ISO", InitEXTRA_ISOValues, QAVRbaExtraISOValueCount, ""},
    {"speed", "Shutter speed (seconds)", InitSpeedValues, QAVRbaSpeedValueCount, "1/"},
}};

std::vector<float> Values(const Ladder& ladder) {
  std::vector<float> values(static_cast<std::size_t>(ladder.count));
  ladder.init(values.data());
  return values;
}

int Ladders(bool json) {
  if (json) {
    nlohmann::json out = nlohmann::json::object();
    for (const Ladder& ladder : kLadders) {
      nlohmann::json& values = out[ladder.key] = nlohmann::json::array();
      for (const float value : Values(ladder))
        values.push_back(Number(value));
    }
    std::printf("%s\n", out.dump(2).c_str());
    return 0;
  }
  for (const Ladder& ladder : kLadders) {
    std::printf("%s, %d values\n", ladder.title, ladder.count);
    const std::vector<float> values = Values(ladder);
    for (std::size_t i = 0; i < values.size(); ++i)
      std::printf("  %2zu  %s%s\n", i, ladder.prefix, Text(values[i]).c_str());
    if (&ladder != &kLadders.back()) std::printf("\n");
  }
  return 0;
}

int Ev(const std::vector<float>& apertures, bool json) {
  std::array<float, QAVRbaApertureValueCount> table{};
  InitApertureValues(table.data());
  nlohmann::json out = nlohmann::json::array();
  for (const float aperture : apertures) {
    const float ev = GetEVCorrectionForAperture(aperture, table.data());
    bool onLadder = false;
    for (const float entry : table)
      onLadder = onLadder || entry == aperture;
    if (json) {
      nlohmann::json item = {
          {"aperture", Text(aperture)}, {"ev", Number(ev)}, {"onLadder", onLadder}};
      // JSON has no infinity or NaN: those stay as their texts.
      if (std::isfinite(aperture)) item["aperture"] = Number(aperture);
      out.push_back(item);
    } else {
      std::printf("f/%s\t%s EV%s\n", Text(aperture).c_str(),
                  (ev > 0 ? "+" + Text(ev) : Text(ev)).c_str(),
                  onLadder ? "" : "\t(not on the ladder)");
    }
  }
  if (json) std::printf("%s\n", out.dump(2).c_str());
  return 0;
}

void Setup(CLI::App& program) {
  CLI::App* camera = program.add_subcommand("camera", "Photographic camera ladders and exposure.");
  camera->require_subcommand(1);

  auto json = std::make_shared<bool>(false);
  CLI::App* ladders = camera->add_subcommand(
      "ladders", "The aperture, ISO, extra low ISO and shutter speed ladders, with their indices.");
  ladders->add_flag("--json", *json, "Write one JSON object of four arrays");
  qavcli::OnRun(ladders, [json] { return Ladders(*json); });

  auto apertures = std::make_shared<std::vector<float>>();
  auto evJson = std::make_shared<bool>(false);
  CLI::App* ev = camera->add_subcommand(
      "ev",
      "The exposure correction (EV from f/8) of each f-number F of the aperture ladder; "
      "6.5 off the ladder, 0 for 0 and inf.");
  // Infinity and NaN are asked for by name; a number too large for a float
  // would become infinity unseen.
  const CLI::Validator finite = qavcli::FiniteFloat();
  ev->add_option("f", *apertures, "F-numbers (nan and inf accepted)")
      ->required()
      ->check(CLI::Validator(
          [finite](std::string& text) -> std::string {
            std::string lowered;
            for (const char c : text)
              lowered += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
            if (lowered == "inf" || lowered == "+inf" || lowered == "infinity" ||
                lowered == "nan" || lowered == "-nan" || lowered == "-inf")
              return {};
            std::string copy = text;
            return finite(copy);
          },
          "NUMBER"));
  ev->add_flag("--json", *evJson, "Write a JSON array of {aperture, ev, onLadder}");
  qavcli::OnRun(ev, [apertures, evJson] { return Ev(*apertures, *evJson); });
}

}  // namespace

QAV_CLI_COMMAND("camera", Setup);
