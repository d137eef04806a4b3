#include "QAVExtension.h"

#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "QAVExtensionSet.h"

namespace {

struct Registry {
  std::mutex lock;
  // Per extended class name: the interfaces and their factories.
  std::map<std::string, std::vector<std::pair<IID, QAVExtension::Factory>>, std::less<>> entries;

  static Registry& Instance() {
    static Registry* const registry = new Registry;
    return *registry;
  }
};

}  // namespace

bool QAVExtension::Register(const char* extendedClassName, const IID& iid, Factory factory) {
  if (!extendedClassName || !*extendedClassName || !factory) return false;
  auto& registry = Registry::Instance();
  std::lock_guard guard(registry.lock);
  auto& list = registry.entries[extendedClassName];
  for (const auto& [known, unused] : list)
    if (known == iid) return false;
  list.emplace_back(iid, factory);
  return true;
}

QAVExtension::Factory QAVExtension::Find(const QAVMetaClass* extendedClass, const IID& iid) {
  auto& registry = Registry::Instance();
  std::lock_guard guard(registry.lock);
  if (registry.entries.empty()) return nullptr;
  for (const QAVMetaClass* meta = extendedClass; meta; meta = meta->GetBase()) {
    const auto it = registry.entries.find(std::string_view(meta->GetName()));
    if (it == registry.entries.end()) continue;
    for (const auto& [known, factory] : it->second)
      if (known == iid) return factory;
  }
  return nullptr;
}

QAVExtensionSet::~QAVExtensionSet() {
  for (auto& [factory, extension] : made) {
    extension->AggregateInto(nullptr);
    delete extension;
  }
}
