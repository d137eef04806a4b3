// The introspection adapter of a declarative widget: the values of its
// properties, checked against its class's meta-class. Aggregated into the
// widget.
#ifndef QAVSYPIntrospectableAdapter_h
#define QAVSYPIntrospectableAdapter_h

#include <map>
#include <string>

#include "QAVISYPIntrospectable.h"
#include "QAVRef.h"

class QAVSYPIntrospectableAdapter : public QAVISYPIntrospectable {
  QAV_DECLARE_CLASS
 public:
  QAVSYPIntrospectableAdapter(const QAVSYPMetaClass* metaClass, std::string widgetName);
  ~QAVSYPIntrospectableAdapter() override;

  const QAVSYPMetaClass* GetSYPMetaClass() const override { return _metaClass; }
  HRESULT SetIntProperty(const char* name, int value) override;
  HRESULT GetIntProperty(const char* name, int& value) const override;
  HRESULT SetStringProperty(const char* name, const QAVUnicodeString& value) override;
  HRESULT GetStringProperty(const char* name, QAVUnicodeString& value) const override;
  HRESULT GetCollectionProperty(const char* name, QAVISYPCollection*& value) override;

 private:
  bool Declared(const char* name, QAVSYPType type) const;
  void Journal(const char* name, const std::string& value) const;

  const QAVSYPMetaClass* _metaClass;
  std::string _widgetName;
  std::map<std::string, int, std::less<>> _ints;
  std::map<std::string, QAVUnicodeString, std::less<>> _strings;
  std::map<std::string, QAVRef<QAVISYPCollection>, std::less<>> _collections;
};

#endif
