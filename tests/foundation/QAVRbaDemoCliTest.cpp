// Runs the qavrba demo tour as a new user would, with no settings directory of
// their own: it ends well, says which error line is on purpose, and leaves
// nothing in the temporary directory.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

class DemoCliTest : public qavtest::HostTest {};

}  // namespace

TEST_F(DemoCliTest, TourRunsSaysWhatIsOnPurposeAndCleansUp) {
  if (qavtest::QavrbaProgram().empty()) GTEST_SKIP() << "qavrba is not built";
  const fs::path temp = _scratch.path() / "tmp";
  fs::create_directories(temp);
  SetEnvAndReload("TMPDIR", temp.string());
  SetEnvAndReload("QAVTemp", temp.string());
  SetEnvAndReload("QAVHOST_SETTINGS_DIR", std::nullopt);

  const qavtest::ProgramRun run = qavtest::RunQavrba("demo", _scratch);
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string all = run.out + run.err;
  const auto notice = run.out.find("the first is an error written on purpose");
  EXPECT_NE(notice, std::string::npos) << run.out;
  EXPECT_NE(all.find("[ERROR]"), std::string::npos) << all;
  for (const char* part :
       {"keys declared",
        "received ",
        "Black-body tints",
        "Colour management,",
        "AmbienceStudio/ambiences/studio_pure_white_2K.hdr",
        "f/5.6 -1 EV",
        "aperture ladder: 1 1.2 1.4 1.7 2",
        "1/2000 1/4000\n",
        "autofocus: 837.1 mm",
        "focus circle: centre 480 270, radius 172.5",
        "  Frames rendered: 32\n  Total: 128\n",
        "the ambience updater received OnCameraChange(7)",
        "background \"City\": dome image",
        "bar filled 2 times, mapping shown first: QAVRbaContextBarTypeFiniteCylindricalHdr",
        "projection: origin 0 0 150, size 144 x 144 x 300",
        "snap over the key light: origin 0.0 -73.0 200.8, normal 0.00 1.00 0.00, cursor 15",
        "ruler after typing 30: 30",
        "message: The new covering material was imported.",
        "the repository PLM1 holds 2 object(s); integrity: ok",
        "48 shader types supported",
        "Done."})
    EXPECT_NE(run.out.find(part), std::string::npos) << part;
  EXPECT_TRUE(fs::is_empty(temp)) << fs::directory_iterator(temp)->path();
}
