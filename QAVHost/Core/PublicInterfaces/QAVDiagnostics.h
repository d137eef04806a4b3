// The host's reports of programming faults: the pointer check, the internal
// check and the fatal error.
#ifndef QAVDiagnostics_h
#define QAVDiagnostics_h

#include "QAVHostExport.h"

// Pointer check: when `pointer` is null, writes one line on standard error,
//   "<expression> is NULL <message>"
// (for instance "QAVRbaContextBarManager is NULL QAVRbaContextBarMappingTypeUVCmd::Activate")
// and returns false; returns true, silently, otherwise. The caller then returns
// normally. Null texts are written as empty.
QAVHOST_API bool QAVCheckPointer(const char* expression, const void* pointer, const char* message);
// The same with the expression's own text.
#define QAV_CHECK_POINTER(pointer, message) QAVCheckPointer(#pointer, (pointer), (message))

// Internal check: when `condition` is false, writes "Check failed: <message>" on
// standard error, journals it ("check") and returns false; the caller goes on.
QAVHOST_API bool QAVCheck(bool condition, const char* message);

// Fatal error: writes "Fatal error: <message> (<file>:<line>)" on standard error
// and ends the process abnormally (SIGABRT). Never returns.
[[noreturn]] QAVHOST_API void QAVFatalError(const char* message, const char* file, int line);
#define QAV_FATAL_ERROR(message) QAVFatalError((message), __FILE__, __LINE__)

#endif
