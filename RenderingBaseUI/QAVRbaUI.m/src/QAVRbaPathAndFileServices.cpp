#include "QAVRbaPathAndFileServices.h"

#include <initializer_list>
#include <new>

#include "QAVFileServices.h"
#include "QAVRbaGraphicPath.h"
#include "QAVRbaImageServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVString.h"

namespace {

using qavrba::Exists;
using qavrba::Join;
using qavrba::SearchedGraphicDirectories;

// Sets `found` to the first candidate that exists; false when none does.
bool TakeFirstExisting(std::initializer_list<QAVUnicodeString> candidates,
                       QAVUnicodeString& found) {
  for (const QAVUnicodeString& candidate : candidates) {
    if (Exists(candidate)) {
      found = candidate;
      return true;
    }
  }
  return false;
}

}  // namespace

HRESULT QAVRbaPathAndFileServices::GetFileInfo(const QAVUnicodeString& directory,
                                               const QAVUnicodeString& name, int& isDirectory) {
  isDirectory = 0;
  QAVStatInfo info;
  if (FAILED(QAVGetFileInfo(QAVMakePath(directory, name), info))) return E_FAIL;
  isDirectory = (info.mode & QAV_S_IFDIR) ? 1 : 0;
  return S_OK;
}

QAVListValQAVUnicodeString* QAVRbaPathAndFileServices::GetListOfDirectoryFile(
    const char* directory, QAVListValQAVUnicodeString& extensions) {
  auto* files = new (std::nothrow) QAVListValQAVUnicodeString;
  if (!files) return nullptr;
  const QAVUnicodeString dir(directory);
  QAVDirectory* reader = nullptr;
  if (FAILED(QAVOpenDirectory(dir, reader))) return files;

  QAVUnicodeString name;
  while (QAVReadDirectory(reader, name) == S_OK) {
    int isDirectory = 0;
    if (FAILED(GetFileInfo(dir, name, isDirectory)) || isDirectory) continue;
    if (extensions.Size() == 0) {
      files->Append(name);
      continue;
    }
    // The extension is looked for in the last four characters of the name, in
    // all lower case and then in all upper case.
    const int start = name.GetLength() - 4;
    for (const QAVUnicodeString& extension : extensions) {
      QAVUnicodeString lower = extension;
      lower.ToLower();
      QAVUnicodeString upper = extension;
      upper.ToUpper();
      if (name.SearchSubString(lower, start) >= 0 || name.SearchSubString(upper, start) >= 0) {
        files->Append(name);
        break;
      }
    }
  }
  QAVCloseDirectory(reader);
  return files;
}

void QAVRbaPathAndFileServices::RetreiveBackplatePath(const QAVUnicodeString& fileName,
                                                      QAVUnicodeString& foundPath) {
  if (fileName.IsEmpty()) return;
  QAVUnicodeString base;
  QAVUnicodeString extension;
  QAVRbaImageServices::SplitPath(fileName, base, extension);
  QAVUnicodeString lowerExtension = extension;
  lowerExtension.ToLower();
  QAVUnicodeString upperExtension = extension;
  upperExtension.ToUpper();

  for (const QAVUnicodeString& directory : SearchedGraphicDirectories()) {
    if (TakeFirstExisting({Join(directory, base + "." + lowerExtension),
                           Join(directory, base + "." + upperExtension),
                           Join(Join(directory, "backplates"), fileName)},
                          foundPath))
      return;
  }

  const QAVUnicodeString fallback =
      qavrba::LiveSystemSetting(QAVRbaRenderingSettings::kLiveBackplatePath);
  if (fallback.IsEmpty()) return;
  // Only the lower-case form is looked for in the fallback directory, unlike in
  // the graphic directories: a file stored there with an upper-case extension is
  // deliberately not found.
  TakeFirstExisting({Join(fallback, base + "." + lowerExtension)}, foundPath);
}

void QAVRbaPathAndFileServices::RetreiveTexturePath(const QAVUnicodeString& fileName,
                                                    QAVUnicodeString& foundPath) {
  if (fileName.IsEmpty()) return;
  for (const QAVUnicodeString& directory : SearchedGraphicDirectories()) {
    if (TakeFirstExisting({Join(directory, fileName), Join(Join(directory, "ambiences"), fileName)},
                          foundPath))
      return;
  }

  const QAVUnicodeString fallback =
      qavrba::LiveSystemSetting(QAVRbaRenderingSettings::kLiveAmbiencePath);
  if (fallback.IsEmpty()) return;
  TakeFirstExisting({Join(fallback, fileName)}, foundPath);
}
