// What the host's two ruler editors share: a value editor that is also a
// command, with a decorator drawn in a 3D viewer (the ruler itself) while it is
// shown. QAVRulerDecoratedLengthEditor measures a length along a direction,
// QAVRulerDecoratedAngleEditor an angle in a plane.
//
// The editor is shown once built, while both its global visibility and its
// decorator visibility are on (both are on when it is made). While shown, its
// decoration is drawn in the viewer given at construction or, without one, in
// the 3D viewer of the current window of the current layout at the moment it
// is shown; it leaves that viewer when hidden or destroyed.
//
// When the user has typed a value, the editor sends EDIT_MODIFY() through its
// command's callback manager with GetVidEditModifyExtNotification() as the
// notification and itself (QAVRulerDecoratedEditor*) as the data.
//
// Like every command, an editor is owned by the host from its creation and ends
// with RequestDelayedDestruction.
#ifndef QAVRulerDecoratedEditor_h
#define QAVRulerDecoratedEditor_h

#include "QAVCommand.h"
#include "QAVRef.h"

class QAV3DViewer;
class QAVNotification;
class QAVViewDecoration;

class QAVHOST_API QAVRulerDecoratedEditor : public QAVCommand {
  QAV_DECLARE_CLASS
 public:
  // The host's scale values of an editor's decorator.
  static constexpr int SmallScale = 0;
  static constexpr int NormalScale = 1;
  static constexpr int LargeScale = 2;

  // The event an editor sends when the user has typed a value.
  static const char* EDIT_MODIFY();

  QAVRulerDecoratedEditor(const QAVRulerDecoratedEditor&) = delete;
  QAVRulerDecoratedEditor& operator=(const QAVRulerDecoratedEditor&) = delete;
  ~QAVRulerDecoratedEditor() override;

  // Whether the user may drag the ruler itself (on when made).
  void AllowRulerManipMode(bool allow) { _rulerManipAllowed = allow; }
  bool IsRulerManipModeAllowed() const { return _rulerManipAllowed; }
  // The decorator's scale (NormalScale when made).
  void SetScale(int scale) { _scale = scale; }
  int GetScale() const { return _scale; }

  void SetGlobalVisibility(bool visible);
  bool GetGlobalVisibility() const { return _globalVisible; }
  void SetDecoratorVisibility(bool visible);
  bool GetDecoratorVisibility() const { return _decoratorVisible; }

  // Makes the editor's widgets: S_OK, or S_FALSE when already built.
  HRESULT Build();
  bool IsBuilt() const { return _built; }
  // Built, globally visible and decorator visible.
  bool IsShown() const { return _built && _globalVisible && _decoratorVisible; }

  // The value in the editor's field (0 when made).
  void SetValue(double value) { _value = value; }
  double GetValue() const { return _value; }
  // Redraws the field and the decorator from the editor's state; counted.
  void Refresh() { ++_refreshCount; }
  int GetRefreshCount() const { return _refreshCount; }

  // The notification sent with EDIT_MODIFY() (borrowed, the editor's own).
  QAVNotification* GetVidEditModifyExtNotification() const { return _editNotification.get(); }

  // The decoration drawn while shown (borrowed, never null), and the viewer it
  // is drawn in now (borrowed), or null while hidden or without a viewer.
  QAVViewDecoration* GetDecoration() const { return _decoration.get(); }
  QAV3DViewer* GetDecoratedViewer() const { return _decorated.get(); }

 protected:
  // `decoration` is the drawing of the derived editor (never null).
  QAVRulerDecoratedEditor(QAVCommand* father, const char* name, QAV3DViewer* viewer,
                          QAVRef<QAVViewDecoration> decoration);
  // Takes the decoration off its viewer; derived editors call it first in their
  // destructors, before their decoration loses its editor.
  void Undecorate();

 private:
  // Adds or removes the decoration as the editor is shown or hidden.
  void UpdateDecoration();

  QAVRef<QAV3DViewer> _viewer;  // given at construction, or null
  QAVRef<QAVViewDecoration> _decoration;
  QAVRef<QAV3DViewer> _decorated;
  QAVRef<QAVNotification> _editNotification;
  bool _rulerManipAllowed = true;
  int _scale = NormalScale;
  bool _globalVisible = true;
  bool _decoratorVisible = true;
  bool _built = false;
  double _value = 0.0;
  int _refreshCount = 0;
};

#endif
