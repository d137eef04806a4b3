// The application's main frame.
#ifndef QAVApplicationFrame_h
#define QAVApplicationFrame_h

#include "QAVBaseUnknown.h"
#include "QAVFrmWindow.h"

class QAVHOST_API QAVApplicationFrame : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // The frame of the process (borrowed; made on first use, never null).
  static QAVApplicationFrame* GetFrame();
  // The application's document window, where messages that concern the whole
  // application appear (QAVNotificationDialog::GetApplicationDocument).
  QAVFrmWindow* GetApplicationDocument() const;

  QAVApplicationFrame();
  ~QAVApplicationFrame() override;
};

#endif
