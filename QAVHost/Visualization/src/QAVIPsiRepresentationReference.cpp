#include "QAVIPsiRepresentationReference.h"

#include "QAVExtension.h"
#include "QAVI3DGeoVisu.h"

QAV_IMPLEMENT_CLASS(QAVIPsiRepresentationReference, QAVBaseUnknown, "Visualization");

QAVIPsiRepresentationReference::~QAVIPsiRepresentationReference() = default;

// The reference of a model object, made on its first query: the representation
// is asked of the object's visualisation each time, so it follows the scene.
class QAVModelObjectRepReference : public QAVIPsiRepresentationReference {
  QAV_DECLARE_CLASS
 public:
  QAV3DRep* GetRepresentation() const override {
    const auto visu = QAVQuery<QAVI3DGeoVisu>(GetOuter());
    return visu ? visu->GiveRep() : nullptr;
  }
};

QAV_IMPLEMENT_CLASS(QAVModelObjectRepReference, QAVIPsiRepresentationReference, "Visualization");
QAV_REGISTER_EXTENSION(QAVModelObjectRepReference, "QAVModelObject",
                       QAVIPsiRepresentationReference);
