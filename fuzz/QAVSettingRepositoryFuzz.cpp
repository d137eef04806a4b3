// Fuzz target of the settings file reader: arbitrary bytes are parsed as a
// settings file. A file that is refused must say why; a file that is read must
// write back to a text that reads again to the same keys and values, bit for
// bit, and writes the same text again.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "QAVStoreFormat.h"

namespace {

void Check(bool condition) {
  if (!condition) __builtin_trap();
}

constexpr std::string_view kHeader = "QAVHostSettings 1";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  qavstore::KeyedStore store;
  std::string error;
  if (!qavstore::KeyedStore::Parse(text, kHeader, store, error)) {
    Check(!error.empty());
    return 0;
  }
  const std::string written = store.Serialize(kHeader);
  qavstore::KeyedStore again;
  Check(qavstore::KeyedStore::Parse(written, kHeader, again, error));
  Check(again.Entries().size() == store.Entries().size());
  for (const auto& [key, value] : store.Entries()) {
    const qavstore::StoredValue* back = again.Find(key);
    Check(back && back->SameAs(value));
  }
  Check(again.Serialize(kHeader) == written);
  return 0;
}
