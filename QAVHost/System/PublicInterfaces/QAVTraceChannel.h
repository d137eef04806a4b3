// A named trace channel, usually one per class (a static member). It prints to
// standard output only while it is enabled; a disabled channel costs one test.
//
// A channel starts enabled when the environment variable QAVHOST_TRACE, read
// when the channel is created, lists its name (names separated by ",") or holds
// "all"; otherwise it starts disabled. Enable/Disable change it at any time, from
// any thread.
#ifndef QAVTraceChannel_h
#define QAVTraceChannel_h

#include <atomic>
#include <string>

#include "QAVHostExport.h"

class QAVHOST_API QAVTraceChannel {
 public:
  explicit QAVTraceChannel(const char* name);
  QAVTraceChannel(const QAVTraceChannel&) = delete;
  QAVTraceChannel& operator=(const QAVTraceChannel&) = delete;

  const std::string& GetName() const { return _name; }
  bool IsEnabled() const { return _enabled.load(std::memory_order_relaxed); }
  void Enable() { _enabled.store(true, std::memory_order_relaxed); }
  void Disable() { _enabled.store(false, std::memory_order_relaxed); }

  // While enabled, writes "[<name>] " and the formatted text (printf format) as
  // one line on standard output and flushes it; an end of line is added when
  // the text has none.
  void Print(const char* format, ...) const
#if defined(__GNUC__)
      __attribute__((format(printf, 2, 3)))
#endif
      ;

 private:
  std::string _name;
  std::atomic<bool> _enabled{false};
};

#endif
