// Symbol visibility of the stand-ins of the rendering application's sibling
// frameworks. Everything is hidden unless marked with QAVRBASIBLINGS_API.
#ifndef QAVRbaSiblingsExport_h
#define QAVRbaSiblingsExport_h

#if defined(_WIN32)
#if defined(QAVRBASIBLINGS_BUILDING)
#define QAVRBASIBLINGS_API __declspec(dllexport)
#else
#define QAVRBASIBLINGS_API __declspec(dllimport)
#endif
#else
#define QAVRBASIBLINGS_API __attribute__((visibility("default")))
#endif

#endif
