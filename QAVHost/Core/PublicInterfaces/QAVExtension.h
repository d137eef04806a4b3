// Extensions: interfaces added to the objects of a class from outside the
// class. A module registers, when it loads, a factory of extension objects for
// a class name and an interface. A query of that interface on an object of the
// class, or of a class derived from it, that the object does not answer itself
// then makes the extension, aggregated into the object (QAVBaseUnknown::
// AggregateInto): it shares the object's references, answers the object's own
// interfaces too, and lives as long as the object. Each object gets at most
// one extension per factory, made on the first query and kept, so an
// extension may hold state for its object.
#ifndef QAVExtension_h
#define QAVExtension_h

#include "QAVBaseUnknown.h"

class QAVHOST_API QAVExtension {
 public:
  // A new extension object (its class must answer the interface registered
  // with the factory), or null.
  using Factory = QAVBaseUnknown* (*)();

  // False for a null argument or when an extension of that class and interface
  // is already registered (the first registration is kept).
  static bool Register(const char* extendedClassName, const IID& iid, Factory factory);
  // The factory registered for the class of that meta-class or the nearest of
  // its bases, or null.
  static Factory Find(const QAVMetaClass* extendedClass, const IID& iid);

  QAVExtension() = delete;
};

// Registers an extension class when the module loads:
//   QAV_REGISTER_EXTENSION(QAVERbaSurfacicGeometry, "QAVSurfacicRep", QAVIRbaGeometry)
#define QAV_REGISTER_EXTENSION(Cls, ExtendedClassName, Interface)                           \
  [[maybe_unused]] static const bool qavExtension##Cls##Interface = QAVExtension::Register( \
      ExtendedClassName, Interface::ClassId(), []() -> QAVBaseUnknown* { return new Cls; })

#endif
