#include <gtest/gtest.h>

#include "QAVMsgCatalog.h"
#include "QAVTestSupport.h"

namespace {

class MsgCatalogTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    qavtest::HostTest::SetUp();
    _first.Write("msgcatalog/Other.catalog", "Key = from the first directory\n");
    _second.Write("msgcatalog/QAVRbaSample.catalog",
                  "# texts of the sample\n"
                  "Title = Create a new covering material\n"
                  "Resolution = Resolution: {1} x {2}\n"
                  "Padded = \"  kept \\\"blanks\\\"\\n\"\n"
                  "Twice = first\n"
                  "this line is wrong\n"
                  "Twice = second\n"
                  "Braces = {0} {1} {12} {x} {2\n");
    _path.emplace("QAVHOST_RESOURCE_PATH", "/nonexistent:" + _first.str() + "::" + _second.str());
    ResetProcessState();
  }
  void TearDown() override {
    _path.reset();
    qavtest::HostTest::TearDown();
  }
  qavtest::ScratchDir _first;
  qavtest::ScratchDir _second;
  std::optional<qavtest::ScopedEnv> _path;
};

}  // namespace

TEST_F(MsgCatalogTest, LooksUpKeysAndSubstitutesParameters) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(QAVMsgCatalog::BuildMessage("QAVRbaSample", "Title"), "Create a new covering material");
  const std::string report = testing::internal::GetCapturedStderr();
  EXPECT_NE(report.find("QAVRbaSample.catalog has a bad line 6"), std::string::npos) << report;

  const QAVUnicodeString size[] = {"800", "600"};
  EXPECT_EQ(QAVMsgCatalog::BuildMessage("QAVRbaSample", "Resolution", size, 2),
            "Resolution: 800 x 600");
  // Missing parameters leave their place holder; parameters are not re-read.
  EXPECT_EQ(QAVMsgCatalog::BuildMessage("QAVRbaSample", "Resolution", size, 1),
            "Resolution: 800 x {2}");
  const QAVUnicodeString tricky[] = {"{2}", "two"};
  EXPECT_EQ(QAVMsgCatalog::BuildMessage("QAVRbaSample", "Resolution", tricky, 2),
            "Resolution: {2} x two");
  EXPECT_EQ(QAVMsgCatalog::BuildMessage("QAVRbaSample", "Braces", size, 2), "{0} 800 {12} {x} {2");
  EXPECT_EQ(QAVMsgCatalog::BuildMessage("QAVRbaSample", "Padded"), "  kept \"blanks\"\n");
  EXPECT_EQ(QAVMsgCatalog::BuildMessage("QAVRbaSample", "Twice"), "second");

  // Defaults, with their parameters, when the key or the catalog is missing.
  EXPECT_EQ(QAVMsgCatalog::BuildMessage("QAVRbaSample", "Missing", size, 2, "{1}/{2}"), "800/600");
  EXPECT_EQ(QAVMsgCatalog::BuildMessage("NoSuchCatalog", "Title", nullptr, 0, "Preset Name"),
            "Preset Name");
  EXPECT_EQ(QAVMsgCatalog::BuildMessage("NoSuchCatalog", "Title"), "");
  QAVUnicodeString text = "kept";
  EXPECT_FALSE(QAVMsgCatalog::GetText("QAVRbaSample", "Missing", text));
  EXPECT_EQ(text, "kept");
  EXPECT_EQ(QAVMsgCatalog::BuildMessage("Other", "Key"), "from the first directory");
}

TEST_F(MsgCatalogTest, CatalogsAreReadOnceUntilReset) {
  EXPECT_EQ(QAVMsgCatalog::GetCatalogPath("Other"),
            (_first.path() / "msgcatalog" / "Other.catalog").string());
  _first.Write("msgcatalog/Other.catalog", "Key = changed\n");
  EXPECT_EQ(QAVMsgCatalog::BuildMessage("Other", "Key"), "from the first directory");
  ResetProcessState();
  EXPECT_EQ(QAVMsgCatalog::BuildMessage("Other", "Key"), "changed");

  // Without a resource path no catalog is found.
  qavtest::ScopedEnv none("QAVHOST_RESOURCE_PATH", std::nullopt);
  ResetProcessState();
  EXPECT_EQ(QAVMsgCatalog::BuildMessage("Other", "Key", nullptr, 0, "default"), "default");
}
