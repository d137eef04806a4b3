#include "QAVAfrPropertyBundle.h"

void QAVAfrPropertyBundle::SetString(const QAVString& name, const QAVString& value) {
  _values[name.c_str()] = value.c_str();
}

bool QAVAfrPropertyBundle::GetString(const QAVString& name, QAVString& value) const {
  const auto it = _values.find(name.c_str());
  if (it == _values.end()) return false;
  value = QAVString(it->second.c_str());
  return true;
}
