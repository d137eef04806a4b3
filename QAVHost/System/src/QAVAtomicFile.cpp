#include "QAVAtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <vector>

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

  std::vector<char> name(path.begin(), path.end());
  for (const char c : std::string_view(".tmp.XXXXXX"))
    name.push_back(c);
  name.push_back('\0');
  if (Fails(Stage::Open))
    return SetError(error, "cannot create a temporary file beside " + path, EACCES);
  const int fd = ::mkstemp(name.data());
  if (fd < 0) return SetError(error, "cannot create a temporary file beside " + path, errno);
  const std::string temp(name.data());

  // Keep the permissions of the file being replaced (mkstemp gives 0600).
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
