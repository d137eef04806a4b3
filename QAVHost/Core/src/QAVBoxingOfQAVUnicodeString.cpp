#include "QAVBoxingOfQAVUnicodeString.h"

QAV_IMPLEMENT_CLASS(QAVBoxingOfQAVUnicodeString, QAVBaseUnknown, "System");

QAVBoxingOfQAVUnicodeString::~QAVBoxingOfQAVUnicodeString() = default;

QAVRef<QAVBaseUnknown> QAVBoxingOfQAVUnicodeString::Box(const QAVUnicodeString& value) {
  return QAVMakeRef<QAVBoxingOfQAVUnicodeString>(value);
}

HRESULT QAVBoxingOfQAVUnicodeString::Unbox(QAVBaseUnknown* boxed, QAVUnicodeString& value) {
  const auto* box = dynamic_cast<const QAVBoxingOfQAVUnicodeString*>(boxed);
  if (!box) return E_FAIL;
  value = box->_value;
  return S_OK;
}
