#include "QAVMsgCatalog.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string_view>

#include "QAVEnvironment.h"
#include "QAVProcessState.h"
#include "QAVStoreFormat.h"

namespace {

namespace fs = std::filesystem;

struct Catalog {
  std::string path;  // empty when no file was found
  std::map<std::string, std::string> texts;
};

std::map<std::string, Catalog>& Cache() {
  static auto* const cache = new std::map<std::string, Catalog>;
  return *cache;
}

void ForgetCatalogs() { Cache().clear(); }
QAV_REGISTER_RESET(QAVMsgCatalog, ForgetCatalogs);

std::string FindCatalogFile(const std::string& name) {
  const char* path = QAVGetEnv("QAVHOST_RESOURCE_PATH");
  if (!path || name.empty() || name.find('/') != std::string::npos) return std::string();
  std::string_view dirs = path;
  while (true) {
    const auto colon = dirs.find(':');
    const std::string_view dir = dirs.substr(0, colon);
    if (!dir.empty()) {
      const fs::path candidate = fs::path(dir) / "msgcatalog" / (name + ".catalog");
      std::error_code ec;
      if (fs::is_regular_file(candidate, ec)) return candidate.string();
    }
    if (colon == std::string_view::npos) return std::string();
    dirs.remove_prefix(colon + 1);
  }
}

void Load(Catalog& catalog) {
  std::ifstream in(catalog.path, std::ios::binary);
  if (!in) {
    (void)std::fprintf(stderr, "qavhost: the message catalog %s cannot be read\n",
                       catalog.path.c_str());
    return;
  }
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const std::string_view trimmed = qavstore::Trim(line);
    if (trimmed.empty() || trimmed[0] == '#' || trimmed[0] == ';') continue;
    const auto equal = trimmed.find('=');
    std::string text;
    const std::string_view key = equal == std::string_view::npos
                                     ? std::string_view()
                                     : qavstore::Trim(trimmed.substr(0, equal));
    if (key.empty() || !qavstore::ParseAssignedValue(trimmed.substr(equal + 1), text)) {
      (void)std::fprintf(stderr, "qavhost: the message catalog %s has a bad line %d, skipped\n",
                         catalog.path.c_str(), number);
      continue;
    }
    catalog.texts[std::string(key)] = std::move(text);
  }
}

const Catalog& CatalogNamed(const std::string& name) {
  auto& cache = Cache();
  const auto found = cache.find(name);
  if (found != cache.end()) return found->second;
  Catalog& catalog = cache[name];
  catalog.path = FindCatalogFile(name);
  if (!catalog.path.empty()) Load(catalog);
  return catalog;
}

std::string Substitute(const std::string& text, const QAVUnicodeString* parameters, int count) {
  if (!parameters || count <= 0) return text;
  std::string out;
  for (std::size_t i = 0; i < text.size();) {
    if (text[i] == '{') {
      std::size_t j = i + 1;
      int n = 0;
      while (j < text.size() && text[j] >= '0' && text[j] <= '9' && n <= count)
        n = n * 10 + (text[j++] - '0');
      if (j > i + 1 && j < text.size() && text[j] == '}' && n >= 1 && n <= count) {
        out += parameters[n - 1].str();
        i = j + 1;
        continue;
      }
    }
    out += text[i++];
  }
  return out;
}

}  // namespace

QAVUnicodeString QAVMsgCatalog::BuildMessage(const QAVString& catalog, const QAVString& key,
                                             const QAVUnicodeString* parameters, int parameterCount,
                                             const QAVUnicodeString& defaultText) {
  QAVUnicodeString text = defaultText;
  GetText(catalog, key, text);
  return QAVUnicodeString(Substitute(text.str(), parameters, parameterCount));
}

bool QAVMsgCatalog::GetText(const QAVString& catalog, const QAVString& key,
                            QAVUnicodeString& text) {
  const Catalog& found = CatalogNamed(catalog.str());
  const auto it = found.texts.find(key.str());
  if (it == found.texts.end()) return false;
  text = QAVUnicodeString(it->second);
  return true;
}

std::string QAVMsgCatalog::GetCatalogPath(const QAVString& catalog) {
  return CatalogNamed(catalog.str()).path;
}
