// qavrba snap: the snap manipulator over a scene. The pointer hovers over the
// positions given (or drags through them with --drag); after each, the frame
// the manipulator snapped to, the notification it sent and the viewer's
// cursor. The picture shows the view with the gizmo where it landed and the
// pointer's positions.
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "QAV3DRep.h"
#include "QAV3DViewer.h"
#include "QAVCallbackManager.h"
#include "QAVCli.h"
#include "QAVCliPicture.h"
#include "QAVCliScene.h"
#include "QAVPixelImage.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVRbaSnapManipulator.h"
#include "QAVRbaSnapManipulatorNotification.h"
#include "QAVSettingRepository.h"
#include "QAVViewRenderer.h"

namespace {

struct SnapOptions {
  std::string scene;
  std::vector<double> positions;
  bool drag = false;
  std::string output;
};

const char* EventName(int event) {
  switch (event) {
    case 0:
      return "begin of a drag";
    case 1:
      return "drag step";
    case 2:
      return "end of a drag";
    case 3:
      return "hover step";
    default:
      return "?";
  }
}

const char* CursorName(int cursor) {
  switch (cursor) {
    case 3:
      return "snap target";
    case 14:
      return "dragging";
    case 15:
      return "no target";
    default:
      return "default";
  }
}

// Adding 0 turns a negative zero into a zero.
void PrintVector(const char* label, const QAVMathVector& v) {
  std::printf("%s %.3f %.3f %.3f", label, v.x + 0.0, v.y + 0.0, v.z + 0.0);
}

// The gizmo shows unless the user's settings turn it off: a "LightManipMode"
// that is not stored is taken as on, for this run only.
bool GizmoWanted() {
  namespace Schema = QAVRbaRenderingSettings;
  QAVSettingRepository* options = Schema::Open(Schema::kOptionsLightManipMode);
  if (!options) return false;
  int mode = 0;
  if (SUCCEEDED(Schema::ReadAttr(*options, Schema::kOptionsLightManipMode, mode))) return mode != 0;
  return SUCCEEDED(Schema::Write(*options, Schema::kOptionsLightManipMode, 1));
}

// The frame the gizmo shows: its matrix's columns.
void PrintFrame(const QAVRbaSnapManipulator& snap) {
  const QAV3DBagRep* gizmo = snap.GetFeedbackRep();
  const QAV4x4Matrix* m = gizmo ? gizmo->GetMatrix() : nullptr;
  if (!m) return;
  std::printf("  axes\t");
  PrintVector("X", {(*m)(0, 0), (*m)(1, 0), (*m)(2, 0)});
  PrintVector("\tY", {(*m)(0, 1), (*m)(1, 1), (*m)(2, 1)});
  PrintVector("\tZ", {(*m)(0, 2), (*m)(1, 2), (*m)(2, 2)});
  std::printf("\n");
}

// The pointer's positions, numbered beside them so as to leave the gizmo
// under the pointer in sight.
std::string Marks(const std::vector<double>& positions) {
  std::string svg;
  char text[256];
  for (std::size_t i = 0; i + 1 < positions.size(); i += 2) {
    (void)std::snprintf(text, sizeof text,
                        "<text x=\"%.1f\" y=\"%.1f\" font-family=\"sans-serif\" font-size=\"13\" "
                        "font-weight=\"bold\" fill=\"#1b1f3a\">%zu</text>\n",
                        positions[i] + 11, positions[i + 1] - 9, i / 2 + 1);
    svg += text;
  }
  return svg;
}

int Snap(const SnapOptions& options) {
  if (options.positions.size() % 2 != 0) {
    return qavcli::UsageError("snap: the positions come in pairs X Y");
  }
  const std::unique_ptr<QAVHostDriver> driver = qavcli::OpenScene(options.scene);
  if (!driver) return 1;
  QAV3DViewer* viewer = driver->GetSceneViewer();
  if (!GizmoWanted()) std::printf("gizmo\toff (\"LightManipMode\" is 0)\n");

  auto* snap = new QAVRbaSnapManipulator;
  std::vector<std::string> sent;
  GetDefaultCallbackManager(snap)->AddCallback(
      QAVRbaSnapManipulator::NOTIFICATION(),
      [&sent](const char*, void*, QAVNotification* notification, void*, QAVCallback) {
        const auto* n = dynamic_cast<const QAVRbaSnapManipulatorNotification*>(notification);
        if (!n) return;
        char text[256];
        const QAVMathVector normal = n->GetNormal();
        const QAVMathVector origin = n->GetOrigin();
        (void)std::snprintf(
            text, sizeof text, "  sent\t%d (%s)\tnormal %.3f %.3f %.3f\torigin %.3f %.3f %.3f",
            n->GetEventName(), EventName(n->GetEventName()), normal.x + 0.0, normal.y + 0.0,
            normal.z + 0.0, origin.x + 0.0, origin.y + 0.0, origin.z + 0.0);
        sent.emplace_back(text);
      });

  const std::size_t count = options.positions.size() / 2;
  for (std::size_t i = 0; i < count; ++i) {
    const double x = options.positions[2 * i];
    const double y = options.positions[2 * i + 1];
    const char* action = "move";
    if (options.drag && i == 0) {
      action = "press";
      driver->PointerPress(viewer, x, y);
    } else {
      driver->PointerMove(viewer, x, y);
    }
    std::printf("%s %g %g\n", action, x, y);
    if (options.drag && i + 1 == count) {
      driver->PointerRelease(viewer, x, y);
      std::printf("release %g %g\n", x, y);
    }
    for (const std::string& line : sent)
      std::printf("%s\n", line.c_str());
    sent.clear();
    const QAVMathPointf& o = snap->GetOrigin();
    const QAVMathDirectionf& n = snap->GetNormal();
    std::printf("  frame\t");
    PrintVector("origin", {o.x, o.y, o.z});
    PrintVector("\tnormal", {n.x, n.y, n.z});
    std::printf("\n");
    PrintFrame(*snap);
    std::printf("  cursor\t%d (%s)\n", viewer->GetCursor(), CursorName(viewer->GetCursor()));
  }

  int status = 0;
  if (!options.output.empty()) {
    QAVRef<QAVPixelImage> image;
    if (FAILED(QAVViewRenderer::Render(viewer, image)))
      status = qavcli::Fail("the view cannot be drawn");
    else
      status = qavcli::WritePicture(
          options.output, qavcli::SvgOverView(*image) + Marks(options.positions) + "</svg>\n");
    if (status == 0) std::printf("%s\n", options.output.c_str());
  }
  snap->RequestDelayedDestruction();
  driver->Idle();
  return status;
}

void Setup(CLI::App& program) {
  auto options = std::make_shared<SnapOptions>();
  CLI::App* snap = program.add_subcommand(
      "snap",
      "The snap manipulator over a scene: the pointer hovers over each position X Y (pixels "
      "from the top left of the view), or drags through them with --drag; after each, the frame "
      "snapped to, the notification sent and the cursor.");
  snap->add_option("scene", options->scene, "Scene file (JSON)")->required();
  snap->add_option("positions", options->positions, "X Y [X Y]...: pointer positions")
      ->required()
      ->check(qavcli::FiniteNumber(-1e6, 1e6));
  snap->add_flag("--drag", options->drag,
                 "Press at the first position, drag through the others, release at the last");
  qavcli::AddPictureOption(snap, options->output, "A picture of the view with the gizmo");
  qavcli::OnRun(snap, [options] { return Snap(*options); });
}

}  // namespace

QAV_CLI_COMMAND("snap", Setup);
