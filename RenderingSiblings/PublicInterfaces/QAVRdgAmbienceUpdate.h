// Stand-in of the rendering dialogs' ambience updater component
// ("QAVRdgAmbienceUpdate"): it records every call it receives, in order, so
// that callers can be checked, and can be made unavailable, as in a host
// where the rendering dialogs are not loaded.
#ifndef QAVRdgAmbienceUpdate_h
#define QAVRdgAmbienceUpdate_h

#include <string>
#include <vector>

#include "QAVIRbaAmbienceUpdate.h"

class QAVRBASIBLINGS_API QAVRdgAmbienceUpdate : public QAVIRbaAmbienceUpdate {
  QAV_DECLARE_CLASS
 public:
  QAVRdgAmbienceUpdate();
  ~QAVRdgAmbienceUpdate() override;
  HRESULT OnCameraChange(unsigned char flag) override;
  HRESULT OnDepthOfFieldChange() override;

  // What every instance was told, in order: "OnCameraChange(<flag>)",
  // "OnDepthOfFieldChange()"; emptied when read with `clear`.
  static std::vector<std::string> GetCalls(bool clear = false);
  // Instances created so far and alive now.
  static int GetCreatedCount();
  static int GetAliveCount();
  // While false, the component cannot be instantiated.
  static void SetAvailable(bool available);
};

#endif
