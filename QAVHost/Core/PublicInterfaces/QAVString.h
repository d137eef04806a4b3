// The host's 8-bit string: identifiers, setting keys, preset and event names.
#ifndef QAVString_h
#define QAVString_h

#include "QAVStringBase.h"

class QAVString : public QAVStringBase<QAVString> {
 public:
  using QAVStringBase::QAVStringBase;
};

template <>
struct std::hash<QAVString> {
  std::size_t operator()(const QAVString& s) const noexcept {
    return std::hash<std::string>()(s.str());
  }
};

#endif
