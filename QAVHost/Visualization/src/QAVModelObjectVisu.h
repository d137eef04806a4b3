// The visualisation of model objects: an extension made for each model object
// on its first query of QAVI3DGeoVisu. It gives the representation that
// publishes itself as the object's (QAV3DRep::PublishAsVisu), as long as that
// representation lives, and null otherwise.
#ifndef QAVModelObjectVisu_h
#define QAVModelObjectVisu_h

#include "QAVI3DGeoVisu.h"

class QAVModelObjectVisu : public QAVI3DGeoVisu {
  QAV_DECLARE_CLASS
 public:
  QAVModelObjectVisu();
  ~QAVModelObjectVisu() override;
  QAV3DRep* GiveRep() const override { return _rep; }
  // Not owned: the representation holds the object, so it cannot be held back.
  void SetRep(QAV3DRep* rep) { _rep = rep; }
  void ForgetRep(const QAV3DRep* rep) {
    if (_rep == rep) _rep = nullptr;
  }

 private:
  QAV3DRep* _rep = nullptr;
};

#endif
