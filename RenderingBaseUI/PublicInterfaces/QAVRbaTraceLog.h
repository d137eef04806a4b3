// The console trace log: severity-filtered lines on standard output.
//
// Severity 0 is an error, 1 a warning, 2 information; any other severity prints
// nothing. The environment variable "LRE_TRACE_SEVERITY" (read when the library
// loads) sets the threshold with atoi, 1 when it is unset or empty; a line is
// printed only when its severity is below the threshold, both taken as unsigned
// 8-bit values. So by default only errors print, "2" adds warnings and "3"
// information.
//
// A line reads
//   <prefix><ms> ms) <file><separator><line>[<separator2>]<piece1><piece2><piece3>
// where the prefix is "[ERROR]   : (", "[WARNING] : (" or "[INFO]    : (" and <ms>
// the whole milliseconds elapsed since the library was loaded. The line is
// flushed at its end. Lines of concurrent callers never mix: each is written
// whole under one lock. Null texts are written as empty.
#ifndef QAVRbaTraceLog_h
#define QAVRbaTraceLog_h

#include "QAVRbaUIExport.h"

// The form with three pieces.
QAVRBAUI_API void QAVRbaTrace(unsigned char severity, const char* file, const char* separator,
                              int line, const char* piece1, const char* piece2, const char* piece3);
// The form with four pieces: a second separator after the line number.
QAVRBAUI_API void QAVRbaTrace(unsigned char severity, const char* file, const char* separator,
                              int line, const char* separator2, const char* piece1,
                              const char* piece2, const char* piece3);

// The final component of a source path, for the file text of the traces.
constexpr const char* QAVRbaTraceFileName(const char* path) {
  const char* name = path;
  for (const char* p = path; p && *p; ++p)
    if (*p == '/' || *p == '\\') name = p + 1;
  return name;
}

// The report of a failed internal check: when `condition` is false, an error
// trace "<file> <line> <condition text> is false.<explanation>". Evaluates to
// the condition.
#define QAVRBA_CHECK(condition, explanation)                                               \
  ((condition) ? true                                                                      \
               : (QAVRbaTrace(0, QAVRbaTraceFileName(__FILE__), " ", __LINE__, #condition, \
                              " is false.", (explanation)),                                \
                  false))

#endif
