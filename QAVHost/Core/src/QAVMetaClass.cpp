#include "QAVMetaClass.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "QAVBaseUnknown.h"

// All meta-classes of the process, by name. Meta-classes are never destroyed
// while the process runs, so the names they hand out stay valid.
struct QAVMetaClassRegistry {
  std::mutex lock;
  std::map<std::string, std::unique_ptr<QAVMetaClass>, std::less<>> classes;

  static QAVMetaClassRegistry& Instance() {
    static QAVMetaClassRegistry* const registry = new QAVMetaClassRegistry;
    return *registry;
  }
  static QAVMetaClass* Make(const char* name, QAVMetaClass* base, const char* framework,
                            QAVMetaClass::Factory factory) {
    return new QAVMetaClass(name, base, framework, factory);
  }
};

QAVMetaClass::QAVMetaClass(const char* name, QAVMetaClass* base, const char* framework,
                           Factory factory)
    : _name(name),
      _framework(framework ? framework : ""),
      _base(base),
      _classId(ClassIdFromName(name)),
      _factory(factory) {}

QAVMetaClass* QAVMetaClass::Create(const char* className, QAVMetaClass* base, const char* framework,
                                   Factory factory) {
  if (!className || !*className) return nullptr;
  auto& registry = QAVMetaClassRegistry::Instance();
  std::lock_guard guard(registry.lock);
  auto& slot = registry.classes[className];
  if (!slot) {
    slot.reset(QAVMetaClassRegistry::Make(className, base, framework, factory));
  } else if (!slot->_factory) {
    slot->_factory = factory;
  }
  return slot.get();
}

QAVMetaClass* QAVMetaClass::Find(const char* className) {
  if (!className) return nullptr;
  auto& registry = QAVMetaClassRegistry::Instance();
  std::lock_guard guard(registry.lock);
  const auto it = registry.classes.find(std::string_view(className));
  return it == registry.classes.end() ? nullptr : it->second.get();
}

GUID QAVMetaClass::ClassIdFromName(const char* className) {
  // Two FNV-1a hashes with different offsets fill the 128 bits.
  auto fnv = [className](std::uint64_t hash) {
    for (const char* c = className; c && *c; ++c) {
      hash ^= static_cast<unsigned char>(*c);
      hash *= 0x100000001b3ull;
    }
    return hash;
  };
  const std::uint64_t high = fnv(0xcbf29ce484222325ull);
  const std::uint64_t low = fnv(0x84222325cbf29ce4ull);
  GUID id{};
  id.Data1 = static_cast<std::uint32_t>(high >> 32);
  id.Data2 = static_cast<std::uint16_t>(high >> 16);
  id.Data3 = static_cast<std::uint16_t>(high);
  for (int i = 0; i < 8; ++i)
    id.Data4[i] = static_cast<std::uint8_t>(low >> (56 - 8 * i));
  return id;
}

bool QAVMetaClass::IsAKindOf(const char* className) const {
  if (!className) return false;
  for (const QAVMetaClass* meta = this; meta; meta = meta->_base)
    if (meta->_name == className) return true;
  return false;
}

bool QAVMetaClass::IsAKindOf(const QAVMetaClass* other) const {
  for (const QAVMetaClass* meta = this; meta; meta = meta->_base)
    if (meta == other) return true;
  return false;
}

QAVBaseUnknown* QAVMetaClass::CreateInstance() const { return _factory ? _factory() : nullptr; }

HRESULT QAVInstantiateComponent(const char* className, const IID& iid, void** object) {
  if (!object) return E_INVALIDARG;
  *object = nullptr;
  const QAVMetaClass* meta = QAVMetaClass::Find(className);
  QAVBaseUnknown* instance = meta ? meta->CreateInstance() : nullptr;
  if (!instance) return E_FAIL;
  const HRESULT hr = instance->QueryInterface(iid, object);
  instance->Release();
  return hr;
}
