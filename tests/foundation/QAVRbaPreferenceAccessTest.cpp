#include <gtest/gtest.h>

#include <tuple>
#include <type_traits>

#include "QAVRbaConfiguration.h"
#include "QAVRbaPreferenceAccess.h"
#include "QAVTestSupport.h"

namespace {

class PreferenceAccessTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    qavtest::HostTest::SetUp();
    QAVString name = "UserPrefs";
    _repo = GetPreferenceRepository(name);
    ASSERT_NE(_repo, nullptr);
    ASSERT_EQ(_repo, QAVSysPreferenceRepository::GetPreferenceRepository("UserPrefs"));
  }
  QAVSysPreferenceRepository* _repo = nullptr;
};

}  // namespace

TEST_F(PreferenceAccessTest, ReadersFallBackOnAbsenceTypeAndEmptiness) {
  QAVSysPreferenceRepository& repo = *_repo;
  SetPreference(repo, "Count", 4);
  SetPreference(repo, "Five", static_cast<short>(5));
  SetPreference(repo, "Zero", static_cast<short>(0));
  SetPreference(repo, "Ratio", 0.25);
  SetPreference(repo, "Empty", QAVString());
  SetPreference(repo, "Name", QAVString("studio"));

  EXPECT_EQ(GetPreference(repo, "Count", 7), 4);
  EXPECT_EQ(GetPreference(repo, "Count", 2.5), 2.5);  // an int is not a double
  EXPECT_EQ(GetPreference(repo, "Ratio", 2.5), 0.25);
  EXPECT_EQ(GetPreference(repo, "Ratio", 7), 7);
  EXPECT_TRUE(GetPreference(repo, "Five", false));
  EXPECT_FALSE(GetPreference(repo, "Zero", true));
  EXPECT_TRUE(GetPreference(repo, "Count", true));  // an int is not a bool's short
  EXPECT_FALSE(GetPreference(repo, "Missing", false));
  EXPECT_EQ(GetPreference(repo, "Name", QAVString("default")), "studio");
  EXPECT_EQ(GetPreference(repo, "Empty", QAVString("default")), "default");
  EXPECT_EQ(GetPreference(repo, "Count", QAVString("default")), "default");
  EXPECT_EQ(GetPreference(repo, "Missing", -1), -1);

  // A text literal as default reads a string, not a bool.
  static_assert(std::is_same_v<decltype(GetPreference(repo, "Name", "x")), QAVString>);
  EXPECT_EQ(GetPreference(repo, "Name", "default"), "studio");
  EXPECT_EQ(GetPreference(repo, "Missing", "default"), "default");
}

TEST_F(PreferenceAccessTest, EverySuccessfulWriteIsCommittedAtOnce) {
  QAVSysPreferenceRepository& repo = *_repo;
  SetPreference(repo, "Flag", static_cast<short>(1));
  EXPECT_EQ(repo.GetCommitCount(), 1);
  SetPreference(repo, "Count", 3);
  SetPreference(repo, "Ratio", 0.5);
  SetPreference(repo, "Name", QAVString("sky"));
  EXPECT_EQ(repo.GetCommitCount(), 4);
  const std::string committed = qavtest::ReadFile(repo.GetFilePath());

  // Failed writes commit nothing: a write refused by the host, a type clash.
  Driver().FailPreferenceWrites(&repo, true);
  SetPreference(repo, "Count", 9);
  Driver().FailPreferenceWrites(&repo, false);
  SetPreference(repo, "Count", 2.0);
  EXPECT_EQ(repo.GetCommitCount(), 4);
  EXPECT_EQ(qavtest::ReadFile(repo.GetFilePath()), committed);

  // What was committed is what a new process reads.
  ResetProcessState();
  QAVString name = "UserPrefs";
  QAVSysPreferenceRepository& reloaded = *GetPreferenceRepository(name);
  EXPECT_TRUE(GetPreference(reloaded, "Flag", false));
  EXPECT_EQ(GetPreference(reloaded, "Count", 0), 3);
  EXPECT_EQ(GetPreference(reloaded, "Ratio", 0.0), 0.5);
  EXPECT_EQ(GetPreference(reloaded, "Name", QAVString()), "sky");

  QAVSysPreferenceRepository::SetAvailable("UserPrefs", false);
  EXPECT_EQ(GetPreferenceRepository(name), nullptr);
}

TEST_F(PreferenceAccessTest, ConfigurationTextsConvert) {
  const std::pair<const char*, const char*> values[] = {
      {"True", "TRUE"}, {"Yes", "Yes"},     {"One", "1"},        {"On", "on"},    {"Two", "2"},
      {"Empty", ""},    {"No", "no"},       {"Mixed", "12abc"},  {"Word", "abc"}, {"Neg", "-3"},
      {"Sci", "2.5e3"}, {"Half", "1.5abc"}, {"Spaced", " yes "},
  };
  for (const auto& [key, text] : values)
    ASSERT_EQ(QAVRbaConfiguration::SetHierarchicalValue("Rendering", key, text), S_OK) << key;

  for (const char* key : {"True", "Yes", "One"})
    EXPECT_TRUE(GetBoolValue("Rendering", key)) << key;
  // The text is compared as it is: blanks around "yes" make it false.
  for (const char* key : {"On", "Two", "Empty", "No", "Missing", "Spaced"})
    EXPECT_FALSE(GetBoolValue("Rendering", key)) << key;
  EXPECT_FALSE(GetBoolValue("Nowhere", "True"));

  // Numbers are read from the start of the text; what is not a number reads 0.
  const std::tuple<const char*, int, double> numbers[] = {
      {"Mixed", 12, 12.0}, {"Neg", -3, -3.0}, {"Sci", 2, 2500.0},  {"Half", 1, 1.5},
      {"Word", 0, 0.0},    {"Empty", 0, 0.0}, {"Missing", 0, 0.0},
  };
  for (const auto& [key, asInt, asDouble] : numbers) {
    EXPECT_EQ(GetIntValue("Rendering", key), asInt) << key;
    EXPECT_EQ(GetDoubleValue("Rendering", key), asDouble) << key;
  }

  EXPECT_EQ(GetStringValue("Rendering", "Mixed"), "12abc");
  EXPECT_EQ(GetStringValue("Rendering", "Spaced"), " yes ");
  EXPECT_EQ(GetStringValue("Rendering", "Missing"), "");
  // Values come through the section hierarchy.
  EXPECT_EQ(GetIntValue("Rendering/Live", "Neg"), -3);
}
