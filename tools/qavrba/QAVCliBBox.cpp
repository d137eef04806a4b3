// qavrba bbox: the size and centre of an object's support in a scene, as the
// placement tools measure it to size and centre a mapping.
#include <cstdio>
#include <memory>
#include <string>

#include "QAVCli.h"
#include "QAVCliScene.h"
#include "QAVRbaManipulatorServices.h"

namespace {

int BBox(const std::string& path, const std::string& name) {
  const std::unique_ptr<QAVHostDriver> driver = qavcli::OpenScene(path);
  if (!driver) return 1;
  const QAVRef<QAVOmbObjectInContext> object = driver->FindObject(name);
  if (!object) return qavcli::Fail("no object named \"" + name + "\" in " + path);
  QAVMathPoint centre;
  QAVMathPoint size;
  if (FAILED(QAVRbaManipulatorServices::GetSupportSizeAndCenter(object.get(), centre, size)))
    return qavcli::Fail("\"" + name + "\" is shown by nothing that can be measured");
  std::printf("size\t%g %g %g\ncentre\t%g %g %g\n", size.x, size.y, size.z, centre.x, centre.y,
              centre.z);
  return 0;
}

void Setup(CLI::App& program) {
  auto file = std::make_shared<std::string>();
  auto name = std::make_shared<std::string>();
  CLI::App* bbox = program.add_subcommand(
      "bbox",
      "The size and centre of an object's support: the box of the geometry that shows it (in its "
      "own space), or of its first face.");
  bbox->add_option("scene", *file, "Scene file (JSON)")->required();
  bbox->add_option("object", *name, "The object's name")->required();
  qavcli::OnRun(bbox, [file, name] { return BBox(*file, *name); });
}

}  // namespace

QAV_CLI_COMMAND("bbox", Setup);
