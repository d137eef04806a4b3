// A unicode string boxed as an object, to travel where objects do (the
// arguments of a command header).
#ifndef QAVBoxingOfQAVUnicodeString_h
#define QAVBoxingOfQAVUnicodeString_h

#include "QAVBaseUnknown.h"
#include "QAVRef.h"
#include "QAVTypes.h"
#include "QAVUnicodeString.h"

class QAVHOST_API QAVBoxingOfQAVUnicodeString : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  explicit QAVBoxingOfQAVUnicodeString(QAVUnicodeString value = {}) : _value(std::move(value)) {}
  ~QAVBoxingOfQAVUnicodeString() override;

  static QAVRef<QAVBaseUnknown> Box(const QAVUnicodeString& value);
  // S_OK with the string when `boxed` is a boxed string; E_FAIL and `value`
  // untouched otherwise (null included).
  static HRESULT Unbox(QAVBaseUnknown* boxed, QAVUnicodeString& value);

 private:
  QAVUnicodeString _value;
};

#endif
