#include "QAVIRbaMappingModelUpdater.h"

QAV_IMPLEMENT_CLASS(QAVIRbaMappingModelUpdater, QAVBaseUnknown, "RenderingBaseUI");

QAVIRbaMappingObservable::MappingType QAVIRbaMappingModelUpdater::ToMappingType(int type) {
  switch (type) {
    case CtxBarSpherical:
      return QAVIRbaMappingObservable::Spherical;
    case CtxBarFiniteCylindrical:
      return QAVIRbaMappingObservable::FiniteCylindrical;
    case CtxBarInfiniteCylindrical:
      return QAVIRbaMappingObservable::InfiniteCylindrical;
    case CtxBarCubical:
      return QAVIRbaMappingObservable::Cubical;
    case CtxBarUV:
      return QAVIRbaMappingObservable::UV;
    default:
      return QAVIRbaMappingObservable::Planar;
  }
}
