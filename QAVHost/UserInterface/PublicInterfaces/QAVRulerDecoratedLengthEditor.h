// The host's length ruler: a value editor (a command) whose decorator is a
// ruler drawn from a point along a direction for a length, set beside the
// measured segment at its ruler offset, with ticks and the editor's value.
#ifndef QAVRulerDecoratedLengthEditor_h
#define QAVRulerDecoratedLengthEditor_h

#include "QAVMathPoint.h"
#include "QAVMathVector.h"
#include "QAVRulerDecoratedEditor.h"

class QAVHOST_API QAVRulerDecoratedLengthEditor : public QAVRulerDecoratedEditor {
  QAV_DECLARE_CLASS
 public:
  // `father` is not owned and may be null; `viewer` null: the current window's.
  explicit QAVRulerDecoratedLengthEditor(QAVCommand* father = nullptr, const char* name = nullptr,
                                         QAV3DViewer* viewer = nullptr);
  ~QAVRulerDecoratedLengthEditor() override;

  // The distance between the measured segment and the ruler drawn beside it, in
  // millimetres (scene units); 0 when made.
  void SetRulerOffsetInMM(double offset) { _offset = offset; }
  double GetRulerOffsetInMM() const { return _offset; }

  // The segment measured: from `point` along `direction` (used as given) for
  // `length`. The length also becomes the value shown, as while the ruler
  // follows a drag.
  void SetDecoratorData(const QAVMathPoint& point, const QAVMathVector& direction, double length);
  const QAVMathPoint& GetDecoratorPoint() const { return _point; }
  const QAVMathVector& GetDecoratorDirection() const { return _direction; }
  double GetDecoratorLength() const { return _length; }

 private:
  double _offset = 0.0;
  QAVMathPoint _point;
  QAVMathVector _direction{1.0, 0.0, 0.0};
  double _length = 0.0;
};

#endif
