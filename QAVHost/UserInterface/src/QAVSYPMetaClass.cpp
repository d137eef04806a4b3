#include "QAVSYPMetaClass.h"

#include <map>
#include <memory>
#include <mutex>

namespace {

struct Registry {
  std::mutex mutex;
  std::map<std::string, QAVSYPMetaClassBuilder::Factory, std::less<>> factories;
  std::map<std::string, std::unique_ptr<QAVSYPMetaClass>, std::less<>> built;

  static Registry& Get() {
    static Registry* const registry = new Registry;  // outlives every module's statics
    return *registry;
  }
};

}  // namespace

const QAVSYPProperty* QAVSYPMetaClass::FindProperty(const char* name) const {
  if (!name) return nullptr;
  for (const QAVSYPProperty& property : _properties)
    if (property.name == name) return &property;
  return nullptr;
}

void QAVSYPMetaClass::AddProperty(const char* name, QAVSYPType type) {
  if (name && !FindProperty(name)) _properties.push_back({name, type});
}

const QAVSYPMetaClass* QAVSYPMetaClass::Find(const char* className) {
  if (!className) return nullptr;
  Registry& registry = Registry::Get();
  const std::lock_guard lock(registry.mutex);
  if (const auto built = registry.built.find(className); built != registry.built.end())
    return built->second.get();
  const auto factory = registry.factories.find(className);
  if (factory == registry.factories.end()) return nullptr;
  auto metaClass = std::make_unique<QAVSYPMetaClass>(className);
  const std::unique_ptr<QAVSYPMetaClassBuilder> builder(factory->second());
  if (builder) builder->Build(*metaClass);
  return registry.built.emplace(className, std::move(metaClass)).first->second.get();
}

QAVSYPMetaClassBuilder::~QAVSYPMetaClassBuilder() = default;

bool QAVSYPMetaClassBuilder::Register(const char* className, Factory factory) {
  if (!className || !factory) return false;
  Registry& registry = Registry::Get();
  const std::lock_guard lock(registry.mutex);
  return registry.factories.emplace(className, factory).second;
}
