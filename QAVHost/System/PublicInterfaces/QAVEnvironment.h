// The process environment.
#ifndef QAVEnvironment_h
#define QAVEnvironment_h

#include "QAVHostExport.h"

// The value of an environment variable, or null when it is unset.
QAVHOST_API const char* QAVGetEnv(const char* name);

#endif
