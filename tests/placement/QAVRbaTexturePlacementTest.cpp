// The object under edition: its observable (observers once each, everyone told
// with the sender, an observer leaving during a call), its toggles, aligning
// with the eye of the current viewer, and its references; its mapping model
// updater snapping and scaling on a real support, pressed from the bar.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include <cstdio>

#include "QAV3DViewer.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVIPrdObject.h"
#include "QAVIRbaMappingModelUpdater.h"
#include "QAVIRbaMappingObservable.h"
#include "QAVOmbObjectInContext.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRbaEditMatrixDlg.h"
#include "QAVRbaManipulatorServices.h"
#include "QAVRbaPLMServices.h"
#include "QAVRbaPanelManager.h"
#include "QAVRbaTexturePlacement.h"
#include "QAVRef.h"
#include "QAVTestSupport.h"

namespace {

using MT = QAVIRbaMappingObservable;

// An observer that counts its calls and may leave during one.
class CountingObserver : public QAVIRbaMappingObserver {
 public:
  HRESULT UpdatePosAndOrientation() override { return Count("pos"); }
  HRESULT UpdateMappingType() override { return Count("type"); }
  HRESULT UpdateOtherMappingAttributes() override { return Count("other"); }
  HRESULT UpdateInitialPos() override { return Count("initial"); }
  HRESULT UpdatePanel() override { return Count("panel"); }
  HRESULT ShowManipulatorRep() override { return S_OK; }
  HRESULT HideManipulatorRep() override { return S_OK; }
  HRESULT AlignWithCameraView() override { return S_OK; }
  std::vector<std::string> calls;
  QAVIRbaMappingObservable* leaveFrom = nullptr;

 private:
  HRESULT Count(const char* what) {
    calls.emplace_back(what);
    if (leaveFrom) leaveFrom->RemoveObserver(this);
    return S_OK;
  }
};

class TexturePlacementTest : public qavtest::HostTest {};

TEST_F(TexturePlacementTest, ObservableKeepsObserversOnceAndTellsEveryone) {
  auto placement = QAVMakeRef<QAVRbaTexturePlacement>(QAVRbaTexturePlacement::Kind::Decal, nullptr,
                                                      QAVUnicodeString("Badge"));
  EXPECT_STREQ(placement->IsA(), "QAVRbaDecal");
  EXPECT_EQ(placement->GetAlias(), "Badge");
  QAVRef<MT> observable = QAVQuery<MT>(placement.get());
  ASSERT_TRUE(observable);
  EXPECT_EQ(placement->GetRefCount(), 2u) << "the observable is part of the placement";

  auto a = QAVMakeRef<CountingObserver>();
  auto b = QAVMakeRef<CountingObserver>();
  EXPECT_EQ(observable->AddObserver(a.get()), S_OK);
  EXPECT_EQ(observable->AddObserver(a.get()), S_OK);
  EXPECT_EQ(observable->AddObserver(b.get()), S_OK);
  EXPECT_EQ(observable->AddObserver(nullptr), E_FAIL);
  EXPECT_EQ(observable->GetObserverCount(), 2);

  // Everyone is told, the sender too; the type itself changes without a call.
  EXPECT_EQ(observable->SetMappingType(MT::Cubical), S_OK);
  EXPECT_EQ(placement->GetMappingType(), MT::Cubical);
  EXPECT_TRUE(a->calls.empty());
  observable->UpdateAllObserversMappingType(a.get());
  observable->UpdateAllObserversPosAndOrientation(nullptr);
  observable->UpdateAllObserversOtherMappingAttributes(b.get());
  EXPECT_EQ(a->calls, (std::vector<std::string>{"type", "pos", "other"}));
  EXPECT_EQ(b->calls, a->calls);

  // An observer that leaves while it is told: the others still are, once.
  a->leaveFrom = observable.get();
  observable->UpdateAllObserversPosAndOrientation(nullptr);
  EXPECT_EQ(observable->GetObserverCount(), 1);
  EXPECT_EQ(b->calls.size(), 4u);
  EXPECT_EQ(observable->RemoveObserver(a.get()), E_FAIL) << "gone already";

  // The toggles.
  EXPECT_FALSE(observable->IsDecalUVCropMode());
  observable->ToggleDecalUVCropMode();
  EXPECT_TRUE(placement->IsCropMode());
  observable->ToggleDecalUVCropMode();
  EXPECT_FALSE(placement->IsCropMode());
  observable->DisplayManipulatorRep(0);
  observable->DisplayDrawingZoneManipulator(0);
  EXPECT_TRUE(observable->IsManipulatorRepDisplayed());
  EXPECT_TRUE(placement->IsDrawingZoneDisplayed());
  observable->DisplayManipulatorRep(1);
  EXPECT_FALSE(placement->IsManipulatorRepDisplayed());

  // No viewer: there is no eye to face.
  EXPECT_EQ(observable->AlignWithCameraView(), E_FAIL);
  observable->RemoveObserver(b.get());
  observable.Reset();
  EXPECT_EQ(placement->GetRefCount(), 1u);
}

TEST_F(TexturePlacementTest, AlignsWithTheEyeOfTheCurrentViewer) {
  std::string error;
  ASSERT_EQ(Driver().OpenScene(QAV_RESOURCES_DIR "/scenes/showroom/scene.json", error), S_OK)
      << error;
  auto placement =
      QAVMakeRef<QAVRbaTexturePlacement>(QAVRbaTexturePlacement::Kind::Sticker, nullptr);
  QAVMathTransformation at;
  at.translation = {0, 0, 220};
  placement->StoreIsometry(at);
  QAVRef<MT> observable = QAVQuery<MT>(placement.get());
  auto seen = QAVMakeRef<CountingObserver>();
  observable->AddObserver(seen.get());
  ASSERT_EQ(observable->AlignWithCameraView(), S_OK);
  EXPECT_EQ(seen->calls, std::vector<std::string>{"pos"});
  EXPECT_EQ(placement->GetAlignCount(), 1);

  const QAVMathTransformation& m = placement->GetIsometry();
  const QAVMathPoint eye = Driver().GetSceneViewer()->GetMain3DViewpoint()->GetOrigin();
  const QAVMathVector toEye = eye - m.GetOrigin();
  const double distance = std::sqrt(toEye.x * toEye.x + toEye.y * toEye.y + toEye.z * toEye.z);
  EXPECT_NEAR(m.zAxis.x, toEye.x / distance, 1e-12);
  EXPECT_NEAR(m.zAxis.y, toEye.y / distance, 1e-12);
  EXPECT_NEAR(m.zAxis.z, toEye.z / distance, 1e-12);
  EXPECT_NEAR(m.xAxis.z, 0.0, 1e-12) << "X stays horizontal under a vertical up";
  // A right-handed orthonormal frame, the origin kept.
  const QAVMathVector& x = m.xAxis;
  const QAVMathVector& y = m.yAxis;
  const QAVMathVector& z = m.zAxis;
  EXPECT_NEAR(x.x * y.x + x.y * y.y + x.z * y.z, 0.0, 1e-12);
  EXPECT_NEAR(x.y * y.z - x.z * y.y, z.x, 1e-12);
  EXPECT_NEAR(x.z * y.x - x.x * y.z, z.y, 1e-12);
  EXPECT_NEAR(x.x * y.y - x.y * y.x, z.z, 1e-12);
  EXPECT_EQ(m.translation, at.translation);
  observable->RemoveObserver(seen.get());
}

}  // namespace

namespace {

class MappingUpdaterTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    std::string error;
    ASSERT_EQ(Driver().OpenScene(QAV_RESOURCES_DIR "/scenes/showroom/scene.json", error), S_OK)
        << error;
    QAVRbaPLMServices::SetUIActiveProduct(
        QAVQuery<QAVIPrdObject>(Driver().GetScene()->product.get()).get());
  }
};

TEST_F(MappingUpdaterTest, SnapsAndScalesToTheSupportOrTheTexture) {
  QAVRef<QAVOmbObjectInContext> vase = Driver().FindObject("Vase");
  ASSERT_TRUE(vase);
  QAVMathPoint centre;
  QAVMathPoint size;
  ASSERT_EQ(QAVRbaManipulatorServices::GetSupportSizeAndCenter(vase.get(), centre, size), S_OK);

  for (const auto kind :
       {QAVRbaTexturePlacement::Kind::AppliedMaterial, QAVRbaTexturePlacement::Kind::Decal,
        QAVRbaTexturePlacement::Kind::Sticker}) {
    auto placement = QAVMakeRef<QAVRbaTexturePlacement>(kind, vase.get());
    QAVRef<QAVIRbaMappingModelUpdater> updater =
        QAVQuery<QAVIRbaMappingModelUpdater>(placement.get());
    ASSERT_TRUE(updater) << QAVRbaTexturePlacement::ClassOf(kind);
    EXPECT_EQ(QAVQuery<QAVIRbaMappingModelUpdater>(placement.get()).get(), updater.get())
        << "one updater per object";

    EXPECT_EQ(updater->ReSnapToApplicationCenterpoint(), S_OK);
    EXPECT_EQ(placement->GetIsometry().GetOrigin(), centre);
    EXPECT_EQ(updater->RescaleToRelatedObjectSize(false), S_OK);
    EXPECT_EQ(placement->GetSize(), (QAVMathVector{size.x, size.y, size.z}));

    // Turned a quarter about X, the projection's Y runs along the box's Z.
    QAVMathTransformation turned = placement->GetIsometry();
    turned.yAxis = {0, 0, 1};
    turned.zAxis = {0, -1, 0};
    EXPECT_EQ(updater->SetIsometryMatrix(turned), S_OK);
    EXPECT_EQ(updater->RescaleToRelatedObjectSize(false), S_OK);
    EXPECT_EQ(placement->GetSize(), (QAVMathVector{size.x, size.z, size.y}));
    QAVMathTransformation read;
    EXPECT_EQ(updater->GetIsometryMatrix(read), S_OK);
    EXPECT_EQ(read, turned);

    // Keeping the texture's ratio, the whole texture fits in the support.
    placement->SetTextureSize(200, 100);
    EXPECT_EQ(updater->RescaleToRelatedObjectSize(true), S_OK);
    const QAVMathVector& kept = placement->GetSize();
    EXPECT_DOUBLE_EQ(kept.x / kept.y, 2.0);
    EXPECT_LE(kept.x, size.x);
    EXPECT_LE(kept.y, size.z);
    EXPECT_EQ(updater->RescaleToOriginalTextureSize(), S_OK);
    EXPECT_EQ(placement->GetSize(), (QAVMathVector{200, 100, size.y}));

    EXPECT_EQ(updater->UpdateMappingType(QAVIRbaMappingModelUpdater::CtxBarCubical), S_OK);
    EXPECT_EQ(placement->GetMappingType(), MT::Cubical);
    updater.Reset();
    EXPECT_EQ(placement->GetRefCount(), 1u);
  }

  // Without a support nothing can be measured, and nothing moves.
  auto lost = QAVMakeRef<QAVRbaTexturePlacement>(QAVRbaTexturePlacement::Kind::Sticker, nullptr);
  QAVRef<QAVIRbaMappingModelUpdater> updater = QAVQuery<QAVIRbaMappingModelUpdater>(lost.get());
  ASSERT_TRUE(updater);
  EXPECT_EQ(updater->ReSnapToApplicationCenterpoint(), E_FAIL);
  EXPECT_EQ(updater->RescaleToRelatedObjectSize(true), E_FAIL);
  EXPECT_EQ(lost->GetIsometry(), QAVMathTransformation());
  EXPECT_EQ(lost->GetSize(), (QAVMathVector{100, 100, 100}));
  // Other model objects have no updater.
  auto part = QAVMakeRef<QAVModelObject>("QAVPart");
  EXPECT_FALSE(QAVQuery<QAVIRbaMappingModelUpdater>(part.get()));
}

TEST_F(MappingUpdaterTest, FitToSupportPressedOnTheBarResizesAndTellsThePanel) {
  std::string error;
  ASSERT_EQ(
      Driver().LoadCommandHeaders(QAV_RESOURCES_DIR "/headers/RenderingContextBars.headers", error),
      15)
      << error;
  QAVRef<QAVOmbObjectInContext> plinth = Driver().FindObject("Plinth");
  ASSERT_TRUE(plinth);
  auto placement = QAVMakeRef<QAVRbaTexturePlacement>(QAVRbaTexturePlacement::Kind::AppliedMaterial,
                                                      plinth.get());
  QAVRbaContextBarManager* manager = QAVRbaContextBarManager::GetContextBarManager();
  manager->SetRelatedObject(placement.get());
  manager->InitContextualBar("QAVRbaUIContextBarMaterialComponent");
  QAVCommand* started = nullptr;
  ASSERT_EQ(Driver().PressContextBarButton("QAVRbaContextBarEditMatrixPositionHdr", started, error),
            S_OK)
      << error;
  ASSERT_EQ(Driver().PressContextBarButton("QAVRbaContextBarMaterialSnapperHdr", started, error),
            S_OK);
  ASSERT_EQ(Driver().PressContextBarButton("QAVRbaContextBarFitToSupportScaleHdr", started, error),
            S_OK);
  Driver().Idle();
  QAVMathPoint centre;
  QAVMathPoint size;
  ASSERT_EQ(QAVRbaManipulatorServices::GetSupportSizeAndCenter(plinth.get(), centre, size), S_OK);
  EXPECT_EQ(placement->GetIsometry().GetOrigin(), centre);
  EXPECT_EQ(placement->GetSize(), (QAVMathVector{size.x, size.y, size.z}));
  // The position panel opened by the first button followed the snap.
  QAVFrmWindow* window = QAVFrmLayout::GetCurrentLayout()->GetCurrentWindow();
  auto* panel = dynamic_cast<QAVRbaEditMatrixDlg*>(
      QAVRbaPanelManager::GetPanelManager()->GetPanel(25, window));
  ASSERT_NE(panel, nullptr);
  char origin[96];
  (void)std::snprintf(origin, sizeof origin, "Origin: %.4g, %.4g, %.4g", centre.x, centre.y,
                      centre.z);
  EXPECT_EQ(panel->FindWidget("originValue")->GetTitle().str(), origin);
  QAVRbaPanelManager::GetPanelManager()->ClosePanel(25, window);
  manager->DestroyContextualBar("QAVRbaUIContextBarMaterialComponent");
  QAVRbaContextBarManager::DestroyContextBarManager();
  Driver().Idle();
  EXPECT_EQ(placement->GetRefCount(), 1u);
  EXPECT_EQ(QAVQuery<MT>(placement.get())->GetObserverCount(), 0);
}

}  // namespace
