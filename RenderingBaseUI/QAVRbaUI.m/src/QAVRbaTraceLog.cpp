#include "QAVRbaTraceLog.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>

#include "QAVProcessState.h"
#include "QAVRbaEnvironment.h"

namespace {

using Clock = std::chrono::steady_clock;

// Created when the library loads: the start of the elapsed times and the lock
// that keeps lines whole.
struct TraceState {
  Clock::time_point start = Clock::now();
  std::mutex output;
};

TraceState& State() {
  static TraceState* const state = new TraceState;
  return *state;
}
[[maybe_unused]] const bool kCreatedAtLoad = (State(), true);

void RestartClock() { State().start = Clock::now(); }
QAV_REGISTER_RESET(QAVRbaTraceLog, RestartClock);

// The threshold from the severity text kept at load; the comparison is made on
// unsigned 8-bit values, so "256" gives 0 (nothing prints) and "-1" gives 255.
unsigned char Threshold() {
  const char* text = QAVRbaEnvironment::TraceSeverity();
  if (!text || !*text) return 1;
  return static_cast<unsigned char>(std::atoi(text));  // NOLINT(cert-err34-c): atoi is the rule
}

const char* Prefix(unsigned char severity) {
  switch (severity) {
    case 0:
      return "[ERROR]   : (";
    case 1:
      return "[WARNING] : (";
    case 2:
      return "[INFO]    : (";
    default:
      return nullptr;
  }
}

void Append(std::string& line, const char* text) {
  if (text) line += text;
}

void Write(unsigned char severity, const char* file, const char* separator, int line,
           const char* separator2, bool withSeparator2, const char* piece1, const char* piece2,
           const char* piece3) {
  const char* prefix = Prefix(severity);
  if (!prefix || severity >= Threshold()) return;
  TraceState& state = State();
  const std::int64_t elapsedNs =
      std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now() - state.start).count();
  std::string text = prefix;
  text += std::to_string(elapsedNs / 1000000);
  text += " ms) ";
  Append(text, file);
  Append(text, separator);
  text += std::to_string(line);
  if (withSeparator2) Append(text, separator2);
  Append(text, piece1);
  Append(text, piece2);
  Append(text, piece3);
  text += '\n';
  std::lock_guard guard(state.output);
  (void)std::fwrite(text.data(), 1, text.size(), stdout);
  (void)std::fflush(stdout);
}

}  // namespace

void QAVRbaTrace(unsigned char severity, const char* file, const char* separator, int line,
                 const char* piece1, const char* piece2, const char* piece3) {
  Write(severity, file, separator, line, nullptr, false, piece1, piece2, piece3);
}

void QAVRbaTrace(unsigned char severity, const char* file, const char* separator, int line,
                 const char* separator2, const char* piece1, const char* piece2,
                 const char* piece3) {
  Write(severity, file, separator, line, separator2, true, piece1, piece2, piece3);
}
