// qavrba settings: the rendering setting repositories on the command line.
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "QAVCli.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"

namespace {

// A text value as shown by `show`: in double quotes, with its control
// characters, quotes and backslashes escaped so that each key stays on one line.
std::string Quoted(const std::string& text) {
  std::string out = "\"";
  for (const char c : text) {
    const auto u = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (c == '\n') {
      out += "\\n";
    } else if (c == '\t') {
      out += "\\t";
    } else if (u < 0x20 || u == 0x7F) {
      char buffer[8];
      (void)std::snprintf(buffer, sizeof buffer, "\\x%02X", u);
      out += buffer;
    } else {
      out += c;
    }
  }
  return out + "\"";
}

QAVSettingRepository* Open(const std::string& name) {
  return QAVSettingRepository::GetRepository(QAVString(name), 0, 1, nullptr);
}

// A repository the user may name: one of the rendering ones, or one that was
// saved or holds keys. Any other name would open a new, empty repository and
// hide a misspelt one.
bool Exists(QAVSettingRepository& repository, const std::string& name) {
  for (const auto& schema : QAVRbaRenderingSettings::kRepositories)
    if (name == schema.name) return true;
  std::error_code ec;
  return std::filesystem::exists(repository.GetFilePath().c_str(), ec) ||
         !repository.GetKeys().empty();
}

int NoRepository(const std::string& name) {
  std::string names;
  for (const auto& schema : QAVRbaRenderingSettings::kRepositories) {
    if (!names.empty()) names += ", ";
    names += schema.name;
  }
  return qavcli::Fail("no setting repository '" + name + "' (the rendering ones: " + names + ")");
}

int NotDeclared(const std::string& repository, const std::string& key) {
  return qavcli::Fail("the key '" + key + "' is not declared in " + repository +
                      " (run `qavrba settings init` to declare the rendering settings)");
}

int Init() {
  if (FAILED(QAVRbaLiveUIServices::InitSettings()))
    return qavcli::Fail("none of the rendering setting repositories exists");
  for (const auto& schema : QAVRbaRenderingSettings::kRepositories) {
    QAVSettingRepository* repository = Open(schema.name);
    if (!repository) continue;
    if (FAILED(repository->SaveRepository()))
      return qavcli::Fail(std::string("cannot save ") + schema.name);
    std::printf("%s: %s\n", schema.name, repository->GetFilePath().c_str());
  }
  return 0;
}

void ShowRepository(QAVSettingRepository& repository) {
  std::printf("%s (%s)\n", repository.GetName().c_str(), repository.GetFilePath().c_str());
  const std::vector<QAVString> keys = repository.GetKeys();
  if (keys.empty()) std::printf("  no settings (run `qavrba settings init`)\n");
  for (const QAVString& key : keys) {
    const QAVSettingType type = repository.GetSettingType(key.c_str());
    const bool text = type == QAVSettingType::String || type == QAVSettingType::Text;
    std::string values;
    for (const std::string& value : repository.GetSettingTexts(key.c_str()))
      values += (values.empty() ? "" : " ") + (text ? Quoted(value) : value);
    std::printf("  %-22s %-6s %s\n", key.c_str(), QAVSettingRepository::GetTypeName(type),
                values.c_str());
  }
}

int Show(const std::string& only) {
  std::vector<std::string> names;
  if (!only.empty()) names.push_back(only);
  for (const auto& schema : QAVRbaRenderingSettings::kRepositories)
    if (only.empty()) names.emplace_back(schema.name);
  for (std::size_t i = 0; i < names.size(); ++i) {
    QAVSettingRepository* repository = Open(names[i]);
    if (!repository) return qavcli::Fail("no setting repository '" + names[i] + "'");
    if (!Exists(*repository, names[i])) return NoRepository(names[i]);
    if (i) std::printf("\n");
    ShowRepository(*repository);
  }
  return 0;
}

int Get(const std::string& name, const std::string& key) {
  QAVSettingRepository* repository = Open(name);
  if (!repository) return qavcli::Fail("no setting repository '" + name + "'");
  if (!Exists(*repository, name)) return NoRepository(name);
  if (repository->GetSettingType(key.c_str()) == QAVSettingType::None)
    return NotDeclared(name, key);
  for (const std::string& value : repository->GetSettingTexts(key.c_str()))
    std::printf("%s\n", value.c_str());
  return 0;
}

// A key keeps its number of values unless the user asks for a list.
int Set(const std::string& name, const std::string& key, const std::vector<std::string>& values,
        bool list) {
  QAVSettingRepository* repository = Open(name);
  if (!repository) return qavcli::Fail("no setting repository '" + name + "'");
  if (!Exists(*repository, name)) return NoRepository(name);
  const QAVSettingType type = repository->GetSettingType(key.c_str());
  if (type == QAVSettingType::None) return NotDeclared(name, key);
  const int count = repository->GetSettingCount(key.c_str());
  if (!list && static_cast<int>(values.size()) != count)
    return qavcli::Fail(name + " " + key + " holds " + std::to_string(count) + " value" +
                        (count == 1 ? "" : "s") + ", not " + std::to_string(values.size()) +
                        ": give --list to store the values given as a list");
  std::string error;
  if (FAILED(repository->WriteSettingFromText(key.c_str(), values, &error)))
    return qavcli::Fail("cannot set " + name + " " + key + " (" +
                        QAVSettingRepository::GetTypeName(type) + "): " + error);
  if (FAILED(repository->SaveRepository())) return qavcli::Fail("cannot save " + name);
  std::printf("%s %s set, saved in %s\n", name.c_str(), key.c_str(),
              repository->GetFilePath().c_str());
  return 0;
}

void Setup(CLI::App& program) {
  CLI::App* settings =
      program.add_subcommand("settings", "The rendering setting repositories: show, get, set.");
  settings->footer(
      "Repositories are kept in $QAVHOST_SETTINGS_DIR (else $XDG_CONFIG_HOME/qavhost or "
      "~/.config/qavhost); several programs may save them at once.\n");
  settings->require_subcommand(1);

  CLI::App* init = settings->add_subcommand(
      "init",
      "Declare the rendering settings with their defaults (stored values are kept) and save the "
      "three repositories.");
  qavcli::OnRun(init, [] { return Init(); });

  auto repository = std::make_shared<std::string>();
  CLI::App* show = settings->add_subcommand(
      "show", "Keys, types and values (the three rendering repositories by default).");
  show->add_option("repository", *repository, "A setting repository");
  qavcli::OnRun(show, [repository] { return Show(*repository); });

  auto key = std::make_shared<std::string>();
  CLI::App* get = settings->add_subcommand("get", "The values of a key, one per line.");
  get->add_option("repository", *repository, "A setting repository")->required();
  get->add_option("key", *key, "A declared key")->required();
  qavcli::OnRun(get, [repository, key] { return Get(*repository, *key); });

  auto values = std::make_shared<std::vector<std::string>>();
  auto list = std::make_shared<bool>(false);
  CLI::App* set = settings->add_subcommand(
      "set",
      "Set a declared key, one VALUE per element, checked against its stored type and number of "
      "values, and save the repository.");
  set->add_option("repository", *repository, "A setting repository")->required();
  set->add_option("key", *key, "A declared key")->required();
  set->add_option("values", *values, "The values")->required();
  set->add_flag("--list", *list, "Store the values given as a list, whatever their number");
  qavcli::OnRun(set,
                [repository, key, values, list] { return Set(*repository, *key, *values, *list); });
}

}  // namespace

QAV_CLI_COMMAND("settings", Setup);
