// Named string properties handed to a context-bar component when it is made
// (a starter's "Command": the header of the command it starts).
#ifndef QAVAfrPropertyBundle_h
#define QAVAfrPropertyBundle_h

#include <map>
#include <string>

#include "QAVHostExport.h"
#include "QAVString.h"

class QAVHOST_API QAVAfrPropertyBundle {
 public:
  // Sets (or replaces) a property.
  void SetString(const QAVString& name, const QAVString& value);
  // False, leaving `value`, when there is no such property.
  bool GetString(const QAVString& name, QAVString& value) const;
  int GetCount() const { return static_cast<int>(_values.size()); }
  const std::map<std::string, std::string>& GetAll() const { return _values; }

 private:
  std::map<std::string, std::string> _values;
};

#endif
