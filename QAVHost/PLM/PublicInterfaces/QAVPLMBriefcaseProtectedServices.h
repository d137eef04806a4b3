// Import of packaged content files (QAVContentPackage) into a PLM repository
// (QAVPLMRepository).
#ifndef QAVPLMBriefcaseProtectedServices_h
#define QAVPLMBriefcaseProtectedServices_h

#include <string>
#include <utility>
#include <vector>

#include "QAVHostExport.h"
#include "QAVListValQAVUnicodeString.h"
#include "QAVString.h"
#include "QAVTypes.h"
#include "QAVUnicodeString.h"

class QAVHOST_API QAVPLMBriefcaseProtectedServices {
 public:
  using Attributes = std::vector<std::pair<QAVString, QAVUnicodeString>>;

  // Imports the package at `packagePath` into the repository `repository`.
  // The package is opened and checked first: a refused package writes nothing.
  // Then every object of the package is written with a fresh identifier, its
  // attributes, `attributes` (which win over the package's) and its files, in
  // one transaction: all or nothing.
  //
  // When `attributes` holds "Report" naming a folder (created when missing), a
  // plain-text report of the import is written there, as
  // "plm-import-<UTC time>-<process id>-<n>.txt": the package, the repository,
  // the time, then the objects with their identifiers or the failure's reason.
  //
  // S_OK with `ids` (in the package's order; empty for a package without
  // objects), or E_FAIL with `ids` empty and `error` (when given) telling why.
  // A report that cannot be written after a successful import gives S_FALSE
  // (the objects are imported) with `error` telling why. `reportFile` (when
  // given) receives the report's path, or an empty string when none was
  // written.
  static HRESULT ImportAsRef(const QAVString& repository, const QAVUnicodeString& packagePath,
                             const Attributes& attributes, QAVListValQAVUnicodeString& ids,
                             std::string* error = nullptr, std::string* reportFile = nullptr);
};

#endif
