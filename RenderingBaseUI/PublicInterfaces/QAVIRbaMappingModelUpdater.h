// Changes the texture mapping of an object under edition in its model: the
// projection type, the placement of the projection on its support and its
// scale.
#ifndef QAVIRbaMappingModelUpdater_h
#define QAVIRbaMappingModelUpdater_h

#include "QAVBaseUnknown.h"
#include "QAVIRbaMappingObservable.h"
#include "QAVMathTransformation.h"
#include "QAVRbaUIExport.h"

class QAVRBAUI_API QAVIRbaMappingModelUpdater : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // The mapping types as the context bar names them, dense from 0. They order
  // cylindrical and cubical differently from MappingType, on purpose; convert
  // with ToMappingType.
  enum CtxBarMappingType : int {
    CtxBarPlanar = 0,
    CtxBarSpherical = 1,
    CtxBarFiniteCylindrical = 2,
    CtxBarInfiniteCylindrical = 3,
    CtxBarCubical = 4,
    CtxBarUV = 5,
  };
  // The MappingType of a bar type; any value outside 1 to 5 is Planar.
  static QAVIRbaMappingObservable::MappingType ToMappingType(int type);

  virtual HRESULT UpdateMappingType(CtxBarMappingType type) = 0;
  // Puts the projection back on the centre of its support.
  virtual HRESULT ReSnapToApplicationCenterpoint() = 0;
  // Scales the projection to the size of its support; `keepRatio` keeps the
  // texture's aspect ratio (the larger side fits).
  virtual HRESULT RescaleToRelatedObjectSize(bool keepRatio) = 0;
  // Scales the projection to the texture's own size.
  virtual HRESULT RescaleToOriginalTextureSize() = 0;
  // The placement of the projection in the support's space.
  virtual HRESULT GetIsometryMatrix(QAVMathTransformation& isometry) = 0;
  virtual HRESULT SetIsometryMatrix(const QAVMathTransformation& isometry) = 0;
};

#endif
