#include "QAVProgressWatch.h"

#include <utility>

#include "QAVProgressHook.h"

void QAVProgressWatch::SetListener(std::function<void(const QAVProgressReport&)> listener) {
  if (!listener) {
    qavprogress::SetListener(nullptr);
    return;
  }
  qavprogress::SetListener([listener = std::move(listener)](const qavprogress::Report& r) {
    listener({r.title, r.low, r.high, r.value, r.finished});
  });
}
