// A smart pointer that holds one reference to a host object and releases it when
// it goes out of scope.
#ifndef QAVRef_h
#define QAVRef_h

#include <cstddef>
#include <utility>

#include "QAVBaseUnknown.h"

template <class T>
class QAVRef {
 public:
  QAVRef() = default;
  QAVRef(std::nullptr_t) {}  // NOLINT(google-explicit-constructor)
  // Shares: takes a new reference to an object someone else keeps alive.
  explicit QAVRef(T* object) : _p(object) {
    if (_p) _p->AddRef();
  }
  // Adopts: takes over a reference the caller already owns (a new object, the
  // result of a query or of a factory).
  static QAVRef Adopt(T* object) {
    QAVRef r;
    r._p = object;
    return r;
  }

  QAVRef(const QAVRef& other) : QAVRef(other._p) {}
  QAVRef(QAVRef&& other) noexcept : _p(std::exchange(other._p, nullptr)) {}
  template <class U>
  QAVRef(const QAVRef<U>& other) : QAVRef(other.get()) {}  // NOLINT
  template <class U>
  QAVRef(QAVRef<U>&& other) : _p(other.Detach()) {}  // NOLINT
  QAVRef& operator=(QAVRef other) noexcept {
    std::swap(_p, other._p);
    return *this;
  }
  ~QAVRef() {
    if (_p) _p->Release();
  }

  T* get() const { return _p; }
  T* operator->() const { return _p; }
  T& operator*() const { return *_p; }
  explicit operator bool() const { return _p != nullptr; }
  // Gives up the reference without releasing it.
  T* Detach() { return std::exchange(_p, nullptr); }
  void Reset() { QAVRef().swap(*this); }
  void swap(QAVRef& other) noexcept { std::swap(_p, other._p); }

  friend bool operator==(const QAVRef& a, const QAVRef& b) { return a._p == b._p; }
  friend bool operator==(const QAVRef& a, std::nullptr_t) { return a._p == nullptr; }

 private:
  T* _p = nullptr;
};

template <class T, class... Args>
QAVRef<T> QAVMakeRef(Args&&... args) {
  return QAVRef<T>::Adopt(new T(std::forward<Args>(args)...));
}

// Queries an interface of a host class (one declared with QAV_DECLARE_CLASS);
// null when the object does not have it.
template <class I>
QAVRef<I> QAVQuery(QAVBaseUnknown* object) {
  void* out = nullptr;
  if (!object || FAILED(object->QueryInterface(I::ClassId(), &out))) return nullptr;
  auto* base = static_cast<QAVBaseUnknown*>(out);
  if (!base) return nullptr;  // a success that gave nothing
  if (I* found = dynamic_cast<I*>(base)) return QAVRef<I>::Adopt(found);
  base->Release();
  return nullptr;
}

using QAVBaseUnknown_var = QAVRef<QAVBaseUnknown>;

#endif
