#include "QAVEnvironment.h"

#include <cstdlib>

const char* QAVGetEnv(const char* name) { return name ? std::getenv(name) : nullptr; }
