#include <gtest/gtest.h>

#include <filesystem>

#include "QAVAtomicFile.h"
#include "QAVSysPreferenceRepository.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

using PreferenceRepositoryTest = qavtest::HostTest;

TEST_F(PreferenceRepositoryTest, TagsSelectTheStoredTypeOnly) {
  auto* repo = QAVSysPreferenceRepository::GetPreferenceRepository("Prefs");
  ASSERT_NE(repo, nullptr);
  const int count = 3;
  const short flag = 5;
  const double ratios[2] = {0.5, 2.5};
  const QAVString name = "studio";
  EXPECT_EQ(repo->WritePreference("Count", &count, 1), 1);
  EXPECT_EQ(repo->WritePreference("Flag", &flag, 1), 1);
  EXPECT_EQ(repo->WritePreference("Ratios", ratios, 2), 1);
  EXPECT_EQ(repo->WritePreference("Name", &name), 1);

  // The tag names the stored type exactly.
  EXPECT_TRUE(repo->IsPresent("Count", "int"));
  EXPECT_FALSE(repo->IsPresent("Count", "short"));
  EXPECT_TRUE(repo->IsPresent("Flag", "short"));
  EXPECT_TRUE(repo->IsPresent("Name", "QAVString"));
  EXPECT_FALSE(repo->IsPresent("Name", "string"));

  double d = 9.0;
  EXPECT_EQ(repo->ReadPreference("Count", &d, 1), 0);
  EXPECT_EQ(d, 9.0);
  double two[3] = {0, 0, 7};
  EXPECT_EQ(repo->ReadPreference("Ratios", two, 3), 2);
  EXPECT_EQ(two[1], 2.5);
  EXPECT_EQ(two[2], 7);

  // A key keeps its type until it is removed.
  EXPECT_EQ(repo->WritePreference("Count", &d, 1), 0);
  EXPECT_TRUE(repo->IsPresent("Count", "int"));
  EXPECT_EQ(repo->RemovePreference("Count"), 1);
  EXPECT_EQ(repo->WritePreference("Count", &d, 1), 1);
  EXPECT_TRUE(repo->IsPresent("Count", "double"));
}

TEST_F(PreferenceRepositoryTest, OnlyCommitsReachTheFile) {
  auto* repo = QAVSysPreferenceRepository::GetPreferenceRepository("Committed");
  const fs::path file = _scratch.path() / "settings" / "Committed.preferences";
  EXPECT_EQ(fs::path(repo->GetFilePath()), file);
  const int values[] = {1, 2, 3};
  repo->WritePreference("A", &values[0], 1);
  EXPECT_FALSE(fs::exists(file));
  ASSERT_EQ(repo->Commit(), S_OK);
  repo->WritePreference("B", &values[1], 1);

  // A simulated failing write changes nothing.
  Driver().FailPreferenceWrites(repo, true);
  EXPECT_EQ(repo->WritePreference("A", &values[2], 1), 0);
  EXPECT_EQ(repo->WritePreference("C", &values[2], 1), 0);
  Driver().FailPreferenceWrites(repo, false);
  int a = 0;
  EXPECT_EQ(repo->ReadPreference("A", &a, 1), 1);
  EXPECT_EQ(a, 1);
  EXPECT_FALSE(repo->IsPresent("C", "int"));

  // A failed commit leaves the committed file as it was.
  Driver().FailAtomicWrites(QAVAtomicFile::Stage::Rename);
  testing::internal::CaptureStderr();
  EXPECT_EQ(repo->Commit(), E_FAIL);
  EXPECT_NE(testing::internal::GetCapturedStderr().find("cannot save the preference file"),
            std::string::npos);
  EXPECT_EQ(repo->GetCommitCount(), 2);

  ResetProcessState();
  repo = QAVSysPreferenceRepository::GetPreferenceRepository("Committed");
  EXPECT_TRUE(repo->IsPresent("A", "int"));
  EXPECT_FALSE(repo->IsPresent("B", "int"));
}

TEST_F(PreferenceRepositoryTest, UnavailableAndBadRepositories) {
  QAVSysPreferenceRepository::SetAvailable("Gone", false);
  EXPECT_EQ(QAVSysPreferenceRepository::GetPreferenceRepository(""), nullptr);
  ResetProcessState();
  EXPECT_NE(QAVSysPreferenceRepository::GetPreferenceRepository("Gone"), nullptr);

  // Preferences have no float or text type: such a file is not one of theirs.
  _scratch.Write("settings/Typed.preferences", "QAVHostPreferences 1\nF\tfloat\t1\t1.5\n");
  testing::internal::CaptureStderr();
  auto* repo = QAVSysPreferenceRepository::GetPreferenceRepository("Typed");
  const std::string report = testing::internal::GetCapturedStderr();
  EXPECT_NE(report.find("Typed.preferences is corrupt"), std::string::npos) << report;
  EXPECT_FALSE(repo->IsPresent("F", "double"));
  testing::internal::CaptureStderr();
  EXPECT_EQ(repo->Commit(), S_OK);
  testing::internal::GetCapturedStderr();
  EXPECT_TRUE(fs::exists(_scratch.path() / "settings" / "Typed.preferences.corrupt"));
}
