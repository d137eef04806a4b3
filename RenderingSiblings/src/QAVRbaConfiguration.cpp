#include "QAVRbaConfiguration.h"

#include <memory>
#include <optional>
#include <vector>

#include "QAVBackedFile.h"
#include "QAVProcessState.h"
#include "QAVStoreFormat.h"

namespace {

struct Line {
  std::string raw;      // the line as it stands in the file
  std::string section;  // the section it belongs to (or opens)
  std::string key;      // empty for headers, comments and blank lines
  std::string value;
  bool header = false;
};

struct Configuration {
  explicit Configuration(const std::string& path) : file(path, "configuration file") {}
  qavstore::BackedFile file;
  std::vector<Line> lines;
};

std::unique_ptr<Configuration>& Slot() {
  static auto* const slot = new std::unique_ptr<Configuration>;
  return *slot;
}

void Forget() { Slot().reset(); }
QAV_REGISTER_RESET(QAVRbaConfiguration, Forget);

const Line* FindIn(const std::vector<Line>& lines, const std::string& section,
                   const std::string& key) {
  for (const Line& line : lines)
    if (!line.header && !line.key.empty() && line.section == section && line.key == key)
      return &line;
  return nullptr;
}

// Parses the file; false with `error` ("line N: ...") when it is not valid.
bool Parse(const std::string& content, std::vector<Line>& lines, std::string& error) {
  std::string section;
  std::string_view text = content;
  for (int number = 1; !text.empty(); ++number) {
    const auto end = text.find('\n');
    Line line;
    line.raw.assign(text.substr(0, end));
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    if (!line.raw.empty() && line.raw.back() == '\r') line.raw.pop_back();
    const std::string where = "line " + std::to_string(number) + ": ";
    const std::string_view trimmed = qavstore::Trim(line.raw);
    if (trimmed.empty() || trimmed[0] == '#' || trimmed[0] == ';') {
      line.section = section;
    } else if (trimmed[0] == '[') {
      if (trimmed.back() != ']') {
        error = where + "a section header must end with ']'";
        return false;
      }
      section.assign(qavstore::Trim(trimmed.substr(1, trimmed.size() - 2)));
      line.section = section;
      line.header = true;
    } else {
      const auto equal = trimmed.find('=');
      if (equal == std::string_view::npos) {
        error = where + "expected \"key = value\" or \"[section]\"";
        return false;
      }
      line.section = section;
      line.key.assign(qavstore::Trim(trimmed.substr(0, equal)));
      if (line.key.empty()) {
        error = where + "no key before '='";
        return false;
      }
      if (!qavstore::ParseAssignedValue(trimmed.substr(equal + 1), line.value)) {
        error = where + "bad quoted value";
        return false;
      }
      if (FindIn(lines, section, line.key)) {
        error = where;
        error.append("the key \"").append(line.key).append("\" is given twice in [");
        error.append(section).append("]");
        return false;
      }
    }
    lines.push_back(std::move(line));
  }
  return true;
}

// The lines of a file's content (null: no file); an invalid content is reported
// and reads as empty.
std::vector<Line> LinesOf(const std::string* content, qavstore::BackedFile& file) {
  std::vector<Line> lines;
  std::string error;
  if (content && !Parse(*content, lines, error)) {
    lines.clear();
    file.ReportCorrupt(error);
  }
  return lines;
}

Configuration& Loaded() {
  auto& slot = Slot();
  if (slot) return *slot;
  slot = std::make_unique<Configuration>(QAVRbaConfiguration::GetFilePath());
  std::string content;
  bool exists = false;
  if (slot->file.Read(content, exists) && exists) slot->lines = LinesOf(&content, slot->file);
  return *slot;
}

bool HasControl(std::string_view text) {
  for (const char c : text)
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) return true;
  return false;
}

bool Writable(const std::string& section, const std::string& key) {
  const auto blankEdged = [](const std::string& s) { return qavstore::Trim(s).size() != s.size(); };
  if (HasControl(section) || section.find(']') != std::string::npos || blankEdged(section))
    return false;
  return !key.empty() && !HasControl(key) && key.find('=') == std::string::npos && key[0] != '[' &&
         key[0] != '#' && key[0] != ';' && !blankEdged(key);
}

std::string AssignmentLine(const std::string& key, const std::string& value) {
  const std::string formatted = qavstore::FormatAssignedValue(value);
  return formatted.empty() ? key + " =" : key + " = " + formatted;
}

// Sets a key of a section in the lines of a file: in place when the section has
// it, else after the section's last line, in a new section at the end when there
// is none.
void Assign(std::vector<Line>& lines, const std::string& section, const std::string& key,
            const std::string& text) {
  Line assignment{AssignmentLine(key, text), section, key, text};
  std::optional<std::size_t> last;  // the last line of the section
  bool replaced = false;
  for (std::size_t i = 0; i < lines.size() && !replaced; ++i) {
    if (lines[i].section != section) continue;
    if (lines[i].key == key && !lines[i].header) {
      lines[i] = assignment;
      replaced = true;
    } else if (lines[i].header || !lines[i].key.empty() || section.empty()) {
      last = i;
    }
  }
  if (!replaced) {
    if (last) {
      lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(*last + 1), assignment);
    } else if (section.empty()) {
      lines.insert(lines.begin(), assignment);
    } else {
      if (!lines.empty() && !qavstore::Trim(lines.back().raw).empty())
        lines.push_back(Line{"", lines.back().section, "", "", false});
      lines.push_back(Line{"[" + section + "]", section, "", "", true});
      lines.push_back(assignment);
    }
  }
}

}  // namespace

std::string QAVRbaConfiguration::GetFilePath() {
  return qavstore::SettingsDirectory() + "/RenderingConfiguration.conf";
}

HRESULT QAVRbaConfiguration::GetHierarchicalValue(const QAVString& section, const QAVString& key,
                                                  QAVString& text) {
  const Configuration& configuration = Loaded();
  std::string level = section.str();
  for (;;) {
    if (const Line* line = FindIn(configuration.lines, level, key.str())) {
      text = QAVString(line->value);
      return S_OK;
    }
    const auto slash = level.rfind('/');
    if (slash == std::string::npos) return E_FAIL;
    level.resize(slash);
  }
}

HRESULT QAVRbaConfiguration::SetHierarchicalValue(const QAVString& section, const QAVString& key,
                                                  const QAVString& text) {
  if (!Writable(section.str(), key.str())) return E_FAIL;
  Configuration& configuration = Loaded();
  // The other lines as the file holds them now: another process may have set
  // other keys since this one read it.
  std::vector<Line> lines;
  const bool saved = configuration.file.Update([&](const std::string* current) {
    lines = LinesOf(current, configuration.file);
    Assign(lines, section.str(), key.str(), text.str());
    std::string content;
    for (const Line& line : lines)
      content += line.raw + "\n";
    return content;
  });
  if (!saved) return E_FAIL;
  configuration.lines = std::move(lines);
  return S_OK;
}
