// Fuzz target of the program's PPM reader: arbitrary bytes are read as an image
// through a source that hands them out in small pieces. An image that is read
// must be as large as its header says and hold no sample above its maxval; one
// that is refused must say why.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "QAVCliPpm.h"

namespace {

void Check(bool condition) {
  if (!condition) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::size_t at = 0;
  // Pieces of 1 to 7 bytes, as a pipe or a slow device would give them.
  const qavcli::ByteSource source = [&](char* buffer, std::size_t wanted) -> long {
    const std::size_t n = std::min({wanted, size - at, 1 + at % 7});
    std::copy(data + at, data + at + n, buffer);
    at += n;
    return static_cast<long>(n);
  };
  qavcli::Ppm ppm;
  std::string error;
  if (!qavcli::ReadPpm(source, ppm, error)) {
    Check(!error.empty());
    return 0;
  }
  const std::size_t count = static_cast<std::size_t>(ppm.width) * ppm.height * 3;
  Check(ppm.width > 0 && ppm.height > 0 && ppm.maxval > 0 && ppm.maxval <= 65535);
  Check(ppm.samples.size() == count);
  for (const std::uint16_t sample : ppm.samples)
    Check(sample <= ppm.maxval);
  return 0;
}
