// The naming interface of model objects: the name shown to the user. An object
// answers it (QueryInterface with QAVIAlias::ClassId()) only when it has been
// given a name.
#ifndef QAVIAlias_h
#define QAVIAlias_h

#include "QAVBaseUnknown.h"
#include "QAVUnicodeString.h"

class QAVHOST_API QAVIAlias : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  explicit QAVIAlias(QAVUnicodeString alias = {}) : _alias(std::move(alias)) {}
  ~QAVIAlias() override;
  const QAVUnicodeString& GetAlias() const { return _alias; }

 private:
  QAVUnicodeString _alias;
};

#endif
