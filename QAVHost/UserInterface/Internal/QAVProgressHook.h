// Where the task controller's progress reports go besides the journal: the
// driver's progress display. Not part of the host's API.
#ifndef QAVProgressHook_h
#define QAVProgressHook_h

#include <functional>
#include <string>

#include "QAVHostExport.h"

namespace qavprogress {

// One report of a running task: its title so far, its range and its progress;
// `finished` on the last report, once the task returned.
struct Report {
  std::string title;
  int low = 0;
  int high = 100;
  int value = 0;
  bool finished = false;
};

// Null: none.
QAVHOST_API void SetListener(std::function<void(const Report&)> listener);

}  // namespace qavprogress

#endif
