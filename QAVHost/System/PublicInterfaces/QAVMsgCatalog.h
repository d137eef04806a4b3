// Message catalogs: the user-visible texts of a module, looked up by key.
//
// The catalog named N is the file "N.catalog" in the "msgcatalog" folder of one
// of the resource directories listed in the environment variable
// QAVHOST_RESOURCE_PATH (directories separated by ':'); the first directory that
// has the file provides the whole catalog. A catalog is read once and kept
// (also when it is missing) until the process state is reset.
//
// Catalog file format (UTF-8 text):
//
//   # a comment (a line starting with '#' or ';'); blank lines are ignored
//   Title = Create a new covering material
//   Resolution = Resolution: {1} x {2}
//   Padded = "  text with blanks kept, a \"quote\" and a line\nbreak  "
//
// Each line is "key = text". Blanks around keys and texts are dropped; a text
// that starts with '"' is quoted, with \" \\ \n \t \r and \xHH as escapes. When a
// key appears twice the later line wins. A line that is none of these is reported
// once on standard error (file and line number) and skipped.
//
// In a message, "{n}" (n = 1, 2, ...) stands for the n-th parameter; a "{n}"
// without a matching parameter is left as it is. Parameters are substituted in
// one pass: a parameter's own text is never substituted again.
#ifndef QAVMsgCatalog_h
#define QAVMsgCatalog_h

#include <string>

#include "QAVHostExport.h"
#include "QAVString.h"
#include "QAVUnicodeString.h"

class QAVHOST_API QAVMsgCatalog {
 public:
  // The text of `key` in `catalog`, or `defaultText` when the catalog is missing
  // or has no such key, with the `parameterCount` parameters substituted.
  static QAVUnicodeString BuildMessage(const QAVString& catalog, const QAVString& key,
                                       const QAVUnicodeString* parameters = nullptr,
                                       int parameterCount = 0,
                                       const QAVUnicodeString& defaultText = QAVUnicodeString());
  // The raw text of `key`; false, and `text` untouched, when there is none.
  static bool GetText(const QAVString& catalog, const QAVString& key, QAVUnicodeString& text);
  // The file a catalog was read from; empty when it was not found.
  static std::string GetCatalogPath(const QAVString& catalog);
};

#endif
