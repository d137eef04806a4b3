#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "QAVTestScenes.h"
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
  EXPECT_EQ(run.err, "qavrba: not imported: the import was not confirmed (--yes confirms it)\n");
  run = Run("import run material 1 --yes");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("progress  10%  Brushed aluminium\n"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("message: The new covering material was imported.\n"), std::string::npos);
  run = Run("plm list");
  EXPECT_NE(run.out.find("2 object(s) in PLM1"), std::string::npos) << run.out;
}

TEST_F(ImportCliTest, PresetsThatCannotBeImportedSayWhy) {
  // Created another way: listed, not imported.
  qavtest::ProgramRun run = Run("import run material 3 --yes");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "qavrba: preset 3 (Advanced material) is not created by the importer\n");
  // Its package is missing: said before anything is clicked, with where it was
  // looked for.
  run = Run("import run material 4 --yes");
  EXPECT_EQ(run.status, 1);
  const std::string said = "content installation path: ";
  ASSERT_EQ(run.out.rfind(said, 0), 0u) << run.out;
  const std::string content = run.out.substr(said.size(), run.out.find('\n') - said.size());
  EXPECT_EQ(run.err,
            "qavrba: the package of preset 4 (Frosted glass) is missing: no FrostedGlass_V00.orlix "
            "to FrostedGlass_V09.orlix in " +
                content + "/startup/materials\n");
  EXPECT_EQ(run.out.find("message:"), std::string::npos) << run.out;
  // Numbers that are no tile's: the panel's range.
  for (const char* n : {"9", "-1", "5"}) {
    run = Run(std::string("import run material ") + n + " --yes");
    EXPECT_EQ(run.status, 1) << n;
    EXPECT_EQ(run.err, std::string("qavrba: no preset ") + n +
                           ": the material panel has 5 tile(s), numbered 0 to 4\n");
  }
  for (const char* bad : {"import run material x", "import run material 1.5",
                          "import run material 99999999999", "import run shaders 1"}) {
    run = Run(bad);
    EXPECT_EQ(run.status, 2) << bad;
    EXPECT_LT(run.err.size(), 200u) << bad << ": " << run.err;
  }
}

TEST_F(ImportCliTest, AContentPathThatIsNoFolderIsAnError) {
  _scratch.Write("file.txt", "not a folder");
  for (const char* command :
       {"import list material", "import panel material -o p.svg", "import run material 1 --yes"}) {
    qavtest::ProgramRun run = Run(std::string(command) + " --content nowhere");
    EXPECT_EQ(run.status, 1) << command;
    EXPECT_EQ(run.err,
              "qavrba: the content installation path nowhere (given with --content) does not "
              "exist\n")
        << command;
    EXPECT_EQ(run.out.find("Preferences"), std::string::npos) << run.out;
    run = Run(std::string(command) + " --content file.txt");
    EXPECT_EQ(run.status, 1) << command;
    EXPECT_EQ(run.err,
              "qavrba: the content installation path file.txt (given with --content) is not a "
              "folder\n")
        << command;
    // Empty is not the default: a usage error.
    run = Run(std::string(command) + " --content ''");
    EXPECT_EQ(run.status, 2) << command;
    EXPECT_NE(run.err.find("--content: the value may not be empty"), std::string::npos) << run.err;
  }
  EXPECT_FALSE(std::filesystem::exists(_scratch.path() / "p.svg"));

  // The stored setting names a folder that is gone.
  const std::string gone = _scratch.str() + "/gone";
  _scratch.Write("ContentInstallPathRepo.settings",
                 "QAVHostSettings 1\nQAVContentInstallPath\ttext\t1\t" + gone + "\n");
  qavtest::ProgramRun run = Run("import list material");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "qavrba: the content installation path " + gone +
                         " (the setting \"QAVContentInstallPath\" of \"ContentInstallPathRepo\") "
                         "does not exist\n");

  // An empty content folder: the sample only, and the warning.
  run = Run("import list human --content " + _scratch.str());
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.out.find("No ressources found."), std::string::npos) << run.out;
}

TEST_F(ImportCliTest, AFailedImportSaysWhyAndNamesItsReports) {
  // No repository can be made: where they go is a file.
  _scratch.Write("plm-file", "in the way");
  const qavtest::ScopedEnv plm("QAVHOST_PLM_DIR", _scratch.str() + "/plm-file");
  const qavtest::ScopedEnv temp("QAVTemp", _scratch.str() + "/reports");
  const qavtest::ProgramRun run = Run("import run material 1 --yes");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.out.find("message: The covering material could not be imported."),
            std::string::npos)
      << run.out;
  std::vector<std::string> reports;
  for (const auto& entry : std::filesystem::directory_iterator(_scratch.path() / "reports"))
    reports.push_back(entry.path().string());
  ASSERT_EQ(reports.size(), 2u);  // PLM1, then TST
  std::sort(reports.begin(), reports.end());
  const std::string reason = "cannot create the PLM directory " + _scratch.str() + "/plm-file";
  EXPECT_EQ(run.err.rfind("qavrba: the import failed: into PLM1: " + reason, 0), 0u) << run.err;
  EXPECT_NE(run.err.find("; into TST: " + reason), std::string::npos) << run.err;
  for (const std::string& report : reports)
    EXPECT_NE(run.err.find("(report: " + report + ")"), std::string::npos) << run.err;
}

TEST_F(ImportCliTest, APictureThatIsNoFileIsDrawnAsAnEmptyFrame) {
  // The content's picture of a tile is a FIFO: nothing waits on it.
  const std::filesystem::path content = _scratch.path() / "content";
  std::filesystem::copy(std::string(QAV_RESOURCES_DIR) + "/content", content,
                        std::filesystem::copy_options::recursive);
  const std::filesystem::path picture = content / "resources/graphic/WalnutVeneer.png";
  std::filesystem::remove(picture);
  ASSERT_EQ(::mkfifo(picture.c_str(), 0600), 0);
  const std::string command = "cd '" + _scratch.str() + "' && timeout -s KILL 20 '" +
                              qavtest::QavrbaProgram().string() +
                              "' import panel material --content content -o panel.svg "
                              ">/dev/null 2>&1";
  const int raw = std::system(command.c_str());
  ASSERT_TRUE(WIFEXITED(raw) && WEXITSTATUS(raw) == 0) << raw;
  const std::string svg = qavtest::ReadFile(_scratch.path() / "panel.svg");
  const std::size_t title = svg.find(">Walnut veneer</text>");
  ASSERT_NE(title, std::string::npos);
  const std::size_t frame = svg.rfind("<rect ", title);  // the thumbnail's, before the title
  EXPECT_NE(svg.substr(frame, title - frame).find("stroke-dasharray"), std::string::npos);
}

TEST_F(ImportCliTest, LongTitlesAreCutToFitTheirTiles) {
  // The shipped catalog and style sheet, two titles made far too long.
  const std::string resources = QAV_RESOURCES_DIR;
  std::string catalog =
      qavtest::ReadFile(resources + "/msgcatalog/QAVRbaMaterialCatalogImporterCmd.catalog");
  for (const std::string& title :
       {std::string("Brushed aluminium"), std::string("Walnut veneer")}) {
    const std::size_t at = catalog.find(" = " + title + "\n");
    ASSERT_NE(at, std::string::npos) << title;
    catalog.insert(at + 3 + title.size(),
                   " with a title far longer than any tile, WWWWWWWWWWWWWWWWWWWWWWWWWWWWWW");
  }
  _scratch.Write("res/msgcatalog/QAVRbaMaterialCatalogImporterCmd.catalog", catalog);
  _scratch.Write(
      "res/style/QAVRbaMaterialCatalogImporterPanel.QAVSYPStyle",
      qavtest::ReadFile(resources + "/style/QAVRbaMaterialCatalogImporterPanel.QAVSYPStyle"));
  const qavtest::ScopedEnv resourcePath("QAVHOST_RESOURCE_PATH", _scratch.str() + "/res");

  qavtest::ProgramRun run = Run("import panel material -o panel.svg");
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string svg = qavtest::ReadFile(_scratch.path() / "panel.svg");
  for (const char* title : {">Brushed aluminium with a title", ">Walnut veneer with a title"}) {
    const std::size_t at = svg.find(title);
    ASSERT_NE(at, std::string::npos) << title;
    const std::string text = svg.substr(at + 1, svg.find('<', at) - at - 1);
    EXPECT_EQ(text.substr(text.size() - 3), "\u2026") << text;  // cut with an ellipsis
  }
  EXPECT_EQ(svg.find("WWW"), std::string::npos);
  EXPECT_NE(svg.find(">Sample materials</text>"), std::string::npos);  // short: whole

  // As the user sees it: nothing drawn between the tiles' columns nor right of
  // them, along the rows of tiles.
  if (std::system("command -v rsvg-convert >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "rsvg-convert (Debian librsvg2-bin) is not installed";
  run = Run("import panel material -o panel.png");
  ASSERT_EQ(run.status, 0) << run.err;
  int width = 0;
  int height = 0;
  std::vector<unsigned char> rgb;
  ASSERT_TRUE(
      qavtest::DecodePng(qavtest::ReadFile(_scratch.path() / "panel.png"), width, height, rgb));
  ASSERT_EQ(width, 760);
  // The tiles' rows: from the first tile's top to the last one's bottom (the
  // tiles of the left column: 356 wide at x = 16).
  const std::string tile = "<rect x=\"16.0\" y=\"";
  int top = height;
  int bottom = 0;
  for (std::size_t at = svg.find(tile); at != std::string::npos; at = svg.find(tile, at + 1)) {
    char* end = nullptr;
    const double y = std::strtod(svg.c_str() + at + tile.size(), &end);
    if (std::string(end).rfind("\" width=\"356.0\" height=\"84.0\"", 0) != 0) continue;
    top = std::min(top, static_cast<int>(y));
    bottom = std::max(bottom, static_cast<int>(y) + 84);
  }
  ASSERT_LT(top, bottom);
  ASSERT_LT(bottom, height);
  int inked = 0;
  for (int y = top; y < bottom; ++y)
    for (int x : {374, 376, 378, 380, 741, 745, 750, 755, 759}) {
      const unsigned char* p = &rgb[(static_cast<std::size_t>(y) * width + x) * 3];
      if (p[0] != 0xf3 || p[1] != 0xf4 || p[2] != 0xf6) ++inked;
    }
  EXPECT_EQ(inked, 0);
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
