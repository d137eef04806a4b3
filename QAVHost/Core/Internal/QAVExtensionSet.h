// The extensions made for one object, with the factory of each.
#ifndef QAVExtensionSet_h
#define QAVExtensionSet_h

#include <utility>
#include <vector>

#include "QAVExtension.h"

struct QAVExtensionSet {
  std::vector<std::pair<QAVExtension::Factory, QAVBaseUnknown*>> made;

  QAVExtensionSet() = default;
  QAVExtensionSet(const QAVExtensionSet&) = delete;
  QAVExtensionSet& operator=(const QAVExtensionSet&) = delete;
  ~QAVExtensionSet();
};

#endif
