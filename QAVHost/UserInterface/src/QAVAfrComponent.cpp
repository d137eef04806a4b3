#include "QAVAfrComponent.h"

QAV_IMPLEMENT_CLASS(QAVICAfrComponent, QAVBaseUnknown, "ApplicationFrame");

QAVAfrComponent::QAVAfrComponent(const QAVString& type, const QAVString& name,
                                 const QAVString& style, const QAVAfrPropertyBundle& properties)
    : _type(type), _name(name), _style(style), _properties(properties) {}

QAVAfrComponent::~QAVAfrComponent() = default;

bool QAVAfrComponent::IsKnownType(const QAVString& type) {
  return type == "QAVCmdStarter" || type == "QAVCmdSeparator" || type == "QAVCmdContainer" ||
         type == "AfrContextBarRow";
}

HRESULT QAVAfrComponent::CreateComponent(const QAVString& type, const QAVString& name,
                                         const QAVString& style,
                                         const QAVAfrPropertyBundle& properties,
                                         QAVBaseUnknown*& created) {
  created = nullptr;
  if (!IsKnownType(type)) return E_FAIL;
  auto item = QAVMakeRef<QAVAfrComponent>(type, name, style, properties);
  _items.push_back(item);
  created = item.Detach();
  return S_OK;
}

QAVICAfrComponent* QAVAfrComponent::GetComponent(int index) const {
  if (index < 0 || index >= GetComponentCount()) return nullptr;
  return _items[static_cast<std::size_t>(index)].get();
}

void QAVAfrComponent::SetRebuildMode(bool rebuild) {
  if (rebuild) _items.clear();
}

std::string QAVAfrComponent::Describe(int depth) const {
  std::string text(static_cast<std::size_t>(depth) * 2, ' ');
  text += _type.str() + " " + _name.str();
  QAVString command;
  if (_properties.GetString("Command", command) && !(command == _name))
    text += " [" + command.str() + "]";
  text += "\n";
  for (const auto& item : _items)
    text += item->Describe(depth + 1);
  return text;
}
