// qavrba bar: the row a context bar fills, as text and as a picture.
#include "QAVCliBar.h"

#include <cstdio>
#include <map>
#include <memory>

#include "QAVAfrCtxBarFrame.h"
#include "QAVCli.h"
#include "QAVCliBarPicture.h"
#include "QAVCliPicture.h"
#include "QAVHostDriver.h"
#include "QAVRbaContextBarManager.h"

namespace qavcli {

namespace {
const std::map<std::string, int>& MappingTypes() {
  static const std::map<std::string, int> types = {
      {"planar", 0},  {"spherical", 1}, {"finite-cylindrical", 2},
      {"cubical", 3}, {"uv", 6},        {"infinite-cylindrical", 8},
      {"none", -1}};
  return types;
}
}  // namespace

std::string BarLateType(const std::string& kind) {
  static const std::map<std::string, std::string> bars = {
      {"material", "QAVRbaUIContextBarMaterialComponent"},
      {"sticker", "QAVRbaUIContextBarStickerComponent"},
      {"uv", "QAVRbaUIContextBarUVManipulatorComponent"},
      {"cropmode", "QAVRbaUIContextBarDecalCropModeComponent"}};
  const auto it = bars.find(kind);
  return it == bars.end() ? std::string() : it->second;
}

bool ParseMappingType(const std::string& name, int& type) {
  const auto it = MappingTypes().find(name);
  if (it == MappingTypes().end()) return false;
  type = it->second;
  return true;
}

std::string MappingTypeName(int type) {
  for (const auto& [name, value] : MappingTypes())
    if (value == type) return name;
  return "unknown";
}

const char* MappingTypeNames() {
  return "planar, spherical, finite-cylindrical, infinite-cylindrical, cubical, uv, none";
}

}  // namespace qavcli

namespace {

int Bar(const std::string& kind, const std::string& mapping, const std::string& out) {
  const std::string lateType = qavcli::BarLateType(kind);
  if (lateType.empty())
    return qavcli::UsageError("unknown bar \"" + kind + "\" (material, sticker, uv, cropmode)");
  int type = 0;
  if (!qavcli::ParseMappingType(mapping, type))
    return qavcli::UsageError("unknown mapping type \"" + mapping + "\" (" +
                              qavcli::MappingTypeNames() + ")");
  QAVHostDriver session;
  // The type as it stands, "none" (-1) included: the bars then show the
  // mapping container with no type's button first.
  QAVRbaContextBarManager::GetContextBarManager()->SetCurrentMappingType(
      static_cast<QAVRbaContextBarManager::MappingType>(type));
  auto frame = QAVMakeRef<QAVAfrCtxBarFrame>(QAVString(lateType.c_str()));
  if (FAILED(frame->Show())) return qavcli::Fail("the bar " + lateType + " could not be made");
  std::printf("%s, mapping %s\n%s", lateType.c_str(), qavcli::MappingTypeName(type).c_str(),
              frame->Describe().c_str());
  if (out.empty()) return 0;
  const std::string title = "The " + kind + " bar, mapping " + qavcli::MappingTypeName(type);
  return qavcli::WritePicture(out, qavcli::BarPicture(*frame->GetRow(0), title));
}

void Setup(CLI::App& program) {
  CLI::App* bar = program.add_subcommand(
      "bar", "The row a texture placement context bar fills, as text and as a picture.");
  auto kind = std::make_shared<std::string>();
  auto mapping = std::make_shared<std::string>("planar");
  auto out = std::make_shared<std::string>();
  bar->add_option("kind", *kind, "material, sticker, uv or cropmode")->required();
  bar->add_option("--mapping", *mapping,
                  "The current mapping type: planar (default), spherical, finite-cylindrical, "
                  "infinite-cylindrical, cubical, uv or none");
  qavcli::AddPictureOption(bar, *out, "A picture of the bar");
  qavcli::OnRun(bar, [kind, mapping, out] { return Bar(*kind, *mapping, *out); });
}

}  // namespace

QAV_CLI_COMMAND("bar", Setup);
