#include "QAVPathElement.h"

QAV_IMPLEMENT_CLASS(QAVPathElement, QAVBaseUnknown, "System");

QAVPathElement::QAVPathElement() = default;

QAVPathElement::QAVPathElement(QAVBaseUnknown* root) { AddChildElement(root); }

QAVPathElement::QAVPathElement(const QAVPathElement& other)
    : QAVBaseUnknown(other), _elements(other._elements) {}

QAVPathElement& QAVPathElement::operator=(const QAVPathElement& other) {
  if (this != &other) {
    _elements = other._elements;
    _cursor = -1;
  }
  return *this;
}

QAVPathElement::~QAVPathElement() = default;

QAVBaseUnknown* QAVPathElement::GetElement(int index) const {
  if (index < 0 || index >= GetSize()) return nullptr;
  return _elements[static_cast<std::size_t>(index)].get();
}

void QAVPathElement::AddChildElement(QAVBaseUnknown* element) {
  if (element) _elements.emplace_back(element);
}

void QAVPathElement::AddFatherElement(QAVBaseUnknown* element) {
  if (element) _elements.insert(_elements.begin(), QAVBaseUnknown_var(element));
}

void QAVPathElement::Clear() { _elements.clear(); }

QAVBaseUnknown_var QAVPathElement::FindElement(const IID& iid) const {
  for (const auto& element : _elements) {
    void* found = nullptr;
    if (SUCCEEDED(element->QueryInterface(iid, &found)) && found)
      return QAVBaseUnknown_var::Adopt(static_cast<QAVBaseUnknown*>(found));
  }
  return nullptr;
}

QAVBaseUnknown* QAVPathElement::NextFatherElement() {
  QAVBaseUnknown* element = GetElement(_cursor);
  if (element) --_cursor;
  return element;
}

bool QAVPathElement::IsSamePath(const QAVPathElement& other) const {
  return _elements == other._elements;
}
