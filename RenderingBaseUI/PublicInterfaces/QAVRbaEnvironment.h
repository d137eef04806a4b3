// The environment variables the library reads once, when it is loaded, before
// any other code of it runs. Values are kept as they were read; nothing is
// parsed or validated here.
#ifndef QAVRbaEnvironment_h
#define QAVRbaEnvironment_h

#include "QAVRbaUIExport.h"

class QAVRBAUI_API QAVRbaEnvironment {
 public:
  // The value read at load, or null when the variable was unset or is not one of
  // the variables the library reads.
  static const char* Get(const char* name);

  // The variables the library uses itself.
  static const char* GraphicPath();      // "QAVGraphicPath"
  static const char* StartupPath();      // "QAVStartupPath"
  static const char* TempPath();         // "QAVTemp"
  static const char* ForceNewHqHDRIs();  // "AMBCR_Force_NewHqHDRIs"
  static const char* TraceFiles();       // "LRE_TRACE_FILES"
  static const char* TraceSeverity();    // "LRE_TRACE_SEVERITY"

  // Number and names of the variables read at load, in reading order.
  static int GetVariableCount();
  static const char* GetVariableName(int index);
};

#endif
