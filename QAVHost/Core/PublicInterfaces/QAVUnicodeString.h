// The host's Unicode string: file paths and user-visible texts. The text is held
// as UTF-8; ToNarrow gives the bytes to hand to the file system.
#ifndef QAVUnicodeString_h
#define QAVUnicodeString_h

#include "QAVString.h"
#include "QAVStringBase.h"

class QAVUnicodeString : public QAVStringBase<QAVUnicodeString> {
 public:
  using QAVStringBase::QAVStringBase;
  explicit QAVUnicodeString(const QAVString& text) : QAVStringBase(text.str()) {}

  // The narrow (UTF-8) form for file APIs.
  const std::string& ToNarrow() const { return str(); }
  QAVString ToString() const { return QAVString(str()); }
};

template <>
struct std::hash<QAVUnicodeString> {
  std::size_t operator()(const QAVUnicodeString& s) const noexcept {
    return std::hash<std::string>()(s.str());
  }
};

#endif
