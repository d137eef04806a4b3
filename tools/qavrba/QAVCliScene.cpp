// qavrba scene: scene files opened, described and picked.
#include "QAVCliScene.h"

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVCli.h"
#include "QAVCliPicture.h"
#include "QAVModelObject.h"
#include "QAVPickPath.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVRbaPLMServices.h"
#include "QAVViewRenderer.h"

namespace qavcli {

std::unique_ptr<QAVHostDriver> OpenScene(const std::string& path) {
  auto driver = std::make_unique<QAVHostDriver>();
  std::string error;
  if (FAILED(driver->OpenScene(path, error))) {
    Fail(error);
    return nullptr;
  }
  QAVRbaPLMServices::SetUIActiveProduct(
      QAVQuery<QAVIPrdObject>(driver->GetScene()->product.get()).get());
  return driver;
}

std::string ShowroomScene() { return ResourcesDir() + "/scenes/showroom/scene.json"; }

}  // namespace qavcli

namespace {

std::string Describe(const QAVModelObject* object) {
  if (!object) return "-";
  std::string text = object->IsA();
  const std::string alias = object->GetAlias().ToString().str();
  if (!alias.empty()) text += " \"" + alias + "\"";
  return text;
}

void PrintNode(const QAV3DRep* rep, int depth) {
  const auto* bag = dynamic_cast<const QAV3DBagRep*>(rep);
  const auto* leaf = dynamic_cast<const QAVSurfacicRep*>(rep);
  std::printf("%*s%s", 2 * depth, "", bag ? Describe(rep->GetModelObject()).c_str() : "");
  if (leaf) std::printf("(%d triangles)", leaf->GetTriangleCount());
  std::printf("\n");
  for (int i = 0; bag && i < bag->GetChildCount(); ++i)
    PrintNode(bag->GetChild(i), depth + 1);
}

void PrintPoint(const char* label, const QAVMathPoint& p) {
  std::printf("%s%g %g %g\n", label, p.x, p.y, p.z);
}

int Info(const std::string& path) {
  const std::unique_ptr<QAVHostDriver> driver = qavcli::OpenScene(path);
  if (!driver) return 1;
  const QAVSceneDocument& scene = *driver->GetScene();
  std::printf("window\t%g x %g (usable %g x %g)\n", static_cast<double>(scene.width),
              static_cast<double>(scene.height), static_cast<double>(scene.usableWidth),
              static_cast<double>(scene.usableHeight));
  PrintPoint("eye\t", scene.eye);
  PrintPoint("target\t", scene.target);
  std::printf("up\t%g %g %g\nfield of view\t%g degrees\n", scene.up.x, scene.up.y, scene.up.z,
              scene.fieldOfView);
  std::printf("environment\t%s\nworkbench\t%s\n",
              scene.environment.empty() ? "-" : scene.environment.c_str(),
              scene.workbench.empty() ? "-" : scene.workbench.c_str());
  std::printf("product\t%s\n", Describe(scene.product.get()).c_str());
  if (scene.product) {
    if (QAVModelObject* ambiences = scene.product->GetContainer("QAVRamAmbienceContainer"))
      for (const QAVRef<QAVModelObject>& ambience : ambiences->GetMembers())
        std::printf("  ambience\t%s\n", ambience->GetAlias().ToString().c_str());
  }
  std::printf("%d leaves, %lld triangles\n", scene.leafCount, scene.triangleCount);
  PrintNode(scene.root.get(), 0);
  return 0;
}

int Pick(const std::string& path, int x, int y, int width, int height) {
  const std::unique_ptr<QAVHostDriver> driver = qavcli::OpenScene(path);
  if (!driver) return 1;
  const QAVSceneDocument& scene = *driver->GetScene();
  if (x >= scene.width || y >= scene.height) {
    char text[160];
    (void)std::snprintf(text, sizeof text, "the pixel %d %d is outside the %g x %g view of ", x, y,
                        static_cast<double>(scene.width), static_cast<double>(scene.height));
    return qavcli::Fail(text + path);
  }
  std::vector<QAVRef<QAVPickPath>> paths;
  if (FAILED(driver->GetSceneViewer()->Pick(x, y, width, height, 0, paths)))
    return qavcli::Fail("the pick failed");
  if (paths.empty()) std::printf("nothing at %d %d\n", x, y);
  for (const QAVRef<QAVPickPath>& pick : paths) {
    const QAVMathPoint& p = pick->GetGlobalIntersection();
    const QAVMathVector& n = pick->GetGlobalNormal();
    std::printf("%.3f\tat %.3f %.3f %.3f\tnormal %.3f %.3f %.3f\tface %d\n", pick->GetDistance(),
                p.x, p.y, p.z, n.x, n.y, n.z, pick->GetCurrentSubElement());
    for (int i = 0; i < pick->GetRepCount(); ++i) {
      const QAVModelObject* object = pick->GetRep(i)->GetModelObject();
      if (object) std::printf("  %s\n", Describe(object).c_str());
    }
  }
  return 0;
}

int View(const std::string& path, const std::string& out, bool circle) {
  const std::unique_ptr<QAVHostDriver> driver = qavcli::OpenScene(path);
  if (!driver) return 1;
  QAVRef<QAVPixelImage> image;
  if (FAILED(QAVViewRenderer::Render(driver->GetSceneViewer(), image)))
    return qavcli::Fail("the view cannot be drawn");
  if (circle) {
    // The focus circle as the depth-of-field panel shows it over the view.
    QAVMathPoint2Df center{};
    float radius = 0.0F;
    float offset = 0.0F;
    if (SUCCEEDED(QAVRbaLiveUIServices::ComputeVoodooCircle(center, radius, offset)))
      QAVViewRenderer::DrawRing(*image, center.x, center.y, radius, 2.0, 255, 196, 40);
  }
  if (const int status = qavcli::WritePicture(out, *image)) return status;
  std::printf("%s\t%d x %d\n", out.c_str(), image->GetWidth(), image->GetHeight());
  return 0;
}

void Setup(CLI::App& program) {
  CLI::App* scene = program.add_subcommand("scene", "Scene files: described and picked.");
  scene->require_subcommand(1);

  auto file = std::make_shared<std::string>();
  CLI::App* info = scene->add_subcommand(
      "info", "The window, viewpoint, product and representation tree of a scene file.");
  info->add_option("scene", *file, "Scene file (JSON)")->required();
  qavcli::OnRun(info, [file] { return Info(*file); });

  auto pickFile = std::make_shared<std::string>();
  auto at = std::make_shared<std::vector<int>>();
  auto box = std::make_shared<std::vector<int>>(std::vector<int>{1, 1});
  CLI::App* pick = scene->add_subcommand(
      "pick", "Everything under the pixel X Y of the view, nearest first, with its path.");
  pick->add_option("scene", *pickFile, "Scene file (JSON)")->required();
  pick->add_option("xy", *at, "Pixel X Y from the top left")
      ->required()
      ->expected(2)
      ->check(CLI::Range(0, 1 << 20));
  pick->add_option("--box", *box, "Pick box W H in pixels (default 1 1)")
      ->expected(2)
      ->check(CLI::Range(1, 4096));
  auto viewFile = std::make_shared<std::string>();
  auto viewOut = std::make_shared<std::string>();
  auto circle = std::make_shared<bool>(false);
  CLI::App* view = scene->add_subcommand("view", "A picture of the scene from its viewpoint.");
  view->add_option("scene", *viewFile, "Scene file (JSON)")->required();
  qavcli::AddPictureOption(view, *viewOut, "The picture to write")->required();
  view->add_flag("--focus-circle", *circle, "Draw the focus circle over the view");
  qavcli::OnRun(view, [viewFile, viewOut, circle] { return View(*viewFile, *viewOut, *circle); });

  qavcli::OnRun(pick, [pickFile, at, box] {
    return Pick(*pickFile, (*at)[0], (*at)[1], (*box)[0], (*box)[1]);
  });
}

}  // namespace

QAV_CLI_COMMAND("scene", Setup);
