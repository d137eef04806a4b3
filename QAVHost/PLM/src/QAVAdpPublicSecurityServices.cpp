#include "QAVAdpPublicSecurityServices.h"

#include <array>
#include <mutex>

namespace {

const std::array<const char*, 4> kDefaults{"Designer", "Company", "Common Space", "Author"};
std::mutex securityMutex;
std::array<QAVString, 4> parameters;  // guarded by securityMutex
bool unavailable = false;             // guarded by securityMutex
bool set = false;                     // guarded by securityMutex

}  // namespace

HRESULT QAVAdpPublicSecurityServices::GetSecurityParameters(const QAVString& /*contextName*/,
                                                            QAVString& first, QAVString& second,
                                                            QAVString& third, QAVString& fourth) {
  const std::lock_guard<std::mutex> lock(securityMutex);
  std::array<QAVString*, 4> out{&first, &second, &third, &fourth};
  for (std::size_t i = 0; i < out.size(); ++i)
    *out[i] = unavailable ? QAVString() : set ? parameters[i] : QAVString(kDefaults[i]);
  return unavailable ? E_FAIL : S_OK;
}

void QAVAdpPublicSecurityServices::SetParameters(const QAVString& first, const QAVString& second,
                                                 const QAVString& third, const QAVString& fourth) {
  const std::lock_guard<std::mutex> lock(securityMutex);
  parameters = {first, second, third, fourth};
  set = true;
}

void QAVAdpPublicSecurityServices::ResetToDefaults() {
  const std::lock_guard<std::mutex> lock(securityMutex);
  set = false;
  unavailable = false;
}

void QAVAdpPublicSecurityServices::SetUnavailable(bool value) {
  const std::lock_guard<std::mutex> lock(securityMutex);
  unavailable = value;
}
