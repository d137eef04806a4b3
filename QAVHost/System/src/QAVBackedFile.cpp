#include "QAVBackedFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>

#include "QAVAtomicFile.h"

namespace qavstore {

namespace {

namespace fs = std::filesystem;

// An exclusive flock held until destruction. Waits at most `limitMs` for another
// process to release it, polling with growing pauses: a save holds the lock for
// milliseconds, so only a stuck process makes a saver give up.
class LockHolder {
 public:
  LockHolder(const std::string& path, int limitMs, std::string& error) {
    std::error_code ec;
    fs::create_directories(fs::path(path).parent_path(), ec);
    _fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (_fd < 0) {
      error = "cannot open the lock file " + path + ": " + std::strerror(errno);
      return;
    }
    long waitedUs = 0;
    for (long pauseUs = 200;; pauseUs = pauseUs < 20000 ? pauseUs * 2 : pauseUs) {
      if (::flock(_fd, LOCK_EX | LOCK_NB) == 0) {
        _locked = true;
        return;
      }
      if (errno != EWOULDBLOCK && errno != EINTR) break;
      if (waitedUs >= 1000L * limitMs) {
        errno = EWOULDBLOCK;
        break;
      }
      const timespec pause{0, pauseUs * 1000};
      ::nanosleep(&pause, nullptr);
      waitedUs += pauseUs;
    }
    error = errno == EWOULDBLOCK ? "another process has held the lock " + path + " for too long"
                                 : "cannot lock " + path + ": " + std::strerror(errno);
  }
  ~LockHolder() {
    if (_fd >= 0) ::close(_fd);  // closing releases the lock
  }
  LockHolder(const LockHolder&) = delete;
  LockHolder& operator=(const LockHolder&) = delete;
  bool Locked() const { return _locked; }

 private:
  int _fd = -1;
  bool _locked = false;
};

}  // namespace

void BackedFile::Report(const std::string& problem) {
  if (problem == _lastReport) return;
  _lastReport = problem;
  (void)std::fprintf(stderr, "qavhost: %s\n", problem.c_str());
}

bool BackedFile::Read(std::string& content, bool& exists) {
  content.clear();
  exists = true;
  const int fd = ::open(_path.c_str(), O_RDONLY | O_CLOEXEC);
  int code = 0;
  if (fd < 0) {
    if (errno == ENOENT) {
      exists = false;
      return true;
    }
    code = errno;
  } else {
    char buffer[65536];
    for (;;) {
      const ssize_t n = ::read(fd, buffer, sizeof buffer);
      if (n == 0) break;
      if (n < 0) {
        if (errno == EINTR) continue;
        code = errno;
        break;
      }
      content.append(buffer, static_cast<std::size_t>(n));
    }
    ::close(fd);
  }
  if (code == 0) return true;
  content.clear();
  _keepAside = true;
  Report("the " + _kind + " " + _path + " cannot be read (" + std::strerror(code) +
         "); it reads as empty and will be kept aside before it is replaced");
  return false;
}

void BackedFile::ReportCorrupt(const std::string& reason) {
  _keepAside = true;
  Report("the " + _kind + " " + _path + " is corrupt (" + reason +
         "); it reads as empty and will be kept aside before it is replaced");
}

bool BackedFile::Update(const std::function<std::string(const std::string*)>& merge) {
  std::string error;
  const LockHolder lock(_path + ".lock", 10000, error);
  if (!lock.Locked()) {
    (void)std::fprintf(stderr, "qavhost: cannot save the %s %s: %s\n", _kind.c_str(), _path.c_str(),
                       error.c_str());
    return false;
  }
  RemoveOrphans();
  // What another process saved since this one read the file decides afresh
  // whether there is a bad file to keep aside.
  _keepAside = false;
  std::string current;
  bool exists = false;
  const bool read = Read(current, exists);
  return Write(merge(read && exists ? &current : nullptr));
}

void BackedFile::RemoveOrphans() const {
  const fs::path target(_path);
  const std::string prefix = target.filename().string() + ".tmp.";
  std::error_code ec;
  for (fs::directory_iterator it(target.parent_path(), ec), end; !ec && it != end;
       it.increment(ec)) {
    const std::string name = it->path().filename().string();
    if (name.compare(0, prefix.size(), prefix) == 0) fs::remove(it->path(), ec);
  }
}

bool BackedFile::Write(std::string_view content) {
  std::string error;
  if (_keepAside) {
    struct stat st {};
    if (::lstat(_path.c_str(), &st) == 0) {
      const std::string aside = QAVAtomicFile::MoveAside(_path, &error);
      if (aside.empty()) {
        (void)std::fprintf(stderr, "qavhost: the corrupt %s %s is not replaced: %s\n",
                           _kind.c_str(), _path.c_str(), error.c_str());
        return false;
      }
      (void)std::fprintf(stderr, "qavhost: kept the corrupt %s %s aside as %s\n", _kind.c_str(),
                         _path.c_str(), aside.c_str());
    }
    _keepAside = false;
    _lastReport.clear();
  }
  if (QAVAtomicFile::Write(_path, content, &error)) return true;
  (void)std::fprintf(stderr, "qavhost: cannot save the %s %s: %s\n", _kind.c_str(), _path.c_str(),
                     error.c_str());
  return false;
}

}  // namespace qavstore
