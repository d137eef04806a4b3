// Command headers: named entries of the host's header list (a button, a menu
// item) that start a command of a given class on request.
#ifndef QAVCommandHeader_h
#define QAVCommandHeader_h

#include "QAVBaseUnknown.h"
#include "QAVString.h"

class QAVCommand;

class QAVHOST_API QAVCommandHeader : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // Creates a header and puts it into the header list, which keeps it. Null for a
  // null or empty argument or a header name already in the list.
  static QAVCommandHeader* Create(const char* headerName, const char* commandClassName);
  // The header of that name in the list (borrowed), or null.
  static QAVCommandHeader* GetHeaderFromList(const char* headerName);
  static int GetHeaderCount();
  // Empties the header list.
  static void ResetHeaderList();

  const QAVString& GetHeaderName() const { return _headerName; }
  const QAVString& GetCommandClassName() const { return _commandClassName; }

  // Creates the command through the command factory of its class name
  // (QAVFillDictionary) and activates it. Returns the command, owned by the host
  // (it may already have asked for its destruction), or null when no factory
  // gives one.
  QAVCommand* StartCommand();
  // How many commands this header started.
  int GetStartCount() const { return _startCount; }

  QAVCommandHeader(const QAVCommandHeader&) = delete;
  QAVCommandHeader& operator=(const QAVCommandHeader&) = delete;
  ~QAVCommandHeader() override;

 private:
  QAVCommandHeader(const char* headerName, const char* commandClassName);

  QAVString _headerName;
  QAVString _commandClassName;
  int _startCount = 0;
};

#endif
