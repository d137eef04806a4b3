#include "QAVSysPreferenceRepository.h"

#include <cstring>

#include "QAVProcessState.h"
#include "QAVRef.h"
#include "QAVSharedKeyedStore.h"

QAV_IMPLEMENT_CLASS(QAVSysPreferenceRepository, QAVBaseUnknown, "System");

namespace {

constexpr const char* kHeader = "QAVHostPreferences 1";

// Never destroyed, like the setting repositories.
qavstore::RepositoryRegistry<QAVSysPreferenceRepository>& TheRegistry() {
  static auto* const registry = new qavstore::RepositoryRegistry<QAVSysPreferenceRepository>;
  return *registry;
}

void ForgetRepositories() { TheRegistry().Forget(); }
QAV_REGISTER_RESET(QAVSysPreferenceRepository, ForgetRepositories);

// The stored type of a preference type tag; None for an unknown tag.
QAVSettingType TypeOfTag(const char* tag) {
  if (!tag) return QAVSettingType::None;
  if (std::strcmp(tag, "QAVString") == 0) return QAVSettingType::String;
  if (std::strcmp(tag, "int") == 0) return QAVSettingType::Int;
  if (std::strcmp(tag, "double") == 0) return QAVSettingType::Double;
  if (std::strcmp(tag, "short") == 0) return QAVSettingType::Short;
  return QAVSettingType::None;
}

bool ValidKey(const char* key) { return key && *key; }

// Only the four preference types can be stored.
std::string OnlyPreferenceTypes(const qavstore::KeyedStore& store) {
  for (const auto& [key, value] : store.Entries())
    if (value.type == QAVSettingType::Float || value.type == QAVSettingType::Text)
      return "the key \"" + key + "\" has the type " + qavstore::TypeName(value.type) +
             ", which preferences do not have";
  return {};
}

}  // namespace

struct QAVSysPreferenceRepository::Impl {
  explicit Impl(const std::string& path)
      : store(path, "preference file", kHeader, &OnlyPreferenceTypes) {}
  qavstore::SharedKeyedStore store;
};

struct QAVSysPreferenceRepositoryAccess {
  static QAVSysPreferenceRepository* Create(const QAVString& name) {
    return new QAVSysPreferenceRepository(name);
  }
};

QAVSysPreferenceRepository::QAVSysPreferenceRepository(const QAVString& name)
    : _name(name),
      _impl(std::make_unique<Impl>(qavstore::SettingsDirectory() + "/" +
                                   qavstore::FileNameOf(name.str()) + ".preferences")) {}

QAVSysPreferenceRepository::~QAVSysPreferenceRepository() = default;

QAVSysPreferenceRepository* QAVSysPreferenceRepository::GetPreferenceRepository(
    const QAVString& name) {
  return TheRegistry().Get(name, &QAVSysPreferenceRepositoryAccess::Create);
}

void QAVSysPreferenceRepository::SetAvailable(const QAVString& name, bool available) {
  TheRegistry().SetAvailable(name, available);
}

const std::string& QAVSysPreferenceRepository::GetFilePath() const { return _impl->store.Path(); }

bool QAVSysPreferenceRepository::IsPresent(const char* key, const char* typeTag) const {
  const QAVSettingType type = TypeOfTag(typeTag);
  const qavstore::StoredValue* stored = ValidKey(key) ? _impl->store.Find(key) : nullptr;
  return stored && type != QAVSettingType::None && stored->type == type;
}

template <class T>
int QAVSysPreferenceRepository::Read(const char* key, T* value, int count) const {
  if (!ValidKey(key) || !value || count < 1) return 0;
  const qavstore::StoredValue* stored = _impl->store.Find(key);
  if (!stored || stored->type != qavstore::TypeOf<T>()) return 0;
  return qavstore::CopyValues(*stored, value, count);
}

template <class T>
int QAVSysPreferenceRepository::Write(const char* key, const T* value, int count) {
  if (_failWrites || !ValidKey(key) || !value || count < 1) return 0;
  const qavstore::StoredValue* stored = _impl->store.Find(key);
  if (stored && stored->type != qavstore::TypeOf<T>()) return 0;
  _impl->store.Put(key, qavstore::MakeValue(value, count));
  return 1;
}

// clang-format off
int QAVSysPreferenceRepository::ReadPreference(const char* key, short* value, int count) const { return Read(key, value, count); }
int QAVSysPreferenceRepository::ReadPreference(const char* key, int* value, int count) const { return Read(key, value, count); }
int QAVSysPreferenceRepository::ReadPreference(const char* key, double* value, int count) const { return Read(key, value, count); }
int QAVSysPreferenceRepository::ReadPreference(const char* key, QAVString* value) const { return Read(key, value, 1); }

int QAVSysPreferenceRepository::WritePreference(const char* key, const short* value, int count) { return Write(key, value, count); }
int QAVSysPreferenceRepository::WritePreference(const char* key, const int* value, int count) { return Write(key, value, count); }
int QAVSysPreferenceRepository::WritePreference(const char* key, const double* value, int count) { return Write(key, value, count); }
int QAVSysPreferenceRepository::WritePreference(const char* key, const QAVString* value) { return Write(key, value, 1); }
// clang-format on

int QAVSysPreferenceRepository::RemovePreference(const char* key) {
  return ValidKey(key) && _impl->store.Remove(key) ? 1 : 0;
}

HRESULT QAVSysPreferenceRepository::Commit() {
  ++_commitCount;
  return _impl->store.Save() ? S_OK : E_FAIL;
}
