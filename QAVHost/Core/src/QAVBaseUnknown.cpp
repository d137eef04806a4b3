#include "QAVBaseUnknown.h"

QAVBaseUnknown::~QAVBaseUnknown() = default;

unsigned long QAVBaseUnknown::AddRef() {
  return _refCount.fetch_add(1, std::memory_order_relaxed) + 1;
}

unsigned long QAVBaseUnknown::Release() {
  const unsigned long left = _refCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
  if (left == 0) delete this;
  return left;
}

HRESULT QAVBaseUnknown::QueryInterface(const IID& iid, void** object) {
  if (!object) return E_INVALIDARG;
  for (const QAVMetaClass* meta = GetMetaObject(); meta; meta = meta->GetBase()) {
    if (meta->GetClassId() == iid) {
      AddRef();
      *object = static_cast<QAVBaseUnknown*>(this);
      return S_OK;
    }
  }
  *object = nullptr;
  return E_NOINTERFACE;
}

QAVMetaClass* QAVBaseUnknown::MetaObject() {
  static QAVMetaClass* const meta =
      QAVMetaClass::Create("QAVBaseUnknown", nullptr, "System", nullptr);
  return meta;
}

const char* QAVBaseUnknown::ClassName() { return "QAVBaseUnknown"; }
const IID& QAVBaseUnknown::ClassId() { return MetaObject()->GetClassId(); }
const char* QAVBaseUnknown::IsA() const { return ClassName(); }
QAVMetaClass* QAVBaseUnknown::GetMetaObject() const { return MetaObject(); }
int QAVBaseUnknown::IsAKindOf(const char* className) const {
  return GetMetaObject()->IsAKindOf(className) ? 1 : 0;
}
