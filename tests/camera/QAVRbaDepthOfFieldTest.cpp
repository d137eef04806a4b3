// The bokeh texture of an aperture and the focus circle over the view.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>

#include "QAV3DViewer.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVModelObject.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVSettingRepository.h"
#include "QAVTestScenes.h"
#include "QAVTestSupport.h"
#include "QAVVizViewer.h"

namespace fs = std::filesystem;

namespace {

class DepthOfFieldTest : public qavtest::HostTest {
 protected:
  // Graphic directories: `first` holds the given textures; a last one, never
  // searched, holds every texture.
  void GraphicPath(const std::vector<std::string>& textures) {
    const fs::path first = _scratch.path() / "first";
    const fs::path last = _scratch.path() / "last";
    fs::create_directories(first / "dof");
    fs::create_directories(last / "dof");
    for (const std::string& texture : textures)
      std::ofstream(first / "dof" / texture) << "x";
    for (const char* texture : {"Circle_5.dds", "Circle_15_25_progressive.dds"})
      std::ofstream(last / "dof" / texture) << "x";
    SetEnvAndReload("QAVGraphicPath", first.string() + ":" + last.string());
  }
  std::string Bokeh(float aperture, HRESULT expected = S_OK) {
    QAVString path("stale");
    EXPECT_EQ(QAVRbaLiveUIServices::RetrieveAssociatedBokehImage(aperture, path), expected)
        << aperture;
    return path.IsEmpty() ? "" : fs::path(path.str()).filename().string();
  }
};

TEST_F(DepthOfFieldTest, BokehRowsAreStrictlyAboveTheLadderValues) {
  const std::vector<std::string> all = {"Circle_5.dds",
                                        "Circle_5_10_progressive.dds",
                                        "Circle_5_15_progressive.dds",
                                        "Circle_5_20_progressive.dds",
                                        "Circle_10_20_progressive.dds",
                                        "Circle_10_25_progressive.dds",
                                        "Circle_15_25_progressive.dds",
                                        "Circle_20_30_progressive.dds",
                                        "Circle_25_40_progressive.dds",
                                        "Circle_35_50_progressive.dds",
                                        "Circle_45_60_progressive.dds",
                                        "Circle_60_80_progressive.dds",
                                        "Circle_80_100_progressive.dds"};
  GraphicPath(all);
  // Every aperture of the ladder takes the row of the next smaller one.
  const float ladder[] = {1,    1.2F, 1.4F, 1.7F,  2,    2.4F,  2.8F,  3.4F, 4,
                          4.8F, 5.6F, 6.8F, 8,     9.5F, 11,    13.5F, 16,   19,
                          22,   27,   32,   38.5F, 45,   54.5F, 64};
  const char* rows[] = {"80_100", "80_100", "60_80", "60_80", "45_60", "45_60", "35_50",
                        "35_50",  "25_40",  "25_40", "20_30", "20_30", "15_25", "15_25",
                        "10_25",  "10_25",  "10_20", "10_20", "5_20",  "5_20",  "5_15",
                        "5_15",   "5_10",   "5_10",  ""};
  for (std::size_t i = 0; i < std::size(ladder); ++i) {
    const std::string expected =
        *rows[i] ? std::string("Circle_") + rows[i] + "_progressive.dds" : "Circle_5.dds";
    EXPECT_EQ(Bokeh(ladder[i]), expected) << ladder[i];
  }
  EXPECT_EQ(Bokeh(54.6F), "Circle_5.dds");
  EXPECT_EQ(Bokeh(std::numeric_limits<float>::infinity()), "Circle_5.dds");
  EXPECT_EQ(Bokeh(0.001F), "Circle_80_100_progressive.dds");
  EXPECT_EQ(Bokeh(0.0F, E_FAIL), "");
  EXPECT_EQ(Bokeh(-1.0F, E_FAIL), "");
  EXPECT_EQ(Bokeh(std::nanf(""), E_FAIL), "");
}

TEST_F(DepthOfFieldTest, BokehTexturesAreLookedForInTheSearchedDirectoriesOnly) {
  GraphicPath({"Circle_60_80_progressive.dds"});
  QAVString path;
  EXPECT_EQ(QAVRbaLiveUIServices::RetrieveAssociatedBokehImage(1.4F, path), S_OK);
  EXPECT_EQ(path.str(), (_scratch.path() / "first/dof/Circle_60_80_progressive.dds").string());
  // In the last directory only: not found, the output cleared.
  EXPECT_EQ(Bokeh(8.0F, E_FAIL), "");
  EXPECT_EQ(Bokeh(64.0F, E_FAIL), "");
  SetEnvAndReload("QAVGraphicPath", std::nullopt);
  EXPECT_EQ(Bokeh(1.4F, E_FAIL), "");
}

TEST_F(DepthOfFieldTest, FocusCircleOverTheView) {
  QAVMathPoint2Df center{-1, -1};
  float radius = -1;
  float offset = -1;
  EXPECT_EQ(QAVRbaLiveUIServices::ComputeVoodooCircle(center, radius, offset), E_FAIL);
  EXPECT_EQ(offset, 0.0F);
  EXPECT_EQ(radius, -1.0F) << "untouched";

  auto layout = QAVMakeRef<QAVFrmLayout>();
  QAVFrmLayout::SetCurrentLayout(layout.get());
  auto window = QAVMakeRef<QAVFrmWindow>("w");
  layout->SetCurrentWindow(window.get());
  EXPECT_EQ(QAVRbaLiveUIServices::ComputeVoodooCircle(center, radius, offset), E_FAIL)
      << "no viewer";

  auto viewer = QAVMakeRef<QAV3DViewer>("3D");
  window->SetViewer(viewer.get());
  Driver().Resize(viewer.get(), 1600, 900);
  ASSERT_EQ(QAVRbaLiveUIServices::ComputeVoodooCircle(center, radius, offset), S_OK);
  EXPECT_EQ(center.x, 800.0F);
  EXPECT_EQ(center.y, 450.0F);
  EXPECT_EQ(offset, 0.0F) << "no visualisation viewer";
  EXPECT_EQ(radius, 337.5F);

  // An overlay band of 40 pixels: taken off in landscape only.
  auto viz = QAVMakeRef<QAVVizViewer>("viz");
  viewer->SetVizViewer(viz.get());
  ASSERT_EQ(QAVRbaLiveUIServices::ComputeVoodooCircle(center, radius, offset), S_OK);
  EXPECT_EQ(offset, 0.0F) << "the whole area usable";
  viz->SetUsableArea(1600, 860);
  ASSERT_EQ(QAVRbaLiveUIServices::ComputeVoodooCircle(center, radius, offset), S_OK);
  EXPECT_EQ(offset, 40.0F);
  EXPECT_EQ(radius, 307.5F);
  Driver().Resize(viewer.get(), 900, 1600);
  viz->SetUsableArea(900, 1560);
  ASSERT_EQ(QAVRbaLiveUIServices::ComputeVoodooCircle(center, radius, offset), S_OK);
  EXPECT_EQ(center.x, 450.0F);
  EXPECT_EQ(center.y, 800.0F);
  EXPECT_EQ(offset, 40.0F) << "still reported";
  EXPECT_EQ(radius, 337.5F);
  // A square view counts as portrait.
  Driver().Resize(viewer.get(), 1000, 1000);
  viz->SetUsableArea(1000, 900);
  ASSERT_EQ(QAVRbaLiveUIServices::ComputeVoodooCircle(center, radius, offset), S_OK);
  EXPECT_EQ(radius, 375.0F);
}

TEST_F(DepthOfFieldTest, FocusDistanceByModeAndAutofocusPassesOverStickersAndLights) {
  QAVSettingRepository* camera = QAVSettingRepository::GetRepository("FocusCamera");
  ASSERT_NE(camera, nullptr);
  auto viewer = QAVMakeRef<QAV3DViewer>("3D");
  Driver().Resize(viewer.get(), 201, 101);  // the centre pixel (100, 50)
  viewer->GetMain3DViewpoint()->Set({0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 60);
  float distance = -1;
  EXPECT_EQ(QAVRbaLiveUIServices::SetFocusOnViewpoint(nullptr, camera, distance), E_FAIL);
  EXPECT_EQ(QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer.get(), nullptr, distance), E_FAIL);
  // Autofocus (the default) with nothing in view.
  EXPECT_EQ(QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer.get(), camera, distance), E_FAIL);
  EXPECT_EQ(distance, -1.0F);

  // A part at z = 0 behind a sticker (z = 1) and a light (z = 4), the whole
  // under an unclassed root; the sticker's and light's own paths are passed
  // over, and so is a bare leaf with no model object (z = 6).
  auto root = QAVMakeRef<QAV3DBagRep>();
  auto part = qavtest::Square(3, "Bracket");
  auto sticker = qavtest::Square(1, "QAVStkSticker");
  auto light = qavtest::Square(1, "QAVRscLight");
  auto bare = qavtest::Square(0.5, nullptr);
  auto stickers = qavtest::Moved(sticker.get(), 0, 0, 1, "QAVStkStickerContainer");
  auto lights = qavtest::Moved(light.get(), 0, 0, 4, "QAVRscLightContainer");
  auto unclassed = qavtest::Moved(bare.get(), 0, 0, 6, nullptr);
  for (QAV3DRep* child :
       {static_cast<QAV3DRep*>(part.get()), static_cast<QAV3DRep*>(stickers.get()),
        static_cast<QAV3DRep*>(lights.get()), static_cast<QAV3DRep*>(unclassed.get())})
    ASSERT_TRUE(root->AddChild(child));
  viewer->SetSceneRoot(root.get());
  ASSERT_EQ(QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer.get(), camera, distance), S_OK);
  EXPECT_NEAR(distance, 10.0F, 1e-3);  // the centre pixel is half a pixel off the axis
  int mode = 0;
  ASSERT_EQ(camera->ReadSetting("Autofocus", &mode), S_OK);
  EXPECT_EQ(mode, 1) << "the default was declared";

  // The part itself inside a root occurrence: no path is left.
  root->SetModelObject(QAVMakeRef<QAVModelObject>("ZRMRootOccurrence").get());
  viewer->SceneChanged();
  distance = -1;
  EXPECT_EQ(QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer.get(), camera, distance), E_FAIL);
  EXPECT_EQ(distance, -1.0F);
  // Under a product, the bare leaf's path meets an object (the product) and
  // is the nearest that counts.
  root->SetModelObject(QAVMakeRef<QAVModelObject>("QAVProduct").get());
  ASSERT_EQ(QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer.get(), camera, distance), S_OK);
  EXPECT_NEAR(distance, 4.0F, 1e-3);
  // Without it, the part; unless the part is an ISO.
  unclassed->SetMatrix(QAV4x4Matrix({1, 0, 0, 50, 0, 1, 0, 0, 0, 0, 1, 6, 0, 0, 0, 1}));
  viewer->SceneChanged();
  ASSERT_EQ(QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer.get(), camera, distance), S_OK);
  EXPECT_NEAR(distance, 10.0F, 1e-3);
  part->SetModelObject(QAVMakeRef<QAVModelObject>("QAVISO").get());
  distance = -1;
  EXPECT_EQ(QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer.get(), camera, distance), E_FAIL);

  // Manual distance: the setting, or the caller's value when it is missing.
  const int manual = 0;
  ASSERT_EQ(camera->WriteSetting("Autofocus", &manual), S_OK);
  distance = 2.5F;
  ASSERT_EQ(QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer.get(), camera, distance), S_OK);
  EXPECT_EQ(distance, 2.5F);
  const float focal = 7.25F;
  ASSERT_EQ(camera->WriteSetting("FocalDistance", &focal), S_OK);
  ASSERT_EQ(QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer.get(), camera, distance), S_OK);
  EXPECT_EQ(distance, 7.25F);

  // A focus point: its distance from the eye, missing coordinates 0.
  const int point = 2;
  ASSERT_EQ(camera->WriteSetting("Autofocus", &point), S_OK);
  ASSERT_EQ(QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer.get(), camera, distance), S_OK);
  EXPECT_EQ(distance, 10.0F);
  const float x = 3;
  const float z = 6;
  ASSERT_EQ(camera->WriteSetting("FocalPointX", &x), S_OK);
  ASSERT_EQ(camera->WriteSetting("FocalPointZ", &z), S_OK);
  ASSERT_EQ(QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer.get(), camera, distance), S_OK);
  EXPECT_EQ(distance, 5.0F);

  const int unknown = 3;
  ASSERT_EQ(camera->WriteSetting("Autofocus", &unknown), S_OK);
  distance = -1;
  EXPECT_EQ(QAVRbaLiveUIServices::SetFocusOnViewpoint(viewer.get(), camera, distance), E_FAIL);
  EXPECT_EQ(distance, -1.0F);
}

}  // namespace
