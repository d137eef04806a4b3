// Makes a header's arguments the current ones (QAVAfrGetArguments) for the
// scope's life, on this thread; scopes nest.
#ifndef QAVAfrArgumentsScope_h
#define QAVAfrArgumentsScope_h

#include "QAVAfrArguments.h"

class QAVAfrArgumentsScope {
 public:
  explicit QAVAfrArgumentsScope(QAVAfrArguments* arguments);
  ~QAVAfrArgumentsScope();
  QAVAfrArgumentsScope(const QAVAfrArgumentsScope&) = delete;
  QAVAfrArgumentsScope& operator=(const QAVAfrArgumentsScope&) = delete;

 private:
  QAVAfrArguments* _previous;
};

#endif
