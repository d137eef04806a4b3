// qavrba place: a scripted texture placement on a scene: the object under
// edition made on a part, its context bar filled, buttons pressed in order,
// and after each what was sent and where the projection stands.
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVAfrCtxBarFrame.h"
#include "QAVCli.h"
#include "QAVCliBar.h"
#include "QAVCliBarPicture.h"
#include "QAVCliPicture.h"
#include "QAVCliScene.h"
#include "QAVCommand.h"
#include "QAVFrmLayout.h"
#include "QAVIAfrCtxBarManager.h"
#include "QAVIRbaMappingModelUpdater.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRbaManipulatorServices.h"
#include "QAVRbaTexturePlacement.h"
#include "QAVViewRenderer.h"

namespace {

struct Kind {
  const char* name;
  QAVRbaTexturePlacement::Kind kind;
  const char* bar;
};
const Kind kKinds[] = {
    {"material", QAVRbaTexturePlacement::Kind::AppliedMaterial, "material"},
    {"decal", QAVRbaTexturePlacement::Kind::Decal, "uv"},
    {"sticker", QAVRbaTexturePlacement::Kind::Sticker, "sticker"},
};

std::string Vector(const QAVMathVector& v) {
  char text[96];
  (void)std::snprintf(text, sizeof text, "%.3f %.3f %.3f", v.x, v.y, v.z);
  return text;
}

void PrintPlacement(const QAVRbaTexturePlacement& placement) {
  const QAVMathTransformation& m = placement.GetIsometry();
  std::printf("  mapping\t%s\n  origin\t%s\n  axes\tX %s\tY %s\tZ %s\n  size\t%s\n",
              qavcli::MappingTypeName(placement.GetMappingType()).c_str(),
              Vector(m.translation).c_str(), Vector(m.xAxis).c_str(), Vector(m.yAxis).c_str(),
              Vector(m.zAxis).c_str(), Vector(placement.GetSize()).c_str());
}

// The viewer, and the placement of the support's space in the scene: the
// support's box and the projection are in the support's own space.
struct View {
  QAV3DViewer& viewer;
  QAV4x4Matrix toScene;
};

// An SVG polyline of points of the support's space as the viewer shows them;
// points behind the eye break the line.
std::string Polyline(const View& view, const std::vector<QAVMathPoint>& points, const char* style) {
  std::string d;
  bool pen = false;
  for (const QAVMathPoint& p : points) {
    double x = 0;
    double y = 0;
    if (!view.viewer.Project(view.toScene * p, x, y)) {
      pen = false;
      continue;
    }
    char step[64];
    (void)std::snprintf(step, sizeof step, "%c%.1f %.1f ", pen ? 'L' : 'M', x, y);
    d += step;
    pen = true;
  }
  return d.empty() ? std::string() : "<path d=\"" + d + "\" " + style + "/>\n";
}

QAVMathPoint At(const QAVMathTransformation& m, double x, double y, double z) {
  return m * QAVMathPoint(x, y, z);
}

// The twelve edges of a box of those half sizes in the frame `m`.
std::string Box(const View& view, const QAVMathTransformation& m, double hx, double hy, double hz,
                const char* style) {
  std::string svg;
  for (const double z : {-hz, hz})
    svg += Polyline(view,
                    {At(m, -hx, -hy, z), At(m, hx, -hy, z), At(m, hx, hy, z), At(m, -hx, hy, z),
                     At(m, -hx, -hy, z)},
                    style);
  for (const double x : {-hx, hx})
    for (const double y : {-hy, hy})
      svg += Polyline(view, {At(m, x, y, -hz), At(m, x, y, hz)}, style);
  return svg;
}

// A circle of that radius in the XY plane of `m`, at height z.
std::string Circle(const View& view, const QAVMathTransformation& m, double r, double z,
                   const char* style) {
  std::vector<QAVMathPoint> points;
  for (int i = 0; i <= 48; ++i) {
    const double a = 2 * M_PI * i / 48;
    points.push_back(At(m, r * std::cos(a), r * std::sin(a), z));
  }
  return Polyline(view, points, style);
}

// The projection as its type shapes it, in the placement's frame.
std::string Projection(const View& view, const QAVRbaTexturePlacement& placement) {
  const char* style =
      "fill=\"none\" stroke=\"#ff3d7f\" stroke-width=\"2.5\" stroke-linejoin=\"round\"";
  const QAVMathTransformation& m = placement.GetIsometry();
  const QAVMathVector& s = placement.GetSize();
  std::string svg;
  switch (placement.GetMappingType()) {
    case QAVIRbaMappingObservable::Cubical:
      svg += Box(view, m, s.x / 2, s.y / 2, s.z / 2, style);
      break;
    case QAVIRbaMappingObservable::Spherical: {
      const double r = std::max(s.x, s.y) / 2;
      svg += Circle(view, m, r, 0, style);
      QAVMathTransformation side = m;
      side.yAxis = m.zAxis;
      side.zAxis = m.yAxis;
      svg += Circle(view, side, r, 0, style);
      break;
    }
    case QAVIRbaMappingObservable::FiniteCylindrical:
    case QAVIRbaMappingObservable::InfiniteCylindrical: {
      const bool infinite =
          placement.GetMappingType() == QAVIRbaMappingObservable::InfiniteCylindrical;
      const double r = s.x / 2;
      const double h = (infinite ? 1.6 : 1.0) * s.z / 2;
      svg += Circle(view, m, r, -h, style) + Circle(view, m, r, h, style);
      for (const double a : {0.0, M_PI / 2, M_PI, 3 * M_PI / 2})
        svg += Polyline(view,
                        {At(m, r * std::cos(a), r * std::sin(a), -h),
                         At(m, r * std::cos(a), r * std::sin(a), h)},
                        infinite ? "fill=\"none\" stroke=\"#ff3d7f\" stroke-width=\"2\" "
                                   "stroke-dasharray=\"8 5\""
                                 : style);
      break;
    }
    case QAVIRbaMappingObservable::UV:
      break;  // the surface's own parameters: no projection to show
    default:
      svg += Polyline(
          view,
          {At(m, -s.x / 2, -s.y / 2, 0), At(m, s.x / 2, -s.y / 2, 0), At(m, s.x / 2, s.y / 2, 0),
           At(m, -s.x / 2, s.y / 2, 0), At(m, -s.x / 2, -s.y / 2, 0)},
          style);
  }
  // The frame's axes, a quarter of the projection's size long.
  const double l = std::max(20.0, std::max(s.x, s.y) / 4);
  svg += Polyline(view, {At(m, 0, 0, 0), At(m, l, 0, 0)}, "stroke=\"#e53935\" stroke-width=\"3\"");
  svg += Polyline(view, {At(m, 0, 0, 0), At(m, 0, l, 0)}, "stroke=\"#43a047\" stroke-width=\"3\"");
  svg += Polyline(view, {At(m, 0, 0, 0), At(m, 0, 0, l)}, "stroke=\"#1e88e5\" stroke-width=\"3\"");
  return svg;
}

// Where the support's own space lies in the scene.
QAV4x4Matrix SupportToScene(QAVOmbObjectInContext* support) {
  QAV4x4Matrix toScene;
  QAVRbaManipulatorServices::GetSupportToScene(support, toScene);
  return toScene;
}

int Place(const std::string& scene, const std::string& object, const std::string& as,
          const std::vector<std::string>& presses, const std::string& out) {
  const Kind* kind = nullptr;
  for (const Kind& k : kKinds)
    if (as == k.name) kind = &k;
  if (!kind) return qavcli::UsageError("unknown kind \"" + as + "\" (material, decal, sticker)");
  const std::unique_ptr<QAVHostDriver> driver = qavcli::OpenScene(scene);
  if (!driver) return 1;
  std::string error;
  if (driver->LoadCommandHeaders(qavcli::ResourcesDir() + "/headers/RenderingContextBars.headers",
                                 error) < 0)
    return qavcli::Fail(error);
  QAVRef<QAVOmbObjectInContext> support = driver->FindObject(object);
  if (!support) return qavcli::Fail("no object named \"" + object + "\" in " + scene);

  // The edition starts as the host's placement command starts it: the object
  // under edition on its support, snapped to its centre and fitted to its
  // size, handed to the context bar manager, and its bar shown.
  auto placement = QAVMakeRef<QAVRbaTexturePlacement>(
      kind->kind, support.get(), QAVUnicodeString(("Texture on " + object).c_str()));
  if (QAVRef<QAVIRbaMappingModelUpdater> updater =
          QAVQuery<QAVIRbaMappingModelUpdater>(placement.get())) {
    updater->ReSnapToApplicationCenterpoint();
    updater->RescaleToRelatedObjectSize(false);
  }
  QAVRbaContextBarManager* manager = QAVRbaContextBarManager::GetContextBarManager();
  manager->SetRelatedObject(placement.get());
  const std::string lateType = qavcli::BarLateType(kind->bar);
  manager->InitContextualBar(QAVString(lateType.c_str()));
  auto bars = QAVRef<QAVIAfrCtxBarManager>::Adopt(GetAfrCtxBarManager());
  QAVAfrCtxBarFrame* frame = bars->FindFrame(QAVString(lateType.c_str()));
  std::printf("%s on \"%s\", bar %s\n%s", QAVRbaTexturePlacement::ClassOf(kind->kind),
              object.c_str(), lateType.c_str(), frame ? frame->Describe().c_str() : "");
  PrintPlacement(*placement);

  int status = 0;
  driver->StartRecording();
  for (const std::string& header : presses) {
    driver->ClearJournal();
    QAVCommand* started = nullptr;
    if (FAILED(driver->PressContextBarButton(header.c_str(), started, error))) {
      status = qavcli::Fail(error);
      break;
    }
    // The command ends at the next idle moment: name it first.
    std::printf("press %s\t%s\n", header.c_str(), started ? started->IsA() : "(no command)");
    driver->Idle();
    for (const QAVJournalEntry& entry : driver->GetJournal("dispatch"))
      std::printf("  event\t%s\n", entry.name.c_str());
    for (const QAVJournalEntry& entry : driver->GetJournal("ctx-bar"))
      if (entry.name == "fill") std::printf("  bar filled again\n");
    PrintPlacement(*placement);
  }
  driver->StopRecording();

  if (status == 0 && !out.empty()) {
    QAV3DViewer* viewer = driver->GetSceneViewer();
    QAVRef<QAVPixelImage> image;
    if (FAILED(QAVViewRenderer::Render(viewer, image)))
      return qavcli::Fail("the view cannot be drawn");
    std::string svg = qavcli::SvgOverView(*image);
    const View view{*viewer, SupportToScene(support.get())};
    QAVMathPoint centre;
    QAVMathPoint size;
    if (SUCCEEDED(
            QAVRbaManipulatorServices::GetSupportSizeAndCenter(support.get(), centre, size))) {
      QAVMathTransformation box;
      box.translation = {centre.x, centre.y, centre.z};
      svg += Box(view, box, size.x / 2, size.y / 2, size.z / 2,
                 "fill=\"none\" stroke=\"#ffd54f\" stroke-width=\"1.5\" stroke-dasharray=\"6 4\"");
    }
    svg += Projection(view, *placement);
    if (frame && frame->GetRowCount() > 0) {
      double w = 0;
      double h = 0;
      svg += qavcli::BarSvg(*frame->GetRow(0), 12, 12, w, h);
    }
    svg += "</svg>\n";
    status = qavcli::WritePicture(out, svg);
  }
  manager->DestroyContextualBar(QAVString(lateType.c_str()));
  manager->SetRelatedObject(nullptr);
  QAVRbaContextBarManager::DestroyContextBarManager();
  return status;
}

void Setup(CLI::App& program) {
  CLI::App* place = program.add_subcommand(
      "place", "A scripted texture placement: the bar filled, its buttons pressed in order.");
  auto scene = std::make_shared<std::string>();
  auto object = std::make_shared<std::string>();
  auto as = std::make_shared<std::string>("material");
  auto presses = std::make_shared<std::vector<std::string>>();
  auto out = std::make_shared<std::string>();
  place->add_option("scene", *scene, "Scene file (JSON)")->required();
  place->add_option("object", *object, "The name of the part that takes the texture")->required();
  place->add_option("--as", *as, "material (default), decal or sticker");
  place->add_option("--press", *presses,
                    "A bar button to press, by its command header (repeatable, in order)");
  qavcli::AddPictureOption(place, *out, "The view with the support's box and the projection");
  qavcli::OnRun(place, [scene, object, as, presses, out] {
    return Place(*scene, *object, *as, *presses, *out);
  });
}

}  // namespace

QAV_CLI_COMMAND("place", Setup);
