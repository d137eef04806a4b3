#include "QAVTraceChannel.h"

#include <cstdarg>
#include <cstdio>
#include <string_view>

#include "QAVEnvironment.h"

namespace {

// Whether QAVHOST_TRACE names the channel (or says "all").
bool ListedInEnvironment(std::string_view name) {
  const char* list = QAVGetEnv("QAVHOST_TRACE");
  if (!list) return false;
  std::string_view rest(list);
  while (!rest.empty()) {
    const std::size_t comma = rest.find(',');
    const std::string_view item = rest.substr(0, comma);
    if (item == "all" || (!item.empty() && item == name)) return true;
    if (comma == std::string_view::npos) break;
    rest.remove_prefix(comma + 1);
  }
  return false;
}

}  // namespace

QAVTraceChannel::QAVTraceChannel(const char* name) : _name(name ? name : "") {
  _enabled = ListedInEnvironment(_name);
}

void QAVTraceChannel::Print(const char* format, ...) const {
  if (!IsEnabled() || !format) return;
  va_list args;
  va_start(args, format);
  va_list copy;
  va_copy(copy, args);
  const int length = std::vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  std::string text;
  if (length > 0) {
    text.resize(static_cast<std::size_t>(length) + 1);
    // args was started above and is used once; the analyzer misses the va_copy.
    (void)std::vsnprintf(text.data(), text.size(), format,
                         args);  // NOLINT(clang-analyzer-valist.Uninitialized)
    text.resize(static_cast<std::size_t>(length));
  }
  va_end(args);
  std::string line = "[" + _name + "] " + text;
  if (line.back() != '\n') line += '\n';
  // One write per line keeps the lines of concurrent channels whole.
  (void)std::fwrite(line.data(), 1, line.size(), stdout);
  (void)std::fflush(stdout);
}
