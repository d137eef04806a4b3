#include "QAVSYPWidget.h"

#include "QAVDiagnostics.h"
#include "QAVHostJournal.h"
#include "QAVSYPIntrospectableAdapter.h"

QAV_IMPLEMENT_CLASS(QAVISYPIntrospectable, QAVBaseUnknown, "UserInterface");
QAV_IMPLEMENT_CLASS(QAVSYPIntrospectableAdapter, QAVISYPIntrospectable, "UserInterface");
QAV_IMPLEMENT_CLASS(QAVSYPWidget, QAVDlgWidget, "UserInterface");

QAVISYPIntrospectable::~QAVISYPIntrospectable() = default;

QAVSYPIntrospectableAdapter::QAVSYPIntrospectableAdapter(const QAVSYPMetaClass* metaClass,
                                                         std::string widgetName)
    : _metaClass(metaClass), _widgetName(std::move(widgetName)) {}

QAVSYPIntrospectableAdapter::~QAVSYPIntrospectableAdapter() = default;

bool QAVSYPIntrospectableAdapter::Declared(const char* name, QAVSYPType type) const {
  const QAVSYPProperty* property = _metaClass ? _metaClass->FindProperty(name) : nullptr;
  return property && property->type == type;
}

void QAVSYPIntrospectableAdapter::Journal(const char* name, const std::string& value) const {
  if (qavjournal::Recording())
    qavjournal::Record(
        {"widget", _widgetName, std::string(name) + "=" + value, GetOuter(), nullptr});
}

HRESULT QAVSYPIntrospectableAdapter::SetIntProperty(const char* name, int value) {
  if (!Declared(name, QAVSYPType::Int)) return E_FAIL;
  _ints.insert_or_assign(name, value);
  Journal(name, std::to_string(value));
  return S_OK;
}

HRESULT QAVSYPIntrospectableAdapter::GetIntProperty(const char* name, int& value) const {
  if (!Declared(name, QAVSYPType::Int)) return E_FAIL;
  const auto found = _ints.find(name);
  value = found == _ints.end() ? 0 : found->second;
  return S_OK;
}

HRESULT QAVSYPIntrospectableAdapter::SetStringProperty(const char* name,
                                                       const QAVUnicodeString& value) {
  if (!Declared(name, QAVSYPType::UnicodeString)) return E_FAIL;
  _strings.insert_or_assign(name, value);
  Journal(name, value.ToString().str());
  return S_OK;
}

HRESULT QAVSYPIntrospectableAdapter::GetStringProperty(const char* name,
                                                       QAVUnicodeString& value) const {
  if (!Declared(name, QAVSYPType::UnicodeString)) return E_FAIL;
  const auto found = _strings.find(name);
  value = found == _strings.end() ? QAVUnicodeString() : found->second;
  return S_OK;
}

HRESULT QAVSYPIntrospectableAdapter::GetCollectionProperty(const char* name,
                                                           QAVISYPCollection*& value) {
  if (!Declared(name, QAVSYPType::Collection)) return E_FAIL;
  QAVRef<QAVISYPCollection>& collection = _collections[name];
  if (!collection) collection = QAVMakeRef<QAVSYPCollection>();
  value = collection.get();
  return S_OK;
}

QAVSYPWidget::QAVSYPWidget(QAVDlgWidget* father, const char* name, QAVDlgKind kind)
    : QAVDlgWidget(father, name, kind) {}

QAVSYPWidget::~QAVSYPWidget() {
  if (_adapter) _adapter->AggregateInto(nullptr);
}

void QAVSYPWidget::SetStyleClass(const char* styleClass, const char* styleSheet) {
  _styleClass = QAVString(styleClass);
  _styleSheet = QAVString(styleSheet);
}

QAVISYPIntrospectable* QAVSYPWidget::GetIntrospectionWithoutQuery() const { return _adapter.get(); }

HRESULT QAVSYPWidget::QueryInterface(const IID& iid, void** object) {
  if (object && iid == QAVISYPIntrospectable::ClassId()) {
    if (!_adapter) {
      const QAVSYPMetaClass* metaClass = QAVSYPMetaClass::Find(IsA());
      if (!metaClass) {
        *object = nullptr;
        return E_NOINTERFACE;
      }
      _adapter = std::make_unique<QAVSYPIntrospectableAdapter>(metaClass, GetName().str());
      _adapter->AggregateInto(this);
    }
    AddRef();
    *object = static_cast<QAVBaseUnknown*>(_adapter.get());
    return S_OK;
  }
  return QAVDlgWidget::QueryInterface(iid, object);
}

namespace {

constexpr const char* kBadIntrospectable = "Bad Introspectable implementation!";

QAVRef<QAVISYPIntrospectable> Adapter(const QAVBaseUnknown* object) {
  auto adapter = QAVQuery<QAVISYPIntrospectable>(const_cast<QAVBaseUnknown*>(object));
  QAVCheck(adapter.get() != nullptr, kBadIntrospectable);
  return adapter;
}

}  // namespace

void QAVSYPSetInt(const QAVBaseUnknown* object, const char* name, int value) {
  if (const auto adapter = Adapter(object)) adapter->SetIntProperty(name, value);
}

int QAVSYPGetInt(const QAVBaseUnknown* object, const char* name) {
  int value = 0;
  if (const auto adapter = Adapter(object)) adapter->GetIntProperty(name, value);
  return value;
}

void QAVSYPSetString(const QAVBaseUnknown* object, const char* name,
                     const QAVUnicodeString& value) {
  if (const auto adapter = Adapter(object)) adapter->SetStringProperty(name, value);
}

QAVUnicodeString QAVSYPGetString(const QAVBaseUnknown* object, const char* name) {
  QAVUnicodeString value;
  if (const auto adapter = Adapter(object)) adapter->GetStringProperty(name, value);
  return value;
}

QAVISYPCollection* QAVSYPGetCollection(const QAVBaseUnknown* object, const char* name) {
  QAVISYPCollection* value = nullptr;
  if (const auto adapter = Adapter(object)) adapter->GetCollectionProperty(name, value);
  return value;
}
