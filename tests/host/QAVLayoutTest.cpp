// The current layout, its windows and their viewers, as tests script them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVCallbackManager.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVTestSupport.h"
#include "QAVViewer.h"
#include "QAVVizViewer.h"

using QAVLayoutTest = qavtest::HostTest;

TEST_F(QAVLayoutTest, CurrentLayoutAndWindowAreScriptable) {
  EXPECT_EQ(QAVFrmLayout::GetCurrentLayout(), nullptr);
  auto layout = QAVMakeRef<QAVFrmLayout>();
  QAVFrmLayout::SetCurrentLayout(layout.get());
  EXPECT_EQ(QAVFrmLayout::GetCurrentLayout(), layout.get());

  auto w1 = QAVMakeRef<QAVFrmWindow>("w1");
  auto w2 = QAVMakeRef<QAVFrmWindow>("w2");
  EXPECT_EQ(layout->AddWindow(w1.get()), S_OK);
  EXPECT_EQ(layout->AddWindow(w1.get()), S_FALSE);
  layout->SetCurrentWindow(w2.get());  // adds it
  EXPECT_EQ(layout->GetWindowCount(), 2);
  EXPECT_NE(w1->GetNativeHandle(), 0u);
  EXPECT_NE(w1->GetNativeHandle(), w2->GetNativeHandle());

  EXPECT_EQ(layout->RemoveWindow(w2.get()), S_OK);
  EXPECT_EQ(layout->GetCurrentWindow(), nullptr);
  EXPECT_EQ(layout->RemoveWindow(w2.get()), E_FAIL);
  EXPECT_EQ(w2->GetRefCount(), 1u);

  ResetProcessState();
  EXPECT_EQ(QAVFrmLayout::GetCurrentLayout(), nullptr);
  EXPECT_EQ(layout->GetRefCount(), 1u);
}

TEST_F(QAVLayoutTest, ViewersAnnounceBackgroundChangesAndDestruction) {
  auto window = QAVMakeRef<QAVFrmWindow>("w");
  auto viewer = QAVMakeRef<QAV3DViewer>("3d");
  auto viz = QAVMakeRef<QAVVizViewer>("viz");
  window->SetViewer(viewer.get());
  viewer->SetVizViewer(viz.get());
  EXPECT_EQ(viewer->GetFrmWindow(), window.get());

  std::vector<std::string> seen;
  QAVCallbackManager* callbacks = viz->GetCallbackManager();
  for (const char* event :
       {QAVVizViewer::VIEWER_BACKGROUND_CHANGED(), QAVVizViewer::VIEWER_DESTROYED()})
    callbacks->AddCallback(
        event, [&seen](const char* name, void* data, QAVNotification*, void*, QAVCallback) {
          auto* viz = static_cast<QAVVizViewer*>(data);
          seen.push_back(std::string(name) + " " + viz->GetName().c_str() + " " +
                         viz->GetInfiniteEnvironmentRootName().c_str());
        });
  viz->SetInfiniteEnvironmentRootName("Studio");
  viz->SetInfiniteEnvironmentRootName("Studio");
  EXPECT_EQ(viewer->GetInfiniteEnvironmentRootName(), "Studio");
  const std::string changed = "QAVVizViewerVIEWER_BACKGROUND_CHANGEDEvt viz Studio";
  EXPECT_EQ(seen, (std::vector<std::string>{changed, changed}));  // even when unchanged

  // The viz viewer announces its end when its last holder lets it go.
  viz.Reset();
  EXPECT_EQ(seen.size(), 2u);
  viewer->SetVizViewer(nullptr);
  EXPECT_EQ(seen.back(), "QAVVizViewerVIEWER_DESTROYEDEvt viz Studio");
  EXPECT_EQ(viewer->GetInfiniteEnvironmentRootName(), "");

  // Replacing a window's viewer detaches the old one.
  auto other = QAVMakeRef<QAVViewer>("plain");
  window->SetViewer(other.get());
  EXPECT_EQ(viewer->GetFrmWindow(), nullptr);
  EXPECT_EQ(other->GetFrmWindow(), window.get());
  window.Reset();
  EXPECT_EQ(other->GetFrmWindow(), nullptr) << "a destroyed window leaves no dangling pointer";
}
