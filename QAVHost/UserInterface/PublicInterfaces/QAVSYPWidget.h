// A widget of the declarative toolkit: its look comes from a style class of a
// style sheet (QAVSYPStyleSheet.h), and its state is the set of properties its
// class publishes (QAVSYPMetaClass.h), read and written through its
// introspection adapter (QAVISYPIntrospectable), which it answers when its
// class has a meta-class. While the driver records, every property written is
// journaled ("widget": name, "<property>=<value>").
#ifndef QAVSYPWidget_h
#define QAVSYPWidget_h

#include <memory>

#include "QAVDlgWidget.h"
#include "QAVString.h"

class QAVISYPIntrospectable;
class QAVSYPIntrospectableAdapter;

class QAVHOST_API QAVSYPWidget : public QAVDlgWidget {
  QAV_DECLARE_CLASS
 public:
  QAVSYPWidget(QAVDlgWidget* father, const char* name, QAVDlgKind kind);
  ~QAVSYPWidget() override;

  // The style class that gives the widget its look, and the style sheet file
  // (a name looked up like a resource) that defines it.
  void SetStyleClass(const char* styleClass, const char* styleSheet);
  const QAVString& GetStyleClass() const { return _styleClass; }
  const QAVString& GetStyleSheet() const { return _styleSheet; }

  HRESULT QueryInterface(const IID& iid, void** object) override;

 protected:
  // The adapter without a query (borrowed; null until made), for a destructor,
  // where a query would revive the object.
  QAVISYPIntrospectable* GetIntrospectionWithoutQuery() const;

 private:
  QAVString _styleClass;
  QAVString _styleSheet;
  std::unique_ptr<QAVSYPIntrospectableAdapter> _adapter;  // made on the first query
};

#endif
