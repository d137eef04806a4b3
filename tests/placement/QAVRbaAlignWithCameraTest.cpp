// "Align with camera view" on a support that is turned and moved in the scene:
// the projection's Z axis points at the eye as the support's own space sees it,
// checked against a direction worked out here from the scene file's numbers.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <sstream>
#include <string>

#include "QAVTestSupport.h"

namespace {

struct Vec {
  double x, y, z;
};

Vec Unit(const Vec& v) {
  const double n = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
  return {v.x / n, v.y / n, v.z / n};
}

// An axis printed on the last line of axes ("  axes\tX a b c\tY ..."): the
// placement after the button was pressed.
bool ReadAxis(const std::string& out, const char* axis, Vec& v) {
  const std::size_t line = out.rfind("  axes\t");
  if (line == std::string::npos) return false;
  const std::size_t at = out.find(std::string(axis) + " ", line);
  if (at == std::string::npos) return false;
  std::istringstream in(out.substr(at + 2));
  return static_cast<bool>(in >> v.x >> v.y >> v.z);
}

class AlignWithCameraTest : public qavtest::ProgramTest {};

TEST_F(AlignWithCameraTest, TheProjectionFacesTheEyeFromATurnedAndMovedSupport) {
  // A panel turned a quarter turn about X, then moved: a point q of the scene is
  // R^T (q - t) in the panel's own space, with R^T (x, y, z) = (x, z, -y).
  const Vec eye{300, -800, 400};
  const Vec t{200, 100, 50};
  _scratch.Write("turned.json", R"({
  "format": "qav-scene", "version": 1,
  "window": {"width": 640, "height": 480},
  "viewpoint": {"eye": [300, -800, 400], "target": [200, 100, 50], "up": [0, 0, 1],
                "fieldOfView": 40},
  "root": {"class": "QAVProduct", "name": "Room", "children": [
    {"class": "QAVPart", "name": "Panel", "translate": [200, 100, 50],
     "rotate": {"axis": [1, 0, 0], "degrees": 90}, "shape": {"box": [120, 80, 10]}}]}
})");
  const qavtest::ProgramRun run =
      Run("place turned.json Panel --as sticker --press QAVRbaContextBarAlignWithCameraViewHdr");
  ASSERT_EQ(run.status, 0) << run.err;
  // The sticker starts at the panel's own origin.
  ASSERT_NE(run.out.find("origin\t0.000 0.000 0.000"), std::string::npos) << run.out;
  const Vec d{eye.x - t.x, eye.y - t.y, eye.z - t.z};
  const Vec expected = Unit({d.x, d.z, -d.y});
  Vec z{};
  Vec x{};
  ASSERT_TRUE(ReadAxis(run.out, "Z", z)) << run.out;
  ASSERT_TRUE(ReadAxis(run.out, "X", x)) << run.out;
  EXPECT_NEAR(z.x, expected.x, 2e-3) << run.out;
  EXPECT_NEAR(z.y, expected.y, 2e-3) << run.out;
  EXPECT_NEAR(z.z, expected.z, 2e-3) << run.out;
  // The scene's up (0, 0, 1) is (0, 1, 0) in the panel's space: X stays
  // perpendicular to it.
  EXPECT_NEAR(x.y, 0.0, 2e-3) << run.out;

  // The shipped sticker, turned about X and moved too: its Z is the eye seen
  // from its own space, R^T (eye - t) less its origin.
  const qavtest::ProgramRun logo = Run(
      "place " + _showroom + " Logo --as sticker --press QAVRbaContextBarAlignWithCameraViewHdr");
  ASSERT_EQ(logo.status, 0) << logo.err;
  Vec origin{};
  {
    const std::size_t at = logo.out.rfind("origin\t");
    ASSERT_NE(at, std::string::npos) << logo.out;
    std::istringstream in(logo.out.substr(at + 7));
    ASSERT_TRUE(in >> origin.x >> origin.y >> origin.z);
  }
  const Vec showroomEye{0, -900, 350};
  const Vec logoAt{0, -73, 220};
  const Vec e{showroomEye.x - logoAt.x, showroomEye.y - logoAt.y, showroomEye.z - logoAt.z};
  const Vec fromLogo = Unit(
      {e.x - origin.x, e.z - origin.y, -e.y - origin.z});  // R^T as above, then less the origin
  ASSERT_TRUE(ReadAxis(logo.out, "Z", z)) << logo.out;
  EXPECT_NEAR(z.x, fromLogo.x, 2e-3) << logo.out;
  EXPECT_NEAR(z.y, fromLogo.y, 2e-3) << logo.out;
  EXPECT_NEAR(z.z, fromLogo.z, 2e-3) << logo.out;
}

}  // namespace
