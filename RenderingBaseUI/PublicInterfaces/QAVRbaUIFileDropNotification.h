// Sent with TEXTURE_DROPPED: the full path of the file dropped on the viewer.
// The sender releases it once the dispatch returns, so a receiver that keeps the
// path copies FilePath.
#ifndef QAVRbaUIFileDropNotification_h
#define QAVRbaUIFileDropNotification_h

#include "QAVNotification.h"
#include "QAVRbaUIExport.h"
#include "QAVUnicodeString.h"

class QAVRBAUI_API QAVRbaUIFileDropNotification : public QAVNotification {
  QAV_DECLARE_CLASS
 public:
  explicit QAVRbaUIFileDropNotification(QAVUnicodeString filePath);
  QAVRbaUIFileDropNotification(const QAVRbaUIFileDropNotification& other);
  QAVRbaUIFileDropNotification& operator=(const QAVRbaUIFileDropNotification& other);
  ~QAVRbaUIFileDropNotification() override;

  QAVUnicodeString FilePath;
};

#endif
