#include "QAVSharedKeyedStore.h"

namespace qavstore {

namespace {

bool SameContent(const KeyedStore& a, const KeyedStore& b) {
  if (a.Entries().size() != b.Entries().size()) return false;
  for (const auto& [key, value] : a.Entries()) {
    const StoredValue* other = b.Find(key);
    if (!other || !other->SameAs(value)) return false;
  }
  return true;
}

}  // namespace

SharedKeyedStore::SharedKeyedStore(std::string path, std::string kind, std::string header,
                                   Validate validate)
    : _file(std::move(path), std::move(kind)), _header(std::move(header)), _validate(validate) {
  std::string content;
  bool exists = false;
  if (_file.Read(content, exists) && exists) _store = Parse(&content);
}

KeyedStore SharedKeyedStore::Parse(const std::string* content) {
  KeyedStore parsed;
  if (!content) return parsed;
  std::string error;
  if (KeyedStore::Parse(*content, _header, parsed, error) && _validate) error = _validate(parsed);
  if (!error.empty()) {
    parsed.Clear();
    _file.ReportCorrupt(error);
  }
  return parsed;
}

void SharedKeyedStore::Declare(const std::string& key, StoredValue value) {
  if (_store.Find(key)) return;
  _store.Put(key, std::move(value));
  _pending.emplace(key, Change::Declared);
}

bool SharedKeyedStore::Put(const std::string& key, StoredValue value) {
  _pending[key] = Change::Written;
  return _store.Put(key, std::move(value));
}

bool SharedKeyedStore::Remove(std::string_view key) {
  if (!_store.Remove(key)) return false;
  _pending[std::string(key)] = Change::Removed;
  return true;
}

bool SharedKeyedStore::Save(bool* othersChanged) {
  KeyedStore merged;
  const bool saved = _file.Update([&](const std::string* current) {
    merged = Parse(current);
    // This process's changes, in the order of its store (new keys go last).
    for (const auto& [key, value] : _store.Entries()) {
      const auto change = _pending.find(key);
      if (change == _pending.end()) continue;
      if (change->second == Change::Written || !merged.Find(key)) merged.Put(key, value);
    }
    for (const auto& [key, change] : _pending)
      if (change == Change::Removed) merged.Remove(key);
    return merged.Serialize(_header);
  });
  if (!saved) return false;
  if (othersChanged) *othersChanged = !SameContent(merged, _store);
  _store = std::move(merged);
  _pending.clear();
  return true;
}

}  // namespace qavstore
