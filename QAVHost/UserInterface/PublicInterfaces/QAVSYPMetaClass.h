// The introspection of declarative widgets: the properties a widget class
// publishes, by name and type, so that style sheets and tools bind to them by
// name. A class's properties are declared by its meta-class builder, a factory
// registered under the class name when the module loads (the builders are
// generated from widget description files); the meta-class is built on first
// use and kept for the process.
#ifndef QAVSYPMetaClass_h
#define QAVSYPMetaClass_h

#include <string>
#include <vector>

#include "QAVHostExport.h"

enum class QAVSYPType { Int, UnicodeString, Collection };

struct QAVSYPProperty {
  std::string name;
  QAVSYPType type;
};

class QAVHOST_API QAVSYPMetaClass {
 public:
  explicit QAVSYPMetaClass(std::string className) : _className(std::move(className)) {}

  const std::string& GetClassName() const { return _className; }
  const std::vector<QAVSYPProperty>& GetProperties() const { return _properties; }
  // Null when the class has no such property.
  const QAVSYPProperty* FindProperty(const char* name) const;
  // Declares a property; a second declaration of a name is ignored.
  void AddProperty(const char* name, QAVSYPType type);

  // The meta-class of a class name, built by its builder on first use; null
  // when no builder is registered for it.
  static const QAVSYPMetaClass* Find(const char* className);

 private:
  std::string _className;
  std::vector<QAVSYPProperty> _properties;
};

// Declares a class's properties into its meta-class.
class QAVHOST_API QAVSYPMetaClassBuilder {
 public:
  virtual ~QAVSYPMetaClassBuilder();
  virtual void Build(QAVSYPMetaClass& metaClass) const = 0;

  using Factory = QAVSYPMetaClassBuilder* (*)();
  // Registers the builder factory of a class (the first one of a name is kept).
  static bool Register(const char* className, Factory factory);
};

#define QAV_REGISTER_SYP_META_CLASS(Cls, Factory)            \
  [[maybe_unused]] static const bool qavSYPRegistered##Cls = \
      QAVSYPMetaClassBuilder::Register(#Cls, Factory)

#endif
