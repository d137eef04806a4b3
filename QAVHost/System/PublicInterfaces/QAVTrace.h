// A trace with levels: a channel (QAVTraceChannel, enabled by QAVHOST_TRACE or
// Enable) that prints the messages of a level up to its own, 1 the most
// important. Each message printed is also journaled (kind "trace", the
// channel's name, the text) for the tests.
#ifndef QAVTrace_h
#define QAVTrace_h

#include "QAVTraceChannel.h"

class QAVHOST_API QAVTrace : public QAVTraceChannel {
 public:
  explicit QAVTrace(const char* name, int level = 4) : QAVTraceChannel(name), _level(level) {}

  int GetLevel() const { return _level; }
  void SetLevel(int level) { _level = level; }
  // Whether a message of that level prints now.
  bool IsActive(int level) const { return IsEnabled() && level <= _level; }

  void TraPrint(int level, const char* format, ...) const
#if defined(__GNUC__)
      __attribute__((format(printf, 3, 4)))
#endif
      ;

 private:
  int _level;
};

#endif
