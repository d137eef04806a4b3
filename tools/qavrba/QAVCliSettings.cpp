// qavrba settings: the rendering setting repositories on the command line.
#include <cstdio>
#include <string>
#include <vector>

#include "QAVCli.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVSettingRepository.h"

namespace {

constexpr const char* kName = "settings";
constexpr const char* kRepositories[] = {"RenderingLiveSettings", "RenderingBatchSettings",
                                         "RenderingNetworkSettings"};

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

int NotDeclared(const std::string& repository, const std::string& key) {
  return qavcli::Fail("the key '" + key + "' is not declared in " + repository +
                      " (run `qavrba settings init` to declare the rendering settings)");
}

int Init(const qavcli::Args& args) {
  if (args.size() != 1) return qavcli::UsageError(kName, "init takes no argument");
  if (FAILED(QAVRbaLiveUIServices::InitSettings()))
    return qavcli::Fail("none of the rendering setting repositories exists");
  for (const char* name : kRepositories) {
    QAVSettingRepository* repository = Open(name);
    if (!repository) continue;
    if (FAILED(repository->SaveRepository()))
      return qavcli::Fail(std::string("cannot save ") + name);
    std::printf("%s: %s\n", name, repository->GetFilePath().c_str());
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

int Show(const qavcli::Args& args) {
  if (args.size() > 2) return qavcli::UsageError(kName, "show takes at most one repository");
  std::vector<std::string> names(std::begin(kRepositories), std::end(kRepositories));
  if (args.size() == 2) names = {args[1]};
  for (std::size_t i = 0; i < names.size(); ++i) {
    QAVSettingRepository* repository = Open(names[i]);
    if (!repository) return qavcli::Fail("no setting repository '" + names[i] + "'");
    if (i) std::printf("\n");
    ShowRepository(*repository);
  }
  return 0;
}

int Get(const qavcli::Args& args) {
  if (args.size() != 3) return qavcli::UsageError(kName, "get needs a repository and a key");
  QAVSettingRepository* repository = Open(args[1]);
  if (!repository) return qavcli::Fail("no setting repository '" + args[1] + "'");
  if (repository->GetSettingType(args[2].c_str()) == QAVSettingType::None)
    return NotDeclared(args[1], args[2]);
  for (const std::string& value : repository->GetSettingTexts(args[2].c_str()))
    std::printf("%s\n", value.c_str());
  return 0;
}

int Set(const qavcli::Args& args) {
  if (args.size() < 4)
    return qavcli::UsageError(kName, "set needs a repository, a key and at least one value");
  QAVSettingRepository* repository = Open(args[1]);
  if (!repository) return qavcli::Fail("no setting repository '" + args[1] + "'");
  const std::string& key = args[2];
  const QAVSettingType type = repository->GetSettingType(key.c_str());
  if (type == QAVSettingType::None) return NotDeclared(args[1], key);
  const std::vector<std::string> values(args.begin() + 3, args.end());
  std::string error;
  if (FAILED(repository->WriteSettingFromText(key.c_str(), values, &error)))
    return qavcli::Fail("cannot set " + args[1] + " " + key + " (" +
                        QAVSettingRepository::GetTypeName(type) + "): " + error);
  if (FAILED(repository->SaveRepository())) return qavcli::Fail("cannot save " + args[1]);
  std::printf("%s %s set, saved in %s\n", args[1].c_str(), key.c_str(),
              repository->GetFilePath().c_str());
  return 0;
}

int Settings(const qavcli::Args& args) {
  if (args.empty()) return qavcli::UsageError(kName, "missing subcommand");
  if (args[0] == "init") return Init(args);
  if (args[0] == "show") return Show(args);
  if (args[0] == "get") return Get(args);
  if (args[0] == "set") return Set(args);
  return qavcli::UsageError(kName, "unknown subcommand '" + args[0] + "'");
}

}  // namespace

QAV_CLI_COMMAND(kName,
                "  qavrba settings init                  declare the rendering settings with "
                "their defaults (stored\n"
                "                                        values are kept) and save the three "
                "repositories\n"
                "  qavrba settings show [REPOSITORY]     keys, types and values (the three "
                "rendering repositories\n"
                "                                        by default)\n"
                "  qavrba settings get REPOSITORY KEY    the values of a key, one per line\n"
                "  qavrba settings set REPOSITORY KEY VALUE...\n"
                "                                        set a declared key, one VALUE per "
                "element, checked against\n"
                "                                        its stored type, and save the "
                "repository\n"
                "  Repositories are kept in $QAVHOST_SETTINGS_DIR (else "
                "$XDG_CONFIG_HOME/qavhost or\n"
                "  ~/.config/qavhost).",
                Settings);
