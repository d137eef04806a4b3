// The system view of a setting repository: its attributes read without
// declaring anything. QAVSettingRepository adds the declaring typed reads and the
// writes; both reach the same stored values.
#ifndef QAVSysSettingRepository_h
#define QAVSysSettingRepository_h

#include "QAVBaseUnknown.h"
#include "QAVString.h"
#include "QAVUnicodeString.h"

class QAVHOST_API QAVSysSettingRepository : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // The repository of this name, or null when the host has none. The host keeps
  // the repository; the caller does not release it. Both names give the same
  // object as QAVSettingRepository::GetRepository.
  static QAVSysSettingRepository* GetSettingRepository(const QAVString& name);
  static QAVSysSettingRepository* GetRepository(const QAVString& name) {
    return GetSettingRepository(name);
  }

  // The stored value of an attribute as text (numbers in their shortest exact
  // form, several values joined by ";"). E_FAIL, and `value` untouched, when the
  // key is not stored.
  virtual HRESULT ReadAttribute(const QAVString& key, QAVUnicodeString& value) const = 0;

  // Typed reads of at most `count` stored values. Unlike
  // QAVSettingRepository::ReadSetting they never declare: E_FAIL, and `value`
  // untouched, when the key is not stored or is stored with another type.
  virtual HRESULT ReadAttr(const char* key, short* value, int count = 1) const = 0;
  virtual HRESULT ReadAttr(const char* key, int* value, int count = 1) const = 0;
  virtual HRESULT ReadAttr(const char* key, float* value, int count = 1) const = 0;
  virtual HRESULT ReadAttr(const char* key, double* value, int count = 1) const = 0;
  virtual HRESULT ReadAttr(const char* key, QAVString* value, int count = 1) const = 0;
  virtual HRESULT ReadAttr(const char* key, QAVUnicodeString* value, int count = 1) const = 0;

 protected:
  QAVSysSettingRepository() = default;
};

#endif
