// The measuring rulers of an interactive placement command: a length ruler that
// shows, and lets the user type, the distance of a translation along a
// direction, an angle ruler for the angle of a rotation in a plane, and a
// second length ruler made and hidden with them but never fed.
//
// The command that owns the manager calls InitRulers when it starts, feeds the
// rulers while the user drags, subscribes to the two edition notifications (sent
// through the callback managers of GetTranslationRulerCommand and
// GetRotationRulerCommand with the event QAVRulerDecoratedEditor::EDIT_MODIFY())
// to learn that the user typed a value, reads it with the two getters, and ends
// with DestroyRulers. The rulers are host commands: they are never deleted but
// end by delayed destruction, after the current event. The manager never owns
// them: copies share the same rulers, and destroying a manager only forgets
// them. Every operation tolerates missing rulers.
#ifndef QAVRbaRulerManager_h
#define QAVRbaRulerManager_h

#include "QAVMathPlane.h"
#include "QAVMathPoint.h"
#include "QAVMathVector.h"
#include "QAVRbaUIExport.h"

class QAVCommand;
class QAVNotification;
class QAVRulerDecoratedAngleEditor;
class QAVRulerDecoratedLengthEditor;

class QAVRBAUI_API QAVRbaRulerManager {
 public:
  QAVRbaRulerManager();
  // Copies share the rulers (the four pointers are copied as they are).
  QAVRbaRulerManager(const QAVRbaRulerManager& other);
  QAVRbaRulerManager& operator=(const QAVRbaRulerManager& other);
  // Forgets the rulers without destroying them: call DestroyRulers first.
  virtual ~QAVRbaRulerManager();

  // Remembers the father command and (re)creates the three rulers, hidden,
  // those of a previous call ending by delayed destruction.
  void InitRulers(QAVCommand* father);
  // Turns off the global visibility of all three rulers.
  void HideRulers();
  // Requests the delayed destruction of each ruler and forgets it.
  void DestroyRulers();

  // Shows the translation ruler from `start` along `direction` (normalised)
  // with the distance from `start` to `end`.
  void refreshTranslationRuler(QAVMathPoint start, QAVMathPoint end, QAVMathVector direction);
  // Shows the angle ruler's decorator in `plane` with `angle`.
  void refreshRotationRuler(QAVMathPlane& plane, double angle);

  // The value in the translation ruler, written back into it; 0.0 without it.
  double getTranslationRulerEditorValue();
  // The value in the angle ruler, also written into the translation ruler;
  // 0.0 without the angle ruler.
  double getRotationRulerEditorAngle();

  // The rulers as commands (borrowed), or null.
  QAVCommand* GetTranslationRulerCommand();
  QAVCommand* GetRotationRulerCommand();
  // What each ruler sends when the user has typed a value (borrowed), or null.
  QAVNotification* GetTranslationRulerEditionNotification();
  QAVNotification* GetRotationRulerEditionNotification();

 private:
  QAVRulerDecoratedLengthEditor* _translationRuler = nullptr;  // "myRuler"
  QAVRulerDecoratedLengthEditor* _secondRuler = nullptr;       // "myRulerBis"
  QAVRulerDecoratedAngleEditor* _rotationRuler = nullptr;      // "myRulerAngle"
  QAVCommand* _father = nullptr;                               // not owned
};

#endif
