// qavrba ruler: the measuring rulers of a placement command over a scene.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVCallbackManager.h"
#include "QAVCli.h"
#include "QAVCliPicture.h"
#include "QAVCliScene.h"
#include "QAVCommand.h"
#include "QAVRbaRulerManager.h"
#include "QAVRulerDecoratedLengthEditor.h"
#include "QAVViewRenderer.h"

namespace {

struct RulerOptions {
  std::string scene;
  std::vector<double> from;
  std::vector<double> to;
  std::vector<double> direction;
  std::vector<double> angle;
  std::vector<double> plane;
  std::vector<double> typed;
  std::vector<double> typedAngle;
  std::string output;
};

QAVMathPoint Point(const std::vector<double>& v) { return {v[0], v[1], v[2]}; }
QAVMathVector Vector(const std::vector<double>& v, std::size_t at = 0) {
  return {v[at], v[at + 1], v[at + 2]};
}

QAVMathVector Unit(const QAVMathVector& v) {
  const double length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
  return length > 0 ? QAVMathVector(v.x / length, v.y / length, v.z / length) : v;
}

// The plane through `origin` facing the view: spanned by the view's right and
// up directions.
QAVMathPlane FacingPlane(const QAV3DViewer& viewer, const QAVMathPoint& origin) {
  const QAV3DViewpoint& view = *viewer.GetMain3DViewpoint();
  const QAVMathVector f = Unit(view.GetTarget() - view.GetOrigin());
  const QAVMathVector up = view.GetUpDirection();
  const QAVMathVector right =
      Unit({f.y * up.z - f.z * up.y, f.z * up.x - f.x * up.z, f.x * up.y - f.y * up.x});
  const QAVMathVector trueUp(right.y * f.z - right.z * f.y, right.z * f.x - right.x * f.z,
                             right.x * f.y - right.y * f.x);
  return {origin, right, trueUp};
}

// Prints the edition notifications a ruler sends, as its owner would hear them.
void Listen(QAVCommand* ruler) {
  if (!ruler) return;
  ruler->GetCallbackManager()->AddCallback(
      QAVRulerDecoratedEditor::EDIT_MODIFY(),
      [](const char*, void* data, QAVNotification*, void*, QAVCallback) {
        const auto* editor = static_cast<const QAVRulerDecoratedEditor*>(data);
        std::printf("typed into %s\t%g\n", editor->GetName().c_str(), editor->GetValue());
      });
}

double Length(const QAVMathVector& v) { return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z); }

// Why the plane's two directions span no plane; empty when they do.
std::string DegeneratePlane(const std::vector<double>& plane) {
  // Each direction scaled by its largest component first, so that tiny or
  // huge components neither underflow nor overflow.
  const auto scaled = [](const QAVMathVector& d) {
    const double m = std::max({std::abs(d.x), std::abs(d.y), std::abs(d.z)});
    return m == 0 ? d : QAVMathVector(d.x / m, d.y / m, d.z / m);
  };
  const QAVMathVector u = scaled(Vector(plane, 3));
  const QAVMathVector v = scaled(Vector(plane, 6));
  const double lu = Length(u);
  const double lv = Length(v);
  if (lu == 0) return "--plane: the direction UX UY UZ is zero";
  if (lv == 0) return "--plane: the direction VX VY VZ is zero";
  const QAVMathVector n(u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x);
  // The sine of the angle between them.
  if (Length(n) / lu / lv < 1e-9)
    return "--plane: the directions UX UY UZ and VX VY VZ are parallel and span no plane";
  return {};
}

int Ruler(const RulerOptions& options) {
  if (!options.plane.empty()) {
    const std::string why = DegeneratePlane(options.plane);
    if (!why.empty()) return qavcli::UsageError(why);
  }
  const std::unique_ptr<QAVHostDriver> driver = qavcli::OpenScene(options.scene);
  if (!driver) return 1;
  QAV3DViewer* viewer = driver->GetSceneViewer();
  const QAVMathPoint from = Point(options.from);
  const QAVMathPoint to = Point(options.to);
  const QAVMathVector direction = options.direction.empty() ? to - from : Vector(options.direction);
  const bool rotation = !options.angle.empty() || !options.typedAngle.empty();
  QAVMathPlane plane =
      options.plane.empty()
          ? FacingPlane(*viewer, from)
          : QAVMathPlane(Point(options.plane), Vector(options.plane, 3), Vector(options.plane, 6));

  // The placement command that owns the rulers, as the host would make it.
  auto* placement = new QAVCommand(nullptr, "QAVRbaCliPlacementCmd");
  QAVRbaRulerManager rulers;
  rulers.InitRulers(placement);
  Listen(rulers.GetTranslationRulerCommand());
  Listen(rulers.GetRotationRulerCommand());
  rulers.refreshTranslationRuler(from, to, direction);
  if (rotation) rulers.refreshRotationRuler(plane, options.angle.empty() ? 0.0 : options.angle[0]);

  // The user types into the rulers.
  if (!options.typed.empty())
    driver->TypeRulerValue(
        dynamic_cast<QAVRulerDecoratedEditor*>(rulers.GetTranslationRulerCommand()),
        options.typed[0]);
  if (!options.typedAngle.empty())
    driver->TypeRulerValue(dynamic_cast<QAVRulerDecoratedEditor*>(rulers.GetRotationRulerCommand()),
                           options.typedAngle[0]);

  int status = 0;
  if (!options.output.empty()) {
    QAVRef<QAVPixelImage> image;
    status = FAILED(QAVViewRenderer::Render(viewer, image))
                 ? qavcli::Fail("the view cannot be drawn")
                 : qavcli::WritePicture(options.output, *image);
  }

  const auto* length =
      dynamic_cast<const QAVRulerDecoratedLengthEditor*>(rulers.GetTranslationRulerCommand());
  if (length) {
    const QAVMathVector shown = length->GetDecoratorDirection();
    std::printf("length\t%g\ndirection\t%g %g %g\noffset\t%g mm\n", length->GetDecoratorLength(),
                shown.x, shown.y, shown.z, length->GetRulerOffsetInMM());
  }
  std::printf("translation ruler\t%g\n", rulers.getTranslationRulerEditorValue());
  if (rotation) {
    std::printf("rotation ruler\t%g\n", rulers.getRotationRulerEditorAngle());
    // Reading the angle writes it into the translation ruler as well.
    if (length) std::printf("translation ruler after the angle read\t%g\n", length->GetValue());
  }
  if (!options.output.empty() && status == 0) std::printf("%s\n", options.output.c_str());

  rulers.DestroyRulers();
  placement->RequestDelayedDestruction();
  driver->Idle();
  return status;
}

void Setup(CLI::App& program) {
  auto options = std::make_shared<RulerOptions>();
  CLI::App* ruler = program.add_subcommand(
      "ruler",
      "The rulers of a placement command over a scene: a length ruler from --from along "
      "--direction for the distance to --to, an angle ruler on request; the values typed "
      "are read back.");
  ruler->add_option("scene", options->scene, "Scene file (JSON)")->required();
  const auto coordinates = qavcli::FiniteNumber(-1e12, 1e12);
  ruler->add_option("--from", options->from, "X Y Z where the translation starts")
      ->required()
      ->expected(3)
      ->check(coordinates);
  ruler->add_option("--to", options->to, "X Y Z where it ends")
      ->required()
      ->expected(3)
      ->check(coordinates);
  ruler
      ->add_option("--direction", options->direction,
                   "X Y Z of the direction measured along (default: from --from to --to)")
      ->expected(3)
      ->check(coordinates);
  CLI::Option* angle =
      ruler->add_option("--angle", options->angle, "The rotation angle shown, in degrees")
          ->expected(1)
          ->check(qavcli::FiniteNumber(-3600, 3600));
  ruler
      ->add_option("--plane", options->plane,
                   "OX OY OZ UX UY UZ VX VY VZ: the rotation plane, its origin and two "
                   "directions (default: through --from, facing the view)")
      ->expected(9)
      ->check(coordinates)
      ->needs(angle);
  ruler->add_option("--type", options->typed, "A value the user types into the translation ruler")
      ->expected(1)
      ->check(coordinates);
  ruler
      ->add_option("--type-angle", options->typedAngle,
                   "A value the user types into the angle ruler")
      ->expected(1)
      ->check(qavcli::FiniteNumber(-3600, 3600));
  qavcli::AddPictureOption(ruler, options->output, "A picture of the view with the rulers");
  qavcli::OnRun(ruler, [options] { return Ruler(*options); });
}

}  // namespace

QAV_CLI_COMMAND("ruler", Setup);
