// The system view of a setting repository: its attributes read as text.
// QAVSettingRepository adds the typed reads and writes; both reach the same
// stored values.
#ifndef QAVSysSettingRepository_h
#define QAVSysSettingRepository_h

#include "QAVBaseUnknown.h"
#include "QAVString.h"
#include "QAVUnicodeString.h"

class QAVHOST_API QAVSysSettingRepository : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // The repository of this name, or null when the host has none. The host keeps
  // the repository; the caller does not release it.
  static QAVSysSettingRepository* GetSettingRepository(const QAVString& name);

  // The stored value of an attribute as text (numbers in their shortest exact
  // form, a list as its elements joined by ";"). E_FAIL, and `value` untouched,
  // when the key is not stored.
  virtual HRESULT ReadAttribute(const QAVString& key, QAVUnicodeString& value) const = 0;

 protected:
  QAVSysSettingRepository() = default;
};

#endif
