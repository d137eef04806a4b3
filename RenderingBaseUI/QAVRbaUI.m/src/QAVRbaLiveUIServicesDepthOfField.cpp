// QAVRbaLiveUIServices: the bokeh texture of an aperture, the focus circle and
// the focus distance.
#include <array>
#include <cmath>
#include <cstring>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVPickPath.h"
#include "QAVRbaGraphicPath.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"
#include "QAVVizViewer.h"

namespace {

struct BokehRow {
  float above;  // a value of the aperture ladder
  const char* image;
};

constexpr std::array<BokehRow, 13> kBokeh = {{
    {54.5F, "Circle_5.dds"},
    {38.5F, "Circle_5_10_progressive.dds"},
    {27.0F, "Circle_5_15_progressive.dds"},
    {19.0F, "Circle_5_20_progressive.dds"},
    {13.5F, "Circle_10_20_progressive.dds"},
    {9.5F, "Circle_10_25_progressive.dds"},
    {6.8F, "Circle_15_25_progressive.dds"},
    {4.8F, "Circle_20_30_progressive.dds"},
    {3.4F, "Circle_25_40_progressive.dds"},
    {2.4F, "Circle_35_50_progressive.dds"},
    {1.7F, "Circle_45_60_progressive.dds"},
    {1.2F, "Circle_60_80_progressive.dds"},
    {0.0F, "Circle_80_100_progressive.dds"},
}};

// Classes of objects that never take the focus: a pick path meeting one of
// them is passed over whole.
constexpr std::array<const char*, 6> kNoFocus = {
    "ZRMRootOccurrence",    "QAVStkStickerContainer",     "QAVCameraContainer",
    "QAVRscLightContainer", "QAVRscEnvironmentContainer", "QAVISO"};

// Whether the path may take the focus: it meets at least one model object and
// none of the classes above.
bool TakesFocus(QAVPickPath& path) {
  int objects = 0;
  for (int i = 0; i < path.GetRepCount(); ++i) {
    const QAVModelObject* object = path.GetRep(i)->GetModelObject();
    const char* className = object ? object->IsA() : nullptr;
    if (!className || !*className) continue;
    for (const char* excluded : kNoFocus)
      if (std::strcmp(className, excluded) == 0) return false;
    ++objects;
  }
  return objects > 0;
}

float Distance(const QAVMathPoint& a, const QAVMathPoint& b) {
  return static_cast<float>(
      std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y) + (b.z - a.z) * (b.z - a.z)));
}

}  // namespace

HRESULT QAVRbaLiveUIServices::RetrieveAssociatedBokehImage(float aperture, QAVString& o_imagePath) {
  o_imagePath = QAVString();
  if (!(aperture > 0.0F)) return E_FAIL;  // 0, negative, not a number
  const char* image = nullptr;
  for (const BokehRow& row : kBokeh) {
    if (aperture > row.above) {
      image = row.image;
      break;
    }
  }
  if (!qavrba::HasGraphicPath()) return E_FAIL;
  for (const QAVUnicodeString& directory : qavrba::SearchedGraphicDirectories()) {
    const QAVUnicodeString candidate = qavrba::Join(qavrba::Join(directory, "dof"), image);
    if (qavrba::Exists(candidate)) {
      o_imagePath = candidate.ToString();
      return S_OK;
    }
  }
  return E_FAIL;
}

HRESULT QAVRbaLiveUIServices::ComputeVoodooCircle(QAVMathPoint2Df& o_center, float& o_radius,
                                                  float& o_offset) {
  o_offset = 0.0F;
  QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout();
  QAVFrmWindow* window = layout ? layout->GetCurrentWindow() : nullptr;
  QAVViewer* viewer = window ? window->GetViewer() : nullptr;
  if (!viewer) return E_FAIL;
  float width = 0.0F;
  float height = 0.0F;
  viewer->GetGraphicSize(width, height);
  const auto* viewer3D = dynamic_cast<QAV3DViewer*>(viewer);
  if (const QAVVizViewer* viz = viewer3D ? viewer3D->GetVizViewer() : nullptr) {
    float usableWidth = width;
    float usableHeight = height;
    viz->GetUsableArea(usableWidth, usableHeight);
    o_offset = height - usableHeight;
  }
  // Only in landscape views is the unusable band taken off.
  o_radius = height < width ? (height / 2 - o_offset) * 0.75F : (width / 2) * 0.75F;
  o_center = {width / 2, height / 2};
  return S_OK;
}

HRESULT QAVRbaLiveUIServices::SetFocusOnViewpoint(QAVViewer* viewer,
                                                  QAVSettingRepository* repository,
                                                  float& o_focalDistance) {
  if (!viewer || !repository) return E_FAIL;
  namespace Schema = QAVRbaRenderingSettings;
  int mode = 1;
  Schema::Read(*repository, Schema::kLiveAutofocus, mode);
  if (mode == 0) {
    Schema::ReadWithDefault(*repository, Schema::kLiveFocalDistance, o_focalDistance);
    return S_OK;
  }
  if (mode != 1 && mode != 2) return E_FAIL;
  auto* viewer3D = dynamic_cast<QAV3DViewer*>(viewer);
  QAV3DViewpoint* viewpoint = viewer3D ? viewer3D->GetMain3DViewpoint() : nullptr;
  if (!viewpoint) return E_FAIL;
  const QAVMathPoint eye = viewpoint->GetOrigin();
  if (mode == 2) {
    float point[3] = {0.0F, 0.0F, 0.0F};
    Schema::Read(*repository, Schema::kLiveFocalPointX, point[0]);
    Schema::Read(*repository, Schema::kLiveFocalPointY, point[1]);
    Schema::Read(*repository, Schema::kLiveFocalPointZ, point[2]);
    o_focalDistance = Distance(eye, QAVMathPoint(point[0], point[1], point[2]));
    return S_OK;
  }
  float width = 0.0F;
  float height = 0.0F;
  viewer->GetGraphicSize(width, height);
  std::vector<QAVRef<QAVPickPath>> paths;
  viewer->Pick(static_cast<int>(width * 0.5F), static_cast<int>(height * 0.5F), 1, 1, 0, paths);
  for (const QAVRef<QAVPickPath>& path : paths) {
    if (TakesFocus(*path) && path->GetViewpoint() == viewpoint) {
      o_focalDistance = Distance(eye, path->GetGlobalIntersection());
      return S_OK;
    }
  }
  return E_FAIL;
}
