// The object under edition: its observable (observers once each, everyone told
// with the sender, an observer leaving during a call), its toggles, aligning
// with the eye of the current viewer, and its references.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVIRbaMappingObservable.h"
#include "QAVRbaContextBarManager.h"
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
