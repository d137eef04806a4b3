#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "QAVTestSupport.h"

namespace {

class ImportCliTest : public qavtest::ProgramTest {
 protected:
  void SetUp() override {
    ProgramTest::SetUp();
    _settings.emplace("QAVHOST_SETTINGS_DIR", _scratch.str());
    _plm.emplace("QAVHOST_PLM_DIR", _scratch.str() + "/plm");
  }
  std::optional<qavtest::ScopedEnv> _settings;
  std::optional<qavtest::ScopedEnv> _plm;
};

TEST_F(ImportCliTest, TilesThenAConfirmedImport) {
  qavtest::ProgramRun run = Run("import list material");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("0\tSample materials\t"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("4\tFrosted glass\tNo description available\tFrostedGlass_teaser.png\t"
                         "unavailable\n"),
            std::string::npos)
      << run.out;

  // Not confirmed (no terminal to ask on): nothing imported.
  run = Run("import run material 1 </dev/null");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.out.find("not confirmed"), std::string::npos) << run.out;
  run = Run("import run material 1 --yes");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("progress  10%  Brushed aluminium\n"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("message: The new covering material was imported.\n"), std::string::npos);
  run = Run("plm list");
  EXPECT_NE(run.out.find("2 object(s) in PLM1"), std::string::npos) << run.out;
}

TEST_F(ImportCliTest, PresetsThatCannotBeImported) {
  // Created another way: listed, not imported.
  qavtest::ProgramRun run = Run("import run material 3 --yes");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.out.find("not created by the importer"), std::string::npos) << run.out;
  // Its content is missing: the tile cannot be selected.
  run = Run("import run material 4 --yes");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.out.find("message: No content selected"), std::string::npos) << run.out;
  run = Run("import run material 9 --yes");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("no preset 9 (the panel has 5)"), std::string::npos) << run.err;
  EXPECT_EQ(Run("import run shaders 1").status, 2);
  // An empty content folder: the sample only, and the warning.
  run = Run("import list human --content " + _scratch.str());
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.out.find("No ressources found."), std::string::npos) << run.out;
}

TEST_F(ImportCliTest, PanelPicture) {
  const qavtest::ProgramRun run = Run("import panel material -o panel.svg");
  ASSERT_EQ(run.status, 0) << run.err;
  std::ifstream in(_scratch.path() / "panel.svg");
  const std::string svg((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  for (const char* part : {">Create a new covering material</text>", ">Brushed aluminium</text>",
                           ">Frosted glass</text>", "data:image/png;base64,",
                           "<g opacity=\"0.45\">", ">Do not show this again</text>"})
    EXPECT_NE(svg.find(part), std::string::npos) << part;
  EXPECT_EQ(Run("import panel material").status, 2);  // no output file
}

}  // namespace
