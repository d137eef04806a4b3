// qavrba hud: the live renderer's heads-up display over the view of a scene,
// as text and as a picture (SVG with the view embedded as PNG).
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVCli.h"
#include "QAVCliDemoParts.h"
#include "QAVCliPicture.h"
#include "QAVCliScene.h"
#include "QAVModelObject.h"
#include "QAVMsgCatalog.h"
#include "QAVPickPath.h"
#include "QAVRbaLiveHUDDlg.h"
#include "QAVRbaLiveHUDSingleton.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVRbaPhotoDataInit.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"
#include "QAVViewRenderer.h"

namespace {

struct HudOptions {
  std::string scene;
  std::string output;
  std::string resources = "CPU";
  int total = 0;
  std::string render = "0";
  bool inProgress = false;
  std::string ambience;
  std::string backplate;
};

// The labels of the display shown on screen, top to bottom, with the title of
// their frame first.
void ShownLines(const QAVDlgWidget& widget, std::vector<std::string>& lines) {
  if (!widget.IsShown()) return;
  const std::string title = widget.GetTitle().ToString().str();
  if (!title.empty() && widget.GetKind() != QAVDlgKind::Dialog) lines.push_back(title);
  for (int i = 0; i < widget.GetChildCount(); ++i)
    ShownLines(*widget.GetChild(i), lines);
}

std::string HudSvg(const QAVPixelImage& view, const std::vector<std::string>& lines) {
  constexpr int kLine = 20;
  const int panelHeight = 16 + kLine * static_cast<int>(lines.size());
  std::string svg = qavcli::SvgOverView(view);
  svg += "<rect x=\"12\" y=\"12\" width=\"300\" height=\"" + std::to_string(panelHeight) +
         "\" rx=\"6\" fill=\"#101418\" fill-opacity=\"0.72\"/>\n";
  int y = 12 + 8 + 14;
  bool first = true;
  for (const std::string& line : lines) {
    svg += "<text x=\"24\" y=\"" + std::to_string(y) +
           "\" font-family=\"DejaVu Sans, sans-serif\" font-size=\"14\" fill=\"" +
           (first ? std::string("#ffd34d") : std::string("#f2f4f7")) + "\">" +
           qavcli::SvgEscaped(line) + "</text>\n";
    first = false;
    y += kLine;
  }
  return svg + "</svg>\n";
}

// The HUD of a scene opened by `driver`: its lines as shown after an idle moment.
std::vector<std::string> HudLines(QAVHostDriver& driver, const HudOptions& options) {
  QAV3DViewer* viewer = driver.GetSceneViewer();
  float width = 0.0F;
  float height = 0.0F;
  viewer->GetGraphicSize(width, height);
  QAVRbaLiveHUDSingleton* singleton = QAVRbaLiveHUDSingleton::Get();
  QAVRbaLiveHUDDlg* hud = singleton->CreateHUDDlg(300, 160);
  hud->SetResolution(static_cast<int>(width), static_cast<int>(height));
  hud->SetAmbienceInfos(QAVUnicodeString(
      (options.ambience.empty() ? driver.GetScene()->environment : options.ambience).c_str()));
  hud->SetBackplateInfos(QAVUnicodeString(options.backplate.c_str()));
  // As the renderer does: push, ask for a flush at idle, let the host reach it.
  singleton->PushHUDInfos(QAVUnicodeString(options.resources.c_str()), options.total,
                          QAVUnicodeString(), QAVUnicodeString(options.render.c_str()),
                          options.inProgress);
  singleton->FlushHUDInfos(true);
  driver.Idle();
  std::vector<std::string> lines;
  ShownLines(*hud, lines);
  singleton->RemoveHUDDlg();
  driver.Idle();
  return lines;
}

int Hud(const HudOptions& options) {
  // The HUD's texts are in the shipped message catalogs unless told otherwise.
  ::setenv("QAVHOST_RESOURCE_PATH", qavcli::ResourcesDir().c_str(), 0);
  // Without its catalog the HUD has no texts: it would show nothing at all.
  if (QAVMsgCatalog::GetCatalogPath(QAVString("QAVRbaLiveHUDDlg")).empty()) {
    const char* searched = std::getenv("QAVHOST_RESOURCE_PATH");
    return qavcli::Fail(
        std::string("the live HUD's message catalog QAVRbaLiveHUDDlg.catalog is in no msgcatalog/ "
                    "folder of QAVHOST_RESOURCE_PATH \"") +
        (searched ? searched : "") + "\"");
  }
  const std::unique_ptr<QAVHostDriver> driver = qavcli::OpenScene(options.scene);
  if (!driver) return 1;
  const std::vector<std::string> lines = HudLines(*driver, options);
  for (const std::string& line : lines)
    std::printf("%s\n", line.c_str());
  if (options.output.empty()) return 0;

  QAVRef<QAVPixelImage> image;
  if (FAILED(QAVViewRenderer::Render(driver->GetSceneViewer(), image)))
    return qavcli::Fail("the view cannot be drawn");
  return qavcli::WritePicture(options.output, HudSvg(*image, lines));
}

void Setup(CLI::App& program) {
  auto options = std::make_shared<HudOptions>();
  CLI::App* hud = program.add_subcommand(
      "hud",
      "The live renderer's heads-up display over the view of a scene: its lines, and "
      "with -o a picture of it over the view.");
  hud->add_option("scene", options->scene, "Scene file (JSON)")->required();
  qavcli::AddPictureOption(hud, options->output, "The HUD over the view");
  hud->add_option("--resources", options->resources, "The resources text");
  hud->add_option("--total", options->total, "The total")->check(CLI::Range(0, 1 << 30));
  hud->add_option("--render", options->render, "The frames rendered text");
  hud->add_flag("--in-progress", options->inProgress, "Rendering is in progress");
  hud->add_option("--ambience", options->ambience,
                  "The ambience file (default: the scene's environment)");
  hud->add_option("--backplate", options->backplate, "The backplate file (none: hidden)");
  qavcli::OnRun(hud, [options] { return Hud(*options); });
}

}  // namespace

int DemoScene(const std::string& resourcesDir) {
  // The shipped graphic directory first, so that its studio folder and bokeh
  // textures are found (the last entry is never searched).
  const std::string graphic = resourcesDir + "/graphic";
  ::setenv("QAVGraphicPath", (graphic + ":" + graphic + "/fallback").c_str(), 1);
  const std::unique_ptr<QAVHostDriver> driver =
      qavcli::OpenScene(resourcesDir + "/scenes/showroom/scene.json");
  if (!driver) return 1;
  for (const char* preset : {"PureWhite", "City"}) {
    QAVString name;
    QAVString path;
    QAVRbaLiveUIServices::RetrieveAssociatedAmbience(QAVString(preset), name, path);
    std::printf("ambience preset %s -> %s\n", preset, path.IsEmpty() ? "(none)" : path.c_str());
  }
  if (QAVISpecObject* ambience =
          QAVRbaLiveUIServices::RetrieveCurrentModelAmbience(QAVUnicodeString("Studio white"))) {
    std::printf("the product's ambience \"Studio white\": %s\n", ambience->IsA());
    ambience->Release();
  }
  QAVString bokeh;
  if (SUCCEEDED(QAVRbaLiveUIServices::RetrieveAssociatedBokehImage(5.6F, bokeh)))
    std::printf("bokeh texture at f/5.6: %s\n", bokeh.c_str());
  float apertures[QAVRbaApertureValueCount];
  InitApertureValues(apertures);
  std::printf("aperture ladder:");
  for (const float f : apertures)
    std::printf(" %g", static_cast<double>(f));
  float speeds[QAVRbaSpeedValueCount];
  InitSpeedValues(speeds);
  std::printf("\nshutter speeds:");
  for (const float n : speeds)
    std::printf(" 1/%g", static_cast<double>(n));
  std::printf("\nexposure correction from f/8:");
  for (const float f : {1.4F, 5.6F, 8.0F, 22.0F, 7.0F})
    std::printf("  f/%g %+g EV", static_cast<double>(f),
                static_cast<double>(GetEVCorrectionForAperture(f, apertures)));
  std::printf("   (7 is off the ladder)\n");

  std::vector<QAVRef<QAVPickPath>> paths;
  driver->GetSceneViewer()->Pick(480, 270, 1, 1, 0, paths);
  std::printf("at the centre of the view, nearest first:");
  for (const QAVRef<QAVPickPath>& path : paths)
    if (const QAVModelObject* object = path->GetRep(1)->GetModelObject())
      std::printf("  %s \"%s\" at %.1f mm", object->IsA(), object->GetAlias().ToString().c_str(),
                  path->GetDistance());
  std::printf("\n");
  QAVSettingRepository* camera =
      QAVSettingRepository::GetRepository(QAVRbaRenderingSettings::kScratchCameraRepository);
  float distance = 0.0F;
  if (camera && SUCCEEDED(QAVRbaLiveUIServices::SetFocusOnViewpoint(driver->GetSceneViewer(),
                                                                    camera, distance)))
    std::printf("autofocus: %.1f mm (the sticker in front is passed over)\n",
                static_cast<double>(distance));
  QAVMathPoint2Df center{};
  float radius = 0.0F;
  float offset = 0.0F;
  if (SUCCEEDED(QAVRbaLiveUIServices::ComputeVoodooCircle(center, radius, offset)))
    std::printf("focus circle: centre %g %g, radius %g, unusable band %g\n",
                static_cast<double>(center.x), static_cast<double>(center.y),
                static_cast<double>(radius), static_cast<double>(offset));
  DemoPanels(*driver);
  HudOptions options;
  options.resources = "CPU";
  options.total = 128;
  options.render = "32";
  options.inProgress = true;
  std::printf("live HUD:\n");
  for (const std::string& line : HudLines(*driver, options))
    std::printf("  %s\n", line.c_str());
  return 0;
}

QAV_CLI_COMMAND("hud", Setup);
