#include "QAVPLMConnectionService.h"

#include <mutex>

#include "QAVProcessState.h"

namespace {

constexpr const char* kDefaultSpace = "Common Space";
std::mutex spaceMutex;
QAVString currentSpace(kDefaultSpace);  // guarded by spaceMutex

void ResetSpace() {
  const std::lock_guard<std::mutex> lock(spaceMutex);
  currentSpace = kDefaultSpace;
}
QAV_REGISTER_RESET(QAVPLMConnectionService, ResetSpace);

}  // namespace

HRESULT QAVPLMConnectionService::GetCurrentSpace(QAVString& name) const {
  const std::lock_guard<std::mutex> lock(spaceMutex);
  name = currentSpace;
  return name.IsEmpty() ? E_FAIL : S_OK;
}

void QAVPLMConnectionService::SetCurrentSpace(const QAVString& name) {
  const std::lock_guard<std::mutex> lock(spaceMutex);
  currentSpace = name;
}
