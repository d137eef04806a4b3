#include "QAVBaseUnknown.h"

#include <mutex>

#include "QAVExtension.h"
#include "QAVExtensionSet.h"

namespace {
// Guards the making of extensions (objects are used from one thread at a time
// in the host, but a query must not race with another object's).
std::mutex& ExtensionLock() {
  static std::mutex* const lock = new std::mutex;
  return *lock;
}
}  // namespace

QAVBaseUnknown::~QAVBaseUnknown() { delete _extensions; }

unsigned long QAVBaseUnknown::AddRef() {
  if (_outer) return _outer->AddRef();
  return _refCount.fetch_add(1, std::memory_order_relaxed) + 1;
}

unsigned long QAVBaseUnknown::Release() {
  if (_outer) return _outer->Release();
  const unsigned long left = _refCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
  if (left == 0) delete this;
  return left;
}

HRESULT QAVBaseUnknown::QueryInterface(const IID& iid, void** object) {
  if (!object) return E_INVALIDARG;
  *object = nullptr;
  for (const QAVMetaClass* meta = GetMetaObject(); meta; meta = meta->GetBase()) {
    if (meta->GetClassId() == iid) {
      AddRef();
      *object = static_cast<QAVBaseUnknown*>(this);
      return S_OK;
    }
  }
  if (const QAVExtension::Factory factory = QAVExtension::Find(GetMetaObject(), iid)) {
    QAVBaseUnknown* extension = nullptr;
    {
      std::lock_guard guard(ExtensionLock());
      if (!_extensions) _extensions = new QAVExtensionSet;
      for (const auto& [madeBy, made] : _extensions->made)
        if (madeBy == factory) extension = made;
      if (!extension) {
        extension = factory();
        if (extension) {
          extension->AggregateInto(this);
          _extensions->made.emplace_back(factory, extension);
        }
      }
    }
    // The extension answers the interface through its own classes.
    if (extension) {
      for (const QAVMetaClass* meta = extension->GetMetaObject(); meta; meta = meta->GetBase()) {
        if (meta->GetClassId() == iid) {
          AddRef();
          *object = extension;
          return S_OK;
        }
      }
    }
  }
  if (_outer) return _outer->QueryInterface(iid, object);
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
