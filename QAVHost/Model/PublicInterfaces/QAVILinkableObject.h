// The interface of features that other objects link to: lights, cameras,
// walls, environments, the turntable, stickers. A product or a part does not
// answer it, so the first element of a path that does is the feature the path
// leads to.
#ifndef QAVILinkableObject_h
#define QAVILinkableObject_h

#include "QAVBaseUnknown.h"
#include "QAVRef.h"

class QAVModelObject;

class QAVHOST_API QAVILinkableObject : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVILinkableObject() = default;
  ~QAVILinkableObject() override;
  // The feature behind the interface (borrowed).
  QAVModelObject* GetObject() const;
};

using QAVILinkableObject_var = QAVRef<QAVILinkableObject>;

#endif
