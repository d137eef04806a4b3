// Run-time class descriptions: name, base, owning framework, class identifier and
// an optional factory. Meta-classes are created once and live for the process;
// they can be created at run time from a name and a base.
#ifndef QAVMetaClass_h
#define QAVMetaClass_h

#include <string>

#include "QAVHostExport.h"
#include "QAVTypes.h"

class QAVBaseUnknown;

class QAVHOST_API QAVMetaClass {
 public:
  using Factory = QAVBaseUnknown* (*)();

  // Returns the meta-class of this name, creating it with the given base,
  // framework and factory when it does not exist yet. A later call with the same
  // name returns the first one unchanged (a missing factory is filled in).
  static QAVMetaClass* Create(const char* className, QAVMetaClass* base, const char* framework,
                              Factory factory = nullptr);
  // Null when no meta-class of this name exists.
  static QAVMetaClass* Find(const char* className);
  // The class identifier derived from a class name (stable across runs).
  static GUID ClassIdFromName(const char* className);

  const char* GetName() const { return _name.c_str(); }
  const char* GetFramework() const { return _framework.c_str(); }
  QAVMetaClass* GetBase() const { return _base; }
  const GUID& GetClassId() const { return _classId; }

  // True when this class or one of its bases has the given name.
  bool IsAKindOf(const char* className) const;
  bool IsAKindOf(const QAVMetaClass* other) const;
  // A new instance (one reference owned by the caller), or null without a factory.
  QAVBaseUnknown* CreateInstance() const;

  QAVMetaClass(const QAVMetaClass&) = delete;
  QAVMetaClass& operator=(const QAVMetaClass&) = delete;

 private:
  QAVMetaClass(const char* name, QAVMetaClass* base, const char* framework, Factory factory);
  friend struct QAVMetaClassRegistry;

  std::string _name;
  std::string _framework;
  QAVMetaClass* _base;
  GUID _classId;
  Factory _factory;
};

// Creates the component registered under a class name and queries the interface.
// On success *object holds one reference owned by the caller.
QAVHOST_API HRESULT QAVInstantiateComponent(const char* className, const IID& iid, void** object);

#endif
