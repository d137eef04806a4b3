#include "QAVRbaPreferenceAccess.h"

#include "QAVRbaConfiguration.h"

QAVSysPreferenceRepository* GetPreferenceRepository(QAVString& name) {
  return QAVSysPreferenceRepository::GetPreferenceRepository(name);
}

QAVString GetPreference(QAVSysPreferenceRepository& repository, const char* key,
                        const QAVString& defaultValue) {
  QAVString value;
  if (repository.IsPresent(key, "QAVString") && repository.ReadPreference(key, &value) == 1 &&
      !value.IsEmpty())
    return value;
  return defaultValue;
}

int GetPreference(QAVSysPreferenceRepository& repository, const char* key,
                  const int& defaultValue) {
  int value = 0;
  if (repository.IsPresent(key, "int") && repository.ReadPreference(key, &value, 1) == 1)
    return value;
  return defaultValue;
}

double GetPreference(QAVSysPreferenceRepository& repository, const char* key,
                     const double& defaultValue) {
  double value = 0.0;
  if (repository.IsPresent(key, "double") && repository.ReadPreference(key, &value, 1) == 1)
    return value;
  return defaultValue;
}

bool GetPreference(QAVSysPreferenceRepository& repository, const char* key,
                   const bool& defaultValue) {
  short value = 0;
  if (repository.IsPresent(key, "short") && repository.ReadPreference(key, &value, 1) == 1)
    return value != 0;
  return defaultValue;
}

void SetPreference(QAVSysPreferenceRepository& repository, const char* key, const short& value) {
  if (repository.WritePreference(key, &value, 1) == 1) repository.Commit();
}

void SetPreference(QAVSysPreferenceRepository& repository, const char* key, const int& value) {
  if (repository.WritePreference(key, &value, 1) == 1) repository.Commit();
}

void SetPreference(QAVSysPreferenceRepository& repository, const char* key, const double& value) {
  if (repository.WritePreference(key, &value, 1) == 1) repository.Commit();
}

void SetPreference(QAVSysPreferenceRepository& repository, const char* key,
                   const QAVString& value) {
  if (repository.WritePreference(key, &value) == 1) repository.Commit();
}

bool GetBoolValue(const QAVString& section, const QAVString& key) {
  QAVString text;
  if (FAILED(QAVRbaConfiguration::GetHierarchicalValue(section, key, text)) || text.IsEmpty())
    return false;
  text.ToLower();
  return text == "yes" || text == "true" || text == "1";
}

int GetIntValue(const QAVString& section, const QAVString& key) {
  QAVString text;
  if (FAILED(QAVRbaConfiguration::GetHierarchicalValue(section, key, text))) return 0;
  int value = 0;
  return text.ConvertToNum(&value, "%d") == 1 ? value : 0;
}

double GetDoubleValue(const QAVString& section, const QAVString& key) {
  QAVString text;
  if (FAILED(QAVRbaConfiguration::GetHierarchicalValue(section, key, text)) || text.IsEmpty())
    return 0.0;
  double value = 0.0;
  return text.ConvertToNum(&value, "%le") == 1 ? value : 0.0;
}

QAVString GetStringValue(const QAVString& section, const QAVString& key) {
  QAVString text;
  if (FAILED(QAVRbaConfiguration::GetHierarchicalValue(section, key, text))) return QAVString();
  return text;
}
