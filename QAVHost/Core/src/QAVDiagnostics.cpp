#include "QAVDiagnostics.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>

#include "QAVProcessState.h"

namespace {

struct Reports {
  std::mutex lock;
  std::vector<std::string> lines;
};
Reports& TheReports() {
  static Reports* const reports = new Reports;
  return *reports;
}

QAV_REGISTER_RESET(QAVDiagnostics, QAVClearPointerCheckReports);

}  // namespace

bool QAVCheckPointer(const char* expression, const void* pointer, const char* message) {
  if (pointer) return true;
  std::string line = expression ? expression : "";
  line += " is NULL ";
  line += message ? message : "";
  auto& reports = TheReports();
  std::lock_guard guard(reports.lock);
  (void)std::fprintf(stderr, "%s\n", line.c_str());
  (void)std::fflush(stderr);
  reports.lines.push_back(std::move(line));
  return false;
}

std::vector<std::string> QAVGetPointerCheckReports() {
  auto& reports = TheReports();
  std::lock_guard guard(reports.lock);
  return reports.lines;
}

void QAVClearPointerCheckReports() {
  auto& reports = TheReports();
  std::lock_guard guard(reports.lock);
  reports.lines.clear();
}

void QAVFatalError(const char* message, const char* file, int line) {
  (void)std::fprintf(stderr, "Fatal error: %s (%s:%d)\n", message ? message : "", file ? file : "?",
                     line);
  (void)std::fflush(stderr);
  std::abort();
}
