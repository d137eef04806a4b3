// The program's answer to bad input, command by command, run as a user runs it:
// each row gives the command line, the exit status the README promises (1 for a
// failure: a file missing, unreadable, a folder, a FIFO, empty or malformed, a
// value the computation cannot use, something not there; 2 for a usage error:
// an unknown command, option or name, a missing argument, a number that is not
// one, not finite, beyond its type or outside the option's range, a picture name
// that is neither .png nor .svg) and a part of the message that names the
// culprit. Every row uses small scenes and files written here, so that the
// whole table runs in seconds.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "QAVTestScenes.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

struct Row {
  const char* arguments;  // shell words; {res} is the shipped resources folder
  int status;
  const char* culprit;      // a part of standard error
  const char* env = "";     // words given to env(1) first: NAME=value, -u NAME
  const char* absent = "";  // a file the run must not leave behind
};

// A scene of one box in front of the eye, in a window of that size.
std::string BoxScene(const std::string& width, const std::string& height,
                     const std::string& eye = "[0, -500, 0]", const std::string& fov = "40") {
  return R"({"format": "qav-scene", "version": 1,
  "window": {"width": )" +
         width + R"(, "height": )" + height + R"(},
  "viewpoint": {"eye": )" +
         eye + R"(, "target": [0, 0, 0], "up": [0, 0, 1], "fieldOfView": )" + fov + R"(},
  "root": {"class": "QAVProduct", "name": "Box scene",
           "children": [{"class": "QAVPart", "name": "Box", "shape": {"box": [100, 100, 100]}}]}})";
}

const char* const kEmptyView = R"({"format": "qav-scene", "version": 1,
  "window": {"width": 320, "height": 200},
  "viewpoint": {"eye": [0, -500, 0], "target": [0, 0, 0], "up": [0, 0, 1], "fieldOfView": 40},
  "root": {"class": "QAVProduct", "name": "Nothing", "children": []}})";

const Row kRows[] = {
    // The program as a whole.
    {"nosuch", 2, "unknown command 'nosuch'"},
    {"scene", 2, "subcommand is required"},
    {"scene info", 2, "scene is required"},
    {"scene info box.json --bogus", 2, "--bogus"},

    // settings
    {"settings get NoSuchRepo Key", 1, "unknown setting repository 'NoSuchRepo'"},
    {"settings show NoSuchRepo", 1, "unknown setting repository 'NoSuchRepo'"},
    {"settings get RenderingLiveSettings NoKey", 1, "unknown key 'NoKey'"},
    {"settings set NoSuchRepo Key 1", 1, "unknown setting repository 'NoSuchRepo'"},
    // A setting's values are checked against its declared type once the
    // repository is read.
    {"settings set RenderingLiveSettings FNumber 1e40", 1, "\"1e40\" is out of range for a float"},
    {"settings set RenderingLiveSettings FNumber nan", 1, "\"nan\" is not a finite float"},

    // files
    {"files list missing", 1, "'missing': no such directory"},
    {"files list box.json", 1, "'box.json' is not a directory"},
    {"files list fifo", 1, "'fifo' is not a directory"},
    {"files find-texture nothing.png", 1, "'nothing.png' not found"},

    // ies
    {"ies info missing.ies", 1, "'missing.ies': no such file"},
    {"ies info folder", 1, "'folder' is a folder"},
    {"ies info fifo", 1, "'fifo' is not a regular file"},
    {"ies info unreadable", 1, "'unreadable' cannot be read"},
    {"ies info empty", 1, "'empty'"},
    {"ies info bad.ies", 1, "token 'x'"},
    {"ies sample {res}/ies/qav_downlight_wide.ies 0", 2, "pairs H V"},
    {"ies sample {res}/ies/qav_downlight_wide.ies 0 nan", 2, "'nan' is not a finite number"},
    {"ies grid {res}/ies/qav_downlight_wide.ies --step 0", 2, "'0' is not in the range"},
    {"ies plot {res}/ies/qav_downlight_wide.ies -o plot.jpg", 2, "'plot.jpg'", "", "plot.jpg"},
    {"ies plot {res}/ies/qav_downlight_wide.ies -o nodir/plot.svg", 1, "nodir/plot.svg"},
    {"ies plot fifo -o plot.svg", 1, "'fifo' is not a regular file", "", "plot.svg"},

    // blackbody
    {"blackbody -- -5", 2, "'-5'"},
    {"blackbody nan", 2, "'nan'"},
    {"blackbody 1e38", 1, "1e38 K: the colour cannot be computed"},
    {"blackbody --strip 2000:1000 -o strip.svg", 2, "FROM < TO", "", "strip.svg"},
    {"blackbody --strip 1000:2000 -o strip.bmp", 2, "'strip.bmp'", "", "strip.bmp"},

    // color
    {"color convert --to 1 missing.ppm out.ppm", 1, "'missing.ppm': no such file"},
    {"color convert --to 1 fifo out.ppm", 1, "'fifo' is not a regular file", "", "out.ppm"},
    {"color convert --to 1 folder out.ppm", 1, "'folder' is a folder", "", "out.ppm"},
    {"color convert --to 1 empty out.ppm", 1, "'empty' is not a binary PPM image", "", "out.ppm"},
    {"color convert --to 1 bad.ppm out.ppm", 1, "truncated", "", "out.ppm"},
    {"color convert --to 99 good.ppm out.ppm", 1, "no profile 99", "", "out.ppm"},
    {"color convert --to 1e40 good.ppm out.ppm", 2, "1e40", "", "out.ppm"},
    {"color convert --to 1 good.ppm nodir/out.ppm", 1, "nodir/out.ppm"},

    // camera
    {"camera ev abc", 2, "abc"},
    {"camera ev 1e40", 2, "'1e40' is beyond the single-precision range"},
    {"camera ladders --bogus", 2, "--bogus"},

    // ambience
    {"ambience resolve Nowhere", 2, "unknown preset \"Nowhere\""},
    {"ambience shooter City --count 0", 2, "--count"},

    // dof
    {"dof bokeh 1e40", 2, "'1e40' is beyond the single-precision range"},
    {"dof bokeh nan", 2, "'nan' is not a finite number"},
    {"dof bokeh -- -1", 1, "f/-1: an aperture must be a number above 0"},
    {"dof bokeh 5.6", 1, "QAVGraphicPath is not set", "-u QAVGraphicPath"},
    {"dof bokeh 5.6", 1, "QAVGraphicPath \"nowhere\" has one entry", "QAVGraphicPath=nowhere"},
    {"dof circle missing.json", 1, "missing.json: no such file"},
    {"dof circle huge.json", 1, "huge.json: window.width: 1e+12 pixels: from 1 to 8192"},
    {"dof circle box.json -o circle.bmp", 2, "'circle.bmp'", "", "circle.bmp"},
    {"dof focus empty-view.json", 1, "nothing lies at the centre of the view"},
    {"dof focus box.json --mode 3", 2, "--mode"},
    {"dof focus box.json --mode 0 --distance -1", 2, "--distance"},
    {"dof focus box.json --mode 2 --point 1 2", 2, "--point"},
    {"dof focus box.json --mode 2", 2, "--mode 2 focuses on a point: give --point"},
    {"dof focus box.json --mode 0", 2, "--mode 0 focuses at a distance: give --distance"},
    {"dof focus box.json --distance 100", 2, "--distance is for --mode 0, not --mode 1"},
    {"dof focus box.json -o focus.jpg", 2, "'focus.jpg'", "", "focus.jpg"},

    // scene
    {"scene info missing.json", 1, "missing.json: no such file"},
    {"scene info folder", 1, "folder: not a regular file"},
    {"scene info fifo", 1, "fifo: not a regular file"},
    {"scene info empty", 1, "empty:"},
    {"scene info malformed.json", 1, "malformed.json:"},
    {"scene info huge.json", 1, "huge.json: window.width: 1e+12 pixels: from 1 to 8192"},
    {"scene info wide.json", 1, "wide.json: window.width: 8193 pixels: from 1 to 8192"},
    {"scene info zero.json", 1, "zero.json: window.width"},
    {"scene info far-eye.json", 1, "far-eye.json: viewpoint.eye"},
    {"scene info infinite-fov.json", 1, "infinite-fov.json:"},
    {"scene pick box.json 400 10", 1, "the pixel 400 10 is outside the 320 x 200 view"},
    {"scene pick box.json 10 10 --box 0 1", 2, "--box"},
    {"scene view box.json -o view.jpg", 2, "'view.jpg'", "", "view.jpg"},
    {"scene view huge.json -o view.png", 1, "window.width", "", "view.png"},
    {"scene view box.json -o nodir/view.png", 1, "nodir/view.png"},
    {"scene view box.json -o folder.png", 1, "folder.png: cannot be written"},

    // hud
    {"hud huge.json", 1, "huge.json: window.width: 1e+12 pixels: from 1 to 8192"},
    {"hud missing.json", 1, "missing.json: no such file"},
    {"hud box.json --total -1", 2, "--total"},
    {"hud box.json -o hud.gif", 2, "'hud.gif'", "", "hud.gif"},
    {"hud box.json", 1,
     "QAVRbaLiveHUDDlg.catalog is in no msgcatalog/ folder of "
     "QAVHOST_RESOURCE_PATH \"nowhere\"",
     "QAVHOST_RESOURCE_PATH=nowhere"},

    // bar
    {"bar toolbar", 2, "unknown bar \"toolbar\""},
    {"bar material --mapping conical", 2, "unknown mapping type \"conical\""},
    {"bar material -o bar.jpg", 2, "'bar.jpg'", "", "bar.jpg"},

    // place
    {"place box.json NoSuch", 1, "no object named \"NoSuch\""},
    {"place box.json Box --as decalx", 2, "unknown kind \"decalx\""},
    {"place box.json Box --press NoSuchHdr", 1, "\"NoSuchHdr\""},
    {"place box.json Box -o place.jpg", 2, "'place.jpg'", "", "place.jpg"},
    {"place missing.json Box", 1, "missing.json: no such file"},

    // bbox
    {"bbox box.json NoSuch", 1, "no object named \"NoSuch\""},
    {"bbox fifo Box", 1, "fifo: not a regular file"},

    // ruler
    {"ruler box.json --from 0 0 0 --to 1 0 0 --angle 90 --plane 0 0 0 0 0 0 0 1 0", 2,
     "--plane: the direction UX UY UZ is zero"},
    {"ruler box.json --from 0 0 0 --to 1 0 0 --angle 90 --plane 0 0 0 1 0 0 0 0 0", 2,
     "--plane: the direction VX VY VZ is zero"},
    {"ruler box.json --from 0 0 0 --to 1 0 0 --angle 90 --plane 0 0 0 1 2 3 -2 -4 -6", 2,
     "--plane: the directions UX UY UZ and VX VY VZ are parallel"},
    {"ruler box.json --from 0 0 nan --to 1 0 0", 2, "'nan' is not a finite number"},
    {"ruler box.json --from 0 0 1e13 --to 1 0 0", 2, "'1e13' is not in the range"},
    {"ruler box.json --from 0 0 0 --to 1 0 0 --angle 1e5", 2, "--angle"},
    {"ruler box.json --from 0 0 0 --to 1 0 0 -o ruler.tiff", 2, "'ruler.tiff'", "", "ruler.tiff"},
    {"ruler box.json --from 0 0 0 --to 1 0 0 --plane 0 0 0 1 0 0 0 1 0", 2, "--plane"},

    // snap
    {"snap box.json 10", 2, "pairs X Y"},
    {"snap box.json 1e40 1", 2, "'1e40' is not in the range"},
    {"snap box.json 1 1 -o snap.jpeg", 2, "'snap.jpeg'", "", "snap.jpeg"},
    {"snap empty 1 1", 1, "empty:"},

    // import
    {"import list nothing", 2, "nothing"},
    {"import list material --content missing", 1, "missing"},
    {"import list material --content box.json", 1, "box.json"},
    {"import run material 99999 --yes --content {res}/content", 1, "no preset 99999"},
    {"import panel material -o panel.jpg", 2, "'panel.jpg'", "", "panel.jpg"},

    // content
    {"content check bad.orlix", 1, "bad.orlix"},
    {"content pack folder -o pack.orlix", 1, "manifest.json", "", "pack.orlix"},

    // plm
    {"plm show 999999", 1, "the repository 'PLM1' does not exist"},
    {"plm show abc --repository Typo", 1, "the repository 'Typo' does not exist"},
    {"plm import bad.orlix", 1, "bad.orlix"},

    // shader
    {"shader check NoSuchShader", 1, "NoSuchShader"},
};

class BadInputCliTest : public qavtest::ProgramTest {
 protected:
  void SetUp() override {
    qavtest::ProgramTest::SetUp();
    if (IsSkipped()) return;
    _scratch.Write("box.json", BoxScene("320", "200"));
    _scratch.Write("huge.json", BoxScene("1e12", "200"));
    _scratch.Write("wide.json", BoxScene("8193", "200"));
    _scratch.Write("zero.json", BoxScene("0", "200"));
    // A coordinate beyond what a float holds, an angle that is not finite.
    _scratch.Write("far-eye.json", BoxScene("320", "200", "[0, -1e39, 0]"));
    _scratch.Write("infinite-fov.json", BoxScene("320", "200", "[0, -500, 0]", "1e400"));
    _scratch.Write("empty-view.json", kEmptyView);
    _scratch.Write("malformed.json", R"({"format": "qav-scene", "version": 1,)");
    _scratch.Write("empty", "");
    _scratch.Write("bad.ies", "IESNA:LM-63-2002\nTILT=NONE\n1 x\n");
    _scratch.Write("good.ppm", std::string("P6\n2 1\n255\n") + std::string(6, '\x40'));
    _scratch.Write("bad.ppm", "P6\n2 2\n255\nab");
    _scratch.Write("bad.orlix", "not an archive\n");
    _scratch.Write("unreadable", "IESNA:LM-63-2002\n");
    fs::create_directories(_scratch.path() / "folder");
    fs::create_directories(_scratch.path() / "folder.png");
    fs::permissions(_scratch.path() / "unreadable", fs::perms::none);
    // The rendering settings declared, as a user starts.
    const qavtest::ProgramRun init = RunRow({"settings init", 0, ""});
    ASSERT_EQ(init.status, 0) << init.err;
    ASSERT_EQ(::mkfifo((_scratch.path() / "fifo").c_str(), 0600), 0);
  }

  // Runs one row: in the scratch folder, with its own settings and PLM
  // folders, and a time limit, so that a run blocked on a FIFO fails the row
  // instead of hanging the test.
  qavtest::ProgramRun RunRow(const Row& row) const {
    std::string arguments = row.arguments;
    for (std::size_t at; (at = arguments.find("{res}")) != std::string::npos;)
      arguments.replace(at, 5, QAV_RESOURCES_DIR);
    const fs::path out = _scratch.path() / "row-out.txt";
    const fs::path err = _scratch.path() / "row-err.txt";
    const std::string command = "cd '" + _scratch.str() + "' && env " + row.env +
                                " QAVHOST_SETTINGS_DIR=settings QAVHOST_PLM_DIR=plm timeout 10 '" +
                                qavtest::QavrbaProgram().string() + "' " + arguments +
                                " </dev/null >'" + out.string() + "' 2>'" + err.string() + "'";
    const int raw = std::system(command.c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, qavtest::ReadFile(out), qavtest::ReadFile(err)};
  }
};

TEST_F(BadInputCliTest, EveryCommandRefusesBadInputWithTheStatusAndTheCulprit) {
  // Root reads a file whatever its permissions: that row cannot be made.
  const bool root = ::geteuid() == 0;
  int run = 0;
  for (const Row& row : kRows) {
    if (root && std::string(row.arguments).find("unreadable") != std::string::npos) continue;
    SCOPED_TRACE(std::string(row.env) + " qavrba " + row.arguments);
    const qavtest::ProgramRun result = RunRow(row);
    ++run;
    EXPECT_EQ(result.status, row.status) << "stderr: " << result.err << "stdout: " << result.out;
    EXPECT_NE(result.err.find(row.culprit), std::string::npos)
        << "expected \"" << row.culprit << "\" in: " << result.err;
    EXPECT_EQ(result.err.rfind("qavrba: ", 0), 0U) << "the program's own message: " << result.err;
    if (*row.absent) {
      EXPECT_FALSE(fs::exists(_scratch.path() / row.absent)) << row.absent << " was written";
    }
  }
  EXPECT_GE(run, 100);
}

// Every command that writes a picture writes it by its name's extension:
// PNG for ".png" (either case), SVG for ".svg", whether it draws the picture as
// SVG or as pixels.
TEST_F(BadInputCliTest, EveryPictureIsWrittenInTheFormatItsNameAsks) {
  const std::string ies = std::string(QAV_RESOURCES_DIR) + "/ies/qav_downlight_wide.ies";
  const std::vector<std::string> commands = {
      "scene view box.json",
      "dof circle box.json",
      "dof focus box.json",
      "hud box.json",
      "bar material",
      "place box.json Box",
      "ruler box.json --from 0 0 0 --to 1 0 0",
      "snap box.json 160 100",
      "ies plot " + ies,
      "blackbody --strip 1000:9000",
  };
  for (const std::string& command : commands) {
    for (const char* name : {"picture.svg", "picture.PNG", "picture.png"}) {
      SCOPED_TRACE(command + " -o " + name);
      fs::remove(_scratch.path() / name);
      const qavtest::ProgramRun run = RunRow({(command + " -o " + name).c_str(), 0, ""});
      ASSERT_EQ(run.status, 0) << run.err;
      const std::string bytes = qavtest::ReadFile(_scratch.path() / name);
      if (std::string(name).find(".svg") != std::string::npos) {
        const std::size_t open = bytes.find("<svg");
        EXPECT_TRUE(open == 0 || (bytes.rfind("<?xml", 0) == 0 && open < 100))
            << bytes.substr(0, 16);
        EXPECT_NE(bytes.find("</svg>"), std::string::npos);
      } else {
        int width = 0;
        int height = 0;
        std::vector<unsigned char> rgb;
        EXPECT_TRUE(qavtest::DecodePng(bytes, width, height, rgb)) << bytes.substr(0, 16);
        EXPECT_GT(width, 1);
        EXPECT_GT(height, 1);
      }
    }
  }
  // A raster view as SVG is the same picture: one image element of its size.
  ASSERT_EQ(RunRow({"scene view box.json -o view.svg", 0, ""}).status, 0);
  const std::string view = qavtest::ReadFile(_scratch.path() / "view.svg");
  EXPECT_NE(view.find("width=\"320\" height=\"200\""), std::string::npos) << view.substr(0, 200);
  EXPECT_NE(view.find("href=\"data:image/png;base64,iVBORw0KGgo"), std::string::npos);
}

// A picture that cannot be written leaves the file of that name as it was.
TEST_F(BadInputCliTest, AFailedPictureLeavesTheOldFile) {
  _scratch.Write("kept.png", "the user's picture");
  // A folder the program may not write in (root writes anywhere: not then).
  fs::create_directories(_scratch.path() / "locked");
  _scratch.Write("locked/kept.svg", "the user's drawing");
  fs::permissions(_scratch.path() / "locked", fs::perms::owner_read | fs::perms::owner_exec);
  if (::geteuid() != 0) {
    const qavtest::ProgramRun run = RunRow({"bar material -o locked/kept.svg", 0, ""});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("locked/kept.svg: cannot be written"), std::string::npos) << run.err;
    EXPECT_EQ(qavtest::ReadFile(_scratch.path() / "locked/kept.svg"), "the user's drawing");
  }
  fs::permissions(_scratch.path() / "locked", fs::perms::owner_all);
  // A refused run writes nothing over it either.
  const qavtest::ProgramRun refused = RunRow({"scene view huge.json -o kept.png", 0, ""});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(qavtest::ReadFile(_scratch.path() / "kept.png"), "the user's picture");
}

}  // namespace
