// The live log: an in-memory list of leveled messages that the live-rendering
// modules fill (from their render threads) and that the heads-up display and
// the information dialogs read back by index (on the interactive thread).
//
// Smaller levels are more important. A message whose level is above the current
// level is refused, not kept for later. Entries keep their order of arrival and
// are never removed; the log lives as long as the library is loaded.
#ifndef QAVRbaLiveLogSingleton_h
#define QAVRbaLiveLogSingleton_h

#include <atomic>
#include <cstddef>
#include <string>
#include <vector>

#include "QAVRbaUIExport.h"
#include "QAVTypes.h"

class QAVMutex;

class QAVRBAUI_API QAVRbaLiveLogSingleton {
 public:
  // The instance, created on first call (without a lock: the first call is made
  // on the interactive thread before any render thread starts).
  static QAVRbaLiveLogSingleton* Get();

  // Stores (level, text) when `level` is not above the current level and the
  // lock exists: S_OK. Otherwise E_FAIL and nothing is stored.
  HRESULT AddMessage(int level, std::string text);
  // Copies the entry at `index` (from 0) into the outputs: S_OK. E_FAIL, outputs
  // untouched, when the index is past the last entry or the lock does not exist.
  HRESULT GetMessage(std::size_t index, int& level, std::string& text);
  // The highest level accepted (initially 3); always S_OK. A new level applies
  // to later messages only.
  HRESULT GetLevel(int& level);
  HRESULT SetLevel(int level);

 protected:
  QAVRbaLiveLogSingleton();
  virtual ~QAVRbaLiveLogSingleton();
  // A copy has the entries and level of the original and a lock of its own.
  QAVRbaLiveLogSingleton(const QAVRbaLiveLogSingleton& other);
  QAVRbaLiveLogSingleton& operator=(const QAVRbaLiveLogSingleton& other);

 private:
  friend struct QAVRbaLiveLogSingletonAccess;

  struct Entry {
    int level;
    std::string text;
  };

  std::vector<Entry> _messages;
  // Read and written without the lock, so atomic.
  std::atomic<int> _level{3};
  // Null when the host could not create it; every access to the entries is
  // then refused.
  QAVMutex* _lock = nullptr;

  static QAVRbaLiveLogSingleton* _singleton;
};

#endif
