// The demo's texture placement: a material placed on the showroom's vase
// through its context bar (the bar filled, a mapping type pressed, the bar
// filled again with it first, the projection snapped and fitted), the size of
// the support, the snap manipulator over the sticker and the key light, and a
// length ruler fed with a drag and read back after the user typed into it.
#include <cstdio>
#include <memory>
#include <string>
#include <tuple>

#include "QAV3DViewer.h"
#include "QAVAfrCtxBarFrame.h"
#include "QAVCliDemoParts.h"
#include "QAVCliScene.h"
#include "QAVCommand.h"
#include "QAVIAfrCtxBarManager.h"
#include "QAVIRbaMappingModelUpdater.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRbaManipulatorServices.h"
#include "QAVRbaRulerManager.h"
#include "QAVRbaSnapManipulator.h"
#include "QAVRbaTexturePlacement.h"
#include "QAVRulerDecoratedEditor.h"

namespace {

constexpr const char* kBar = "QAVRbaUIContextBarMaterialComponent";

// The first button of the bar's mapping container: the type it shows.
std::string ShownType(QAVAfrCtxBarFrame& frame) {
  const QAVICAfrComponent* row = frame.GetRow(0);
  for (int i = 0; row && i < row->GetComponentCount(); ++i) {
    const QAVICAfrComponent* item = row->GetComponent(i);
    if (item->GetComponentType() == "QAVCmdContainer" && item->GetComponentCount() > 0)
      return item->GetComponent(0)->GetComponentName().str();
  }
  return "-";
}

int Press(QAVHostDriver& driver, const char* header) {
  QAVCommand* started = nullptr;
  std::string error;
  if (FAILED(driver.PressContextBarButton(header, started, error))) {
    (void)std::fprintf(stderr, "qavrba: %s\n", error.c_str());
    return 1;
  }
  std::printf("pressed %s: %s\n", header, started ? started->IsA() : "-");
  driver.Idle();
  return 0;
}

}  // namespace

int DemoPlacement(const std::string& resourcesDir) {
  const std::unique_ptr<QAVHostDriver> driver =
      qavcli::OpenScene(resourcesDir + "/scenes/showroom/scene.json");
  if (!driver) return 1;
  std::string error;
  if (driver->LoadCommandHeaders(resourcesDir + "/headers/RenderingContextBars.headers", error) <
      0) {
    (void)std::fprintf(stderr, "qavrba: %s\n", error.c_str());
    return 1;
  }
  QAVRef<QAVOmbObjectInContext> vase = driver->FindObject("Vase");
  QAVMathPoint centre;
  QAVMathPoint size;
  if (!vase ||
      FAILED(QAVRbaManipulatorServices::GetSupportSizeAndCenter(vase.get(), centre, size))) {
    (void)std::fprintf(stderr, "qavrba: the vase cannot be measured\n");
    return 1;
  }
  std::printf("support \"Vase\": size %g x %g x %g, centre %g %g %g\n", size.x, size.y, size.z,
              centre.x, centre.y, centre.z);

  auto material = QAVMakeRef<QAVRbaTexturePlacement>(QAVRbaTexturePlacement::Kind::AppliedMaterial,
                                                     vase.get(), QAVUnicodeString("Glaze"));
  QAVRbaContextBarManager* manager = QAVRbaContextBarManager::GetContextBarManager();
  manager->SetRelatedObject(material.get());
  manager->InitContextualBar(kBar);
  auto bars = QAVRef<QAVIAfrCtxBarManager>::Adopt(GetAfrCtxBarManager());
  QAVAfrCtxBarFrame* frame = bars ? bars->FindFrame(QAVString(kBar)) : nullptr;
  if (!frame) {
    (void)std::fprintf(stderr, "qavrba: the material bar is not shown\n");
    return 1;
  }
  std::printf("material bar: %d items, mapping shown first: %s\n",
              frame->GetRow(0)->GetComponentCount(), ShownType(*frame).c_str());
  int status = Press(*driver, "QAVRbaContextBarTypeFiniteCylindricalHdr");
  std::printf("bar filled %d times, mapping shown first: %s\n", frame->GetFillCount(),
              ShownType(*frame).c_str());
  status |= Press(*driver, "QAVRbaContextBarMaterialSnapperHdr");
  status |= Press(*driver, "QAVRbaContextBarFitToSupportScaleHdr");
  const QAVMathVector& origin = material->GetIsometry().translation;
  const QAVMathVector& extent = material->GetSize();
  std::printf("projection: origin %g %g %g, size %g x %g x %g\n", origin.x, origin.y, origin.z,
              extent.x, extent.y, extent.z);
  manager->DestroyContextualBar(kBar);
  manager->SetRelatedObject(nullptr);
  QAVRbaContextBarManager::DestroyContextBarManager();

  // The snap manipulator: the pointer over the sticker on the vase, then over
  // the key light, which is never snapped to outside the ambience workbench.
  auto* snap = new QAVRbaSnapManipulator;
  QAV3DViewer* viewer = driver->GetSceneViewer();
  for (const auto& [x, y, what] :
       {std::tuple{480, 300, "the sticker"}, {198, 55, "the key light"}}) {
    driver->PointerMove(viewer, x, y);
    const QAVMathPointf& o = snap->GetOrigin();
    const QAVMathDirectionf& n = snap->GetNormal();
    std::printf("snap over %s: origin %.1f %.1f %.1f, normal %.2f %.2f %.2f, cursor %d\n", what,
                o.x + 0.0, o.y + 0.0, o.z + 0.0, n.x + 0.0, n.y + 0.0, n.z + 0.0,
                viewer->GetCursor());
  }
  snap->RequestDelayedDestruction();
  driver->Idle();

  // A length ruler as a placement command uses it: fed with a drag of 40 mm,
  // then the user types 30 into it.
  QAVRbaRulerManager rulers;
  rulers.InitRulers(nullptr);
  rulers.refreshTranslationRuler(centre, QAVMathPoint(centre.x + 40, centre.y, centre.z),
                                 QAVMathVector(2, 0, 0));
  std::printf("ruler after a 40 mm drag: %g\n", rulers.getTranslationRulerEditorValue());
  driver->TypeRulerValue(
      dynamic_cast<QAVRulerDecoratedEditor*>(rulers.GetTranslationRulerCommand()), 30);
  std::printf("ruler after typing 30: %g\n", rulers.getTranslationRulerEditorValue());
  rulers.DestroyRulers();
  driver->Idle();
  return status;
}
