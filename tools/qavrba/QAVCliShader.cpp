// qavrba shader: whether the live renderer supports material shader types.
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "QAVCli.h"
#include "QAVCliDemoParts.h"
#include "QAVRbaUIServices.h"

namespace {

// One line per name; returns the names that are not supported.
std::string Print(const std::vector<std::string>& names) {
  std::string unsupported;
  for (const std::string& name : names) {
    QAVString type(name);
    const bool supported = QAVRbaUIServices::CheckShaderType(type);
    std::printf("%s\t%s\n", name.c_str(), supported ? "supported" : "not supported");
    if (!supported) unsupported += (unsupported.empty() ? "" : ", ") + name;
  }
  return unsupported;
}

// The status says whether every name is supported; the failure is said where
// failures are: on standard error.
int Check(const std::vector<std::string>& names) {
  const std::string unsupported = Print(names);
  return unsupported.empty() ? 0
                             : qavcli::Fail("not supported by the live renderer: " + unsupported);
}

int List() {
  for (const QAVString& name : QAVRbaUIServices::GetSupportedShaderTypes())
    std::printf("%s\n", name.c_str());
  return 0;
}

void Setup(CLI::App& program) {
  CLI::App* shader = program.add_subcommand(
      "shader",
      "Shader types the live renderer supports (\"QAVMatPBRSubtypesEnable\" set takes "
      "the subtypes of the 22x shader out).");
  shader->require_subcommand(1);
  auto names = std::make_shared<std::vector<std::string>>();
  CLI::App* check = shader->add_subcommand(
      "check",
      "Whether each shader type is supported (exact, case-sensitive); the exit status is "
      "1 when one is not.");
  check->add_option("names", *names, "Shader type names")->required();
  qavcli::OnRun(check, [names] { return Check(*names); });
  CLI::App* list = shader->add_subcommand("list", "The supported shader types, in order.");
  qavcli::OnRun(list, [] { return List(); });
}

}  // namespace

int DemoShaders() {
  // The last name shows what an unsupported one looks like: not a failure here.
  Print({"EVisu_PBR_22x_Metal", "MPM_car_paint", "mip_metallic_paint", "evisu_pbr"});
  std::printf("%zu shader types supported\n", QAVRbaUIServices::GetSupportedShaderTypes().size());
  return 0;
}

QAV_CLI_COMMAND("shader", Setup);
