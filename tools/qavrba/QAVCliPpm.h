// Binary PPM images ("P6", maxval 1 to 65535) for qavrba color convert.
//
// The header is read first, and never more pixel data than it announces: a
// stream that does not start like a PPM image is refused after a few bytes, one
// that never ends is read only as far as its header says. Comments ("#" to the
// end of the line) may stand between the header's numbers; the header may not
// be longer than 64 KiB. Images of more than 2^28 pixels are refused before any
// memory is given to them.
#ifndef QAVCliPpm_h
#define QAVCliPpm_h

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace qavcli {

struct Ppm {
  int width = 0;
  int height = 0;
  int maxval = 0;
  std::vector<std::uint16_t> samples;  // width * height * 3, row after row
};

// Reads up to `size` bytes into `buffer`; returns how many (0 at the end), or a
// negative number on a read error.
using ByteSource = std::function<long(char* buffer, std::size_t size)>;

// Reads an image from a source; false with `error` saying why ("it does not
// start with \"P6\"", ...) when it is not a valid binary PPM image.
bool ReadPpm(const ByteSource& source, Ppm& ppm, std::string& error);
// Reads an image file; false with `error` naming the file when it cannot be
// opened, is not a file one can read an image from (a directory) or is not a
// valid image.
bool ReadPpmFile(const std::string& path, Ppm& ppm, std::string& error);
// Writes an image with a plain header; false when the file cannot be written.
bool WritePpmFile(const std::string& path, const Ppm& ppm);

}  // namespace qavcli

#endif
