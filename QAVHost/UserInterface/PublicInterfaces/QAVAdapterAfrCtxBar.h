// The base of the modules' context bars: it answers the bar interface with
// nothing to fill, and gives the bar the components of the frame that shows it.
//
// A module declares a bar as an extension (QAVExtension.h) of a late type, a
// class name of its own, for QAVIAfrCtxBar; the frame makes an object of that
// late type and queries the bar from it.
#ifndef QAVAdapterAfrCtxBar_h
#define QAVAdapterAfrCtxBar_h

#include "QAVIAfrCtxBar.h"
#include "QAVString.h"

class QAVAfrCtxBarFrame;
class QAVICAfrComponent;

class QAVHOST_API QAVAdapterAfrCtxBar : public QAVIAfrCtxBar {
  QAV_DECLARE_CLASS
 public:
  QAVAdapterAfrCtxBar();
  ~QAVAdapterAfrCtxBar() override;
  QAVAdapterAfrCtxBar(const QAVAdapterAfrCtxBar&) = delete;
  QAVAdapterAfrCtxBar& operator=(const QAVAdapterAfrCtxBar&) = delete;

  void FillContextBar() override {}
  HRESULT FillCtxBar(QAVString /*model*/) override { return S_OK; }

  // The component of that name in the frame showing the bar, with a new
  // reference for the caller; null without a frame or such a component.
  QAVICAfrComponent* GetComponent(const QAVString& name) const;

  // Called by the frame that shows the bar (null when it lets it go).
  void AttachFrame(QAVAfrCtxBarFrame* frame) { _frame = frame; }

 private:
  QAVAfrCtxBarFrame* _frame = nullptr;
};

#endif
