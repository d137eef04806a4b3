// The host's setting repositories: named, typed, persisted key/value stores.
//
// A repository lives in memory once opened and is saved to
// "<settings directory>/<name>.settings" by SaveRepository, atomically (the file
// holds either the old or the new content, whatever happens during the save).
// The settings directory is the environment variable QAVHOST_SETTINGS_DIR, or
// "$XDG_CONFIG_HOME/qavhost", or "$HOME/.config/qavhost". A corrupt or unreadable
// file is reported once on standard error, the repository then reads as empty,
// and the file is kept aside (renamed "<file>.corrupt") before a save replaces it.
//
// Reading a key that is not stored declares it: the preset value of the output
// becomes the stored value (in memory, until a save). Every change dispatches
// ModifiedEvent() on the repository's callback manager.
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
  // Opens the repository of this name, or returns null when the host has none.
  // `flags`, `accessType` and `controller` are the host's and are not used here.
  // The host keeps the repository; the caller does not release it.
  static QAVSettingRepository* GetRepository(const QAVString& name, int flags = 0,
                                             int accessType = 1,
                                             QAVBaseUnknown* controller = nullptr);
  // Where repositories are saved (see above).
  static std::string GetSettingsDirectory();
  // The name of the event dispatched after every change.
  static const char* ModifiedEvent();

  // Tests: say whether a repository of this name exists for GetRepository (all
  // names exist unless said otherwise).
  static void SetAvailable(const QAVString& name, bool available);

  const QAVString& GetName() const { return _name; }

  // Typed reads of `count` values. When the key is stored with this type, the
  // stored values are copied (at most `count`) and the result is S_OK. When it is
  // not stored, the `count` preset values of `value` are stored as its
  // declaration and the result is S_OK. A key stored with another type gives
  // E_FAIL and leaves `value` untouched.
  HRESULT ReadSetting(const char* key, short* value, int count = 1);
  HRESULT ReadSetting(const char* key, int* value, int count = 1);
  HRESULT ReadSetting(const char* key, float* value, int count = 1);
  HRESULT ReadSetting(const char* key, double* value, int count = 1);
  HRESULT ReadSetting(const char* key, QAVString* value, int count = 1);
  HRESULT ReadSetting(const char* key, QAVUnicodeString* value, int count = 1);

  // Typed writes of `count` values (in memory until SaveRepository). A key stored
  // with another type is not changed and the result is E_FAIL.
  HRESULT WriteSetting(const char* key, const short* value, int count = 1);
  HRESULT WriteSetting(const char* key, const int* value, int count = 1);
  HRESULT WriteSetting(const char* key, const float* value, int count = 1);
  HRESULT WriteSetting(const char* key, const double* value, int count = 1);
  HRESULT WriteSetting(const char* key, const QAVString* value, int count = 1);
  HRESULT WriteSetting(const char* key, const QAVUnicodeString* value, int count = 1);

  // Writes the repository to its file, atomically. E_FAIL, with a line on
  // standard error, when the file cannot be written; the old file is then intact.
  HRESULT SaveRepository();

  // Inspection: the stored keys in declaration order, their type and count.
  std::vector<QAVString> GetKeys() const;
  QAVSettingType GetSettingType(const char* key) const;
  int GetSettingCount(const char* key) const;
  // Number of WriteSetting calls that changed the repository since it was opened.
  int GetWriteCount() const { return _writeCount; }

  HRESULT ReadAttribute(const QAVString& key, QAVUnicodeString& value) const override;
  QAVCallbackManager* GetCallbackManager() const { return _callbacks.get(); }

  QAVSettingRepository(const QAVSettingRepository&) = delete;
  QAVSettingRepository& operator=(const QAVSettingRepository&) = delete;
  ~QAVSettingRepository() override;

 private:
  explicit QAVSettingRepository(const QAVString& name);
  friend struct QAVSettingRepositoryAccess;

  struct Impl;
  QAVString _name;
  std::unique_ptr<Impl> _impl;
  int _writeCount = 0;
  QAVRef<QAVCallbackManager> _callbacks;
};

#endif
