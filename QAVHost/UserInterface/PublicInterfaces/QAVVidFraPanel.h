// A floating panel of the host: a dialog command whose window floats over the
// frame. It can be hidden and shown, and attached (snapped) to another floating
// panel, which then carries it along.
#ifndef QAVVidFraPanel_h
#define QAVVidFraPanel_h

#include "QAVCommand.h"

class QAVHOST_API QAVVidFraPanel : public QAVCommand {
  QAV_DECLARE_CLASS
 public:
  // A visible panel, attached to nothing.
  explicit QAVVidFraPanel(QAVCommand* father = nullptr, const char* name = nullptr);
  ~QAVVidFraPanel() override;

  void SetVisibleFlag(bool visible) { _visible = visible; }
  bool GetVisibleFlag() const { return _visible; }

  // Snaps this panel to `window` in the area `snapArea` of it; `flag` is the
  // host's placement option. Null detaches the panel.
  void AttachToWindow(QAVVidFraPanel* window, int snapArea, int flag);
  // The panel this one is attached to (not owned), or null.
  QAVVidFraPanel* GetAttachedWindow() const { return _attachedTo; }
  int GetSnapArea() const { return _snapArea; }
  int GetAttachFlag() const { return _attachFlag; }

 private:
  bool _visible = true;
  QAVVidFraPanel* _attachedTo = nullptr;
  int _snapArea = 0;
  int _attachFlag = 0;
};

#endif
