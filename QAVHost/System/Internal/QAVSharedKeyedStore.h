// The keyed store of a setting or preference repository together with its file,
// saved so that several processes can share the file without losing each other's
// changes.
//
// The store remembers what this process changed since its last save: keys it
// wrote, keys it removed, and keys it only declared (a read of an absent key
// stores the reader's preset value). A save re-reads the file under its lock
// (QAVBackedFile.h) and applies those changes to what is there: written keys
// replace the file's values, so the last save of a key wins; removed keys go;
// declared keys are added only where the file has none, so that a default never
// overwrites a value another process saved. The merged content is written and
// becomes the store's content, which also brings in what the other processes saved.
#ifndef QAVSharedKeyedStore_h
#define QAVSharedKeyedStore_h

#include <string>
#include <string_view>
#include <unordered_map>

#include "QAVBackedFile.h"
#include "QAVStoreFormat.h"

namespace qavstore {

class SharedKeyedStore {
 public:
  // Refuses stored content that this kind of store cannot hold: returns why, or
  // an empty text when the content is acceptable.
  using Validate = std::string (*)(const KeyedStore& store);

  // Reads the file now. `header` is the first line of the file format.
  SharedKeyedStore(std::string path, std::string kind, std::string header,
                   Validate validate = nullptr);

  const std::string& Path() const { return _file.Path(); }
  const StoredValue* Find(std::string_view key) const { return _store.Find(key); }
  const KeyedStore& Content() const { return _store; }

  // Stores the preset value of a key that is not stored yet.
  void Declare(const std::string& key, StoredValue value);
  // Stores a value; true when the stored content changed.
  bool Put(const std::string& key, StoredValue value);
  // True when the key was stored.
  bool Remove(std::string_view key);

  // Saves this process's changes into the file (see above). False, with the
  // reason on standard error, when the file cannot be saved; the changes are then
  // kept for the next save. `othersChanged`, when given, tells whether the
  // merged content differs from what the store held apart from this process's
  // own changes.
  bool Save(bool* othersChanged = nullptr);

 private:
  enum class Change { Declared, Written, Removed };
  // Parses the file's content (null: no file); an invalid content is reported
  // and reads as empty.
  KeyedStore Parse(const std::string* content);

  BackedFile _file;
  std::string _header;
  Validate _validate;
  KeyedStore _store;
  std::unordered_map<std::string, Change> _pending;
};

}  // namespace qavstore

#endif
