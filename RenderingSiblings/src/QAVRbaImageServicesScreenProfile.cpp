// The screen profiles of native windows, as the platform's display settings
// would give them.
#include <map>

#include "QAVMMColorProfile.h"
#include "QAVProcessState.h"
#include "QAVRbaImageServices.h"
#include "QAVRef.h"

namespace {

struct ScreenProfiles {
  std::map<QAVNativeWindowHandle, QAVRef<QAVMMColorProfile>> byWindow;
  QAVRef<QAVMMColorProfile> defaultProfile;  // sRGB, made on first need
};

ScreenProfiles& State() {
  static auto* const state = new ScreenProfiles;
  return *state;
}

void ForgetScreenProfiles() {
  State().byWindow.clear();
  State().defaultProfile.Reset();
}
QAV_REGISTER_RESET(QAVRbaImageServicesScreenProfile, ForgetScreenProfiles);

}  // namespace

QAVMMColorProfile* QAVRbaImageServices::GetScreenProfile(QAVNativeWindowHandle windowHandle) {
  if (windowHandle == 0) return nullptr;
  ScreenProfiles& state = State();
  QAVRef<QAVMMColorProfile> profile;
  if (const auto found = state.byWindow.find(windowHandle); found != state.byWindow.end()) {
    profile = found->second;
  } else {
    if (!state.defaultProfile)
      state.defaultProfile = QAVRef<QAVMMColorProfile>::Adopt(QAVMMColorProfile::CreateSRGB());
    profile = state.defaultProfile;
  }
  return profile.Detach();
}

void QAVRbaImageServices::SetScreenProfile(QAVNativeWindowHandle windowHandle,
                                           QAVMMColorProfile* profile) {
  if (windowHandle == 0) return;
  if (profile)
    State().byWindow[windowHandle] = QAVRef<QAVMMColorProfile>(profile);
  else
    State().byWindow.erase(windowHandle);
}
