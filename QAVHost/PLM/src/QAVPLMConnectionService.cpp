#include "QAVPLMConnectionService.h"

#include <mutex>

namespace {

constexpr const char* kDefaultSpace = "Common Space";
std::mutex spaceMutex;
QAVString currentSpace(kDefaultSpace);  // guarded by spaceMutex

}  // namespace

HRESULT QAVPLMConnectionService::GetCurrentSpace(QAVString& name) const {
  const std::lock_guard<std::mutex> lock(spaceMutex);
  name = currentSpace;
  return name.IsEmpty() ? E_FAIL : S_OK;
}

void QAVPLMConnectionService::ResetCurrentSpace() { SetCurrentSpace(QAVString(kDefaultSpace)); }

void QAVPLMConnectionService::SetCurrentSpace(const QAVString& name) {
  const std::lock_guard<std::mutex> lock(spaceMutex);
  currentSpace = name;
}
