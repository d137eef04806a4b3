// The host's session recorder: while it captures a session, modules record
// values under keys (for instance the behaviour level a service used); while it
// replays one, they read back what was recorded, so that the replay behaves as
// the captured session did.
//
// The host may run without a recorder (GetRecorder gives null); whoever plays
// the host creates it and switches it between off, capturing and replaying
// (the substitute's driver: QAVHostDriver).
#ifndef QAVSessionRecorder_h
#define QAVSessionRecorder_h

#include <map>
#include <string>

#include "QAVHostExport.h"
#include "QAVTypes.h"

class QAVHOST_API QAVSessionRecorder {
 public:
  enum class Mode { Off, Capturing, Replaying };

  // The recorder of the session, or null when the host has none.
  static QAVSessionRecorder* GetRecorder();

  Mode GetMode() const { return _mode; }
  bool IsCapturing() const { return _mode == Mode::Capturing; }
  bool IsReplaying() const { return _mode == Mode::Replaying; }

  // While capturing: records `value` under `key` (a later record of the key
  // replaces it). E_FAIL otherwise, or for a null or empty key.
  HRESULT RecordValue(const char* key, int value);
  // While replaying: the value recorded under `key`. E_FAIL when not replaying
  // or when the session holds no such key (`value` is then untouched).
  HRESULT GetRecordedValue(const char* key, int& value) const;

  QAVSessionRecorder(const QAVSessionRecorder&) = delete;
  QAVSessionRecorder& operator=(const QAVSessionRecorder&) = delete;
  ~QAVSessionRecorder() = default;

 private:
  friend class QAVHostDriver;
  QAVSessionRecorder() = default;
  static QAVSessionRecorder* Create();  // the recorder, created when missing

  Mode _mode = Mode::Off;
  std::map<std::string, int> _values;  // the session captured or replayed
};

#endif
