// Typed access to stored values, for the library and the other modules of the
// application:
// - user preferences of a named preference repository of the host, read with a
//   default when the value is absent and written with an immediate commit;
// - values of the rendering configuration (a section and a key), converted from
//   their text to a bool, int, double or string.
// None of these reports an error: what cannot be read gives the default (or
// false / 0 / 0.0 / empty), and a failed write is simply not committed.
#ifndef QAVRbaPreferenceAccess_h
#define QAVRbaPreferenceAccess_h

#include "QAVRbaUIExport.h"
#include "QAVString.h"
#include "QAVSysPreferenceRepository.h"

// The host's preference repository of this name, or null; the caller does not
// own it.
QAVRBAUI_API QAVSysPreferenceRepository* GetPreferenceRepository(QAVString& name);

// Readers: the stored value when the key is present with the reader's type tag
// ("QAVString", "int", "double", "short") and reads back, else the default. A
// stored empty string counts as absent. A bool is stored as a short: not 0 is
// true.
QAVRBAUI_API QAVString GetPreference(QAVSysPreferenceRepository& repository, const char* key,
                                     const QAVString& defaultValue);
QAVRBAUI_API int GetPreference(QAVSysPreferenceRepository& repository, const char* key,
                               const int& defaultValue);
QAVRBAUI_API double GetPreference(QAVSysPreferenceRepository& repository, const char* key,
                                  const double& defaultValue);
QAVRBAUI_API bool GetPreference(QAVSysPreferenceRepository& repository, const char* key,
                                const bool& defaultValue);
// A literal text default would otherwise pick the bool reader (a pointer
// converts to bool before it converts to a string): this one reads the string.
inline QAVString GetPreference(QAVSysPreferenceRepository& repository, const char* key,
                               const char* defaultValue) {
  return GetPreference(repository, key, QAVString(defaultValue));
}

// Writers: store one value and, when the write succeeds, commit the repository at
// once. There is no bool writer: a bool is written as a short 0 or 1.
QAVRBAUI_API void SetPreference(QAVSysPreferenceRepository& repository, const char* key,
                                const short& value);
QAVRBAUI_API void SetPreference(QAVSysPreferenceRepository& repository, const char* key,
                                const int& value);
QAVRBAUI_API void SetPreference(QAVSysPreferenceRepository& repository, const char* key,
                                const double& value);
QAVRBAUI_API void SetPreference(QAVSysPreferenceRepository& repository, const char* key,
                                const QAVString& value);

// Rendering configuration values (QAVRbaConfiguration::GetHierarchicalValue).
// Bool: "yes", "true" and "1" in any case are true, any other text (or none)
// false. Int: the text read with "%d" (12 for "12abc"), 0 when it does not
// convert. Double: the text read with "%le", 0.0 when empty or when it does not
// convert. String: the text as it is, empty when there is none.
QAVRBAUI_API bool GetBoolValue(const QAVString& section, const QAVString& key);
QAVRBAUI_API int GetIntValue(const QAVString& section, const QAVString& key);
QAVRBAUI_API double GetDoubleValue(const QAVString& section, const QAVString& key);
QAVRBAUI_API QAVString GetStringValue(const QAVString& section, const QAVString& key);

#endif
