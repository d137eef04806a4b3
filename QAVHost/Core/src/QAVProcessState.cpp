#include "QAVProcessState.h"

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace {
struct ResetRegistry {
  std::mutex lock;
  std::vector<std::pair<std::string, QAVProcessState::Reset>> resets;
};
ResetRegistry& Registry() {
  static ResetRegistry* const registry = new ResetRegistry;
  return *registry;
}
}  // namespace

void QAVProcessState::RegisterReset(const char* name, Reset reset) {
  if (!name || !reset) return;
  auto& registry = Registry();
  std::lock_guard guard(registry.lock);
  for (const auto& entry : registry.resets)
    if (entry.first == name) return;
  registry.resets.emplace_back(name, reset);
}

void QAVProcessState::ResetAll() {
  std::vector<Reset> resets;
  {
    auto& registry = Registry();
    std::lock_guard guard(registry.lock);
    for (auto it = registry.resets.rbegin(); it != registry.resets.rend(); ++it)
      resets.push_back(it->second);
  }
  for (Reset reset : resets)
    reset();
}
