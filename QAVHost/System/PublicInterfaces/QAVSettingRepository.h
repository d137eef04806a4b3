// The host's setting repositories: named, typed, persisted key/value stores.
//
// A repository is loaded from its file on the first GetRepository and kept for
// the process. Several processes may use the same repository at once (the
// interactive application, a batch renderer, a render node): SaveRepository
// saves this process's changes since its last save into the file as the others
// left it, under a lock, and replaces the file atomically. So no save loses
// another process's keys, the last save of a key wins, a declaration (see below)
// never overwrites a value saved elsewhere, a reader sees either the old or the
// new file, and a process killed during a save leaves the old file. After a save
// the repository holds the merged content, including what the others saved. The
// lock is "<file>.lock" beside the file (never removed). The file is
// "<settings directory>/<name>.settings"; the settings directory is the
// environment variable QAVHOST_SETTINGS_DIR, or "$XDG_CONFIG_HOME/qavhost", or
// "$HOME/.config/qavhost". Bytes of the name other than letters, digits, '-',
// '_' and '.' are written %HH in the file name.
//
// File format (UTF-8 text, lines ended by a newline):
//
//   QAVHostSettings 1
//   DomeImage<TAB>string<TAB>1<TAB>studio_pure_white.hdr
//   Width<TAB>float<TAB>1<TAB>800
//   CanvasArray<TAB>text<TAB>2<TAB>result<TAB>depth
//
// The first line is the header. Each further line is one key: the key, its type
// (short, int, float, double, string for QAVString, text for QAVUnicodeString),
// its number of values, then the values, all separated by tabs; keys are listed
// in declaration order. Keys and texts are escaped: \\ \t \n \r, and \xHH for the
// other control bytes (and for a '#' starting a key); other bytes, UTF-8
// included, are kept as they are. Integers are decimal. A float or double is
// written in the shortest decimal form that reads back to the same value ("inf",
// "-inf" for infinities) and a NaN as "nan:" and its bits in hexadecimal, so
// every value comes back bit for bit. Empty lines and lines starting with '#' are
// ignored.
//
// A file that cannot be read or does not follow this format is reported once on
// standard error (one line naming the file and what is wrong); the repository
// then reads as empty, and before the first save replaces the file, the file is
// moved aside as "<file>.corrupt" (".corrupt.2", ... when taken), which is said
// on standard error too. A bad file is never silently overwritten.
//
// Reading a key that is not stored declares it: the preset values of the output
// become the stored value (in memory, until a save). Every write that changes the
// stored content dispatches ModifiedEvent() on the repository's callback manager,
// with the repository as data, and so does a save that brings in values other
// processes saved; a declaration changes no value anyone has read and dispatches
// nothing.
#ifndef QAVSettingRepository_h
#define QAVSettingRepository_h

#include <memory>
#include <string>
#include <vector>

#include "QAVCallbackManager.h"
#include "QAVRef.h"
#include "QAVString.h"
#include "QAVSysSettingRepository.h"
#include "QAVUnicodeString.h"

enum class QAVSettingType { None, Short, Int, Float, Double, String, Text };

class QAVHOST_API QAVSettingRepository : public QAVSysSettingRepository {
  QAV_DECLARE_CLASS
 public:
  // Opens the repository of this name, or returns null when the host has none
  // (an empty name, or a name made unavailable). `flags`, `accessType` and
  // `controller` are the host's and are not used here. The host keeps the
  // repository; the caller does not release it.
  static QAVSettingRepository* GetRepository(const QAVString& name, int flags = 0,
                                             int accessType = 1,
                                             QAVBaseUnknown* controller = nullptr);
  // Where repositories are saved (see above).
  static std::string GetSettingsDirectory();
  // The name of the event dispatched after every change.
  static const char* ModifiedEvent();

  // Tests: say whether a repository of this name exists for GetRepository (all
  // names exist unless said otherwise). A repository already loaded is kept and
  // comes back when its name is made available again.
  static void SetAvailable(const QAVString& name, bool available);

  const QAVString& GetName() const { return _name; }
  // The file the repository is loaded from and saved to.
  const std::string& GetFilePath() const;

  // Typed reads of `count` values (count >= 1). When the key is stored with this
  // type, the stored values are copied (at most `count`; fewer when fewer are
  // stored) and the result is S_OK. When it is not stored, the `count` preset
  // values of `value` are stored as its declaration and the result is S_OK. A key
  // stored with another type gives E_FAIL and leaves `value` untouched.
  HRESULT ReadSetting(const char* key, short* value, int count = 1);
  HRESULT ReadSetting(const char* key, int* value, int count = 1);
  HRESULT ReadSetting(const char* key, float* value, int count = 1);
  HRESULT ReadSetting(const char* key, double* value, int count = 1);
  HRESULT ReadSetting(const char* key, QAVString* value, int count = 1);
  HRESULT ReadSetting(const char* key, QAVUnicodeString* value, int count = 1);

  // Typed writes of `count` values (count >= 0; in memory until SaveRepository).
  // The key is declared by the write when it is new. A key stored with another
  // type is not changed and the result is E_FAIL.
  HRESULT WriteSetting(const char* key, const short* value, int count = 1);
  HRESULT WriteSetting(const char* key, const int* value, int count = 1);
  HRESULT WriteSetting(const char* key, const float* value, int count = 1);
  HRESULT WriteSetting(const char* key, const double* value, int count = 1);
  HRESULT WriteSetting(const char* key, const QAVString* value, int count = 1);
  HRESULT WriteSetting(const char* key, const QAVUnicodeString* value, int count = 1);

  // Writes values given as text (one text per value) to a key that is already
  // stored, converting them to its stored type: integers in decimal within the
  // range of the type, finite floats and doubles in decimal. E_FAIL, nothing
  // changed and `error` (when given) saying why, for a key that is not stored,
  // no value, or a text that is not a value of the type.
  HRESULT WriteSettingFromText(const char* key, const std::vector<std::string>& texts,
                               std::string* error = nullptr);
  // The stored values of a key as texts (see ReadAttribute); empty when absent.
  std::vector<std::string> GetSettingTexts(const char* key) const;

  // Saves this process's changes into the file (see above). E_FAIL, with a line
  // on standard error, when the file cannot be written or its lock cannot be had
  // within ten seconds; the file is then intact and the changes stay pending.
  HRESULT SaveRepository();

  // Inspection: the stored keys in declaration order, their type and count
  // (None and 0 for a key that is not stored).
  std::vector<QAVString> GetKeys() const;
  QAVSettingType GetSettingType(const char* key) const;
  int GetSettingCount(const char* key) const;
  // Number of writes that changed the repository since it was opened.
  int GetWriteCount() const { return _writeCount; }
  // The type's name as the file writes it ("short", "int", ... "text").
  static const char* GetTypeName(QAVSettingType type);

  HRESULT ReadAttribute(const QAVString& key, QAVUnicodeString& value) const override;
  HRESULT ReadAttr(const char* key, short* value, int count = 1) const override;
  HRESULT ReadAttr(const char* key, int* value, int count = 1) const override;
  HRESULT ReadAttr(const char* key, float* value, int count = 1) const override;
  HRESULT ReadAttr(const char* key, double* value, int count = 1) const override;
  HRESULT ReadAttr(const char* key, QAVString* value, int count = 1) const override;
  HRESULT ReadAttr(const char* key, QAVUnicodeString* value, int count = 1) const override;

  QAVCallbackManager* GetCallbackManager() const { return _callbacks.get(); }

  QAVSettingRepository(const QAVSettingRepository&) = delete;
  QAVSettingRepository& operator=(const QAVSettingRepository&) = delete;
  ~QAVSettingRepository() override;

 private:
  explicit QAVSettingRepository(const QAVString& name);
  friend struct QAVSettingRepositoryAccess;

  template <class T>
  HRESULT Read(const char* key, T* value, int count);
  template <class T>
  HRESULT Write(const char* key, const T* value, int count);
  template <class T>
  HRESULT Attr(const char* key, T* value, int count) const;

  struct Impl;
  QAVString _name;
  std::unique_ptr<Impl> _impl;
  int _writeCount = 0;
  QAVRef<QAVCallbackManager> _callbacks;
};

#endif
