// Symbol visibility of the substitute host library. Everything is hidden unless
// marked with QAVHOST_API.
#ifndef QAVHostExport_h
#define QAVHostExport_h

#if defined(_WIN32)
#if defined(QAVHOST_BUILDING)
#define QAVHOST_API __declspec(dllexport)
#else
#define QAVHOST_API __declspec(dllimport)
#endif
#else
#define QAVHOST_API __attribute__((visibility("default")))
#endif

#endif
