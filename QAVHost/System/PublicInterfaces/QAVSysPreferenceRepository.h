// The host's preference repositories: named stores of user preferences, each key
// with a type tag ("QAVString", "int", "double" or "short") and one or more
// values. Writes and removals stay in memory until Commit, which saves them to
// "<settings directory>/<name>.preferences" (the directory of
// QAVSettingRepository::GetSettingsDirectory) the way setting repositories are
// saved: merged under a lock into what other processes saved, atomically.
//
// The file has the format of the setting files (see QAVSettingRepository.h) with
// the header line "QAVHostPreferences 1"; the tags are written string, int,
// double and short. Bad files are handled as setting files are: reported once on
// standard error, read as empty, moved aside as "<file>.corrupt" before the first
// commit replaces them.
#ifndef QAVSysPreferenceRepository_h
#define QAVSysPreferenceRepository_h

#include <memory>
#include <string>

#include "QAVBaseUnknown.h"
#include "QAVString.h"

class QAVHOST_API QAVSysPreferenceRepository : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // The repository of this name, loaded on first use and kept by the host (the
  // caller does not release it); null for an empty name or a name made
  // unavailable.
  static QAVSysPreferenceRepository* GetPreferenceRepository(const QAVString& name);
  // Tests: say whether a repository of this name exists (all do unless said
  // otherwise).
  static void SetAvailable(const QAVString& name, bool available);

  // True when the key is stored with this type tag ("QAVString", "int",
  // "double", "short"); false for any other tag.
  bool IsPresent(const char* key, const char* typeTag) const;

  // Reads at most `count` values of a key stored with the matching tag; returns
  // the number read (0 when the key is absent or has another tag; `value` is then
  // untouched).
  int ReadPreference(const char* key, short* value, int count) const;
  int ReadPreference(const char* key, int* value, int count) const;
  int ReadPreference(const char* key, double* value, int count) const;
  // One string; 1 when read, 0 otherwise.
  int ReadPreference(const char* key, QAVString* value) const;

  // Stores `count` values (count >= 1) under the key, in memory; returns 1 on
  // success, 0 on failure: no key or value, a key stored with another tag, or a
  // simulated failure. A failed write changes nothing.
  int WritePreference(const char* key, const short* value, int count);
  int WritePreference(const char* key, const int* value, int count);
  int WritePreference(const char* key, const double* value, int count);
  int WritePreference(const char* key, const QAVString* value);
  // Removes a key whatever its tag; 1 when it was stored.
  int RemovePreference(const char* key);

  // Saves the repository to its file, atomically. E_FAIL (with a line on
  // standard error) when it cannot be written; the old file is then intact.
  HRESULT Commit();

  const QAVString& GetName() const { return _name; }
  const std::string& GetFilePath() const;

  // The number of Commit calls since the repository was loaded.
  int GetCommitCount() const { return _commitCount; }

  QAVSysPreferenceRepository(const QAVSysPreferenceRepository&) = delete;
  QAVSysPreferenceRepository& operator=(const QAVSysPreferenceRepository&) = delete;
  ~QAVSysPreferenceRepository() override;

 private:
  explicit QAVSysPreferenceRepository(const QAVString& name);
  friend struct QAVSysPreferenceRepositoryAccess;
  friend class QAVHostDriver;
  // While set, every WritePreference fails (returns 0, changes nothing).
  void SimulateWriteFailure(bool fail) { _failWrites = fail; }

  template <class T>
  int Read(const char* key, T* value, int count) const;
  template <class T>
  int Write(const char* key, const T* value, int count);

  struct Impl;
  QAVString _name;
  std::unique_ptr<Impl> _impl;
  bool _failWrites = false;
  int _commitCount = 0;
};

#endif
