#include "QAVERbaMaterialMappingModelUpdater.h"

#include <cmath>

#include "QAVExtension.h"
#include "QAVOmbObjectInContext.h"
#include "QAVRbaManipulatorServices.h"
#include "QAVRbaTexturePlacement.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVERbaMaterialMappingModelUpdater, QAVIRbaMappingModelUpdater,
                    "RenderingBaseUI");
QAV_REGISTER_EXTENSION(QAVERbaMaterialMappingModelUpdater, "QAVRbaAppliedMaterial",
                       QAVIRbaMappingModelUpdater);
[[maybe_unused]] static const bool qavDecalUpdater = QAVExtension::Register(
    "QAVRbaDecal", QAVIRbaMappingModelUpdater::ClassId(),
    []() -> QAVBaseUnknown* { return new QAVERbaMaterialMappingModelUpdater; });
[[maybe_unused]] static const bool qavStickerUpdater = QAVExtension::Register(
    "QAVStkSticker", QAVIRbaMappingModelUpdater::ClassId(),
    []() -> QAVBaseUnknown* { return new QAVERbaMaterialMappingModelUpdater; });

QAVERbaMaterialMappingModelUpdater::QAVERbaMaterialMappingModelUpdater() = default;
QAVERbaMaterialMappingModelUpdater::~QAVERbaMaterialMappingModelUpdater() = default;

QAVRbaTexturePlacement* QAVERbaMaterialMappingModelUpdater::Placement() const {
  return dynamic_cast<QAVRbaTexturePlacement*>(GetOuter());
}

HRESULT QAVERbaMaterialMappingModelUpdater::MeasureSupport(QAVMathPoint& centre,
                                                           QAVMathPoint& size) const {
  QAVRbaTexturePlacement* placement = Placement();
  if (!placement) return E_FAIL;
  QAVRef<QAVOmbObjectInContext> support = QAVQuery<QAVOmbObjectInContext>(placement->GetSupport());
  if (!support) return E_FAIL;
  return QAVRbaManipulatorServices::GetSupportSizeAndCenter(support.get(), centre, size);
}

HRESULT QAVERbaMaterialMappingModelUpdater::UpdateMappingType(CtxBarMappingType type) {
  QAVRbaTexturePlacement* placement = Placement();
  if (!placement) return E_FAIL;
  placement->StoreMappingType(ToMappingType(type));
  return S_OK;
}

HRESULT QAVERbaMaterialMappingModelUpdater::ReSnapToApplicationCenterpoint() {
  QAVMathPoint centre;
  QAVMathPoint size;
  if (FAILED(MeasureSupport(centre, size))) return E_FAIL;
  QAVMathTransformation isometry = Placement()->GetIsometry();
  isometry.translation = {centre.x, centre.y, centre.z};
  Placement()->StoreIsometry(isometry);
  return S_OK;
}

HRESULT QAVERbaMaterialMappingModelUpdater::RescaleToRelatedObjectSize(bool keepRatio) {
  QAVMathPoint centre;
  QAVMathPoint size;
  if (FAILED(MeasureSupport(centre, size))) return E_FAIL;
  QAVRbaTexturePlacement* placement = Placement();
  const QAVMathTransformation& isometry = placement->GetIsometry();
  // The extent of the box along an axis of the projection.
  auto extent = [&size](const QAVMathVector& a) {
    return std::fabs(a.x) * size.x + std::fabs(a.y) * size.y + std::fabs(a.z) * size.z;
  };
  QAVMathVector scaled{extent(isometry.xAxis), extent(isometry.yAxis), extent(isometry.zAxis)};
  if (keepRatio && scaled.x > 0 && scaled.y > 0) {
    const double ratio = placement->GetTextureWidth() / placement->GetTextureHeight();
    if (scaled.x / scaled.y > ratio)
      scaled.x = scaled.y * ratio;
    else
      scaled.y = scaled.x / ratio;
  }
  placement->StoreSize(scaled);
  return S_OK;
}

HRESULT QAVERbaMaterialMappingModelUpdater::RescaleToOriginalTextureSize() {
  QAVRbaTexturePlacement* placement = Placement();
  if (!placement) return E_FAIL;
  placement->StoreSize(
      {placement->GetTextureWidth(), placement->GetTextureHeight(), placement->GetSize().z});
  return S_OK;
}

HRESULT QAVERbaMaterialMappingModelUpdater::GetIsometryMatrix(QAVMathTransformation& isometry) {
  QAVRbaTexturePlacement* placement = Placement();
  if (!placement) return E_FAIL;
  isometry = placement->GetIsometry();
  return S_OK;
}

HRESULT QAVERbaMaterialMappingModelUpdater::SetIsometryMatrix(
    const QAVMathTransformation& isometry) {
  QAVRbaTexturePlacement* placement = Placement();
  if (!placement) return E_FAIL;
  placement->StoreIsometry(isometry);
  return S_OK;
}
