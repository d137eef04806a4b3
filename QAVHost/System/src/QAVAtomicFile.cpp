#include "QAVAtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <random>
#include <thread>

namespace {

namespace fs = std::filesystem;

struct SimulatedFailure {
  QAVAtomicFile::Stage stage = QAVAtomicFile::Stage::None;
  std::size_t afterBytes = 0;
};

SimulatedFailure& Failure() {
  static SimulatedFailure failure;
  return failure;
}

bool Fails(QAVAtomicFile::Stage stage) { return Failure().stage == stage; }

bool SetError(std::string* error, const std::string& what, int code) {
  if (error) *error = what + ": " + std::strerror(code);
  return false;
}

// Writes all of `content`, retrying short writes and interrupted calls.
bool WriteAll(int fd, std::string_view content, int& code) {
  std::size_t limit = content.size();
  const bool simulated = Fails(QAVAtomicFile::Stage::WriteData);
  if (simulated && Failure().afterBytes < limit) limit = Failure().afterBytes;
  std::size_t done = 0;
  while (done < limit) {
    const ssize_t n = ::write(fd, content.data() + done, limit - done);
    if (n < 0) {
      if (errno == EINTR) continue;
      code = errno;
      return false;
    }
    done += static_cast<std::size_t>(n);
  }
  if (simulated) {
    code = ENOSPC;
    return false;
  }
  return true;
}

// Creates "<path>.tmp.XXXXXX" with a fresh random suffix, for writing, with
// the mode 0666 less the umask (mkstemp would give 0600 whatever the umask).
// The descriptor, or -1 with errno set.
int CreateTemporary(const std::string& path, std::string& temp) {
  static constexpr char kLetters[] =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  // Seeded from the clock, the process and the thread: names need only differ
  // most of the time, the exclusive open settles the rest.
  thread_local std::mt19937_64 random(
      static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) ^
      (static_cast<std::uint64_t>(::getpid()) << 32) ^
      static_cast<std::uint64_t>(std::hash<std::thread::id>{}(std::this_thread::get_id())));
  for (int attempt = 0; attempt < 100; ++attempt) {
    temp = path + ".tmp.";
    std::uint64_t bits = random();
    for (int i = 0; i < 6; ++i, bits /= 62)
      temp += kLetters[bits % 62];
    const int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd >= 0 || errno != EEXIST) return fd;
  }
  errno = EEXIST;
  return -1;
}

void SyncDirectory(const fs::path& directory) {
  const int fd = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  // Some file systems cannot flush a directory; the rename is done either way.
  (void)::fsync(fd);
  ::close(fd);
}

}  // namespace

void QAVAtomicFile::SimulateFailure(Stage stage, std::size_t afterBytes) {
  Failure() = SimulatedFailure{stage, afterBytes};
}

bool QAVAtomicFile::Write(const std::string& path, std::string_view content, std::string* error) {
  if (path.empty()) return SetError(error, "no file name", EINVAL);
  const fs::path target(path);
  fs::path directory = target.parent_path();
  if (directory.empty()) directory = ".";
  std::error_code ec;
  fs::create_directories(directory, ec);
  if (ec) return SetError(error, "cannot create the directory " + directory.string(), ec.value());

  if (Fails(Stage::Open))
    return SetError(error, "cannot create a temporary file beside " + path, EACCES);
  std::string temp;
  const int fd = CreateTemporary(path, temp);
  if (fd < 0) return SetError(error, "cannot create a temporary file beside " + path, errno);

  // A replaced file keeps its permissions; a new one has those of any file the
  // process creates (0666 less the umask), given by the open above.
  struct stat old {};
  if (::stat(path.c_str(), &old) == 0) (void)::fchmod(fd, old.st_mode & 07777);

  int code = 0;
  std::string what;
  if (!WriteAll(fd, content, code)) {
    what = "cannot write " + temp;
  } else if (Fails(Stage::Sync)) {
    code = EIO;
    what = "cannot flush " + temp;
  } else if (::fsync(fd) != 0) {
    code = errno;
    what = "cannot flush " + temp;
  }
  if (::close(fd) != 0 && what.empty()) {
    code = errno;
    what = "cannot close " + temp;
  }
  if (what.empty()) {
    if (Fails(Stage::Rename)) {
      code = EIO;
      what = "cannot rename " + temp + " to " + path;
    } else if (std::rename(temp.c_str(), path.c_str()) != 0) {
      code = errno;
      what = "cannot rename " + temp + " to " + path;
    }
  }
  if (!what.empty()) {
    ::unlink(temp.c_str());
    return SetError(error, what, code);
  }
  SyncDirectory(directory);
  return true;
}

std::string QAVAtomicFile::MoveAside(const std::string& path, std::string* error) {
  std::error_code ec;
  std::string aside = path + ".corrupt";
  for (int n = 2; fs::exists(fs::symlink_status(aside, ec)); ++n)
    aside = path + ".corrupt." + std::to_string(n);
  if (std::rename(path.c_str(), aside.c_str()) != 0) {
    SetError(error, "cannot rename " + path + " to " + aside, errno);
    return std::string();
  }
  return aside;
}
