// The driver's switch that takes the host's context-bar manager away, to test
// what its callers do without it. Not part of the host's API.
#ifndef QAVCtxBarSwitch_h
#define QAVCtxBarSwitch_h

#include "QAVHostExport.h"

namespace qavctxbar {
QAVHOST_API void SetUnavailable(bool unavailable);
}

#endif
