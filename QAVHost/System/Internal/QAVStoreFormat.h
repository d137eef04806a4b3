// Internal pieces shared by the host's persisted stores: the typed keyed store of
// setting and preference repositories with its text file format, the escaping of
// texts and numbers, and where the stores are kept. The file behind a store is
// QAVBackedFile.h.
//
// Not part of the host's API: the headers of this folder are seen by the host's
// own sources and by the stand-in of the rendering configuration, which keeps its
// file the same way; the few symbols that stand-in uses are exported.
#ifndef QAVStoreFormat_h
#define QAVStoreFormat_h

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include "QAVRef.h"
#include "QAVSettingRepository.h"
#include "QAVString.h"
#include "QAVUnicodeString.h"

namespace qavstore {

// Escapes a text for one field of a line: backslash, tab, newline, carriage
// return and the other control bytes become \\ \t \n \r \xHH. Bytes from 0x80 up
// (UTF-8) are kept as they are. With `leadingHash`, a '#' in first position is
// written \x23 so that the line cannot be taken for a comment.
std::string Escape(std::string_view text, bool leadingHash = false);
// The reverse of Escape; false on an unknown or truncated escape.
bool Unescape(std::string_view text, std::string& out);

// Numbers as text. Floats and doubles take the shortest decimal form that reads
// back to the same value ("inf", "-inf"); a NaN is written "nan:" and its bits in
// hexadecimal, so every value comes back bit for bit.
std::string FormatFloat(float value);
std::string FormatDouble(double value);
// Whole-text conversions; false when the text is not entirely a number of the
// kind or is out of its range. A leading '+' is accepted.
bool ParseInteger(std::string_view text, long long& value);
bool ParseFloat(std::string_view text, float& value);
bool ParseDouble(std::string_view text, double& value);

QAVHOST_API std::string_view Trim(std::string_view text);

// The value of a "key = value" line (configuration and message catalogs): the
// text after '=' without the blanks around it, or, when it starts with '"', a
// quoted text in which \" \\ \n \t \r and \xHH are escapes. False when a quoted
// value is not closed, has text after its closing quote or a bad escape.
QAVHOST_API bool ParseAssignedValue(std::string_view raw, std::string& value);
// The form ParseAssignedValue reads back as `value`: bare when it can be, quoted
// otherwise.
QAVHOST_API std::string FormatAssignedValue(std::string_view value);

// One stored setting or preference: its type and its values (an array).
struct StoredValue {
  QAVSettingType type = QAVSettingType::None;
  std::vector<short> shorts;
  std::vector<int> ints;
  std::vector<float> floats;
  std::vector<double> doubles;
  std::vector<std::string> texts;  // String and Text

  int Count() const;
  // Same type and the same values bit for bit.
  bool SameAs(const StoredValue& other) const;
  // Each value as text: numbers in their exact shortest form, texts as they are.
  std::vector<std::string> ToTexts() const;
  // Parses one text per value for a given type; false, with `error`, when a
  // text is not a value of that type or is out of its range. With `finiteOnly`,
  // infinities and NaNs are refused too.
  static bool FromTexts(QAVSettingType type, const std::vector<std::string>& texts,
                        StoredValue& out, std::string& error, bool finiteOnly);
};

const char* TypeName(QAVSettingType type);  // "short", "int", ... "text"
QAVSettingType TypeFromName(std::string_view name);

template <class T>
constexpr QAVSettingType TypeOf() {
  if constexpr (std::is_same_v<T, short>)
    return QAVSettingType::Short;
  else if constexpr (std::is_same_v<T, int>)
    return QAVSettingType::Int;
  else if constexpr (std::is_same_v<T, float>)
    return QAVSettingType::Float;
  else if constexpr (std::is_same_v<T, double>)
    return QAVSettingType::Double;
  else if constexpr (std::is_same_v<T, QAVString>)
    return QAVSettingType::String;
  else
    return QAVSettingType::Text;
}

// A value of type T from `count` values.
template <class T>
StoredValue MakeValue(const T* values, int count) {
  StoredValue v;
  v.type = TypeOf<T>();
  for (int i = 0; i < count; ++i) {
    if constexpr (std::is_same_v<T, short>)
      v.shorts.push_back(values[i]);
    else if constexpr (std::is_same_v<T, int>)
      v.ints.push_back(values[i]);
    else if constexpr (std::is_same_v<T, float>)
      v.floats.push_back(values[i]);
    else if constexpr (std::is_same_v<T, double>)
      v.doubles.push_back(values[i]);
    else
      v.texts.push_back(values[i].str());
  }
  return v;
}

// Copies at most `count` values of a value of type T; returns how many.
template <class T>
int CopyValues(const StoredValue& v, T* values, int count) {
  int n = 0;
  for (; n < count && n < v.Count(); ++n) {
    const auto i = static_cast<std::size_t>(n);
    if constexpr (std::is_same_v<T, short>)
      values[n] = v.shorts[i];
    else if constexpr (std::is_same_v<T, int>)
      values[n] = v.ints[i];
    else if constexpr (std::is_same_v<T, float>)
      values[n] = v.floats[i];
    else if constexpr (std::is_same_v<T, double>)
      values[n] = v.doubles[i];
    else
      values[n] = T(v.texts[i]);
  }
  return n;
}

// Keys and their values, in the order the keys were first stored.
//
// File format (one file per store, UTF-8, lines ended by "\n"):
//   first line:  the store's header, e.g. "QAVHostSettings 1"
//   then, per key:  KEY <TAB> TYPE <TAB> COUNT [<TAB> VALUE]...   (COUNT values)
// TYPE is short, int, float, double, string or text; KEY and texts are escaped
// with Escape; numbers as FormatFloat / FormatDouble / decimal integers. Empty
// lines and lines starting with '#' are ignored. Anything else makes the file
// corrupt: a wrong header, an unknown type, a bad count or number, a wrong
// number of fields, a bad escape, a key given twice.
class KeyedStore {
 public:
  const StoredValue* Find(std::string_view key) const;
  // Stores a value under a key (a new key goes last); true when the stored
  // content changed.
  bool Put(const std::string& key, StoredValue value);
  bool Remove(std::string_view key);
  void Clear();
  const std::vector<std::pair<std::string, StoredValue>>& Entries() const { return _entries; }

  std::string Serialize(std::string_view header) const;
  // Parses a whole file; false with `error` ("line N: what") when it is corrupt.
  static bool Parse(std::string_view text, std::string_view header, KeyedStore& out,
                    std::string& error);

 private:
  std::vector<std::pair<std::string, StoredValue>> _entries;
  std::unordered_map<std::string, std::size_t> _index;
};

// Where the host keeps its persisted stores: QAVHOST_SETTINGS_DIR, else
// $XDG_CONFIG_HOME/qavhost, else $HOME/.config/qavhost (else ./.qavhost).
QAVHOST_API std::string SettingsDirectory();
// A store name as a file name: bytes that are not letters, digits, '-', '_' or
// '.' (and a leading '.') are written %HH.
std::string FileNameOf(std::string_view name);

// The repositories of one kind that the host has opened, by name, and the names
// that tests made unavailable. The host keeps every repository it hands out.
template <class Repository>
class RepositoryRegistry {
 public:
  // The repository of this name, made by `create(name)` on first use; null for an
  // empty or unavailable name.
  template <class Create>
  Repository* Get(const QAVString& name, Create create) {
    if (name.IsEmpty() || _unavailable.count(name.str())) return nullptr;
    auto& slot = _loaded[name.str()];
    if (!slot) slot = QAVRef<Repository>::Adopt(create(name));
    return slot.get();
  }
  void SetAvailable(const QAVString& name, bool available) {
    if (available)
      _unavailable.erase(name.str());
    else
      _unavailable.insert(name.str());
  }
  void Forget() {
    _loaded.clear();
    _unavailable.clear();
  }

 private:
  std::map<std::string, QAVRef<Repository>> _loaded;
  std::set<std::string> _unavailable;
};

}  // namespace qavstore

#endif
