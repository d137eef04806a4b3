#include "QAVTaskController.h"

#include <mutex>
#include <string>
#include <utility>

#include "QAVHostJournal.h"
#include "QAVProgressHook.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVIProgressTaskUI, QAVBaseUnknown, "UserInterface");
QAV_IMPLEMENT_CLASS(QAVIProgressTask, QAVBaseUnknown, "UserInterface");

QAVIProgressTaskUI::~QAVIProgressTaskUI() = default;
QAVIProgressTask::~QAVIProgressTask() = default;

namespace {

struct Listener {
  std::mutex mutex;
  std::function<void(const qavprogress::Report&)> function;

  static Listener& Get() {
    static auto* const listener = new Listener;
    return *listener;
  }
  void Tell(const qavprogress::Report& report) {
    std::function<void(const qavprogress::Report&)> copy;
    {
      const std::lock_guard lock(mutex);
      copy = function;
    }
    if (copy) copy(report);
  }
};

// The progress bar of one run.
class QAVProgressBar : public QAVIProgressTaskUI {
 public:
  void SetRange(int low, int high) override {
    _report.low = low;
    _report.high = high;
    Journal("range " + std::to_string(low) + " " + std::to_string(high));
  }
  void SetTitle(const QAVUnicodeString& title) override {
    _report.title = title.ToString().str();
    Journal("title");
  }
  void SetProgress(int value) override {
    _report.value = value;
    Journal("progress " + std::to_string(value));
  }
  void Finish() {
    _report.finished = true;
    Journal("finished");
  }

 private:
  void Journal(std::string detail) {
    if (qavjournal::Recording())
      qavjournal::Record({"progress", _report.title, std::move(detail), this, nullptr});
    Listener::Get().Tell(_report);
  }

  qavprogress::Report _report;
};

}  // namespace

void qavprogress::SetListener(std::function<void(const Report&)> listener) {
  Listener& l = Listener::Get();
  const std::lock_guard lock(l.mutex);
  l.function = std::move(listener);
}

HRESULT QAVTaskController::Schedule(QAVIProgressTask* task, int modal, void* data, int showProgress,
                                    int background, double delay, int interruptMode) {
  if (!task) return E_FAIL;
  if (qavjournal::Recording())
    qavjournal::Record({"progress", "schedule",
                        std::to_string(modal) + " " + std::to_string(showProgress) + " " +
                            std::to_string(background) + " " + std::to_string(delay) + " " +
                            std::to_string(interruptMode),
                        task, data});
  const QAVRef<QAVIProgressTask> alive(task);
  auto bar = QAVMakeRef<QAVProgressBar>();
  const HRESULT result = task->PerformTask(bar.get(), data);
  bar->Finish();
  return result;
}
