// Command headers: named entries of the host's header list (a button, a menu
// item) that start a command of a given class on request.
#ifndef QAVCommandHeader_h
#define QAVCommandHeader_h

#include <vector>

#include "QAVAfrArguments.h"
#include "QAVBaseUnknown.h"
#include "QAVRef.h"
#include "QAVString.h"
#include "QAVUnicodeString.h"

class QAVCommand;

class QAVHOST_API QAVCommandHeader : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // Creates a header and puts it into the header list, which keeps it. Null for a
  // null or empty argument or a header name already in the list. `arguments`
  // are given to every command it starts, boxed (QAVAfrGetArguments).
  static QAVCommandHeader* Create(const char* headerName, const char* commandClassName,
                                  const std::vector<QAVUnicodeString>& arguments = {});
  // The header of that name in the list (borrowed), or null.
  static QAVCommandHeader* GetHeaderFromList(const char* headerName);
  static int GetHeaderCount();
  // Empties the header list.
  static void ResetHeaderList();

  const QAVString& GetHeaderName() const { return _headerName; }
  const QAVString& GetCommandClassName() const { return _commandClassName; }
  const QAVAfrArguments& GetArguments() const { return *_arguments; }

  // Creates the command through the command factory of its class name
  // (QAVFillDictionary) and activates it, its arguments current meanwhile. Returns the command,
  // owned by the host (it may already have asked for its destruction), or null when no factory
  // gives one.
  QAVCommand* StartCommand();
  // How many commands this header started.
  int GetStartCount() const { return _startCount; }

  QAVCommandHeader(const QAVCommandHeader&) = delete;
  QAVCommandHeader& operator=(const QAVCommandHeader&) = delete;
  ~QAVCommandHeader() override;

 private:
  QAVCommandHeader(const char* headerName, const char* commandClassName,
                   const std::vector<QAVUnicodeString>& arguments);

  QAVString _headerName;
  QAVString _commandClassName;
  QAVRef<QAVAfrArguments> _arguments;
  int _startCount = 0;
};

#endif
