// The host's angle ruler: a value editor (a command) whose decorator is an arc
// drawn in a plane around its origin, of the editor's free radius, from the
// plane's first direction towards its second one over the editor's value in
// degrees, with the value beside it.
#ifndef QAVRulerDecoratedAngleEditor_h
#define QAVRulerDecoratedAngleEditor_h

#include "QAVMathPlane.h"
#include "QAVRulerDecoratedEditor.h"

class QAVHOST_API QAVRulerDecoratedAngleEditor : public QAVRulerDecoratedEditor {
  QAV_DECLARE_CLASS
 public:
  // `father` is not owned and may be null; `viewer` null: the current window's.
  explicit QAVRulerDecoratedAngleEditor(QAVCommand* father = nullptr, const char* name = nullptr,
                                        QAV3DViewer* viewer = nullptr);
  ~QAVRulerDecoratedAngleEditor() override;

  // The radius of the arc in millimetres (scene units); 0 when made.
  void SetFreeRadius(double radius) { _radius = radius; }
  double GetFreeRadius() const { return _radius; }

  // The plane of the arc (the plane z = 0 when made).
  void SetDecoratorData(const QAVMathPlane& plane) { _plane = plane; }
  const QAVMathPlane& GetDecoratorPlane() const { return _plane; }

 private:
  double _radius = 0.0;
  QAVMathPlane _plane;
};

#endif
