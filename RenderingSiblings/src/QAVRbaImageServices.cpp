#include "QAVRbaImageServices.h"

#include <string>

#include "QAVFileServices.h"

void QAVRbaImageServices::ExtractPathList(const char* list, QAVListValQAVUnicodeString& paths) {
  QAVSplitPathList(list, paths);
}

void QAVRbaImageServices::SplitPath(const QAVUnicodeString& name, QAVUnicodeString& base,
                                    QAVUnicodeString& extension) {
  const std::string& text = name.str();
  const std::size_t slash = text.find_last_of("/\\");
  const std::size_t nameStart = slash == std::string::npos ? 0 : slash + 1;
  const std::size_t dot = text.rfind('.');
  // No dot in the final component, or only the one that begins it.
  if (dot == std::string::npos || dot <= nameStart) {
    base = name;
    extension = QAVUnicodeString();
    return;
  }
  const std::string baseText = text.substr(0, dot);
  const std::string extensionText = text.substr(dot + 1);
  base = QAVUnicodeString(baseText);
  extension = QAVUnicodeString(extensionText);
}
