// The events that attach a manipulator to, or detach it from, the
// visualisations along a path: each element of the path that answers the
// visualisation interface given (QAVI3DGeoVisu) and gives a representation
// has the manipulator attached to that representation. The events are handed
// to the object that owns the path (the edited root) with SendTo.
#ifndef QAVManipulatorOnPath_h
#define QAVManipulatorOnPath_h

#include "QAVNotification.h"
#include "QAVRef.h"

class QAVManipulator;
class QAVPathElement;

class QAVHOST_API QAVAddManipulatorOnPath : public QAVNotification {
  QAV_DECLARE_CLASS
 public:
  QAVAddManipulatorOnPath(QAVPathElement* path, QAVManipulator* manipulator, const IID& visu);
  ~QAVAddManipulatorOnPath() override;
  // Delivers the event to its receiver: E_INVALIDARG for a null receiver or an
  // event without path or manipulator; S_OK with the number of representations
  // attached in `count` (may be null).
  virtual HRESULT SendTo(QAVBaseUnknown* receiver, int* count = nullptr) const;

 protected:
  HRESULT Deliver(QAVBaseUnknown* receiver, bool attach, int* count) const;

 private:
  QAVRef<QAVPathElement> _path;
  QAVRef<QAVManipulator> _manipulator;
  const IID* _visu;
};

class QAVHOST_API QAVRemoveManipulatorOnPath : public QAVAddManipulatorOnPath {
  QAV_DECLARE_CLASS
 public:
  QAVRemoveManipulatorOnPath(QAVPathElement* path, QAVManipulator* manipulator, const IID& visu);
  ~QAVRemoveManipulatorOnPath() override;
  HRESULT SendTo(QAVBaseUnknown* receiver, int* count = nullptr) const override;
};

#endif
