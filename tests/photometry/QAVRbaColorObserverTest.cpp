#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "QAV3DViewer.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVMsgCatalog.h"
#include "QAVNotificationDialog.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVRbaScreenProfileObserver.h"
#include "QAVRef.h"
#include "QAVSettingRepository.h"
#include "QAVTestSupport.h"

namespace {

// A current layout with a current window showing a 3D viewer, the shipped
// message catalogs, and an observer whose callback records its calls.
class ScreenProfileObserverTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    _resources.emplace("QAVHOST_RESOURCE_PATH", QAV_RESOURCES_DIR);
    _layout = QAVMakeRef<QAVFrmLayout>();
    QAVFrmLayout::SetCurrentLayout(_layout.get());
    _window = QAVMakeRef<QAVFrmWindow>("3D");
    _viewer = QAVMakeRef<QAV3DViewer>("viewer");
    _window->SetViewer(_viewer.get());
    _layout->SetCurrentWindow(_window.get());
  }
  void TearDown() override {
    _observer.reset();
    QAVFrmLayout::SetCurrentLayout(nullptr);
    _viewer.Reset();
    _window.Reset();
    _layout.Reset();
    HostTest::TearDown();
    _resources.reset();
  }

  void CreateObserver() {
    _observer = QAVRbaScreenProfileObserver::createScreenProfileObserver([this](QAVViewer* viewer) {
      _calls.push_back(viewer);
      return _result;
    });
    ASSERT_TRUE(_observer);
  }
  static QAVSettingRepository* Options() {
    return QAVSettingRepository::GetRepository(QAVRbaRenderingSettings::kOptionsRepository);
  }
  static void Set(const QAVRbaRenderingSettings::Key<int>& key, int value) {
    ASSERT_EQ(QAVRbaRenderingSettings::Write(*Options(), key, value), S_OK);
  }
  static void Set(const QAVRbaRenderingSettings::Key<QAVUnicodeString>& key,
                  const std::string& value) {
    ASSERT_EQ(QAVRbaRenderingSettings::Write(*Options(), key, QAVUnicodeString(value)), S_OK);
  }
  static std::vector<std::string> Shown() {
    std::vector<std::string> texts;
    for (const auto& m : QAVNotificationDialog::GetShownMessages()) {
      EXPECT_EQ(m.dialogName, "notifFurtifMsg");
      EXPECT_EQ(m.parentName, "ApplicationDocument");
      texts.push_back(m.text);
    }
    return texts;
  }
  static std::string CatalogText(const char* key) {
    QAVUnicodeString text;
    EXPECT_TRUE(QAVMsgCatalog::GetText("QAVRbaScreenProfileObserver", key, text)) << key;
    return text.str();
  }

  std::optional<qavtest::ScopedEnv> _resources;
  QAVRef<QAVFrmLayout> _layout;
  QAVRef<QAVFrmWindow> _window;
  QAVRef<QAV3DViewer> _viewer;
  QAVRbaScreenProfileObserver::Owner _observer;
  std::vector<QAVViewer*> _calls;
  HRESULT _result = S_OK;
};

TEST_F(ScreenProfileObserverTest, SettingChangesAndRefusalsUntilDestroyed) {
  QAVCallbackManager* callbacks = Options()->GetCallbackManager();
  const int before = callbacks->GetCallbackCount(QAVSettingRepository::ModifiedEvent());
  CreateObserver();
  EXPECT_EQ(callbacks->GetCallbackCount(QAVSettingRepository::ModifiedEvent()), before + 1);

  Set(QAVRbaRenderingSettings::kOptionsProfileCombo, 1);
  ASSERT_EQ(_calls.size(), 1u);
  EXPECT_EQ(_calls[0], _viewer.get());
  EXPECT_TRUE(Shown().empty());

  // A refused profile is reported; only E_FAIL means a wrong profile.
  for (const HRESULT result : {E_FAIL, S_FALSE, E_INVALIDARG}) {
    _result = result;
    _observer->updateProfile();
  }
  EXPECT_EQ(_calls.size(), 4u);
  EXPECT_EQ(Shown(), std::vector<std::string>{CatalogText("WrongProfileMessage")});
  _result = S_OK;

  // Without a current window there is nobody to refresh.
  _layout->SetCurrentWindow(nullptr);
  Set(QAVRbaRenderingSettings::kOptionsProfileCombo, 0);
  QAVFrmLayout::SetCurrentLayout(nullptr);
  _observer->updateProfile();
  EXPECT_EQ(_calls.size(), 4u);

  _observer.reset();
  EXPECT_EQ(callbacks->GetCallbackCount(QAVSettingRepository::ModifiedEvent()), before);
  QAVFrmLayout::SetCurrentLayout(_layout.get());
  _layout->SetCurrentWindow(_window.get());
  Set(QAVRbaRenderingSettings::kOptionsProfileCombo, 3);
  EXPECT_EQ(_calls.size(), 4u);
}

TEST_F(ScreenProfileObserverTest, ChosenProfileFileMustBeThere) {
  // Chosen before the observer exists; a later change of any setting reacts.
  Set(QAVRbaRenderingSettings::kOptionsProfileCombo, 2);
  Set(QAVRbaRenderingSettings::kOptionsProfileFileBrowse, _scratch.str() + "/missing.icc");
  CreateObserver();
  const int one = 1;
  ASSERT_EQ(Options()->WriteSetting("Unrelated", &one, 1), S_OK);
  EXPECT_TRUE(_calls.empty());
  EXPECT_EQ(Shown(), std::vector<std::string>{CatalogText("MissingProfileMessage")});

  // No path at all is missing too.
  QAVNotificationDialog::ClearShownMessages();
  Set(QAVRbaRenderingSettings::kOptionsProfileFileBrowse, "");
  EXPECT_TRUE(_calls.empty());
  EXPECT_EQ(Shown().size(), 1u);

  // The file exists: the owner is asked to refresh.
  QAVNotificationDialog::ClearShownMessages();
  const std::string file = _scratch.Write("screen.icc", "profile bytes").string();
  Set(QAVRbaRenderingSettings::kOptionsProfileFileBrowse, file);
  EXPECT_EQ(_calls.size(), 1u);
  EXPECT_TRUE(Shown().empty());

  // Another choice than a file does not look at the path.
  Set(QAVRbaRenderingSettings::kOptionsProfileFileBrowse,
      _scratch.str() + "/missing.icc");  // still 2: missing
  Set(QAVRbaRenderingSettings::kOptionsProfileCombo, 1);
  EXPECT_EQ(_calls.size(), 2u);
  EXPECT_EQ(Shown().size(), 1u);
}

TEST_F(ScreenProfileObserverTest, WithoutRepositoryUpdateIsFatal) {
  QAVSettingRepository::SetAvailable(QAVRbaRenderingSettings::kOptionsRepository, false);
  CreateObserver();
  // Nothing subscribed: changes of the repository, once it exists, do not reach it.
  QAVSettingRepository::SetAvailable(QAVRbaRenderingSettings::kOptionsRepository, true);
  Set(QAVRbaRenderingSettings::kOptionsProfileCombo, 1);
  EXPECT_TRUE(_calls.empty());
  EXPECT_DEATH(_observer->updateProfile(),
               "Fatal error: AssertionFailed:_repository \\(QAVRbaScreenProfileObserver:68\\)");
}

}  // namespace
