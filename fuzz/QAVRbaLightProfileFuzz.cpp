// Fuzz target of the IES reader: arbitrary bytes are read as a file, and a
// profile that reads is sampled over a grid of directions. The bytes go to an
// in-memory file reached through its /proc path, so the whole ReadIESFile path
// (open, locale, parse, close) runs on every input.
#include <sys/mman.h>
#include <unistd.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "QAVRbaLightProfile.h"

namespace {

int MemoryFile() {
  static const int fd = memfd_create("qav-ies-fuzz", 0);
  if (fd < 0) std::abort();
  return fd;
}

void Check(bool condition) {
  if (!condition) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const int fd = MemoryFile();
  if (ftruncate(fd, 0) != 0) std::abort();
  std::size_t written = 0;
  while (written < size) {
    const ssize_t n = pwrite(fd, data + written, size - written, static_cast<off_t>(written));
    if (n <= 0) std::abort();
    written += static_cast<std::size_t>(n);
  }
  static const std::string path = "/proc/self/fd/" + std::to_string(fd);

  QAVRbaLightProfile profile;
  const bool read = profile.ReadIESFile(QAVUnicodeString(path));
  Check(read == profile.GetLastError().IsEmpty());
  Check(read == profile.HasCompleteTable());
  if (!read) {
    Check(profile.GetLightProfileValue(0.0, 0.0) == 0.0);
    return 0;
  }
  const int rows = profile.GetNumberOfHorizontalAngles();
  const int columns = profile.GetNumberOfVerticalAngles();
  Check(profile.GetHorizontalAngles().size() == static_cast<std::size_t>(rows));
  Check(profile.GetVerticalAngles().size() == static_cast<std::size_t>(columns));

  // With finite numbers every sample is a weighted mean of table values (weights
  // in [0, 1] when the angle lists ascend) times the scale.
  bool finite = std::isfinite(profile.GetCandelaMultiplier() * profile.GetBallastFactor());
  bool ascending = true;
  double largest = 0.0;
  for (int i = 0; i < rows; ++i)
    for (int j = 0; j < columns; ++j) {
      const double value = profile.GetCandelaValue(i, j);
      finite = finite && std::isfinite(value);
      largest = std::fmax(largest, std::fabs(value));
    }
  for (const auto* list : {&profile.GetHorizontalAngles(), &profile.GetVerticalAngles()})
    for (std::size_t k = 0; k < list->size(); ++k) {
      finite = finite && std::isfinite((*list)[k]);
      if (k > 0 && !((*list)[k] > (*list)[k - 1])) ascending = false;
    }
  const double bound =
      largest * std::fabs(profile.GetCandelaMultiplier() * profile.GetBallastFactor()) * (1 + 1e-9);
  for (int a = 0; a <= 30; ++a)
    for (int b = 0; b <= 60; ++b) {
      const double value = profile.GetLightProfileValue(-45.0 + 15.0 * a, -45.0 + 7.5 * b);
      if (finite && ascending) Check(std::fabs(value) <= bound);
    }
  QAVRbaLightProfile copy(profile);
  Check(copy.GetLightProfileValue(10.0, 20.0) == profile.GetLightProfileValue(10.0, 20.0) ||
        std::isnan(profile.GetLightProfileValue(10.0, 20.0)));
  return 0;
}
