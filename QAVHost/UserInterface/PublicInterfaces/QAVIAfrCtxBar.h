// A context bar: a floating bar of command buttons beside the object under
// edition. The host's context-bar frame makes it through its late type and
// asks it to fill its rows whenever it is shown or refreshed.
#ifndef QAVIAfrCtxBar_h
#define QAVIAfrCtxBar_h

#include "QAVBaseUnknown.h"
#include "QAVString.h"

class QAVHOST_API QAVIAfrCtxBar : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  virtual void FillContextBar() = 0;
  // Fills the bar's rows; `model` names the context (bars may ignore it).
  virtual HRESULT FillCtxBar(QAVString model) = 0;
};

#endif
