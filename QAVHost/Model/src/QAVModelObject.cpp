#include "QAVModelObject.h"

#include <cstring>

#include "QAVIAlias.h"

QAVMetaClass* QAVModelObject::MetaObject() {
  static QAVMetaClass* const meta =
      QAVMetaClass::Create("QAVModelObject", QAVISpecObject::MetaObject(), "Model");
  return meta;
}
const char* QAVModelObject::ClassName() { return "QAVModelObject"; }
const IID& QAVModelObject::ClassId() { return MetaObject()->GetClassId(); }
[[maybe_unused]] static const bool qavRegisteredQAVModelObject =
    QAVModelObject::MetaObject() != nullptr;

QAVModelObject::QAVModelObject() : QAVModelObject(nullptr) {}

QAVModelObject::QAVModelObject(const char* className, const QAVUnicodeString& alias)
    : _class(className && *className && std::strcmp(className, "QAVModelObject") != 0
                 ? QAVMetaClass::Create(className, MetaObject(), "Model")
                 : MetaObject()) {
  SetAlias(alias);
}

QAVModelObject::~QAVModelObject() = default;

const char* QAVModelObject::IsA() const { return _class->GetName(); }
QAVMetaClass* QAVModelObject::GetMetaObject() const { return _class; }

HRESULT QAVModelObject::QueryInterface(const IID& iid, void** object) {
  if (object && _alias && iid == QAVIAlias::ClassId()) {
    _alias->AddRef();
    *object = _alias.get();
    return S_OK;
  }
  return QAVISpecObject::QueryInterface(iid, object);
}

void QAVModelObject::SetAlias(const QAVUnicodeString& alias) {
  _alias = alias.IsEmpty() ? QAVRef<QAVIAlias>() : QAVRef<QAVIAlias>::Adopt(new QAVIAlias(alias));
}

QAVUnicodeString QAVModelObject::GetAlias() const {
  return _alias ? _alias->GetAlias() : QAVUnicodeString();
}

QAVModelObject* QAVModelObject::GetContainer(const char* className, bool create) {
  if (!className || !*className) return nullptr;
  for (const auto& container : _containers)
    if (std::strcmp(container->IsA(), className) == 0) return container.get();
  if (!create) return nullptr;
  _containers.push_back(QAVRef<QAVModelObject>::Adopt(new QAVModelObject(className)));
  return _containers.back().get();
}

void QAVModelObject::AddMember(QAVModelObject* member) {
  if (member) _members.emplace_back(member);
}
