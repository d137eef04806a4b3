// Symbol visibility of the QAVRbaUI library. Everything is hidden unless marked
// with QAVRBAUI_API.
#ifndef QAVRbaUIExport_h
#define QAVRbaUIExport_h

#if defined(_WIN32)
#if defined(QAVRBAUI_BUILDING)
#define QAVRBAUI_API __declspec(dllexport)
#else
#define QAVRBAUI_API __declspec(dllimport)
#endif
#else
#define QAVRBAUI_API __attribute__((visibility("default")))
#endif

#endif
