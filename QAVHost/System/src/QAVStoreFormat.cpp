#include "QAVStoreFormat.h"

#include <bit>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>

#include "QAVEnvironment.h"

namespace qavstore {

namespace {

constexpr char kHex[] = "0123456789ABCDEF";

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

void AppendHexByte(std::string& out, unsigned char c) {
  out += "\\x";
  out += kHex[c >> 4];
  out += kHex[c & 0xF];
}

bool IsControl(unsigned char c) { return c < 0x20 || c == 0x7F; }

std::string_view StripPlus(std::string_view text) {
  if (text.size() > 1 && text[0] == '+' && text[1] != '-' && text[1] != '+') text.remove_prefix(1);
  return text;
}

template <class Bits, class Float>
bool ParseNanBits(std::string_view text, Float& value) {
  Bits bits = 0;
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, bits, 16);
  if (ec != std::errc() || ptr != end) return false;
  const auto candidate = std::bit_cast<Float>(bits);
  if (!std::isnan(candidate)) return false;
  value = candidate;
  return true;
}

// std::errc() on success, result_out_of_range for a number beyond the type's
// range, invalid_argument for anything else.
template <class Float>
std::errc ParseReal(std::string_view text, Float& value) {
  using Bits = std::conditional_t<sizeof(Float) == 4, std::uint32_t, std::uint64_t>;
  text = StripPlus(text);
  if (text.substr(0, 4) == "nan:")
    return ParseNanBits<Bits>(text.substr(4), value) ? std::errc() : std::errc::invalid_argument;
  if (text.empty()) return std::errc::invalid_argument;
  Float parsed = 0;
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, parsed, std::chars_format::general);
  if (ec == std::errc::result_out_of_range && ptr == end) return ec;
  if (ec != std::errc() || ptr != end) return std::errc::invalid_argument;
  value = parsed;
  return std::errc();
}

template <class Float>
std::string FormatReal(Float value) {
  using Bits = std::conditional_t<sizeof(Float) == 4, std::uint32_t, std::uint64_t>;
  char buffer[64];
  if (std::isnan(value)) {
    const auto [ptr, ec] =
        std::to_chars(buffer, buffer + sizeof buffer, std::bit_cast<Bits>(value), 16);
    return "nan:" + std::string(buffer, ptr);
  }
  const auto [ptr, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, ptr);
}

bool LooksInteger(std::string_view text) {
  text = StripPlus(text);
  if (!text.empty() && text[0] == '-') text.remove_prefix(1);
  if (text.empty()) return false;
  for (const char c : text)
    if (c < '0' || c > '9') return false;
  return true;
}

std::string Quote(std::string_view text) {
  std::string quoted;
  quoted.reserve(text.size() + 2);
  quoted.push_back('"');
  quoted.append(text);
  quoted.push_back('"');
  return quoted;
}

}  // namespace

std::string Escape(std::string_view text, bool leadingHash) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    switch (c) {
      case '\\':
        out += "\\\\";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      default:
        if (IsControl(c) || (leadingHash && i == 0 && c == '#'))
          AppendHexByte(out, c);
        else
          out += static_cast<char>(c);
    }
  }
  return out;
}

namespace {

// Decodes the escape whose letter is at text[i] (just after a backslash) onto
// `out`, moving i to its last character. A quote is an escape only inside a
// quoted value.
bool DecodeEscape(std::string_view text, std::size_t& i, bool quoted, std::string& out) {
  switch (text[i]) {
    case '\\':
      out += '\\';
      return true;
    case 't':
      out += '\t';
      return true;
    case 'n':
      out += '\n';
      return true;
    case 'r':
      out += '\r';
      return true;
    case '"':
      if (!quoted) return false;
      out += '"';
      return true;
    case 'x': {
      if (i + 2 >= text.size()) return false;
      const int high = HexDigit(text[i + 1]);
      const int low = HexDigit(text[i + 2]);
      if (high < 0 || low < 0) return false;
      out += static_cast<char>(high * 16 + low);
      i += 2;
      return true;
    }
    default:
      return false;
  }
}

}  // namespace

bool Unescape(std::string_view text, std::string& out) {
  out.clear();
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      out += text[i];
      continue;
    }
    if (++i == text.size() || !DecodeEscape(text, i, false, out)) return false;
  }
  return true;
}

std::string FormatFloat(float value) { return FormatReal(value); }
std::string FormatDouble(double value) { return FormatReal(value); }
bool ParseFloat(std::string_view text, float& value) {
  return ParseReal(text, value) == std::errc();
}
bool ParseDouble(std::string_view text, double& value) {
  return ParseReal(text, value) == std::errc();
}

bool ParseInteger(std::string_view text, long long& value) {
  text = StripPlus(text);
  if (text.empty()) return false;
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, value, 10);
  return ec == std::errc() && ptr == end;
}

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  const auto last = text.find_last_not_of(" \t\r");
  return text.substr(first, last - first + 1);
}

bool ParseAssignedValue(std::string_view raw, std::string& value) {
  const std::string_view text = Trim(raw);
  if (text.empty() || text[0] != '"') {
    value.assign(text);
    return true;
  }
  std::string out;
  for (std::size_t i = 1; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"') {
      if (i + 1 != text.size()) return false;  // text after the closing quote
      value = std::move(out);
      return true;
    }
    if (c != '\\') {
      out += c;
      continue;
    }
    if (++i == text.size() || !DecodeEscape(text, i, true, out)) return false;
  }
  return false;  // not closed
}

std::string FormatAssignedValue(std::string_view value) {
  bool quote =
      !value.empty() && (value.front() == '"' || value.front() == ' ' || value.front() == '\t' ||
                         value.back() == ' ' || value.back() == '\t');
  for (const char c : value)
    quote = quote || IsControl(static_cast<unsigned char>(c));
  if (!quote) return std::string(value);
  std::string out = "\"";
  for (const char c : value) {
    const auto u = static_cast<unsigned char>(c);
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\r':
        out += "\\r";
        break;
      default:
        if (IsControl(u))
          AppendHexByte(out, u);
        else
          out += c;
    }
  }
  return out + "\"";
}

// ---------------------------------------------------------------------------
// Values

const char* TypeName(QAVSettingType type) {
  switch (type) {
    case QAVSettingType::Short:
      return "short";
    case QAVSettingType::Int:
      return "int";
    case QAVSettingType::Float:
      return "float";
    case QAVSettingType::Double:
      return "double";
    case QAVSettingType::String:
      return "string";
    case QAVSettingType::Text:
      return "text";
    case QAVSettingType::None:
      break;
  }
  return "none";
}

QAVSettingType TypeFromName(std::string_view name) {
  for (const auto type : {QAVSettingType::Short, QAVSettingType::Int, QAVSettingType::Float,
                          QAVSettingType::Double, QAVSettingType::String, QAVSettingType::Text})
    if (name == TypeName(type)) return type;
  return QAVSettingType::None;
}

int StoredValue::Count() const {
  switch (type) {
    case QAVSettingType::Short:
      return static_cast<int>(shorts.size());
    case QAVSettingType::Int:
      return static_cast<int>(ints.size());
    case QAVSettingType::Float:
      return static_cast<int>(floats.size());
    case QAVSettingType::Double:
      return static_cast<int>(doubles.size());
    case QAVSettingType::String:
    case QAVSettingType::Text:
      return static_cast<int>(texts.size());
    case QAVSettingType::None:
      break;
  }
  return 0;
}

bool StoredValue::SameAs(const StoredValue& other) const {
  if (type != other.type || Count() != other.Count()) return false;
  for (std::size_t i = 0; i < floats.size(); ++i)
    if (std::bit_cast<std::uint32_t>(floats[i]) != std::bit_cast<std::uint32_t>(other.floats[i]))
      return false;
  for (std::size_t i = 0; i < doubles.size(); ++i)
    if (std::bit_cast<std::uint64_t>(doubles[i]) != std::bit_cast<std::uint64_t>(other.doubles[i]))
      return false;
  return shorts == other.shorts && ints == other.ints && texts == other.texts;
}

std::vector<std::string> StoredValue::ToTexts() const {
  std::vector<std::string> out;
  for (const short v : shorts)
    out.push_back(std::to_string(v));
  for (const int v : ints)
    out.push_back(std::to_string(v));
  for (const float v : floats)
    out.push_back(FormatFloat(v));
  for (const double v : doubles)
    out.push_back(FormatDouble(v));
  for (const auto& v : texts)
    out.push_back(v);
  return out;
}

bool StoredValue::FromTexts(QAVSettingType type, const std::vector<std::string>& texts,
                            StoredValue& out, std::string& error, bool finiteOnly) {
  StoredValue v;
  v.type = type;
  for (const std::string& text : texts) {
    switch (type) {
      case QAVSettingType::Short:
      case QAVSettingType::Int: {
        const bool isShort = type == QAVSettingType::Short;
        const long long low = isShort ? SHRT_MIN : INT_MIN;
        const long long high = isShort ? SHRT_MAX : INT_MAX;
        long long n = 0;
        if (!ParseInteger(text, n) || n < low || n > high) {
          error = Quote(text) + (LooksInteger(text) ? " is out of range for " : " is not ") +
                  (isShort ? "a short" : "an int") + " (" + std::to_string(low) + " to " +
                  std::to_string(high) + ")";
          return false;
        }
        if (isShort)
          v.shorts.push_back(static_cast<short>(n));
        else
          v.ints.push_back(static_cast<int>(n));
        break;
      }
      case QAVSettingType::Float:
      case QAVSettingType::Double: {
        const bool isFloat = type == QAVSettingType::Float;
        double d = 0;
        float f = 0;
        const std::errc status = isFloat ? ParseReal(text, f) : ParseReal(text, d);
        if (isFloat) d = f;
        if (status != std::errc() || (finiteOnly && !std::isfinite(d))) {
          const bool outOfRange = status == std::errc::result_out_of_range;
          const std::string kind = isFloat ? "float" : "double";
          error = Quote(text) + (outOfRange   ? " is out of range for a " + kind
                                 : finiteOnly ? " is not a finite " + kind
                                              : " is not a " + kind);
          return false;
        }
        if (isFloat)
          v.floats.push_back(f);
        else
          v.doubles.push_back(d);
        break;
      }
      case QAVSettingType::String:
      case QAVSettingType::Text:
        v.texts.push_back(text);
        break;
      case QAVSettingType::None:
        error = "no type";
        return false;
    }
  }
  out = std::move(v);
  return true;
}

// ---------------------------------------------------------------------------
// Keyed store

const StoredValue* KeyedStore::Find(std::string_view key) const {
  const auto it = _index.find(std::string(key));
  return it == _index.end() ? nullptr : &_entries[it->second].second;
}

bool KeyedStore::Put(const std::string& key, StoredValue value) {
  const auto it = _index.find(key);
  if (it == _index.end()) {
    _index.emplace(key, _entries.size());
    _entries.emplace_back(key, std::move(value));
    return true;
  }
  StoredValue& stored = _entries[it->second].second;
  if (stored.SameAs(value)) return false;
  stored = std::move(value);
  return true;
}

bool KeyedStore::Remove(std::string_view key) {
  const auto it = _index.find(std::string(key));
  if (it == _index.end()) return false;
  _entries.erase(_entries.begin() + static_cast<std::ptrdiff_t>(it->second));
  _index.clear();
  for (std::size_t i = 0; i < _entries.size(); ++i)
    _index.emplace(_entries[i].first, i);
  return true;
}

void KeyedStore::Clear() {
  _entries.clear();
  _index.clear();
}

std::string KeyedStore::Serialize(std::string_view header) const {
  std::string out(header);
  out += '\n';
  for (const auto& [key, value] : _entries) {
    out += Escape(key, true);
    out += '\t';
    out += TypeName(value.type);
    out += '\t';
    out += std::to_string(value.Count());
    for (const std::string& text : value.ToTexts()) {
      out += '\t';
      out += value.texts.empty() ? text : Escape(text);
    }
    out += '\n';
  }
  return out;
}

bool KeyedStore::Parse(std::string_view text, std::string_view header, KeyedStore& out,
                       std::string& error) {
  out.Clear();
  int lineNumber = 0;
  bool headerSeen = false;
  while (!text.empty()) {
    const auto end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    ++lineNumber;
    // A file edited with carriage returns: a raw one can only end a line, since
    // texts hold theirs escaped.
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    const std::string where = "line " + std::to_string(lineNumber) + ": ";
    if (!headerSeen) {
      if (line != header) {
        error = where + "the first line is not \"" + std::string(header) + "\"";
        return false;
      }
      headerSeen = true;
      continue;
    }
    if (line.empty() || line[0] == '#') continue;

    std::vector<std::string_view> fields;
    for (std::size_t start = 0;;) {
      const auto tab = line.find('\t', start);
      fields.push_back(line.substr(start, tab == std::string_view::npos ? tab : tab - start));
      if (tab == std::string_view::npos) break;
      start = tab + 1;
    }
    std::string key;
    if (fields.size() < 3) {
      error = where + "expected KEY, TYPE and COUNT separated by tabs";
      return false;
    }
    if (!Unescape(fields[0], key) || key.empty()) {
      error = where + "bad key";
      return false;
    }
    const QAVSettingType type = TypeFromName(fields[1]);
    if (type == QAVSettingType::None) {
      error = where + "unknown type \"" + std::string(fields[1]) + "\"";
      return false;
    }
    long long count = -1;
    if (!ParseInteger(fields[2], count) || count < 0) {
      error = where + "bad count \"" + std::string(fields[2]) + "\"";
      return false;
    }
    if (static_cast<long long>(fields.size()) - 3 != count) {
      error = where + std::to_string(count) + " values expected, " +
              std::to_string(fields.size() - 3) + " found";
      return false;
    }
    std::vector<std::string> values;
    for (std::size_t i = 3; i < fields.size(); ++i) {
      std::string value;
      if (!Unescape(fields[i], value)) {
        error = where + "bad escape in value " + std::to_string(i - 2);
        return false;
      }
      values.push_back(std::move(value));
    }
    StoredValue stored;
    std::string why;
    if (!StoredValue::FromTexts(type, values, stored, why, false)) {
      error = where + why;
      return false;
    }
    if (out.Find(key)) {
      error = where;
      error.append("the key \"").append(key).append("\" is given twice");
      return false;
    }
    out.Put(key, std::move(stored));
  }
  if (!headerSeen) {
    error = "the file is empty";
    return false;
  }
  return true;
}

// ---------------------------------------------------------------------------
// Locations

std::string SettingsDirectory() {
  const auto set = [](const char* value) { return value && *value; };
  if (const char* dir = QAVGetEnv("QAVHOST_SETTINGS_DIR"); set(dir)) return dir;
  if (const char* xdg = QAVGetEnv("XDG_CONFIG_HOME"); set(xdg))
    return std::string(xdg) + "/qavhost";
  if (const char* home = QAVGetEnv("HOME"); set(home))
    return std::string(home) + "/.config/qavhost";
  return ".qavhost";
}

std::string FileNameOf(std::string_view name) {
  std::string out;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const auto c = static_cast<unsigned char>(name[i]);
    const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                       c == '-' || c == '_' || (c == '.' && i > 0);
    if (plain) {
      out += static_cast<char>(c);
    } else {
      out += '%';
      out += kHex[c >> 4];
      out += kHex[c & 0xF];
    }
  }
  return out;
}

}  // namespace qavstore
