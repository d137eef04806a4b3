// The interface that every model object answers: what every object of a product's
// tree is, whatever its class (a part, a sticker container, a camera, a light,
// an ambience...).
#ifndef QAVISpecObject_h
#define QAVISpecObject_h

#include "QAVBaseUnknown.h"

class QAVHOST_API QAVISpecObject : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVISpecObject() = default;
  ~QAVISpecObject() override;
};

#endif
