// The journal of what the host showed and dispatched (events sent through
// callback managers, pointer checks reported, commands destroyed, dialogs shown),
// kept only while someone records it: the substitute's driver (QAVHostDriver)
// turns recording on and reads the entries back. When nothing records, Record
// costs one test of a flag.
//
// Not part of the host's API: the host's areas write the journal, the driver
// reads it.
#ifndef QAVHostJournal_h
#define QAVHostJournal_h

#include <string>
#include <vector>

#include "QAVHostExport.h"

struct QAVJournalEntry {
  std::string kind;              // "dispatch", "pointer-check", "command-destroyed", ...
  std::string name;              // the event, the command, the dialog...
  std::string detail;            // the notification's class, the message...
  const void* source = nullptr;  // the object that sent or showed it
  void* data = nullptr;          // the dispatch's data
};

namespace qavjournal {

QAVHOST_API bool Recording();
// Appends an entry when recording; safe from any thread.
QAVHOST_API void Record(QAVJournalEntry entry);
// Starts (true) or stops recording; starting empties the journal.
QAVHOST_API void SetRecording(bool on);
// The entries recorded since recording started or the journal was cleared.
QAVHOST_API std::vector<QAVJournalEntry> Entries();
QAVHOST_API void Clear();

}  // namespace qavjournal

#endif
