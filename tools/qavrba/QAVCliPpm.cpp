#include "QAVCliPpm.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>

namespace qavcli {

namespace {

// Far beyond any real image, and small enough that sizes never overflow.
constexpr std::uint64_t kMaxPixels = std::uint64_t{1} << 28;
constexpr std::size_t kMaxHeader = std::size_t{64} * 1024;

// The header's bytes, pulled from the source one small read at a time.
class HeaderReader {
 public:
  explicit HeaderReader(const ByteSource& source) : _source(source) {}
  // The next byte, or -1 at the end of the data or of the header's allowance.
  int Next() {
    if (_at == _size) {
      if (_consumed >= kMaxHeader) return -1;
      const long n = _source(_buffer, sizeof _buffer);
      if (n <= 0) return -1;
      _size = static_cast<std::size_t>(n);
      _at = 0;
    }
    ++_consumed;
    return static_cast<unsigned char>(_buffer[_at++]);
  }
  void Unread() {
    --_at;
    --_consumed;
  }
  bool TooLong() const { return _consumed >= kMaxHeader; }
  // The bytes read past the header, which start the pixel data.
  std::size_t Leftover(char*& data) {
    data = _buffer + _at;
    return _size - _at;
  }

 private:
  const ByteSource& _source;
  char _buffer[256];
  std::size_t _size = 0;
  std::size_t _at = 0;
  std::size_t _consumed = 0;
};

bool IsBlank(int c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

// The header's next unsigned decimal number, after blanks and comments.
bool HeaderNumber(HeaderReader& in, std::uint64_t& value) {
  int c = in.Next();
  for (;;) {
    if (IsBlank(c)) {
      c = in.Next();
    } else if (c == '#') {
      while (c >= 0 && c != '\n' && c != '\r')
        c = in.Next();
    } else {
      break;
    }
  }
  if (c < '0' || c > '9') return false;
  value = 0;
  for (; c >= '0' && c <= '9'; c = in.Next()) {
    value = value * 10 + static_cast<std::uint64_t>(c - '0');
    if (value > 0xFFFFFFFFu) return false;
  }
  if (c >= 0) in.Unread();
  return true;
}

}  // namespace

bool ReadPpm(const ByteSource& source, Ppm& ppm, std::string& error) {
  auto bad = [&](const std::string& why) {
    error = why;
    return false;
  };
  HeaderReader in(source);
  if (in.Next() != 'P' || in.Next() != '6') return bad("it does not start with \"P6\"");
  std::uint64_t width = 0;
  std::uint64_t height = 0;
  std::uint64_t maxval = 0;
  if (!HeaderNumber(in, width) || !HeaderNumber(in, height) || !HeaderNumber(in, maxval))
    return bad(in.TooLong() ? "the header is longer than 64 KiB"
                            : "the header needs a width, a height and a maxval");
  if (width == 0 || height == 0) return bad("the width and the height must be at least 1");
  if (width * height > kMaxPixels) return bad("the image is too large");
  if (maxval == 0 || maxval > 65535) return bad("the maxval must be 1 to 65535");
  if (!IsBlank(in.Next())) return bad("the maxval must be followed by one blank");

  const std::size_t bytesPerSample = maxval > 255 ? 2 : 1;
  const std::size_t count = width * height * 3;
  const std::size_t expected = count * bytesPerSample;
  std::vector<char> data(expected);
  char* leftover = nullptr;
  std::size_t have = std::min(in.Leftover(leftover), expected);
  std::memcpy(data.data(), leftover, have);
  while (have < expected) {
    const long n = source(data.data() + have, expected - have);
    if (n < 0) return bad("it cannot be read to its end");
    if (n == 0) break;
    have += static_cast<std::size_t>(n);
  }
  if (have < expected)
    return bad("the pixel data is truncated (" + std::to_string(have) + " of " +
               std::to_string(expected) + " bytes)");

  ppm.width = static_cast<int>(width);
  ppm.height = static_cast<int>(height);
  ppm.maxval = static_cast<int>(maxval);
  ppm.samples.resize(count);
  const auto* bytes = reinterpret_cast<const unsigned char*>(data.data());
  for (std::size_t i = 0; i < count; ++i) {
    const unsigned value =
        bytesPerSample == 2 ? (unsigned{bytes[2 * i]} << 8) | bytes[2 * i + 1] : bytes[i];
    if (value > maxval) return bad("a sample is above the maxval");
    ppm.samples[i] = static_cast<std::uint16_t>(value);
  }
  return true;
}

bool ReadPpmFile(const std::string& path, Ppm& ppm, std::string& error) {
  // Opened without waiting, so that a FIFO is refused rather than waited on.
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) {
    error = "cannot read '" + path +
            "': " + (errno == ENOENT ? std::string("no such file") : std::strerror(errno));
    return false;
  }
  struct stat st {};
  if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
    ::close(fd);
    error = "'" + path + "' " +
            (S_ISDIR(st.st_mode) ? "is a folder, not a file"
                                 : "is not a regular file (a FIFO, socket or device)");
    return false;
  }
  const ByteSource source = [fd](char* buffer, std::size_t size) -> long {
    for (;;) {
      const ssize_t n = ::read(fd, buffer, size);
      if (n >= 0 || errno != EINTR) return static_cast<long>(n);
    }
  };
  std::string why;
  const bool read = ReadPpm(source, ppm, why);
  ::close(fd);
  if (!read) error = "'" + path + "' is not a binary PPM image: " + why;
  return read;
}

bool WritePpmFile(const std::string& path, const Ppm& ppm) {
  std::string data = "P6\n" + std::to_string(ppm.width) + " " + std::to_string(ppm.height) + "\n" +
                     std::to_string(ppm.maxval) + "\n";
  for (const std::uint16_t v : ppm.samples) {
    if (ppm.maxval > 255) data += static_cast<char>(v >> 8);
    data += static_cast<char>(v & 0xFF);
  }
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(data.data(), static_cast<std::streamsize>(data.size()));
  out.close();
  return static_cast<bool>(out);
}

}  // namespace qavcli
