#include "QAVSettingRepository.h"

#include "QAVProcessState.h"
#include "QAVSharedKeyedStore.h"

QAV_IMPLEMENT_CLASS(QAVSettingRepository, QAVSysSettingRepository, "System");

namespace {

constexpr const char* kHeader = "QAVHostSettings 1";

// Never destroyed: repositories handed out stay valid until the process ends,
// whatever the order in which other static objects go.
qavstore::RepositoryRegistry<QAVSettingRepository>& TheRegistry() {
  static auto* const registry = new qavstore::RepositoryRegistry<QAVSettingRepository>;
  return *registry;
}

void ForgetRepositories() { TheRegistry().Forget(); }
QAV_REGISTER_RESET(QAVSettingRepository, ForgetRepositories);

bool ValidKey(const char* key) { return key && *key; }

}  // namespace

struct QAVSettingRepository::Impl {
  explicit Impl(const std::string& path) : store(path, "settings file", kHeader) {}
  qavstore::SharedKeyedStore store;
};

struct QAVSettingRepositoryAccess {
  static QAVSettingRepository* Create(const QAVString& name) {
    return new QAVSettingRepository(name);
  }
};

QAVSettingRepository::QAVSettingRepository(const QAVString& name)
    : _name(name),
      _impl(std::make_unique<Impl>(GetSettingsDirectory() + "/" + qavstore::FileNameOf(name.str()) +
                                   ".settings")),
      _callbacks(QAVMakeRef<QAVCallbackManager>()) {}

QAVSettingRepository::~QAVSettingRepository() = default;

QAVSettingRepository* QAVSettingRepository::GetRepository(const QAVString& name, int, int,
                                                          QAVBaseUnknown*) {
  return TheRegistry().Get(name, &QAVSettingRepositoryAccess::Create);
}

std::string QAVSettingRepository::GetSettingsDirectory() { return qavstore::SettingsDirectory(); }

const char* QAVSettingRepository::ModifiedEvent() { return "QAVSettingRepositoryModified"; }

void QAVSettingRepository::SetAvailable(const QAVString& name, bool available) {
  TheRegistry().SetAvailable(name, available);
}

const std::string& QAVSettingRepository::GetFilePath() const { return _impl->store.Path(); }

const char* QAVSettingRepository::GetTypeName(QAVSettingType type) {
  return qavstore::TypeName(type);
}

template <class T>
HRESULT QAVSettingRepository::Read(const char* key, T* value, int count) {
  if (!ValidKey(key) || !value || count < 1) return E_FAIL;
  if (const qavstore::StoredValue* stored = _impl->store.Find(key)) {
    if (stored->type != qavstore::TypeOf<T>()) return E_FAIL;
    qavstore::CopyValues(*stored, value, count);
    return S_OK;
  }
  _impl->store.Declare(key, qavstore::MakeValue(value, count));
  return S_OK;
}

template <class T>
HRESULT QAVSettingRepository::Write(const char* key, const T* value, int count) {
  if (!ValidKey(key) || count < 0 || (count > 0 && !value)) return E_FAIL;
  const qavstore::StoredValue* stored = _impl->store.Find(key);
  if (stored && stored->type != qavstore::TypeOf<T>()) return E_FAIL;
  if (_impl->store.Put(key, qavstore::MakeValue(value, count))) {
    ++_writeCount;
    _callbacks->DispatchCallbacks(ModifiedEvent(), nullptr, this);
  }
  return S_OK;
}

template <class T>
HRESULT QAVSettingRepository::Attr(const char* key, T* value, int count) const {
  if (!ValidKey(key) || !value || count < 1) return E_FAIL;
  const qavstore::StoredValue* stored = _impl->store.Find(key);
  if (!stored || stored->type != qavstore::TypeOf<T>()) return E_FAIL;
  qavstore::CopyValues(*stored, value, count);
  return S_OK;
}

// clang-format off
HRESULT QAVSettingRepository::ReadSetting(const char* key, short* value, int count) { return Read(key, value, count); }
HRESULT QAVSettingRepository::ReadSetting(const char* key, int* value, int count) { return Read(key, value, count); }
HRESULT QAVSettingRepository::ReadSetting(const char* key, float* value, int count) { return Read(key, value, count); }
HRESULT QAVSettingRepository::ReadSetting(const char* key, double* value, int count) { return Read(key, value, count); }
HRESULT QAVSettingRepository::ReadSetting(const char* key, QAVString* value, int count) { return Read(key, value, count); }
HRESULT QAVSettingRepository::ReadSetting(const char* key, QAVUnicodeString* value, int count) { return Read(key, value, count); }

HRESULT QAVSettingRepository::WriteSetting(const char* key, const short* value, int count) { return Write(key, value, count); }
HRESULT QAVSettingRepository::WriteSetting(const char* key, const int* value, int count) { return Write(key, value, count); }
HRESULT QAVSettingRepository::WriteSetting(const char* key, const float* value, int count) { return Write(key, value, count); }
HRESULT QAVSettingRepository::WriteSetting(const char* key, const double* value, int count) { return Write(key, value, count); }
HRESULT QAVSettingRepository::WriteSetting(const char* key, const QAVString* value, int count) { return Write(key, value, count); }
HRESULT QAVSettingRepository::WriteSetting(const char* key, const QAVUnicodeString* value, int count) { return Write(key, value, count); }

HRESULT QAVSettingRepository::ReadAttr(const char* key, short* value, int count) const { return Attr(key, value, count); }
HRESULT QAVSettingRepository::ReadAttr(const char* key, int* value, int count) const { return Attr(key, value, count); }
HRESULT QAVSettingRepository::ReadAttr(const char* key, float* value, int count) const { return Attr(key, value, count); }
HRESULT QAVSettingRepository::ReadAttr(const char* key, double* value, int count) const { return Attr(key, value, count); }
HRESULT QAVSettingRepository::ReadAttr(const char* key, QAVString* value, int count) const { return Attr(key, value, count); }
HRESULT QAVSettingRepository::ReadAttr(const char* key, QAVUnicodeString* value, int count) const { return Attr(key, value, count); }
// clang-format on

HRESULT QAVSettingRepository::WriteSettingFromText(const char* key,
                                                   const std::vector<std::string>& texts,
                                                   std::string* error) {
  std::string why;
  const qavstore::StoredValue* stored = ValidKey(key) ? _impl->store.Find(key) : nullptr;
  qavstore::StoredValue value;
  if (!stored)
    why = std::string("the key \"") + (key ? key : "") + "\" is not declared";
  else if (texts.empty())
    why = "no value";
  else if (qavstore::StoredValue::FromTexts(stored->type, texts, value, why, true))
    why.clear();
  if (!why.empty()) {
    if (error) *error = why;
    return E_FAIL;
  }
  if (_impl->store.Put(key, std::move(value))) {
    ++_writeCount;
    _callbacks->DispatchCallbacks(ModifiedEvent(), nullptr, this);
  }
  return S_OK;
}

std::vector<std::string> QAVSettingRepository::GetSettingTexts(const char* key) const {
  const qavstore::StoredValue* stored = ValidKey(key) ? _impl->store.Find(key) : nullptr;
  return stored ? stored->ToTexts() : std::vector<std::string>();
}

HRESULT QAVSettingRepository::SaveRepository() {
  bool othersChanged = false;
  if (!_impl->store.Save(&othersChanged)) return E_FAIL;
  if (othersChanged) _callbacks->DispatchCallbacks(ModifiedEvent(), nullptr, this);
  return S_OK;
}

std::vector<QAVString> QAVSettingRepository::GetKeys() const {
  std::vector<QAVString> keys;
  for (const auto& entry : _impl->store.Content().Entries())
    keys.emplace_back(entry.first);
  return keys;
}

QAVSettingType QAVSettingRepository::GetSettingType(const char* key) const {
  const qavstore::StoredValue* stored = ValidKey(key) ? _impl->store.Find(key) : nullptr;
  return stored ? stored->type : QAVSettingType::None;
}

int QAVSettingRepository::GetSettingCount(const char* key) const {
  const qavstore::StoredValue* stored = ValidKey(key) ? _impl->store.Find(key) : nullptr;
  return stored ? stored->Count() : 0;
}

HRESULT QAVSettingRepository::ReadAttribute(const QAVString& key, QAVUnicodeString& value) const {
  const qavstore::StoredValue* stored = _impl->store.Find(key.str());
  if (!stored) return E_FAIL;
  const std::vector<std::string> texts = stored->ToTexts();
  std::string joined;
  for (std::size_t i = 0; i < texts.size(); ++i)
    joined += (i ? ";" : "") + texts[i];
  value = QAVUnicodeString(joined);
  return S_OK;
}
