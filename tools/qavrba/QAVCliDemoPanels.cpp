// The demo's panel scenario on the opened showroom: a second window, a camera
// panel on the first, a camera change propagated, the viewer's background
// changed, and what was dispatched and received.
#include <cstdio>
#include <string>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVCliDemoParts.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVHostDriver.h"
#include "QAVRbaPanelManager.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVRdgAmbienceUpdate.h"
#include "QAVSettingRepository.h"
#include "QAVVidFraPanel.h"
#include "QAVVizViewer.h"

void DemoPanels(QAVHostDriver& driver) {
  QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout();
  QAVFrmWindow* first = layout->GetCurrentWindow();
  auto second = QAVMakeRef<QAVFrmWindow>("second 3D");
  layout->AddWindow(second.get());
  driver.StartRecording();
  QAVRdgAmbienceUpdate::GetCalls(true);

  // The manager is made with the current window's viewer to follow.
  QAVRbaPanelManager* manager = QAVRbaPanelManager::GetPanelManager();
  auto* camera = new QAVVidFraPanel(nullptr, "camera panel");
  auto* listener = new QAVVidFraPanel(nullptr, "camera listener");
  manager->AddPanel(5, camera, first);
  manager->AddPanel(47, listener, second.get());
  std::printf("panels: the camera panel (5) on \"%s\", a listener (47) on \"%s\"\n",
              first->GetName().c_str(), second->GetName().c_str());
  manager->PropagateCameraParameterModification(1, 7, first);
  for (const QAVJournalEntry& entry : driver.GetJournal("dispatch"))
    if (entry.source == layout->GetCallbackManager())
      std::printf("  dispatched %s\n", entry.name.c_str());
  for (const std::string& call : QAVRdgAmbienceUpdate::GetCalls(true))
    std::printf("  the ambience updater received %s\n", call.c_str());

  // The user picks another background: the dome image follows.
  driver.ClearJournal();
  auto* viewer = dynamic_cast<QAV3DViewer*>(first->GetViewer());
  if (QAVVizViewer* viz = viewer ? viewer->GetVizViewer() : nullptr) {
    viz->SetInfiniteEnvironmentRootName(QAVString("City"));
    QAVString dome;
    namespace Schema = QAVRbaRenderingSettings;
    if (QAVSettingRepository* live = Schema::Open(Schema::kLiveDomeImage))
      Schema::Read(*live, Schema::kLiveDomeImage, dome);
    std::printf("  background \"City\": dome image %s\n", dome.IsEmpty() ? "-" : dome.c_str());
  }
  driver.StopRecording();
  manager->RemovePanel(5, first);
  manager->RemovePanel(47, second.get());
  layout->RemoveWindow(second.get());
  driver.Idle();
}
