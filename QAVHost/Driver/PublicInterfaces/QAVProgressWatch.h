// Watching the progress of the tasks the host's task controller runs, as its
// progress bar would show it: each report of a task (title, range, progress,
// and a last one when it ended) is handed to the listener.
#ifndef QAVProgressWatch_h
#define QAVProgressWatch_h

#include <functional>
#include <string>

#include "QAVHostDriverExport.h"

struct QAVProgressReport {
  std::string title;
  int low = 0;
  int high = 100;
  int value = 0;
  bool finished = false;
};

class QAVHOSTDRIVER_API QAVProgressWatch {
 public:
  // Null: none.
  static void SetListener(std::function<void(const QAVProgressReport&)> listener);

  QAVProgressWatch() = delete;
};

#endif
