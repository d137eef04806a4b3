#include "QAVDiagnostics.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <utility>

#include "QAVHostJournal.h"

namespace {
std::mutex& OutputLock() {
  static std::mutex* const lock = new std::mutex;
  return *lock;
}
}  // namespace

bool QAVCheckPointer(const char* expression, const void* pointer, const char* message) {
  if (pointer) return true;
  std::string line = expression ? expression : "";
  line += " is NULL ";
  line += message ? message : "";
  {
    std::lock_guard guard(OutputLock());
    (void)std::fprintf(stderr, "%s\n", line.c_str());
    (void)std::fflush(stderr);
  }
  qavjournal::Record({"pointer-check", expression ? expression : "", std::move(line)});
  return false;
}

bool QAVCheck(bool condition, const char* message) {
  if (condition) return true;
  std::string line = "Check failed: ";
  line += message ? message : "";
  {
    std::lock_guard guard(OutputLock());
    (void)std::fprintf(stderr, "%s\n", line.c_str());
    (void)std::fflush(stderr);
  }
  qavjournal::Record({"check", message ? message : "", std::move(line)});
  return false;
}

void QAVFatalError(const char* message, const char* file, int line) {
  (void)std::fprintf(stderr, "Fatal error: %s (%s:%d)\n", message ? message : "", file ? file : "?",
                     line);
  (void)std::fflush(stderr);
  std::abort();
}
