// The connection of the session to the PLM: the collaborative space the user
// works in. Obtained from QAVPLMComponentServices::GetConnectionService.
#ifndef QAVPLMConnectionService_h
#define QAVPLMConnectionService_h

#include "QAVHostExport.h"
#include "QAVString.h"
#include "QAVTypes.h"

class QAVHOST_API QAVPLMConnectionService {
 public:
  // The name of the current collaborative space ("Common Space" until the
  // driver sets another). S_OK, or E_FAIL with `name` empty when no space is
  // current (the driver set an empty name).
  HRESULT GetCurrentSpace(QAVString& name) const;

 private:
  friend class QAVHostDriver;
  friend class QAVPLMComponentServices;
  QAVPLMConnectionService() = default;
  static void SetCurrentSpace(const QAVString& name);
  static void ResetCurrentSpace();
};

#endif
