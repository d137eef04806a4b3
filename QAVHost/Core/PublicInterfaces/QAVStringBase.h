// The operations shared by the host's 8-bit string (QAVString) and Unicode string
// (QAVUnicodeString). Both hold their text as bytes; the Unicode string holds
// UTF-8, so positions and lengths count bytes (code units), and any byte sequence
// a file system hands out survives a round trip.
#ifndef QAVStringBase_h
#define QAVStringBase_h

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

template <class Derived>
class QAVStringBase {
 public:
  QAVStringBase() = default;
  QAVStringBase(const char* text) : _text(text ? text : "") {}  // NOLINT
  explicit QAVStringBase(std::string text) : _text(std::move(text)) {}
  explicit QAVStringBase(std::string_view text) : _text(text) {}

  const char* c_str() const { return _text.c_str(); }
  const std::string& str() const { return _text; }
  int GetLength() const { return static_cast<int>(_text.size()); }
  bool IsEmpty() const { return _text.empty(); }

  // <0, 0, >0 like strcmp.
  int Compare(const Derived& other) const { return _text.compare(other._text); }
  friend bool operator==(const Derived& a, const Derived& b) { return a._text == b._text; }
  friend bool operator==(const Derived& a, const char* b) { return a._text == (b ? b : ""); }
  friend bool operator<(const Derived& a, const Derived& b) { return a._text < b._text; }

  Derived& operator+=(const Derived& other) {
    _text += other._text;
    return self();
  }
  Derived& operator+=(const char* other) {
    if (other) _text += other;
    return self();
  }
  friend Derived operator+(Derived a, const Derived& b) { return a += b; }
  friend Derived operator+(Derived a, const char* b) { return a += b; }

  // Position of the first occurrence of `sub` at or after `start`, or -1. A start
  // below 0 searches from the beginning.
  int SearchSubString(const Derived& sub, int start = 0) const {
    if (start < 0) start = 0;
    const auto at = _text.find(sub._text, static_cast<std::size_t>(start));
    return at == std::string::npos ? -1 : static_cast<int>(at);
  }
  // Up to `length` characters from `start` (clamped to the string).
  Derived SubString(int start, int length) const {
    if (start < 0) start = 0;
    if (length < 0 || start >= GetLength()) return Derived();
    return Derived(_text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(length)));
  }

  // Case mapping of ASCII letters; other bytes are kept.
  void ToLower() {
    for (char& c : _text)
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  void ToUpper() {
    for (char& c : _text)
      if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }

  // Converts the text with a scanf format ("%d" for int, "%le" for double, or a
  // compatible one). Returns the number of values converted: 0 when the text is
  // not a number of that kind (an empty text included); `value` is then left as
  // scanf leaves it.
  int ConvertToNum(int* value, const char* format = "%d") const { return Scan(format, value); }
  int ConvertToNum(double* value, const char* format = "%le") const { return Scan(format, value); }

  static Derived BuildFromNum(int value) { return Derived(std::to_string(value)); }
  // A double with the shortest "%.17g"-style text that reads back exactly.
  static Derived BuildFromNum(double value) {
    char buffer[32];
    for (int precision = 1; precision <= 17; ++precision) {
      (void)std::snprintf(buffer, sizeof buffer, "%.*g", precision, value);
      if (std::strtod(buffer, nullptr) == value) break;
    }
    return Derived(std::string(buffer));
  }

 private:
  template <class T>
  int Scan(const char* format, T* value) const {
    if (!value || !format) return 0;
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#endif
    const int converted = std::sscanf(_text.c_str(), format, value);
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
    return converted > 0 ? converted : 0;
  }
  Derived& self() { return static_cast<Derived&>(*this); }

  std::string _text;
};

#endif
