// Services of the live rendering user interface (static members only).
//
// The live, batch and network renderers keep their parameters in three setting
// repositories of the host: "RenderingLiveSettings", "RenderingBatchSettings"
// and "RenderingNetworkSettings". InitSettings declares every setting of the
// three with its type and default value, so that every later reader finds one;
// the keys, types and defaults are the tables of QAVRbaRenderingSettings.h.
#ifndef QAVRbaLiveUIServices_h
#define QAVRbaLiveUIServices_h

#include "QAVRbaUIExport.h"
#include "QAVTypes.h"

class QAVRBAUI_API QAVRbaLiveUIServices {
 public:
  // Opens the three repositories in the order live, batch, network and declares
  // the keys of each that exists, in a fixed order; a value already stored is
  // kept, and nothing is saved. S_OK when at least one repository exists, E_FAIL
  // when none does. May be called any number of times.
  static HRESULT InitSettings();

  QAVRbaLiveUIServices() = delete;
};

#endif
