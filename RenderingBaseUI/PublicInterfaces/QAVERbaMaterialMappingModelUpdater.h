// The mapping model updater of an applied material, a decal or a sticker
// (QAVRbaTexturePlacement): an extension of their classes that changes the
// projection's type, puts it on the centre of the support, and scales it to
// the support's or the texture's size. The support is measured by the
// manipulator services (its bounding box in the scene's space).
#ifndef QAVERbaMaterialMappingModelUpdater_h
#define QAVERbaMaterialMappingModelUpdater_h

#include "QAVIRbaMappingModelUpdater.h"
#include "QAVRbaUIExport.h"

class QAVRbaTexturePlacement;

class QAVRBAUI_API QAVERbaMaterialMappingModelUpdater : public QAVIRbaMappingModelUpdater {
  QAV_DECLARE_CLASS
 public:
  QAVERbaMaterialMappingModelUpdater();
  ~QAVERbaMaterialMappingModelUpdater() override;

  // E_FAIL for an updater that extends no placement.
  HRESULT UpdateMappingType(CtxBarMappingType type) override;
  // The origin of the projection moves to the centre of the support's box;
  // E_FAIL, nothing moved, when the support cannot be measured.
  HRESULT ReSnapToApplicationCenterpoint() override;
  // The projection takes the extent of the support's box along its X, Y and Z
  // axes; with `keepRatio`, X and Y then shrink to the texture's ratio, so the
  // whole texture fits. E_FAIL, nothing changed, when the support cannot be
  // measured.
  HRESULT RescaleToRelatedObjectSize(bool keepRatio) override;
  // The projection takes the texture's own width and height.
  HRESULT RescaleToOriginalTextureSize() override;
  HRESULT GetIsometryMatrix(QAVMathTransformation& isometry) override;
  // Changes the placement without telling the observers (callers relay).
  HRESULT SetIsometryMatrix(const QAVMathTransformation& isometry) override;

 private:
  QAVRbaTexturePlacement* Placement() const;
  // The support's box: S_OK with its centre and size.
  HRESULT MeasureSupport(QAVMathPoint& centre, QAVMathPoint& size) const;
};

#endif
