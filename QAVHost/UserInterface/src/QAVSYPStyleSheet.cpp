#include "QAVSYPStyleSheet.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <memory>
#include <mutex>
#include <sstream>

#include "QAVEnvironment.h"
#include "QAVFileServices.h"
#include "QAVProcessState.h"

namespace {

struct Sheets {
  std::mutex mutex;
  std::map<std::string, std::unique_ptr<QAVSYPStyleSheet>, std::less<>> read;  // null: unusable

  static Sheets& Get() {
    static auto* const sheets = new Sheets;
    return *sheets;
  }
};

void ForgetSheets() {
  Sheets& sheets = Sheets::Get();
  const std::lock_guard lock(sheets.mutex);
  sheets.read.clear();
}
QAV_REGISTER_RESET(QAVSYPStyleSheet, ForgetSheets);

std::string Trim(const std::string& text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// The sheet's file: "style/<name>" in the first resource directory that has it.
std::string FindSheet(const std::string& name) {
  QAVListValQAVUnicodeString directories;
  QAVSplitPathList(QAVGetEnv("QAVHOST_RESOURCE_PATH"), directories);
  for (int i = 1; i <= directories.Size(); ++i) {
    std::string path = directories[i].ToNarrow() + "/style/" + name;
    if (std::ifstream(path)) return path;
  }
  return {};
}

}  // namespace

const QAVSYPStyleSheet* QAVSYPStyleSheet::Get(const char* name) {
  if (!name || !*name) return nullptr;
  Sheets& sheets = Sheets::Get();
  const std::lock_guard lock(sheets.mutex);
  if (const auto found = sheets.read.find(name); found != sheets.read.end())
    return found->second.get();
  std::unique_ptr<QAVSYPStyleSheet> sheet;
  if (const std::string path = FindSheet(name); !path.empty()) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    sheet = std::make_unique<QAVSYPStyleSheet>();
    std::string error;
    if (!sheet->Parse(text.str(), error)) {
      (void)std::fprintf(stderr, "%s: %s: the style sheet is not used\n", path.c_str(),
                         error.c_str());
      sheet.reset();
    }
  }
  return sheets.read.emplace(name, std::move(sheet)).first->second.get();
}

bool QAVSYPStyleSheet::Parse(const std::string& text, std::string& error) {
  _classes.clear();
  std::istringstream lines(text);
  std::string line;
  std::vector<Entry>* current = nullptr;
  for (int number = 1; std::getline(lines, line); ++number) {
    const std::string trimmed = Trim(line);
    if (trimmed.empty() || trimmed[0] == '#') continue;
    const auto fail = [&](const std::string& what) {
      error = "line " + std::to_string(number) + ": " + what;
      _classes.clear();
      return false;
    };
    if (trimmed.front() == '[') {
      const std::string name =
          trimmed.back() == ']' ? Trim(trimmed.substr(1, trimmed.size() - 2)) : "";
      if (name.empty() || name.find_first_of(" \t[]") != std::string::npos)
        return fail("\"[<style class>]\" expected");
      current = &_classes[name];
      continue;
    }
    const auto equal = trimmed.find('=');
    if (equal == std::string::npos) return fail("\"<key> = <value>\" expected");
    if (!current) return fail("a key before any \"[<style class>]\"");
    std::string key = Trim(trimmed.substr(0, equal));
    std::string state;
    if (const auto colon = key.find(':'); colon != std::string::npos) {
      state = Trim(key.substr(colon + 1));
      key = Trim(key.substr(0, colon));
      if (state.empty()) return fail("a state name expected after \":\"");
    }
    if (key.empty() || key.find_first_of(" \t") != std::string::npos)
      return fail("a key without blanks expected");
    current->push_back({key, state, Trim(trimmed.substr(equal + 1))});
  }
  return true;
}

bool QAVSYPStyleSheet::HasClass(const char* styleClass) const {
  return styleClass && _classes.find(styleClass) != _classes.end();
}

std::string QAVSYPStyleSheet::GetValue(const char* styleClass, const char* key,
                                       const States& states, const std::string& fallback) const {
  const auto found = styleClass ? _classes.find(styleClass) : _classes.end();
  if (found == _classes.end() || !key) return fallback;
  const std::string* plain = nullptr;
  for (const Entry& entry : found->second) {
    if (entry.key != key) continue;
    if (entry.state.empty()) {
      if (!plain) plain = &entry.value;
      continue;
    }
    const auto state = states.find(entry.state);
    if (state != states.end() && state->second != 0) return entry.value;
  }
  return plain ? *plain : fallback;
}

double QAVSYPStyleSheet::GetNumber(const char* styleClass, const char* key, const States& states,
                                   double fallback) const {
  const std::string text = GetValue(styleClass, key, states, {});
  // A point is the decimal separator whatever the process's locale; a value
  // that is not wholly a finite number gives the fallback.
  const char* first = text.c_str();
  const char* const last = first + text.size();
  if (first != last && *first == '+') {
    ++first;  // from_chars takes no plus sign, nor a sign after it
    if (first != last && *first == '-') return fallback;
  }
  double value = 0;
  const auto [end, error] = std::from_chars(first, last, value, std::chars_format::general);
  return error == std::errc() && end == last && std::isfinite(value) ? value : fallback;
}
