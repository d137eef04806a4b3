// qavrba dof: depth-of-field services.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVCli.h"
#include "QAVCliPicture.h"
#include "QAVCliScene.h"
#include "QAVModelObject.h"
#include "QAVPickPath.h"
#include "QAVRbaEnvironment.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"
#include "QAVViewRenderer.h"

namespace {

std::string Aperture(float aperture) {
  char text[32];
  (void)std::snprintf(text, sizeof text, "f/%g", static_cast<double>(aperture));
  return text;
}

// Why no bokeh texture is found for a valid f-number: where the search looked.
std::string NoBokehTexture() {
  const char* path = QAVRbaEnvironment::GraphicPath();
  if (!path || !*path)
    return "no bokeh texture: QAVGraphicPath is not set (the textures are found under dof/ of "
           "its entries, its last entry excepted)";
  if (!std::strchr(path, ':'))
    return std::string("no bokeh texture: QAVGraphicPath \"") + path +
           "\" has one entry, and its last entry is never searched";
  return std::string("no bokeh texture under dof/ of QAVGraphicPath \"") + path +
         "\" (its last entry excepted)";
}

int Bokeh(const std::vector<float>& apertures) {
  int status = 0;
  for (const float aperture : apertures) {
    QAVString path;
    if (SUCCEEDED(QAVRbaLiveUIServices::RetrieveAssociatedBokehImage(aperture, path))) {
      std::printf("%s\t%s\n", Aperture(aperture).c_str(), path.c_str());
    } else {
      status = qavcli::Fail(
          Aperture(aperture) + ": " +
          (!(aperture > 0.0F) ? "an aperture must be a number above 0" : NoBokehTexture()));
    }
  }
  return status;
}

// The view of the scene shown, drawn (null when it cannot be).
QAVRef<QAVPixelImage> View(QAVHostDriver& driver) {
  QAVRef<QAVPixelImage> image;
  if (FAILED(QAVViewRenderer::Render(driver.GetSceneViewer(), image))) return nullptr;
  return image;
}

std::string Number(double value) {
  char text[32];
  (void)std::snprintf(text, sizeof text, "%g", value);
  return text;
}

int Circle(const std::string& scene, const std::string& output) {
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
  if (output.empty()) return 0;
  const QAVRef<QAVPixelImage> view = View(*driver);
  if (!view) return qavcli::Fail("the view cannot be drawn");
  // To scale: the unusable band at the bottom hatched dark, the circle in amber.
  const double height = view->GetHeight();
  std::string svg = qavcli::SvgOverView(*view);
  svg += "<rect x=\"0\" y=\"" + Number(height - offset) + "\" width=\"" + Number(view->GetWidth()) +
         "\" height=\"" + Number(offset) + "\" fill=\"#202830\" fill-opacity=\"0.55\"/>\n";
  svg += "<circle cx=\"" + Number(center.x) + "\" cy=\"" + Number(center.y) + "\" r=\"" +
         Number(radius) + "\" fill=\"none\" stroke=\"#ffc428\" stroke-width=\"2\"/>\n";
  svg += "<text x=\"8\" y=\"" + Number(height - offset / 2 + 5) +
         "\" font-family=\"DejaVu Sans, sans-serif\" font-size=\"13\" fill=\"#f2f4f7\">"
         "unusable band, " +
         Number(offset) + " px</text>\n</svg>\n";
  return qavcli::WritePicture(output, svg);
}

struct FocusOptions {
  std::string scene;
  int mode = 1;
  float distance = 0.0F;
  std::vector<float> point;
  std::string output;
};

// The object of the first path at the view's centre whose intersection is at
// the focus distance: the one the autofocus took.
std::string FocusedObject(QAV3DViewer& viewer, float distance) {
  float width = 0.0F;
  float height = 0.0F;
  viewer.GetGraphicSize(width, height);
  std::vector<QAVRef<QAVPickPath>> paths;
  viewer.Pick(static_cast<int>(width * 0.5F), static_cast<int>(height * 0.5F), 1, 1, 0, paths);
  for (const QAVRef<QAVPickPath>& path : paths) {
    if (std::abs(path->GetDistance() - distance) > 1e-3 * std::max(1.0F, distance)) continue;
    for (int i = 0; i < path->GetRepCount(); ++i)
      if (const QAVModelObject* object = path->GetRep(i)->GetModelObject())
        return std::string(object->IsA()) + " \"" + object->GetAlias().ToString().str() + "\"";
  }
  return "";
}

// Why the autofocus found no distance: what lies at the view's centre.
std::string NoAutofocus(QAV3DViewer& viewer) {
  float width = 0.0F;
  float height = 0.0F;
  viewer.GetGraphicSize(width, height);
  std::vector<QAVRef<QAVPickPath>> paths;
  viewer.Pick(static_cast<int>(width * 0.5F), static_cast<int>(height * 0.5F), 1, 1, 0, paths);
  if (paths.empty()) return "no focus: nothing lies at the centre of the view";
  return "no focus: only stickers, cameras, lights or environments lie at the centre of the "
         "view, and the autofocus passes over them";
}

int Focus(const FocusOptions& options) {
  const std::unique_ptr<QAVHostDriver> driver = qavcli::OpenScene(options.scene);
  if (!driver) return 1;
  // The camera's settings for this run only: never saved.
  QAVSettingRepository* camera =
      QAVSettingRepository::GetRepository(QAVRbaRenderingSettings::kScratchCameraRepository);
  if (!camera) return qavcli::Fail("no setting repository for the camera");
  namespace Schema = QAVRbaRenderingSettings;
  Schema::Write(*camera, Schema::kLiveAutofocus, options.mode);
  Schema::Write(*camera, Schema::kLiveFocalDistance, options.distance);
  const Schema::Key<float>* keys[] = {&Schema::kLiveFocalPointX, &Schema::kLiveFocalPointY,
                                      &Schema::kLiveFocalPointZ};
  for (std::size_t i = 0; i < options.point.size() && i < 3; ++i)
    Schema::Write(*camera, *keys[i], options.point[i]);
  QAV3DViewer* viewer = driver->GetSceneViewer();
  float distance = 0.0F;
  if (FAILED(QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer, camera, distance)))
    return qavcli::Fail(options.mode == 1 ? NoAutofocus(*viewer) : "no focus");
  const std::string object = options.mode == 1 ? FocusedObject(*viewer, distance) : "";
  std::printf("%g%s%s\n", static_cast<double>(distance), object.empty() ? "" : "\t",
              object.c_str());
  if (options.output.empty()) return 0;
  QAVRef<QAVPixelImage> view = View(*driver);
  if (!view) return qavcli::Fail("the view cannot be drawn");
  // The focus point: the view's centre for the autofocus, the point projected
  // for a focus point, none for a distance.
  float width = 0.0F;
  float height = 0.0F;
  viewer->GetGraphicSize(width, height);
  double x = -1;
  double y = -1;
  bool marked = false;
  if (options.mode == 1) {
    x = static_cast<int>(width * 0.5F);
    y = static_cast<int>(height * 0.5F);
    marked = true;
  } else if (options.mode == 2) {
    const float* p = options.point.data();
    const bool given = options.point.size() == 3;
    marked =
        viewer->Project(QAVMathPoint(given ? p[0] : 0, given ? p[1] : 0, given ? p[2] : 0), x, y);
  }
  if (marked) {
    x *= view->GetWidth() / static_cast<double>(width);
    y *= view->GetHeight() / static_cast<double>(height);
    QAVViewRenderer::DrawRing(*view, x, y, 9, 2.5, 255, 196, 40);
    QAVViewRenderer::DrawRing(*view, x, y, 1.5, 3, 255, 196, 40);
  }
  return qavcli::WritePicture(options.output, *view);
}

void Setup(CLI::App& program) {
  CLI::App* dof = program.add_subcommand("dof", "Depth-of-field services.");
  dof->require_subcommand(1);
  auto apertures = std::make_shared<std::vector<float>>();
  CLI::App* bokeh = dof->add_subcommand(
      "bokeh", "The bokeh texture of each f-number F, found under dof/ along QAVGraphicPath.");
  bokeh->add_option("f", *apertures, "F-numbers")->required()->check(qavcli::FiniteFloat());
  qavcli::OnRun(bokeh, [apertures] { return Bokeh(*apertures); });

  auto circleScene = std::make_shared<std::string>();
  auto circleOut = std::make_shared<std::string>();
  CLI::App* circle = dof->add_subcommand(
      "circle", "The focus circle over the view of a scene: centre, radius, unusable band.");
  circle->add_option("scene", *circleScene, "Scene file (JSON)")->required();
  qavcli::AddPictureOption(circle, *circleOut,
                           "A picture of the view with the band and the circle, to scale");
  qavcli::OnRun(circle, [circleScene, circleOut] { return Circle(*circleScene, *circleOut); });

  auto focus = std::make_shared<FocusOptions>();
  CLI::App* focusCommand = dof->add_subcommand(
      "focus",
      "The focus distance of the camera of a scene: autofocus on the view centre "
      "(mode 1), a distance (0) or a point (2).");
  focusCommand->add_option("scene", focus->scene, "Scene file (JSON)")->required();
  focusCommand->add_option("--mode", focus->mode, "0 distance, 1 autofocus, 2 point")
      ->check(CLI::Range(0, 2));
  CLI::Option* distance =
      focusCommand->add_option("--distance", focus->distance, "The distance of mode 0")
          ->check(qavcli::FiniteNumber(0, 1e12));
  focusCommand->add_option("--point", focus->point, "X Y Z of mode 2")
      ->expected(3)
      ->check(qavcli::FiniteNumber(-1e12, 1e12));
  qavcli::AddPictureOption(focusCommand, focus->output,
                           "A picture of the view with the focus point marked");
  qavcli::OnRun(focusCommand, [focus, distance] {
    // Each mode takes its own input, and only its own: a value given to
    // another mode would be ignored unseen.
    const bool hasDistance = distance->count() > 0;
    const bool hasPoint = !focus->point.empty();
    if (focus->mode == 0 && !hasDistance)
      return qavcli::UsageError("dof focus --mode 0 focuses at a distance: give --distance D");
    if (focus->mode == 2 && !hasPoint)
      return qavcli::UsageError("dof focus --mode 2 focuses on a point: give --point X Y Z");
    if (focus->mode != 0 && hasDistance)
      return qavcli::UsageError("--distance is for --mode 0, not --mode " +
                                std::to_string(focus->mode));
    if (focus->mode != 2 && hasPoint)
      return qavcli::UsageError("--point is for --mode 2, not --mode " +
                                std::to_string(focus->mode));
    return Focus(*focus);
  });
}

}  // namespace

QAV_CLI_COMMAND("dof", Setup);
