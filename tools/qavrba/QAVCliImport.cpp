// qavrba import: the content importer as a user meets it: the tiles of a kind's
// presets, and the import of one of them into the PLM repository.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "QAVCli.h"
#include "QAVCliDemoParts.h"
#include "QAVCliImportPanel.h"
#include "QAVCliPicture.h"
#include "QAVDlgNotify.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVHostDriver.h"
#include "QAVNotificationDialog.h"
#include "QAVPLMRepository.h"
#include "QAVProgressWatch.h"
#include "QAVRbaMaterialCatalogImporterCmd.h"
#include "QAVRbaMaterialCatalogImporterItem.h"
#include "QAVRbaMaterialCatalogImporterPanel.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"
#include "QAVVidFraMessageBox.h"
#include "QAVWidgetInput.h"

namespace {

using Cmd = QAVRbaMaterialCatalogImporterCmd;

const std::map<std::string, const char*> kKinds = {
    {"material", "Material"}, {"ambience", "Ambience"}, {"human", "Human"}, {"props", "Props"}};

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
  Cmd* command = session.Start(kKinds.at(options.kind));
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
  Cmd* command = session.Start(kKinds.at(options.kind));
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

int Run(const ImportOptions& options) {
  ImportSession session(options.content);
  Cmd* command = session.Start(kKinds.at(options.kind));
  QAVRbaMaterialCatalogImporterPanel* panel = command->GetPanel();
  if (!panel) return qavcli::Fail("the importer did not open its panel");
  QAVRbaMaterialCatalogImporterItem* tile = Tile(*command, options.preset);
  if (!tile)
    return qavcli::Fail("no preset " + std::to_string(options.preset) + " (the panel has " +
                        std::to_string(panel->GetItems()->GetCount()) + ")");
  std::printf("preset %d: %s\n", options.preset, tile->GetTitle().c_str());
  // The user double-clicks the tile: it is selected and confirmed at once.
  QAVWidgetInput::Click(tile, true);
  int status = 1;
  if (QAVVidFraMessageBox* box = command->GetConfirmationBox()) {
    std::printf("%s\n%s\n%s\n", box->GetTitle().c_str(), box->GetInformativeText().c_str(),
                box->GetText().c_str());
    const bool accepted = Confirmed(options.yes);
    if (accepted) WatchProgress();
    QAVWidgetInput::AnswerMessageBox(box, accepted);
    if (!accepted) std::printf("not imported: the import was not confirmed (--yes confirms it)\n");
    status = command->GetImportResult() == S_OK ? 0 : 1;
  } else if (!command->IsDestructionRequested() &&
             QAVNotificationDialog::GetShownMessages().empty()) {
    std::printf("not imported: this preset is not created by the importer\n");
    QAVWidgetInput::PressButton(panel->FindWidget("CancelButton"));
  }
  for (const auto& message : QAVNotificationDialog::GetShownMessages())
    std::printf("message: %s\n", message.text.c_str());
  session.Idle();
  return status;
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
        ->check(CLI::IsMember(kKinds));
    command->add_option("--content", options->content,
                        "Content installation path (default: the stored setting, else the "
                        "shipped sample content)");
  };
  CLI::App* list = import->add_subcommand("list",
                                          "The tiles: number, title, description, "
                                          "picture, and whether the content is there.");
  common(list);
  qavcli::OnRun(list, [options] { return List(*options); });
  CLI::App* panel =
      import->add_subcommand("panel", "The panel as the user sees it, as SVG or (.png) PNG.");
  common(panel);
  panel->add_option("-o,--output", options->output, "Picture file (.svg or .png)")->required();
  qavcli::OnRun(panel, [options] { return Panel(*options); });
  CLI::App* run = import->add_subcommand(
      "run",
      "Selects tile N, shows the confirmation and, once confirmed (--yes, or an answer "
      "on a terminal), imports it with a progress bar; the status says whether it worked.");
  common(run);
  run->add_option("n", options->preset, "The tile's number")
      ->required()
      ->check(CLI::NonNegativeNumber);
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
