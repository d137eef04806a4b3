#include <gtest/gtest.h>

#include <filesystem>

#include "QAVRbaConfiguration.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

class ConfigurationTest : public qavtest::HostTest {
 protected:
  fs::path File() const { return _scratch.path() / "settings" / "RenderingConfiguration.conf"; }
  void WriteFile(const std::string& content) {
    _scratch.Write("settings/RenderingConfiguration.conf", content);
    ResetProcessState();
  }
  static std::string Get(const char* section, const char* key) {
    QAVString text = "<none>";
    QAVRbaConfiguration::GetHierarchicalValue(section, key, text);
    return text.str();
  }
};

}  // namespace

TEST_F(ConfigurationTest, SectionsKeysAndParents) {
  WriteFile(
      "top = level\n"
      "# comment\n"
      "; another = comment\n"
      "[Rendering]\n"
      "  UseGPU   =   yes  \n"
      "Empty =\n"
      "[Rendering/Live]\n"
      "Samples = 512\r\n"
      "Label = \"  a \\\"quoted\\\" text\\n\"\n"
      "Equation = a = b\n"
      "[Other]\n"
      "UseGPU = no\n"
      "[Rendering/Live]\n"
      "Reopened = 1\n");
  EXPECT_EQ(Get("Rendering", "UseGPU"), "yes");
  EXPECT_EQ(Get("Rendering", "Empty"), "");
  EXPECT_EQ(Get("Rendering/Live", "Samples"), "512");
  EXPECT_EQ(Get("Rendering/Live", "Label"), "  a \"quoted\" text\n");
  EXPECT_EQ(Get("Rendering/Live", "Equation"), "a = b");
  EXPECT_EQ(Get("Rendering/Live", "Reopened"), "1");
  // A key a section lacks comes from its parents, not from other sections.
  EXPECT_EQ(Get("Rendering/Live", "UseGPU"), "yes");
  EXPECT_EQ(Get("Rendering/Live/Deeper", "Samples"), "512");
  EXPECT_EQ(Get("Other", "Samples"), "<none>");
  // The lines before the first section are not inherited.
  EXPECT_EQ(Get("", "top"), "level");
  EXPECT_EQ(Get("Rendering", "top"), "<none>");
  QAVString text = "kept";
  EXPECT_EQ(QAVRbaConfiguration::GetHierarchicalValue("Rendering", "samples", text), E_FAIL);
  EXPECT_EQ(text, "kept");
}

TEST_F(ConfigurationTest, SetKeepsTheRestOfTheFile) {
  WriteFile(
      "# header comment\n"
      "[A]\n"
      "x = 1\n"
      "\n"
      "# about B\n"
      "[B]\n"
      "y = 2\n");
  EXPECT_EQ(QAVRbaConfiguration::SetHierarchicalValue("A", "x", "10"), S_OK);
  EXPECT_EQ(QAVRbaConfiguration::SetHierarchicalValue("A", "z", " padded\t"), S_OK);
  EXPECT_EQ(QAVRbaConfiguration::SetHierarchicalValue("C/D", "w", ""), S_OK);
  EXPECT_EQ(QAVRbaConfiguration::SetHierarchicalValue("", "root", "r"), S_OK);
  EXPECT_EQ(qavtest::ReadFile(File()),
            "# header comment\n"
            "root = r\n"
            "[A]\n"
            "x = 10\n"
            "z = \" padded\\t\"\n"
            "\n"
            "# about B\n"
            "[B]\n"
            "y = 2\n"
            "\n"
            "[C/D]\n"
            "w =\n");
  ResetProcessState();
  EXPECT_EQ(Get("A", "z"), " padded\t");

  // Keys and sections the format cannot hold are refused, and nothing changes.
  const std::string before = qavtest::ReadFile(File());
  for (const char* key : {"", "a=b", "[x", "#x", ";x", " x", "x\n"})
    EXPECT_EQ(QAVRbaConfiguration::SetHierarchicalValue("A", key, "v"), E_FAIL) << key;
  for (const char* section : {"a]b", " A", "a\nb"})
    EXPECT_EQ(QAVRbaConfiguration::SetHierarchicalValue(section, "k", "v"), E_FAIL) << section;
  EXPECT_EQ(qavtest::ReadFile(File()), before);
}

TEST_F(ConfigurationTest, BadFileReadsAsEmptyAndIsKeptAside) {
  WriteFile("[A]\nx = 1\nno equal sign\n");
  testing::internal::CaptureStderr();
  EXPECT_EQ(Get("A", "x"), "<none>");
  const std::string report = testing::internal::GetCapturedStderr();
  EXPECT_NE(report.find(File().string() + " is corrupt (line 3:"), std::string::npos) << report;

  for (const char* bad : {"[A\n", "x = \"open\n", "x = \"a\" b\n", "x = 1\nx = 2\n", "= 1\n"}) {
    WriteFile(bad);
    testing::internal::CaptureStderr();
    EXPECT_EQ(Get("", "x"), "<none>") << bad;
    EXPECT_NE(testing::internal::GetCapturedStderr().find("is corrupt"), std::string::npos) << bad;
  }

  testing::internal::CaptureStderr();
  EXPECT_EQ(QAVRbaConfiguration::SetHierarchicalValue("A", "x", "2"), S_OK);
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(qavtest::ReadFile(File().string() + ".corrupt"), "= 1\n");
  EXPECT_EQ(qavtest::ReadFile(File()), "[A]\nx = 2\n");
}
