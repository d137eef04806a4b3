#include "QAVISYPCollection.h"

QAV_IMPLEMENT_CLASS(QAVISYPCollection, QAVBaseUnknown, "UserInterface");
QAV_IMPLEMENT_CLASS(QAVSYPCollection, QAVISYPCollection, "UserInterface");

QAVISYPCollection::~QAVISYPCollection() = default;
QAVSYPCollection::QAVSYPCollection() = default;
QAVSYPCollection::~QAVSYPCollection() = default;

QAVBaseUnknown* QAVSYPCollection::GetItem(int index) const {
  if (index < 0 || index >= GetCount()) return nullptr;
  return _items[static_cast<std::size_t>(index)].get();
}

int QAVSYPCollection::IndexOf(const QAVBaseUnknown* item) const {
  for (int i = 0; i < GetCount(); ++i)
    if (_items[static_cast<std::size_t>(i)].get() == item) return i;
  return -1;
}

void QAVSYPCollection::Append(QAVBaseUnknown* item) {
  if (item) _items.emplace_back(item);
}
