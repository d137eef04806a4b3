// qavrba import: the content importer as a user meets it: the tiles of a kind's
// presets, and the import of one of them into the PLM repository.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "QAVCli.h"
#include "QAVCliDemoParts.h"
#include "QAVCliImportPanel.h"
#include "QAVCliPicture.h"
#include "QAVContentPackage.h"
#include "QAVDlgNotify.h"
#include "QAVFileServices.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVHostDriver.h"
#include "QAVMsgCatalog.h"
#include "QAVNotificationDialog.h"
#include "QAVPLMRepository.h"
#include "QAVProgressWatch.h"
#include "QAVRbaEnvironment.h"
#include "QAVRbaMaterialCatalogImporterCmd.h"
#include "QAVRbaMaterialCatalogImporterItem.h"
#include "QAVRbaMaterialCatalogImporterPanel.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"
#include "QAVVidFraMessageBox.h"
#include "QAVWidgetInput.h"

namespace {

using Cmd = QAVRbaMaterialCatalogImporterCmd;

constexpr const char* kCatalog = "QAVRbaMaterialCatalogImporterCmd";

// What the importer names each kind, the prefix of its presets' keys in the
// message catalog and the folder of its packages under "startup/".
struct Kind {
  const char* name;
  const char* prefix;
  const char* folder;
};
const std::map<std::string, Kind> kKinds = {{"material", {"Material", "Preset_Mat_", "materials"}},
                                            {"ambience", {"Ambience", "Preset_Amb_", "ambiences"}},
                                            {"human", {"Human", "Preset_Hum_", "humans"}},
                                            {"props", {"Props", "Preset_Pro_", "props"}}};

struct ImportOptions {
  std::string kind;
  std::string content;
  std::string output;
  int preset = 0;
  bool yes = false;
};

// A host session with a 3D window, the shipped message catalogs and start-up
// path unless the environment gives others, and the content installation
// path: --content, else the stored setting, else the shipped sample content.
class ImportSession {
 public:
  explicit ImportSession(const std::string& content) {
    const std::string resources = qavcli::ResourcesDir();
    ::setenv("QAVHOST_RESOURCE_PATH", resources.c_str(), 0);
    ::setenv("QAVStartupPath", (resources + "/startup").c_str(), 0);
    _driver = std::make_unique<QAVHostDriver>();  // reads the environment anew
    auto layout = QAVMakeRef<QAVFrmLayout>();
    QAVFrmLayout::SetCurrentLayout(layout.get());
    auto window = QAVMakeRef<QAVFrmWindow>("3D");
    layout->AddWindow(window.get());
    layout->SetCurrentWindow(window.get());
    namespace Schema = QAVRbaRenderingSettings;
    QAVSettingRepository* settings = Schema::Open(Schema::kContentInstallPathKey);
    QAVUnicodeString path(content.c_str());
    if (path.IsEmpty() && settings) Schema::Read(*settings, Schema::kContentInstallPathKey, path);
    if (path.IsEmpty()) path = QAVUnicodeString((resources + "/content").c_str());
    // In memory only: the user's stored setting is left as it is.
    if (settings) Schema::Write(*settings, Schema::kContentInstallPathKey, path);
    std::printf("content installation path: %s\n", path.c_str());
    _imageDirs = {path.ToNarrow() + "/resources/graphic", resources + "/graphic/importer"};
    _contentPath = path.ToNarrow();
    _contentOrigin = !content.empty() ? "given with --content"
                     : _contentPath == resources + "/content"
                         ? "the shipped sample content"
                         : "the setting \"QAVContentInstallPath\" of \"ContentInstallPathRepo\"";
  }
  const std::string& GetContentPath() const { return _contentPath; }
  // Why the content installation path cannot be used, or empty when it can: it
  // must be a folder that can be read.
  std::string ContentPathProblem() const {
    std::error_code ec;
    const auto status = std::filesystem::status(_contentPath, ec);
    const std::string which =
        "the content installation path " + _contentPath + " (" + _contentOrigin + ")";
    if (!std::filesystem::exists(status)) return which + " does not exist";
    if (!std::filesystem::is_directory(status)) return which + " is not a folder";
    if (::access(_contentPath.c_str(), R_OK | X_OK) != 0) return which + " cannot be read";
    return {};
  }
  // Where the panel's images are: the content's graphic folder, then the
  // shipped images of the importer.
  const std::vector<std::string>& GetImageDirs() const { return _imageDirs; }
  ~ImportSession() { QAVProgressWatch::SetListener(nullptr); }
  ImportSession(const ImportSession&) = delete;
  ImportSession& operator=(const ImportSession&) = delete;

  // The importer of a kind, its panel built.
  Cmd* Start(const char* kind) {
    auto* command = new Cmd(QAVUnicodeString(kind));
    _driver->Idle();
    for (const auto& notice : QAVDlgNotify::GetShownNotices())
      std::printf("warning box \"%s\": %s\n", notice.title.c_str(), notice.text.c_str());
    return command;
  }
  void Idle() { _driver->Idle(); }

 private:
  std::unique_ptr<QAVHostDriver> _driver;
  std::vector<std::string> _imageDirs;
  std::string _contentPath;
  std::string _contentOrigin;
};

// The importer is a command: the host owns it and releases it once it asked
// for its end. The analyzer cannot see that ownership and reports the `new`
// of each as a leak.
// NOLINTBEGIN(clang-analyzer-cplusplus.NewDeleteLeaks)

QAVRbaMaterialCatalogImporterItem* Tile(const Cmd& command, int n) {
  return dynamic_cast<QAVRbaMaterialCatalogImporterItem*>(
      command.GetPanel()->GetItems()->GetItem(n));
}

int List(const ImportOptions& options) {
  ImportSession session(options.content);
  if (const std::string problem = session.ContentPathProblem(); !problem.empty())
    return qavcli::Fail(problem);
  Cmd* command = session.Start(kKinds.at(options.kind).name);
  if (!command->GetPanel()) return qavcli::Fail("the importer did not open its panel");
  const int count = command->GetPanel()->GetItems()->GetCount();
  for (int n = 0; n < count; ++n) {
    const QAVRbaMaterialCatalogImporterItem* tile = Tile(*command, n);
    std::printf("%d\t%s\t%s\t%s\t%s\n", n, tile->GetTitle().c_str(), tile->GetDescription().c_str(),
                tile->GetPicture().c_str(), tile->GetUnavailable() ? "unavailable" : "available");
  }
  QAVWidgetInput::PressButton(command->GetPanel()->FindWidget("CancelButton"));
  session.Idle();
  return 0;
}

int Panel(const ImportOptions& options) {
  ImportSession session(options.content);
  if (const std::string problem = session.ContentPathProblem(); !problem.empty())
    return qavcli::Fail(problem);
  Cmd* command = session.Start(kKinds.at(options.kind).name);
  if (!command->GetPanel()) return qavcli::Fail("the importer did not open its panel");
  const int status = qavcli::WritePicture(
      options.output, qavcli::ImporterPanelSvg(*command->GetPanel(), session.GetImageDirs()));
  QAVWidgetInput::PressButton(command->GetPanel()->FindWidget("CancelButton"));
  session.Idle();
  if (status == 0) std::printf("wrote %s\n", options.output.c_str());
  return status;
}

// The progress bar: drawn in place on a terminal, one line per report elsewhere.
void WatchProgress() {
  const bool terminal = ::isatty(STDOUT_FILENO) != 0;
  QAVProgressWatch::SetListener([terminal](const QAVProgressReport& report) {
    const int span = report.high > report.low ? report.high - report.low : 1;
    const int percent = (report.value - report.low) * 100 / span;
    if (!terminal) {
      if (report.finished)
        std::printf("progress done\n");
      else if (!report.title.empty())
        std::printf("progress %3d%%  %s\n", percent, report.title.c_str());
      return;
    }
    const int filled = percent * 30 / 100;
    std::printf("\r[%s%s] %3d%%  %s", std::string(static_cast<std::size_t>(filled), '#').c_str(),
                std::string(static_cast<std::size_t>(30 - filled), ' ').c_str(), percent,
                report.title.c_str());
    if (report.finished) std::printf("\n");
    (void)std::fflush(stdout);
  });
}

bool Confirmed(bool yes) {
  if (yes) return true;
  if (::isatty(STDIN_FILENO) == 0) return false;
  std::printf("Import? [y/N] ");
  (void)std::fflush(stdout);
  std::string answer;
  std::getline(std::cin, answer);
  return answer == "y" || answer == "Y" || answer == "yes";
}

// The raw text of a key of the importer's catalog, empty when there is none.
std::string CatalogText(const std::string& key) {
  QAVUnicodeString text;
  QAVMsgCatalog::GetText(kCatalog, QAVString(key.c_str()), text);
  return text.ToNarrow();
}

// Where the importer looks for a preset's package, as the user is told.
std::string WhereLooked(const Kind& kind, const std::string& file, const std::string& contentPath) {
  if (std::string(kind.name) == "Material" && file == "Sample_Materials.orlix") {
    const char* startup = std::getenv("QAVStartupPath");
    return "no materials/" + file +
           " along the start-up path (QAVStartupPath=" + (startup ? startup : "") + ")";
  }
  const auto dot = file.rfind('.');
  const std::string base = dot == std::string::npos ? file : file.substr(0, dot);
  const std::string extension = dot == std::string::npos ? "." : file.substr(dot);
  return "no " + base + "_V00" + extension + " to " + base + "_V09" + extension + " in " +
         contentPath + "/startup/" + kind.folder;
}

// The folder the importer writes its reports in: "QAVTemp", else the
// temporary one.
std::string ReportFolder() {
  const char* temp = QAVRbaEnvironment::TempPath();
  return temp && *temp ? temp : QAVGetTempDirectory().ToNarrow();
}

// The import reports this process wrote there, oldest first.
std::vector<std::string> OwnReports() {
  const std::string folder = ReportFolder();
  const std::string mark = "-" + std::to_string(::getpid()) + "-";
  std::vector<std::pair<long, std::string>> found;
  std::error_code ec;
  for (std::filesystem::directory_iterator it(folder, ec), end; !ec && it != end;
       it.increment(ec)) {
    const std::string name = it->path().filename().string();
    const auto at = name.find(mark);
    if (name.rfind("plm-import-", 0) != 0 || at == std::string::npos) continue;
    found.emplace_back(std::strtol(name.c_str() + at + mark.size(), nullptr, 10),
                       it->path().string());
  }
  std::sort(found.begin(), found.end());
  std::vector<std::string> reports;
  reports.reserve(found.size());
  for (auto& [serial, path] : found)
    reports.push_back(std::move(path));
  return reports;
}

// Why an import failed, from the reports it wrote: each attempt's repository
// and reason, with the report's path.
std::string ImportFailure(const std::vector<std::string>& before, const Cmd& command) {
  std::string reasons;
  for (const std::string& path : OwnReports()) {
    if (std::find(before.begin(), before.end(), path) != before.end()) continue;
    std::ifstream in(path);
    std::string repository;
    std::string result;
    std::string reason;
    for (std::string line; std::getline(in, line);) {
      if (line.rfind("Repository: ", 0) == 0) repository = line.substr(12);
      if (line.rfind("Result: ", 0) == 0) result = line.substr(8);
      if (line.rfind("Reason: ", 0) == 0) reason = line.substr(8);
    }
    if (reason.empty() && result.rfind("imported 0 ", 0) == 0)
      reason = "the package holds no object";
    if (reason.empty()) reason = result.empty() ? "no reason given" : result;
    reasons.append(reasons.empty() ? "" : "; ").append("into ").append(repository).append(": ");
    reasons.append(reason).append(" (report: ").append(path).append(")");
  }
  if (!reasons.empty()) return "the import failed: " + reasons;
  // No report: the package itself says what is wrong with it, if anything.
  QAVContentPackage package;
  std::string error;
  const std::string none = " (no report could be written in " + ReportFolder() + ")";
  if (FAILED(package.Open(command.GetContentFile().ToNarrow(), error)))
    return "the import failed: " + error + none;
  return "the import of " + command.GetContentFile().ToNarrow() + " failed" + none;
}

int Run(const ImportOptions& options) {
  ImportSession session(options.content);
  if (const std::string problem = session.ContentPathProblem(); !problem.empty())
    return qavcli::Fail(problem);
  const Kind& kind = kKinds.at(options.kind);
  Cmd* command = session.Start(kind.name);
  QAVRbaMaterialCatalogImporterPanel* panel = command->GetPanel();
  if (!panel) return qavcli::Fail("the importer did not open its panel");
  // Whatever stops the run before the import closes the panel as Cancel does.
  const auto stop = [&](const std::string& why) {
    QAVWidgetInput::PressButton(panel->FindWidget("CancelButton"));
    session.Idle();
    return qavcli::Fail(why);
  };
  const int count = panel->GetItems()->GetCount();
  QAVRbaMaterialCatalogImporterItem* tile =
      options.preset >= 0 && options.preset < count ? Tile(*command, options.preset) : nullptr;
  if (!tile)
    return stop("no preset " + std::to_string(options.preset) + ": the " + options.kind +
                " panel has " + std::to_string(count) + " tile(s), numbered 0 to " +
                std::to_string(count - 1));
  const std::string title = tile->GetTitle().ToNarrow();
  const std::string named = "preset " + std::to_string(options.preset) + " (" + title + ")";
  std::printf("preset %d: %s\n", options.preset, title.c_str());
  const std::string key = kind.prefix + std::to_string(options.preset);
  if (CatalogText(key + "_Type") == "ORLIX") return stop(named + " is not created by the importer");
  const std::string file = CatalogText(key + "_File");
  if (file.empty()) return stop(named + " names no package in the catalog " + kCatalog);
  if (Cmd::FindContentFile(QAVUnicodeString(kind.name),
                           QAVUnicodeString(session.GetContentPath().c_str()),
                           QAVUnicodeString(file.c_str()))
          .IsEmpty())
    return stop("the package of " + named +
                " is missing: " + WhereLooked(kind, file, session.GetContentPath()));

  // The user double-clicks the tile: it is selected and confirmed at once.
  QAVWidgetInput::Click(tile, true);
  int status = 1;
  std::string failure;
  if (QAVVidFraMessageBox* box = command->GetConfirmationBox()) {
    std::printf("%s\n%s\n%s\n", box->GetTitle().c_str(), box->GetInformativeText().c_str(),
                box->GetText().c_str());
    const bool accepted = Confirmed(options.yes);
    if (accepted) WatchProgress();
    const std::vector<std::string> before = OwnReports();
    QAVWidgetInput::AnswerMessageBox(box, accepted);
    if (!accepted)
      failure = "not imported: the import was not confirmed (--yes confirms it)";
    else if (command->GetImportResult() == S_OK)
      status = 0;
    else
      failure = ImportFailure(before, *command);
  } else if (!command->IsDestructionRequested()) {
    QAVWidgetInput::PressButton(panel->FindWidget("CancelButton"));
    failure = named + " was not imported";
  } else {
    failure = named + " was not imported";
  }
  for (const auto& message : QAVNotificationDialog::GetShownMessages())
    std::printf("message: %s\n", message.text.c_str());
  session.Idle();
  return status == 0 ? 0 : qavcli::Fail(failure);
}

// NOLINTEND(clang-analyzer-cplusplus.NewDeleteLeaks)

void Setup(CLI::App& program) {
  CLI::App* import = program.add_subcommand(
      "import", "The content importer: the presets of a kind and their import into the PLM.");
  import->require_subcommand(1);
  auto options = std::make_shared<ImportOptions>();
  const auto common = [&options](CLI::App* command) {
    command->add_option("kind", options->kind, "material, ambience, human or props")
        ->required()
        ->check(CLI::IsMember(std::vector<std::string>{"material", "ambience", "human", "props"}));
    command
        ->add_option("--content", options->content,
                     "Content installation path (default: the stored setting, else the "
                     "shipped sample content)")
        ->check(CLI::Validator(
            [](const std::string& path) -> std::string {
              return path.empty()
                         ? "the value may not be empty (leave the option out for the default)"
                         : std::string();
            },
            "DIR"));
  };
  CLI::App* list = import->add_subcommand("list",
                                          "The tiles: number, title, description, "
                                          "picture, and whether the content is there.");
  common(list);
  qavcli::OnRun(list, [options] { return List(*options); });
  CLI::App* panel =
      import->add_subcommand("panel", "The panel as the user sees it, as SVG or (.png) PNG.");
  common(panel);
  qavcli::AddPictureOption(panel, options->output, "The panel")->required();
  qavcli::OnRun(panel, [options] { return Panel(*options); });
  CLI::App* run = import->add_subcommand(
      "run",
      "Selects tile N, shows the confirmation and, once confirmed (--yes, or an answer "
      "on a terminal), imports it with a progress bar; the status says whether it worked.");
  common(run);
  // Any whole number: one that is not a tile's is refused with the panel's
  // range once the panel is built.
  run->add_option("n", options->preset, "The tile's number (from 0)")->required();
  run->add_flag("--yes", options->yes, "Confirm the import");
  qavcli::OnRun(run, [options] { return Run(*options); });
}

}  // namespace

int DemoImport(const std::string& resourcesDir) {
  ImportOptions options;
  options.kind = "material";
  options.content = resourcesDir + "/content";
  if (List(options) != 0) return 1;
  options.preset = 1;
  options.yes = true;
  if (Run(options) != 0) return 1;
  QAVPLMRepository repository;
  std::string error;
  std::vector<QAVPLMRepository::ObjectInfo> objects;
  if (FAILED(repository.Open("PLM1", error)) || FAILED(repository.ListObjects(objects, error)))
    return qavcli::Fail(error);
  std::printf("the repository PLM1 holds %zu object(s); integrity: %s\n", objects.size(),
              repository.CheckIntegrity().c_str());
  return 0;
}

QAV_CLI_COMMAND("import", Setup);
