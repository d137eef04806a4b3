#include "QAVFileServices.h"

#include <cerrno>
#include <cstdlib>
#include <string>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include "QAVEnvironment.h"

namespace {

// The system cannot take a path with an embedded NUL: it would name another
// file than the one asked for.
bool Usable(const std::string& path) {
  return !path.empty() && path.find('\0') == std::string::npos;
}

}  // namespace

struct QAVDirectory {
  DIR* handle = nullptr;
};

QAVUnicodeString QAVMakePath(const QAVUnicodeString& directory, const QAVUnicodeString& name) {
  if (directory.IsEmpty()) return name;
  QAVUnicodeString path = directory;
  if (directory.str().back() != QAV_PATH_SEPARATOR) path += "/";
  path += name;
  return path;
}

HRESULT QAVGetFileInfo(const QAVUnicodeString& path, QAVStatInfo& info) {
  if (!Usable(path.str())) return E_FAIL;
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return E_FAIL;
  unsigned int mode = static_cast<unsigned int>(status.st_mode) & 0777u;
  if (S_ISDIR(status.st_mode))
    mode |= QAV_S_IFDIR;
  else if (S_ISREG(status.st_mode))
    mode |= QAV_S_IFREG;
  info.mode = mode;
  info.size = static_cast<std::int64_t>(status.st_size);
  info.modifiedTime = static_cast<std::int64_t>(status.st_mtime);
  return S_OK;
}

HRESULT QAVOpenDirectory(const QAVUnicodeString& path, QAVDirectory*& directory) {
  directory = nullptr;
  if (!Usable(path.str())) return E_FAIL;
  DIR* handle = ::opendir(path.c_str());
  if (!handle) return E_FAIL;
  directory = new QAVDirectory{handle};
  return S_OK;
}

HRESULT QAVReadDirectory(QAVDirectory* directory, QAVUnicodeString& name) {
  if (!directory || !directory->handle) return E_FAIL;
  // readdir reports the end and an error alike with null; errno tells them apart.
  errno = 0;
  const dirent* entry = ::readdir(directory->handle);
  if (!entry) return errno == 0 ? S_FALSE : E_FAIL;
  name = QAVUnicodeString(entry->d_name);
  return S_OK;
}

void QAVCloseDirectory(QAVDirectory* directory) {
  if (!directory) return;
  if (directory->handle) ::closedir(directory->handle);
  delete directory;
}

// NOLINTNEXTLINE(bugprone-reserved-identifier)
int _QAVFileAccess(const QAVUnicodeString& path, int mode, int /*flags*/) {
  if (!Usable(path.str())) return -1;
  int how = F_OK;
  if (mode & QAV_ACCESS_READ) how |= R_OK;
  if (mode & QAV_ACCESS_WRITE) how |= W_OK;
  return ::access(path.c_str(), how) == 0 ? 0 : -1;
}

HRESULT QAVMkdir(const QAVUnicodeString& path) {
  const std::string& full = path.str();
  if (!Usable(full)) return E_FAIL;
  // Create every ancestor in turn; one that already exists is fine, and the
  // final check decides.
  for (std::size_t at = full.find('/', 1); at != std::string::npos; at = full.find('/', at + 1)) {
    const std::string parent = full.substr(0, at);
    if (parent.back() == '/') continue;  // repeated separators
    ::mkdir(parent.c_str(), 0777);
  }
  if (::mkdir(full.c_str(), 0777) == 0) return S_OK;
  struct stat status {};
  return ::stat(full.c_str(), &status) == 0 && S_ISDIR(status.st_mode) ? S_OK : E_FAIL;
}

QAVUnicodeString QAVGetTempDirectory() {
  std::string dir;
  if (const char* tmp = QAVGetEnv("TMPDIR"); tmp && *tmp) dir = tmp;
  while (dir.size() > 1 && dir.back() == '/')
    dir.pop_back();
  if (dir.empty()) dir = "/tmp";
  return QAVUnicodeString(dir);
}

void QAVSplitPathList(const char* list, QAVListValQAVUnicodeString& paths) {
  paths.RemoveAll();
  if (!list) return;
  const std::string text(list);
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find(QAV_PATH_LIST_SEPARATOR, start);
    if (end == std::string::npos) end = text.size();
    if (end > start) paths.Append(QAVUnicodeString(text.substr(start, end - start)));
    start = end + 1;
  }
}

void QAVSplitPath(const QAVUnicodeString& path, QAVUnicodeString& folder, QAVUnicodeString& name) {
  const std::string& text = path.str();
  const std::size_t cut = text.find_last_of("/\\");
  if (cut == std::string::npos) {
    folder = QAVUnicodeString();
    name = path;
    return;
  }
  folder = QAVUnicodeString(text.substr(0, cut));
  name = QAVUnicodeString(text.substr(cut + 1));
}

HRESULT QAVFindPath(const char* pathVariable, const QAVUnicodeString& relativePath,
                    QAVUnicodeString& found) {
  if (!pathVariable || relativePath.IsEmpty()) return E_FAIL;
  QAVListValQAVUnicodeString directories;
  QAVSplitPathList(QAVGetEnv(pathVariable), directories);
  for (int i = 1; i <= directories.Size(); ++i) {
    const QAVUnicodeString candidate = QAVMakePath(directories[i], relativePath);
    if (_QAVFileAccess(candidate, QAV_ACCESS_EXISTS, 0) == 0) {
      found = candidate;
      return S_OK;
    }
  }
  return E_FAIL;
}
