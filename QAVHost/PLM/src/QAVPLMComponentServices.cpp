#include "QAVPLMComponentServices.h"

HRESULT QAVPLMComponentServices::GetConnectionService(QAVPLMConnectionService*& service) {
  // Stateless itself (the space lives with the session), so one for the whole
  // process.
  static QAVPLMConnectionService connection;
  service = &connection;
  return S_OK;
}
