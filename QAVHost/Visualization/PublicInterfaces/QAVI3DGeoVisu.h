// The visualisation interface: what shows an object in 3D. Model objects that a
// scene shows directly, occurrences and representation occurrences answer it.
#ifndef QAVI3DGeoVisu_h
#define QAVI3DGeoVisu_h

#include "QAV3DRep.h"
#include "QAVBaseUnknown.h"

class QAVHOST_API QAVI3DGeoVisu : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVI3DGeoVisu() = default;
  ~QAVI3DGeoVisu() override;
  // The representation that shows the object (borrowed), or null when the
  // object is shown by none.
  virtual QAV3DRep* GiveRep() const = 0;
};

#endif
