#include "QAVFillDictionary.h"

#include <map>
#include <mutex>
#include <string>

#include "QAVCommand.h"
#include "QAVMetaClass.h"

namespace {
struct FactoryRegistry {
  std::mutex lock;
  std::map<std::string, QAVFillDictionary::Factory, std::less<>> factories;
};
// Registrations come from static initialisers of several modules: the registry
// is built on first use and never destroyed.
FactoryRegistry& Registry() {
  static FactoryRegistry* const registry = new FactoryRegistry;
  return *registry;
}
}  // namespace

bool QAVFillDictionary::Register(const char* className, Factory factory) {
  if (!className || !*className || !factory) return false;
  auto& registry = Registry();
  std::lock_guard guard(registry.lock);
  return registry.factories.emplace(className, factory).second;
}

QAVFillDictionary::Factory QAVFillDictionary::Find(const char* className) {
  if (!className) return nullptr;
  auto& registry = Registry();
  std::lock_guard guard(registry.lock);
  const auto it = registry.factories.find(std::string_view(className));
  return it == registry.factories.end() ? nullptr : it->second;
}

QAVCommand* QAVFillDictionary::CreateCommand(const char* className) {
  if (const Factory factory = Find(className)) return factory();
  const QAVMetaClass* meta = QAVMetaClass::Find(className);
  if (!meta || !meta->IsAKindOf(QAVCommand::MetaObject())) return nullptr;
  QAVBaseUnknown* instance = meta->CreateInstance();
  if (!instance) return nullptr;
  // A command's first reference is the host's; anything else is not a command.
  if (auto* command = dynamic_cast<QAVCommand*>(instance)) return command;
  instance->Release();
  return nullptr;
}

int QAVFillDictionary::GetCount() {
  auto& registry = Registry();
  std::lock_guard guard(registry.lock);
  return static_cast<int>(registry.factories.size());
}
