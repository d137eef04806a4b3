// Entry point of the PLM component's services.
#ifndef QAVPLMComponentServices_h
#define QAVPLMComponentServices_h

#include "QAVHostExport.h"
#include "QAVPLMConnectionService.h"
#include "QAVTypes.h"

class QAVHOST_API QAVPLMComponentServices {
 public:
  // The session's connection service (owned by the host, alive for the whole
  // process). Always S_OK in the substitute.
  static HRESULT GetConnectionService(QAVPLMConnectionService*& service);
};

#endif
