#include "QAVHostJournal.h"

#include <atomic>
#include <mutex>
#include <utility>

namespace {

struct Journal {
  std::atomic<bool> recording{false};
  std::mutex lock;
  std::vector<QAVJournalEntry> entries;
};

Journal& TheJournal() {
  static Journal* const journal = new Journal;
  return *journal;
}

}  // namespace

namespace qavjournal {

bool Recording() { return TheJournal().recording.load(std::memory_order_relaxed); }

void Record(QAVJournalEntry entry) {
  Journal& journal = TheJournal();
  if (!journal.recording.load(std::memory_order_relaxed)) return;
  std::lock_guard guard(journal.lock);
  journal.entries.push_back(std::move(entry));
}

void SetRecording(bool on) {
  Journal& journal = TheJournal();
  std::lock_guard guard(journal.lock);
  if (on) journal.entries.clear();
  journal.recording = on;
}

std::vector<QAVJournalEntry> Entries() {
  Journal& journal = TheJournal();
  std::lock_guard guard(journal.lock);
  return journal.entries;
}

void Clear() {
  Journal& journal = TheJournal();
  std::lock_guard guard(journal.lock);
  journal.entries.clear();
}

}  // namespace qavjournal
