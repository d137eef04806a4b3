// A host module built against the installed library.
#include <cstdio>

#include "QAVRbaUIEvents.h"

int main() {
  std::printf("%s\n", QAVRbaUIEvents::AMBIENCE_CHANGED());
  return 0;
}
