// Symbol visibility of the substitute host's driver library.
#ifndef QAVHostDriverExport_h
#define QAVHostDriverExport_h

#if defined(_WIN32)
#if defined(QAVHOSTDRIVER_BUILDING)
#define QAVHOSTDRIVER_API __declspec(dllexport)
#else
#define QAVHOSTDRIVER_API __declspec(dllimport)
#endif
#else
#define QAVHOSTDRIVER_API __attribute__((visibility("default")))
#endif

#endif
