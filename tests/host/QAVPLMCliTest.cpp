// qavrba content and plm as a user runs them: a folder packed, checked and
// imported, and the failures' messages and exit statuses.
#include <gtest/gtest.h>

#include <string>

#include "QAVTestSupport.h"

namespace {

class PLMCliTest : public qavtest::ProgramTest {
 protected:
  void SetUp() override {
    ProgramTest::SetUp();
    _plm.emplace("QAVHOST_PLM_DIR", (_scratch.path() / "plm").string());
  }
  std::optional<qavtest::ScopedEnv> _plm;
};

TEST_F(PLMCliTest, PackCheckImportListShow) {
  _scratch.Write("lamp/manifest.json", R"({"format":"orlix","version":1,"kind":"Props",
    "title":"Lamps","objects":[{"id":"lamp","type":"Prop","name":"Desk lamp",
    "files":["lamp.obj"],"attributes":{"Height":"0.4"}}]})");
  _scratch.Write("lamp/lamp.obj", "v 0 0 0\n");
  qavtest::ProgramRun run = Run("content pack lamp -o lamp.orlix");
  ASSERT_EQ(run.status, 0) << run.err;
  run = Run("content check lamp.orlix");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("kind\tProps\ntitle\tLamps\nobjects\t1\nfiles\t1\n"), std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("  lamp\tProp\tDesk lamp\n    lamp.obj\t8 bytes\n"), std::string::npos);

  run = Run("plm import lamp.orlix --repository TST --report reports");
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string id = run.out.substr(0, run.out.find('\n'));
  ASSERT_EQ(id.size(), 32u) << run.out;
  EXPECT_NE(run.out.find("imported 1 object(s) into TST\n"), std::string::npos);
  run = Run("plm list --repository TST");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out.rfind(id + "\tProp\tDesk lamp\t", 0), 0u) << run.out;
  run = Run("plm list");
  EXPECT_EQ(run.out, "0 object(s) in PLM1\n");
  run = Run("plm show " + id + " --repository TST");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("attribute\tHeight = 0.4\nattribute\tMaturity = PRIVATE\n"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("file\tlamp.obj\t8 bytes\n"), std::string::npos);
}

TEST_F(PLMCliTest, FailuresSayWhyAndExitWithOne) {
  _scratch.Write("junk.orlix", "junk");
  qavtest::ProgramRun run = Run("content check junk.orlix");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "qavrba: junk.orlix: not a zip archive\n");
  run = Run("plm import junk.orlix");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "qavrba: junk.orlix: not a zip archive\n");
  run = Run("plm list");
  EXPECT_EQ(run.out, "0 object(s) in PLM1\n");
  run = Run("plm show 0123");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "qavrba: no object '0123' in the repository 'PLM1'\n");
  run = Run("content pack nowhere -o x.orlix");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("nowhere: no readable manifest.json"), std::string::npos) << run.err;
  run = Run("content pack");
  EXPECT_EQ(run.status, 2);
  run = Run("plm list --repository ''");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("the repository name '' is invalid"), std::string::npos) << run.err;
}

}  // namespace
