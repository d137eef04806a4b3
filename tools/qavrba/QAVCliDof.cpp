// qavrba dof: depth-of-field services.
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVCli.h"
#include "QAVCliScene.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVSettingRepository.h"

namespace {

std::string Aperture(float aperture) {
  char text[32];
  (void)std::snprintf(text, sizeof text, "f/%g", static_cast<double>(aperture));
  return text;
}

int Bokeh(const std::vector<float>& apertures) {
  int status = 0;
  for (const float aperture : apertures) {
    QAVString path;
    if (SUCCEEDED(QAVRbaLiveUIServices::RetrieveAssociatedBokehImage(aperture, path))) {
      std::printf("%s\t%s\n", Aperture(aperture).c_str(), path.c_str());
    } else {
      status = qavcli::Fail(
          !(aperture > 0.0F)
              ? Aperture(aperture) + ": an aperture must be a number above 0"
              : Aperture(aperture) +
                    ": no bokeh texture under dof/ of QAVGraphicPath (its last entry excepted)");
    }
  }
  return status;
}

int Circle(const std::string& scene) {
  const std::unique_ptr<QAVHostDriver> driver = qavcli::OpenScene(scene);
  if (!driver) return 1;
  QAVMathPoint2Df center{};
  float radius = 0.0F;
  float offset = 0.0F;
  if (FAILED(QAVRbaLiveUIServices::ComputeVoodooCircle(center, radius, offset)))
    return qavcli::Fail("no focus circle: no current window with a viewer");
  std::printf("centre\t%g %g\nradius\t%g\noffset\t%g\n", static_cast<double>(center.x),
              static_cast<double>(center.y), static_cast<double>(radius),
              static_cast<double>(offset));
  return 0;
}

struct FocusOptions {
  std::string scene;
  int mode = 1;
  float distance = 0.0F;
  std::vector<float> point;
};

int Focus(const FocusOptions& options) {
  const std::unique_ptr<QAVHostDriver> driver = qavcli::OpenScene(options.scene);
  if (!driver) return 1;
  // The camera's settings for this run only: never saved.
  QAVSettingRepository* camera = QAVSettingRepository::GetRepository("QAVRbaCliFocusCamera");
  if (!camera) return qavcli::Fail("no setting repository for the camera");
  camera->WriteSetting("Autofocus", &options.mode);
  camera->WriteSetting("FocalDistance", &options.distance);
  const char* keys[] = {"FocalPointX", "FocalPointY", "FocalPointZ"};
  for (std::size_t i = 0; i < options.point.size() && i < 3; ++i)
    camera->WriteSetting(keys[i], &options.point[i]);
  float distance = 0.0F;
  if (FAILED(QAVRbaLiveUIServices::SetFocusOnViewpoint(driver->GetSceneViewer(), camera, distance)))
    return qavcli::Fail(options.mode == 1
                            ? "no focus: nothing but stickers, cameras, lights or environments "
                              "at the centre of the view"
                            : "no focus");
  std::printf("%g\n", static_cast<double>(distance));
  return 0;
}

void Setup(CLI::App& program) {
  CLI::App* dof = program.add_subcommand("dof", "Depth-of-field services.");
  dof->require_subcommand(1);
  auto apertures = std::make_shared<std::vector<float>>();
  CLI::App* bokeh = dof->add_subcommand(
      "bokeh", "The bokeh texture of each f-number F, found under dof/ along QAVGraphicPath.");
  bokeh->add_option("f", *apertures, "F-numbers")->required();
  qavcli::OnRun(bokeh, [apertures] { return Bokeh(*apertures); });

  auto circleScene = std::make_shared<std::string>();
  CLI::App* circle = dof->add_subcommand(
      "circle", "The focus circle over the view of a scene: centre, radius, unusable band.");
  circle->add_option("scene", *circleScene, "Scene file (JSON)")->required();
  qavcli::OnRun(circle, [circleScene] { return Circle(*circleScene); });

  auto focus = std::make_shared<FocusOptions>();
  CLI::App* focusCommand = dof->add_subcommand(
      "focus",
      "The focus distance of the camera of a scene: autofocus on the view centre "
      "(mode 1), a distance (0) or a point (2).");
  focusCommand->add_option("scene", focus->scene, "Scene file (JSON)")->required();
  focusCommand->add_option("--mode", focus->mode, "0 distance, 1 autofocus, 2 point")
      ->check(CLI::Range(0, 2));
  focusCommand->add_option("--distance", focus->distance, "The distance of mode 0")
      ->check(qavcli::FiniteNumber(0, 1e12));
  focusCommand->add_option("--point", focus->point, "X Y Z of mode 2")
      ->expected(3)
      ->check(qavcli::FiniteNumber(-1e12, 1e12));
  qavcli::OnRun(focusCommand, [focus] { return Focus(*focus); });
}

}  // namespace

QAV_CLI_COMMAND("dof", Setup);
