// The arguments of a command header (boxed values, QAVBoxingOfQAVUnicodeString
// for texts), given to the command it starts: while a header creates and
// activates its command, QAVAfrGetArguments gives them.
#ifndef QAVAfrArguments_h
#define QAVAfrArguments_h

#include <vector>

#include "QAVBaseUnknown.h"
#include "QAVRef.h"

class QAVHOST_API QAVAfrArguments : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  explicit QAVAfrArguments(std::vector<QAVBaseUnknown_var> values = {});
  ~QAVAfrArguments() override;

  int GetCount() const { return static_cast<int>(_values.size()); }
  // Borrowed; null out of range.
  QAVBaseUnknown* GetArgument(int index) const;

  // Walks the arguments in order: each Next gives the following one
  // (borrowed), null at the end.
  class Iterator {
   public:
    explicit Iterator(const QAVAfrArguments* arguments) : _arguments(arguments) {}
    QAVBaseUnknown* Next() { return _arguments ? _arguments->GetArgument(_next++) : nullptr; }

   private:
    const QAVAfrArguments* _arguments;
    int _next = 0;
  };

 private:
  std::vector<QAVBaseUnknown_var> _values;
};

// The arguments of the header starting a command right now (borrowed), or null
// outside the start of a command by a header.
QAVHOST_API QAVAfrArguments* QAVAfrGetArguments();

#endif
