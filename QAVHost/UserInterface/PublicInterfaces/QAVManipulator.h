// Manipulators: commands that turn the pointer's moves over a viewer into
// manipulation events. A manipulator listens to the viewer of the current
// window when it is made. Over the scene it sends, through its callback
// manager, with a QAVVueNotification of a QAVViewerEvent:
//   GetQAVMove()              the pointer moved, no button down;
//   GetQAVBeginManipulate()   a button went down over it;
//   GetQAVManipulate()        the pointer moved with that button down (a drag);
//   GetQAVEndManipulate()     the button came up after a begin.
// A manipulator attached on paths (QAVAddManipulatorOnPath) takes a move or a
// press over geometry only when the pick passes through one of the
// representations it is attached to; one attached nowhere manipulates the
// whole viewer. A move over empty space reaches every manipulator (its event
// has no pick path), and a drag once begun goes on to its end whatever lies
// under the pointer.
#ifndef QAVManipulator_h
#define QAVManipulator_h

#include <cstdint>
#include <vector>

#include "QAVCommand.h"
#include "QAVRef.h"

class QAV3DRep;
class QAVViewer;
struct QAVPointerEvent;

class QAVHOST_API QAVManipulator : public QAVCommand {
  QAV_DECLARE_CLASS
 public:
  QAVManipulator(QAVCommand* father, const char* name);
  ~QAVManipulator() override;
  QAVManipulator(const QAVManipulator&) = delete;
  QAVManipulator& operator=(const QAVManipulator&) = delete;

  static const char* GetQAVMove();
  static const char* GetQAVBeginManipulate();
  static const char* GetQAVManipulate();
  static const char* GetQAVEndManipulate();

  // Stops listening and detaches from every representation at once, then asks
  // for the manipulator's destruction. Later calls do nothing.
  void Destroy();
  bool IsDestroyed() const { return _destroyed; }

  // The viewer listened to (borrowed), or null.
  QAVViewer* GetViewer() const { return _viewer.get(); }
  // Attachments, made by QAVAddManipulatorOnPath and QAVRemoveManipulatorOnPath.
  void AttachTo(QAV3DRep* rep);
  void DetachFrom(QAV3DRep* rep);
  int GetAttachmentCount() const { return static_cast<int>(_attached.size()); }
  bool IsManipulating() const { return _dragging; }

 private:
  void OnPointer(const char* event, const QAVPointerEvent& pointer);
  bool Takes(const QAVPointerEvent& pointer) const;
  void Send(const char* event, const QAVPointerEvent& pointer);

  QAVRef<QAVViewer> _viewer;
  std::vector<std::uint64_t> _listening;  // on the viewer's callback manager
  std::vector<QAVRef<QAV3DRep>> _attached;
  bool _dragging = false;
  int _button = 0;
  bool _destroyed = false;
};

// The pick manipulator: a manipulator without a representation of its own.
class QAVHOST_API QAVSelector : public QAVManipulator {
  QAV_DECLARE_CLASS
 public:
  QAVSelector(QAVCommand* father, const char* name, QAV3DRep* rep = nullptr);
  ~QAVSelector() override;
};

#endif
