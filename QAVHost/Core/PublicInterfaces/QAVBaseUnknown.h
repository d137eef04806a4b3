// The reference-counted base object of the host's component framework, and the
// macros that give a class its meta-class services.
#ifndef QAVBaseUnknown_h
#define QAVBaseUnknown_h

#include <atomic>
#include <type_traits>

#include "QAVHostExport.h"
#include "QAVMetaClass.h"
#include "QAVTypes.h"

// Declares the meta-class services of a class. Put it first in the class body;
// it leaves the access at private.
#define QAV_DECLARE_CLASS                       \
 public:                                        \
  static const char* ClassName();               \
  static QAVMetaClass* MetaObject();            \
  static const IID& ClassId();                  \
  static QAVBaseUnknown* CreateItself();        \
  const char* IsA() const override;             \
  QAVMetaClass* GetMetaObject() const override; \
                                                \
 private:

// Defines the services declared by QAV_DECLARE_CLASS. The class is registered
// with its factory when the module loads, so it can be instantiated by name.
// CreateItself returns null for a class without a public default constructor.
#define QAV_IMPLEMENT_CLASS(Cls, Base, Framework)                                      \
  QAVMetaClass* Cls::MetaObject() {                                                    \
    static QAVMetaClass* const meta =                                                  \
        QAVMetaClass::Create(#Cls, Base::MetaObject(), Framework, &Cls::CreateItself); \
    return meta;                                                                       \
  }                                                                                    \
  const char* Cls::ClassName() { return #Cls; }                                        \
  const IID& Cls::ClassId() { return MetaObject()->GetClassId(); }                     \
  QAVBaseUnknown* Cls::CreateItself() { return QAVCreateDefaultInstance<Cls>(); }      \
  const char* Cls::IsA() const { return #Cls; }                                        \
  QAVMetaClass* Cls::GetMetaObject() const { return MetaObject(); }                    \
  [[maybe_unused]] static const bool qavRegistered##Cls = (Cls::MetaObject() != nullptr)

struct QAVExtensionSet;

class QAVHOST_API QAVBaseUnknown {
 public:
  // A new object holds one reference, owned by its creator.
  QAVBaseUnknown() = default;
  // A copy is a new object with its own single reference (and none of the
  // other's extensions, nor its outer object).
  QAVBaseUnknown(const QAVBaseUnknown&) {}
  // Assignment keeps the object's own references, outer object and extensions.
  QAVBaseUnknown& operator=(const QAVBaseUnknown&) {  // NOLINT(bugprone-unhandled-self-assignment)
    return *this;
  }
  virtual ~QAVBaseUnknown();

  virtual unsigned long AddRef();
  // Destroys the object when the last reference goes.
  virtual unsigned long Release();
  unsigned long GetRefCount() const { return _refCount.load(std::memory_order_relaxed); }

  // Succeeds for the identifier of this class, of any of its bases, of an
  // interface that a derived class adds by overriding, of an extension
  // registered for the class (QAVExtension.h), or, for an aggregated object, of
  // what its outer object answers; *object then holds a new reference and
  // points to the QAVBaseUnknown of the object that answers.
  virtual HRESULT QueryInterface(const IID& iid, void** object);

  // Aggregation: makes this object a part of `outer` (an interface object that
  // a class holds as a member, an extension of an object). Its references are
  // then the outer object's (AddRef and Release act on it, and never destroy
  // this part, which its owner deletes), and a query that this object cannot
  // answer goes to the outer object. Null ends the aggregation.
  void AggregateInto(QAVBaseUnknown* outer) { _outer = outer; }
  QAVBaseUnknown* GetOuter() const { return _outer; }

  static const char* ClassName();
  static QAVMetaClass* MetaObject();
  static const IID& ClassId();
  virtual const char* IsA() const;
  virtual QAVMetaClass* GetMetaObject() const;
  int IsAKindOf(const char* className) const;

 private:
  std::atomic<unsigned long> _refCount{1};
  QAVBaseUnknown* _outer = nullptr;
  QAVExtensionSet* _extensions = nullptr;  // made on the first extension
};

// A new default-constructed T, or null when T has no public default constructor.
template <class T>
QAVBaseUnknown* QAVCreateDefaultInstance() {
  if constexpr (std::is_default_constructible_v<T> && !std::is_abstract_v<T>) {
    return new T;
  } else {
    return nullptr;
  }
}

#endif
