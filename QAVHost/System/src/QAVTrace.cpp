#include "QAVTrace.h"

#include <cstdarg>
#include <cstdio>
#include <string>

#include "QAVHostJournal.h"

void QAVTrace::TraPrint(int level, const char* format, ...) const {
  if (!IsActive(level) || !format) return;
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
  qavjournal::Record({"trace", GetName(), text, this});
  Print("%s", text.c_str());
}
