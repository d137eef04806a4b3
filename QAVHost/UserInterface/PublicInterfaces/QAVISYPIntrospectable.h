// The introspection adapter of a declarative widget: its published properties
// read and written by name, as its class's meta-class declares them
// (QAVSYPMetaClass.h). A widget whose class has a meta-class answers it
// (QAVSYPWidget). Writing a property that the class does not declare, or with
// another type, fails and changes nothing.
#ifndef QAVISYPIntrospectable_h
#define QAVISYPIntrospectable_h

#include "QAVBaseUnknown.h"
#include "QAVISYPCollection.h"
#include "QAVSYPMetaClass.h"
#include "QAVTypes.h"
#include "QAVUnicodeString.h"

class QAVHOST_API QAVISYPIntrospectable : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVISYPIntrospectable() = default;
  ~QAVISYPIntrospectable() override;

  virtual const QAVSYPMetaClass* GetSYPMetaClass() const = 0;
  // Unset properties read as 0, the empty string and an empty collection.
  virtual HRESULT SetIntProperty(const char* name, int value) = 0;
  virtual HRESULT GetIntProperty(const char* name, int& value) const = 0;
  virtual HRESULT SetStringProperty(const char* name, const QAVUnicodeString& value) = 0;
  virtual HRESULT GetStringProperty(const char* name, QAVUnicodeString& value) const = 0;
  // The collection (borrowed; made on first use).
  virtual HRESULT GetCollectionProperty(const char* name, QAVISYPCollection*& value) = 0;
};

// The property accessors of generated introspection code: each queries the
// object's adapter. Without one, the internal check fails with "Bad
// Introspectable implementation!", a setter changes nothing and a getter gives
// 0, the empty string or null.
QAVHOST_API void QAVSYPSetInt(const QAVBaseUnknown* object, const char* name, int value);
QAVHOST_API int QAVSYPGetInt(const QAVBaseUnknown* object, const char* name);
QAVHOST_API void QAVSYPSetString(const QAVBaseUnknown* object, const char* name,
                                 const QAVUnicodeString& value);
QAVHOST_API QAVUnicodeString QAVSYPGetString(const QAVBaseUnknown* object, const char* name);
QAVHOST_API QAVISYPCollection* QAVSYPGetCollection(const QAVBaseUnknown* object, const char* name);

#endif
