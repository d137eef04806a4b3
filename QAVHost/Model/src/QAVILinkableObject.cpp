#include "QAVILinkableObject.h"

#include "QAVExtension.h"
#include "QAVModelObject.h"

QAV_IMPLEMENT_CLASS(QAVILinkableObject, QAVBaseUnknown, "Model");

QAVILinkableObject::~QAVILinkableObject() = default;

QAVModelObject* QAVILinkableObject::GetObject() const {
  return dynamic_cast<QAVModelObject*>(GetOuter());
}

namespace {

// The feature classes of the model.
[[maybe_unused]] const bool registered = [] {
  for (const char* feature :
       {"QAVRscNewLight", "QAVCameraFeat", "QAVRscNewWall", "QAVRscNewSphereEnvironment",
        "QAVRscNewBoxEnvironment", "QAVRscNewCylinderEnvironment", "QAVRscTurntable",
        "QAVStkSticker", "QAVRbaDecal"})
    QAVExtension::Register(feature, QAVILinkableObject::ClassId(),
                           []() -> QAVBaseUnknown* { return new QAVILinkableObject; });
  return true;
}();

}  // namespace
