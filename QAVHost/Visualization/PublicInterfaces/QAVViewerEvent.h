// What a viewer tells of one pointer event: the viewer, the pointer's pixel,
// the button, the pick path under the pointer (null over empty space) and the
// model path of what was picked (QAVPathElement, from the root object down to
// the object picked; empty over empty space).
#ifndef QAVViewerEvent_h
#define QAVViewerEvent_h

#include "QAVNotification.h"
#include "QAVPathElement.h"
#include "QAVPickPath.h"
#include "QAVRef.h"

class QAVViewer;

class QAVHOST_API QAVViewerEvent : public QAVNotification {
  QAV_DECLARE_CLASS
 public:
  QAVViewerEvent(QAVViewer* viewer, double x, double y, int button, QAVPickPath* under);
  ~QAVViewerEvent() override;

  QAVViewer* GetViewer() const { return _viewer; }
  double GetX() const { return _x; }
  double GetY() const { return _y; }
  int GetButton() const { return _button; }
  QAVPickPath* GetPickPathUnder() const { return _under.get(); }
  // The model objects of the reps of the pick path, root first.
  QAVPathElement* GetPathElement() const { return _path.get(); }

 private:
  QAVViewer* _viewer;  // not owned: the event does not outlive its dispatch
  double _x;
  double _y;
  int _button;
  QAVRef<QAVPickPath> _under;
  QAVRef<QAVPathElement> _path;
};

// The notification a manipulator sends for a viewer event: the event is its data.
class QAVHOST_API QAVVueNotification : public QAVNotification {
  QAV_DECLARE_CLASS
 public:
  explicit QAVVueNotification(QAVNotification* data) : _data(data) {}
  ~QAVVueNotification() override;
  QAVNotification* GetDataNotification() const { return _data.get(); }

 private:
  QAVRef<QAVNotification> _data;
};

#endif
