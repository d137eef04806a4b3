// The host's list of Unicode strings: a small value type. Positions are 1-based,
// as in every list of the host.
#ifndef QAVListValQAVUnicodeString_h
#define QAVListValQAVUnicodeString_h

#include <initializer_list>
#include <utility>
#include <vector>

#include "QAVUnicodeString.h"

class QAVListValQAVUnicodeString {
 public:
  using const_iterator = std::vector<QAVUnicodeString>::const_iterator;

  QAVListValQAVUnicodeString() = default;
  QAVListValQAVUnicodeString(std::initializer_list<QAVUnicodeString> items) : _items(items) {}

  void Append(const QAVUnicodeString& item) { _items.push_back(item); }
  void Append(QAVUnicodeString&& item) { _items.push_back(std::move(item)); }
  int Size() const { return static_cast<int>(_items.size()); }
  void RemoveAll() { _items.clear(); }

  // The element at a 1-based position. A position outside 1..Size() gives an
  // empty string rather than undefined behaviour.
  const QAVUnicodeString& operator[](int position) const {
    static const QAVUnicodeString empty;
    if (position < 1 || position > Size()) return empty;
    return _items[static_cast<std::size_t>(position - 1)];
  }
  // The 1-based position of the first element equal to `item`, or 0.
  int Locate(const QAVUnicodeString& item) const {
    for (std::size_t i = 0; i < _items.size(); ++i)
      if (_items[i] == item) return static_cast<int>(i + 1);
    return 0;
  }

  const_iterator begin() const { return _items.begin(); }
  const_iterator end() const { return _items.end(); }

  friend bool operator==(const QAVListValQAVUnicodeString& a, const QAVListValQAVUnicodeString& b) {
    return a._items == b._items;
  }

 private:
  std::vector<QAVUnicodeString> _items;
};

#endif
