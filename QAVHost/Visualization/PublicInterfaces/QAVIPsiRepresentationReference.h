// A reference to a representation: what a model object gives for the
// representation it stands for. Every model object answers it; the
// representation is the one that shows the object in 3D (its QAVI3DGeoVisu),
// null when none does.
#ifndef QAVIPsiRepresentationReference_h
#define QAVIPsiRepresentationReference_h

#include "QAV3DRep.h"
#include "QAVBaseUnknown.h"

class QAVHOST_API QAVIPsiRepresentationReference : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVIPsiRepresentationReference() = default;
  ~QAVIPsiRepresentationReference() override;
  // The referenced representation (borrowed), or null.
  virtual QAV3DRep* GetRepresentation() const = 0;
};

#define IID_QAVIPsiRepresentationReference QAVIPsiRepresentationReference::ClassId()

#endif
