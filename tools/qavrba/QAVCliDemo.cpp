// qavrba demo: a short tour of the library on the shipped sample resources.
//
// The library reads its environment once, when it loads, so the tour runs itself
// again with the graphic path of the shipped resources, a scratch settings
// directory and every trace severity enabled.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "QAVCallbackManager.h"
#include "QAVCli.h"
#include "QAVCliDemoParts.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVListValQAVUnicodeString.h"
#include "QAVRbaEnvironment.h"
#include "QAVRbaLiveLogSingleton.h"
#include "QAVRbaLiveUIServices.h"
#include "QAVRbaPathAndFileServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVRbaTraceLog.h"
#include "QAVRbaUIEvents.h"
#include "QAVRbaUIFileDropNotification.h"
#include "QAVRef.h"
#include "QAVSettingRepository.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kDemoMarker = "QAVRBA_DEMO_ENVIRONMENT";
// The scratch settings directory the tour made for itself, removed at its end.
constexpr const char* kDemoScratch = "QAVRBA_DEMO_SCRATCH";

void Section(const char* title) { std::printf("\n== %s\n", title); }

// Sets the environment of the tour and runs this program again; returns only on
// failure.
int RerunWithDemoEnvironment(const std::string& resources) {
  const std::string graphic = resources + "/graphic";
  const std::string graphicPath =
      graphic + "/studio:" + graphic + "/outdoor:" + graphic + "/fallback";
  ::setenv("QAVGraphicPath", graphicPath.c_str(), 1);
  ::setenv("LRE_TRACE_SEVERITY", "3", 1);
  ::setenv("QAVHOST_RESOURCE_PATH", resources.c_str(), 1);
  ::setenv("QAVStartupPath", (resources + "/startup").c_str(), 1);
  // A scratch directory for the settings (unless the caller chose theirs), the
  // PLM repositories the tour imports into and the import reports.
  std::string scratch = (fs::temp_directory_path() / "qavrba-demo-XXXXXX").string();
  if (!::mkdtemp(scratch.data())) return qavcli::Fail("cannot create a scratch directory");
  ::setenv(kDemoScratch, scratch.c_str(), 1);
  if (!std::getenv("QAVHOST_SETTINGS_DIR")) ::setenv("QAVHOST_SETTINGS_DIR", scratch.c_str(), 1);
  ::setenv("QAVHOST_PLM_DIR", (scratch + "/plm").c_str(), 1);
  ::setenv("QAVTemp", (scratch + "/reports").c_str(), 1);
  ::setenv(kDemoMarker, "1", 1);

  std::vector<std::string> argvText = {"qavrba", "demo"};
  std::vector<char*> argv;
  argv.reserve(argvText.size() + 1);
  for (std::string& a : argvText)
    argv.push_back(a.data());
  argv.push_back(nullptr);
  (void)std::fflush(stdout);
  ::execv("/proc/self/exe", argv.data());
  if (const char* scratch = std::getenv(kDemoScratch)) {
    std::error_code ec;
    fs::remove_all(scratch, ec);
  }
  return qavcli::Fail("cannot run the tour again with its environment");
}

void TourSettings() {
  Section("Rendering settings");
  const HRESULT hr = QAVRbaLiveUIServices::InitSettings();
  std::printf("InitSettings: %s\n", hr == S_OK ? "S_OK" : "E_FAIL");
  for (std::size_t i = 0; i < QAVRbaRenderingSettings::kRenderingRepositoryCount; ++i) {
    const char* name = QAVRbaRenderingSettings::kRepositories[i].name;
    QAVSettingRepository* repository = QAVSettingRepository::GetRepository(name);
    if (!repository) continue;
    repository->SaveRepository();
    std::printf("%-26s %2zu keys declared, stored in %s/%s.settings\n", name,
                repository->GetKeys().size(), QAVSettingRepository::GetSettingsDirectory().c_str(),
                name);
  }
  QAVSettingRepository* live =
      QAVSettingRepository::GetRepository(QAVRbaRenderingSettings::kLiveRepository);
  for (const char* key : {"DomeImage", "ShutterTime", "Gamma", "DPI"}) {
    const std::vector<std::string> texts =
        live ? live->GetSettingTexts(key) : std::vector<std::string>();
    if (!texts.empty()) std::printf("  RenderingLiveSettings.%-12s = %s\n", key, texts[0].c_str());
  }
}

void TourEvents() {
  Section("Named events");
  auto layout = QAVMakeRef<QAVFrmLayout>();
  auto window = QAVMakeRef<QAVFrmWindow>("3D window 1");
  layout->SetCurrentWindow(window.get());
  QAVFrmLayout::SetCurrentLayout(layout.get());

  QAVCallbackManager* callbacks = QAVFrmLayout::GetCurrentLayout()->GetCallbackManager();
  const char* dropped = QAVRbaUIEvents::TEXTURE_DROPPED();
  callbacks->AddCallback(
      dropped, [](const char* event, void*, QAVNotification* notification, void*, QAVCallback) {
        const auto* drop = dynamic_cast<QAVRbaUIFileDropNotification*>(notification);
        std::printf("received %s with %s, FilePath = %s\n", event,
                    notification ? notification->IsA() : "no notification",
                    drop ? drop->FilePath.c_str() : "?");
      });
  auto notification = QAVMakeRef<QAVRbaUIFileDropNotification>(QAVUnicodeString("/tmp/wood.png"));
  std::printf("dispatching %s\n", dropped);
  callbacks->DispatchCallbacks(dropped, notification.get(), callbacks);
  QAVFrmLayout::SetCurrentLayout(nullptr);
}

void TourFiles() {
  Section("Files on the graphic path");
  std::printf("QAVGraphicPath = %s\n", QAVRbaEnvironment::GraphicPath());
  for (const char* name : {"concrete_floor.png", "sunset_road.PNG", "unused.png"}) {
    QAVUnicodeString found;
    QAVRbaPathAndFileServices::RetreiveBackplatePath(name, found);
    std::printf("backplate %-20s -> %s\n", name, found.IsEmpty() ? "(not found)" : found.c_str());
  }
  QAVUnicodeString texture;
  QAVRbaPathAndFileServices::RetreiveTexturePath("studio_pure_white.hdr", texture);
  std::printf("texture   %-20s -> %s\n", "studio_pure_white.hdr", texture.c_str());

  const fs::path ambiences = fs::path(texture.ToNarrow()).parent_path();
  QAVListValQAVUnicodeString extensions{"hdr"};
  std::unique_ptr<QAVListValQAVUnicodeString> files(
      QAVRbaPathAndFileServices::GetListOfDirectoryFile(ambiences.c_str(), extensions));
  std::printf("*.hdr in %s:", ambiences.c_str());
  for (const QAVUnicodeString& file : *files)
    std::printf(" %s", file.c_str());
  std::printf("\n");
}

void TourLogs() {
  Section("Live log and trace");
  QAVRbaLiveLogSingleton* log = QAVRbaLiveLogSingleton::Get();
  const struct {
    int level;
    const char* text;
  } messages[] = {{0, "render started"}, {2, "pass 1 of 16"}, {4, "verbose detail (refused)"}};
  for (const auto& m : messages)
    std::printf("AddMessage(%d, \"%s\"): %s\n", m.level, m.text,
                log->AddMessage(m.level, m.text) == S_OK ? "S_OK" : "E_FAIL");
  int level = 0;
  std::string text;
  for (std::size_t i = 0; log->GetMessage(i, level, text) == S_OK; ++i)
    std::printf("  message %zu: level %d, %s\n", i, level, text.c_str());

  std::printf(
      "Three trace lines follow, one per severity; the first is an error written on "
      "purpose:\n");
  (void)std::fflush(stdout);
  QAVRbaTrace(0, "QAVCliDemo.cpp", " ", __LINE__, " ", "!demoImage.IsEmpty()", " is false.",
              "The demo image was not found.");
  QAVRbaTrace(1, "QAVCliDemo.cpp", " ", __LINE__, " ", "A warning", " from the tour", ".");
  QAVRbaTrace(2, "QAVCliDemo.cpp", " ", __LINE__, " ", "An information line", " from the tour",
              ".");
}

// Removes the tour's scratch settings directory when the tour ends, whatever
// way it ends.
struct ScratchRemover {
  ~ScratchRemover() {
    if (const char* scratch = std::getenv(kDemoScratch)) {
      std::error_code ec;
      fs::remove_all(scratch, ec);
    }
  }
};

int RunDemo() {
  const std::string resources = qavcli::ResourcesDir();
  if (!std::getenv(kDemoMarker)) return RerunWithDemoEnvironment(resources);
  const ScratchRemover remover;

  std::printf("qavrba demo on %s\n", resources.c_str());
  TourSettings();
  TourEvents();
  TourFiles();
  TourLogs();

  int status = 0;
  Section("IES light profile");
  status |= DemoIes(resources);
  Section("Black-body colour");
  status |= DemoBlackbody();
  Section("Colour management");
  status |= DemoColor(resources);
  Section("Camera, depth of field and the live HUD (resources/scenes/showroom)");
  status |= DemoScene(resources);
  Section("Texture placement (resources/scenes/showroom)");
  status |= DemoPlacement(resources);
  Section("Content import (resources/content, into a scratch repository)");
  status |= DemoImport(resources);
  Section("Shader types");
  status |= DemoShaders();
  std::printf(status == 0 ? "\nDone.\n" : "\nDone, with errors (see above).\n");
  return status == 0 ? 0 : 1;
}

void Setup(CLI::App& program) {
  CLI::App* demo = program.add_subcommand("demo", "A short tour on the shipped resources.");
  qavcli::OnRun(demo, [] { return RunDemo(); });
}

}  // namespace

QAV_CLI_COMMAND("demo", Setup);
