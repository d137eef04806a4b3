// The host's ruler editors and the decorations drawn over a viewer's picture:
// planes, the decoration list, lines and numbers drawn, the editors' states, the
// viewer their ruler is drawn in while shown, what the ruler looks like, and
// the value typed by the user announced to the editor's subscribers.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "QAV3DViewer.h"
#include "QAVCallbackManager.h"
#include "QAVFrmLayout.h"
#include "QAVFrmWindow.h"
#include "QAVMathPlane.h"
#include "QAVRulerDecoratedAngleEditor.h"
#include "QAVRulerDecoratedLengthEditor.h"
#include "QAVTestSupport.h"
#include "QAVViewDecoration.h"
#include "QAVViewRenderer.h"

namespace {

int Differences(const QAVPixelImage& a, const QAVPixelImage& b) {
  const auto* p = static_cast<const std::uint8_t*>(a.GetPixels());
  const auto* q = static_cast<const std::uint8_t*>(b.GetPixels());
  int count = 0;
  for (std::size_t i = 0; i < a.GetByteSize(); ++i)
    count += p[i] != q[i] ? 1 : 0;
  return count;
}

const std::uint8_t* Pixel(const QAVPixelImage& image, int x, int y) {
  return static_cast<const std::uint8_t*>(image.GetPixels()) +
         3 * (static_cast<std::size_t>(y) * image.GetWidth() + x);
}

class RulerEditorTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    qavtest::HostTest::SetUp();
    _layout = QAVMakeRef<QAVFrmLayout>();
    QAVFrmLayout::SetCurrentLayout(_layout.get());
    _window = QAVMakeRef<QAVFrmWindow>("3D");
    _viewer = QAVMakeRef<QAV3DViewer>("viewer");
    _window->SetViewer(_viewer.get());
    _layout->SetCurrentWindow(_window.get());
    Driver().Resize(_viewer.get(), 200, 200);
    // 100 units across the picture at z = 0: two pixels a unit.
    _viewer->GetMain3DViewpoint()->Set({0, 0, 50}, {0, 0, 0}, {0, 1, 0}, 90);
  }
  QAVRef<QAVPixelImage> Render() const {
    QAVRef<QAVPixelImage> image;
    EXPECT_EQ(QAVViewRenderer::Render(_viewer.get(), image), S_OK);
    return image;
  }
  QAVRef<QAVFrmLayout> _layout;
  QAVRef<QAVFrmWindow> _window;
  QAVRef<QAV3DViewer> _viewer;
};

// Draws a fixed cross at the centre of the picture and counts its draws.
class CrossDecoration : public QAVViewDecoration {
 public:
  void Draw(QAVPixelImage& image, const QAV3DViewer& viewer) const override {
    ++draws;
    double x = 0;
    double y = 0;
    if (!ProjectOnto(image, viewer, {0, 0, 0}, x, y)) return;
    // Along the middle of the row of pixels under the point.
    DrawLine(image, x - 5, y + 0.5, x + 5, y + 0.5, 1, {255, 0, 0});
  }
  mutable int draws = 0;
};

TEST(MathPlaneTest, NormalAndPoints) {
  const QAVMathPlane xy;
  EXPECT_EQ(xy.GetNormal(), QAVMathVector(0, 0, 1));
  const QAVMathPlane plane({1, 2, 3}, {0, 0, 3}, {2, 0, 0});
  EXPECT_EQ(plane.GetNormal(), QAVMathVector(0, 1, 0)) << "unit, first x second";
  EXPECT_EQ(plane.Evaluate(1, 0.5), QAVMathPoint(2, 2, 6));
  EXPECT_EQ(QAVMathPlane({0, 0, 0}, {1, 1, 0}, {2, 2, 0}).GetNormal(), QAVMathVector())
      << "parallel directions span no plane";
  EXPECT_DOUBLE_EQ(QAVMathPoint(1, 2, 3).DistanceTo({4, 6, 3}), 5.0);
}

TEST_F(RulerEditorTest, DecorationsAreDrawnOverTheSceneInTheirOrder) {
  const QAVRef<QAVPixelImage> bare = Render();
  auto cross = QAVMakeRef<CrossDecoration>();
  EXPECT_EQ(_viewer->AddDecoration(nullptr), E_INVALIDARG);
  EXPECT_EQ(_viewer->AddDecoration(cross.get()), S_OK);
  EXPECT_EQ(_viewer->AddDecoration(cross.get()), S_FALSE) << "once only";
  EXPECT_EQ(cross->GetRefCount(), 2U) << "the viewer holds a reference";
  ASSERT_EQ(_viewer->GetDecorationCount(), 1);
  EXPECT_EQ(_viewer->GetDecoration(0), cross.get());
  EXPECT_EQ(_viewer->GetDecoration(1), nullptr);
  EXPECT_EQ(_viewer->GetDecoration(-1), nullptr);
  const QAVRef<QAVPixelImage> drawn = Render();
  EXPECT_EQ(cross->draws, 1);
  EXPECT_EQ(Pixel(*drawn, 100, 100)[0], 255);
  EXPECT_EQ(Pixel(*drawn, 100, 100)[1], 0);
  EXPECT_EQ(Pixel(*drawn, 100, 90)[0], Pixel(*bare, 100, 90)[0]);
  EXPECT_EQ(_viewer->RemoveDecoration(cross.get()), S_OK);
  EXPECT_EQ(_viewer->RemoveDecoration(cross.get()), E_FAIL);
  EXPECT_EQ(_viewer->RemoveDecoration(nullptr), E_FAIL);
  EXPECT_EQ(Differences(*Render(), *bare), 0);
  EXPECT_EQ(cross->GetRefCount(), 1U);

  // The helpers: a line of two pixels, clipped; numbers on a light box;
  // nothing for what is not a number or too far, nor onto float pictures.
  QAVPixelImage image(40, 20, QAVPixelFormat::RGB);
  QAVViewDecoration::DrawLine(image, -100, 10, 100, 10, 2, {0, 200, 0});
  EXPECT_EQ(Pixel(image, 0, 9)[1], 200);
  EXPECT_EQ(Pixel(image, 39, 10)[1], 200);
  EXPECT_EQ(Pixel(image, 20, 5)[1], 0);
  QAVPixelImage empty(40, 20, QAVPixelFormat::RGB);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  QAVPixelImage untouched(40, 20, QAVPixelFormat::RGB);
  QAVViewDecoration::DrawLine(untouched, nan, 0, 10, 10, 2, {255, 255, 255});
  QAVViewDecoration::DrawLine(untouched, 0, 0, 1e9, 10, 2, {255, 255, 255});
  QAVViewDecoration::DrawLine(untouched, 0, 0, 10, 10, -1, {255, 255, 255});
  QAVViewDecoration::DrawValue(untouched, 20, 10, nan, false, 2, {255, 255, 255});
  QAVViewDecoration::DrawValue(untouched, -1e9, 10, 1.0, false, 2, {255, 255, 255});
  EXPECT_EQ(Differences(untouched, empty), 0);
  QAVPixelImage floats(4, 4, QAVPixelFormat::RGBFloat);
  QAVViewDecoration::DrawLine(floats, 0, 0, 4, 4, 2, {255, 255, 255});
  EXPECT_EQ(static_cast<const float*>(floats.GetPixels())[0], 0.0F);

  QAVPixelImage number(60, 20, QAVPixelFormat::RGB);
  QAVViewDecoration::DrawValue(number, 30, 10, -12.5, true, 1, {10, 20, 30});
  int light = 0;
  int ink = 0;
  for (int y = 0; y < 20; ++y)
    for (int x = 0; x < 60; ++x) {
      const std::uint8_t* p = Pixel(number, x, y);
      light += p[0] > 150 ? 1 : 0;
      ink += p[0] == 10 && p[2] == 30 ? 1 : 0;
    }
  // "-12.5" and a degree sign: 6 glyphs of 3 x 5 dots with a space between,
  // a margin of 2 around: a 27 x 9 box.
  EXPECT_EQ(light + ink, 27 * 9);
  EXPECT_EQ(ink, 3 + 8 + 11 + 1 + 11 + 4) << "the dots of - 1 2 . 5 and the degree sign";
  EXPECT_EQ(Pixel(number, 0, 0)[0], 0) << "nothing outside the box";
}

TEST_F(RulerEditorTest, EditorsAreDrawnInTheCurrentViewerWhileShown) {
  auto* father = new QAVCommand(nullptr, "father");
  auto* ruler = new QAVRulerDecoratedLengthEditor(father, "length");
  EXPECT_NE(ruler->GetDecoration(), nullptr);
  ruler->SetDecoratorData({1, 2, 3}, {0, 1, 0}, 7.5);
  EXPECT_EQ(ruler->GetValue(), 7.5) << "the length is shown";

  // Drawn once built, while both visibilities are on.
  EXPECT_FALSE(ruler->IsShown());
  EXPECT_EQ(_viewer->GetDecorationCount(), 0);
  EXPECT_EQ(ruler->Build(), S_OK);
  EXPECT_EQ(ruler->Build(), S_FALSE);
  EXPECT_EQ(ruler->GetDecoratedViewer(), _viewer.get());
  EXPECT_EQ(_viewer->GetDecoration(0), ruler->GetDecoration());
  ruler->SetDecoratorVisibility(false);
  EXPECT_EQ(_viewer->GetDecorationCount(), 0);
  EXPECT_EQ(ruler->GetDecoratedViewer(), nullptr);
  ruler->SetDecoratorVisibility(true);
  ruler->SetGlobalVisibility(true);
  EXPECT_EQ(_viewer->GetDecorationCount(), 1) << "added once";
  ruler->SetGlobalVisibility(false);
  EXPECT_EQ(_viewer->GetDecorationCount(), 0);

  // Shown again after the current window changed: in the new window's viewer.
  auto otherWindow = QAVMakeRef<QAVFrmWindow>("other");
  auto otherViewer = QAVMakeRef<QAV3DViewer>("other viewer");
  otherWindow->SetViewer(otherViewer.get());
  _layout->SetCurrentWindow(otherWindow.get());
  ruler->SetGlobalVisibility(true);
  EXPECT_EQ(ruler->GetDecoratedViewer(), otherViewer.get());
  EXPECT_EQ(otherViewer->GetDecorationCount(), 1);
  EXPECT_EQ(_viewer->GetDecorationCount(), 0);

  // A viewer given at construction wins; without any, nothing is drawn.
  auto* angle = new QAVRulerDecoratedAngleEditor(nullptr, "angle", _viewer.get());
  angle->Build();
  EXPECT_EQ(angle->GetDecoratedViewer(), _viewer.get());
  QAVFrmLayout::SetCurrentLayout(nullptr);
  auto* lost = new QAVRulerDecoratedAngleEditor();
  EXPECT_EQ(lost->Build(), S_OK);
  EXPECT_TRUE(lost->IsShown());
  EXPECT_EQ(lost->GetDecoratedViewer(), nullptr);

  // A ruler leaves its viewer when it is destroyed, after the current event;
  // its decoration, still held, then draws nothing.
  const QAVRef<QAVViewDecoration> kept(angle->GetDecoration());
  const QAVRef<QAVPixelImage> withAngle = Render();
  angle->SetValue(90);
  angle->SetFreeRadius(20);
  const QAVRef<QAVPixelImage> withArc = Render();
  EXPECT_GT(Differences(*withArc, *withAngle), 50);
  for (QAVCommand* command : {static_cast<QAVCommand*>(ruler), static_cast<QAVCommand*>(angle),
                              static_cast<QAVCommand*>(lost), father})
    command->RequestDelayedDestruction();
  EXPECT_EQ(_viewer->GetDecorationCount(), 1) << "until the event is over";
  Driver().Idle();
  EXPECT_EQ(_viewer->GetDecorationCount(), 0);
  EXPECT_EQ(otherViewer->GetDecorationCount(), 0);
  QAVPixelImage image(200, 200, QAVPixelFormat::RGB);
  kept->Draw(image, *_viewer);
  EXPECT_EQ(Differences(image, QAVPixelImage(200, 200, QAVPixelFormat::RGB)), 0);
}

TEST_F(RulerEditorTest, TheLengthRulerStandsBesideItsSegmentAndTheArcSweepsItsAngle) {
  const QAVRef<QAVPixelImage> bare = Render();
  auto* ruler = new QAVRulerDecoratedLengthEditor(nullptr, "length");
  // From (-30, -20) along x for 60, set 10 units above (towards +y on screen).
  ruler->SetRulerOffsetInMM(10);
  ruler->SetDecoratorData({-30, -20, 0}, {1, 0, 0}, 60);
  ruler->Build();
  const QAVRef<QAVPixelImage> length = Render();
  // z = 0 maps x to 100 + 2x and y to 100 - 2y: the ruler is the row y = 100 - 2 * (-10) = 120.
  int onRuler = 0;
  int onSegment = 0;
  for (int x = 50; x < 150; ++x) {
    onRuler += Pixel(*length, x, 120)[0] != Pixel(*bare, x, 120)[0] ? 1 : 0;
    onSegment += Pixel(*length, x, 140)[0] != Pixel(*bare, x, 140)[0] ? 1 : 0;
  }
  EXPECT_GE(onRuler, 95) << "the whole ruler";
  EXPECT_LE(onSegment, 6) << "only where the extension lines start";
  // A tick every 10 units (7 marks), on the side away from the segment: above
  // the ruler, not below.
  int marks = 0;
  for (int x = 40; x < 160; ++x) {
    const bool here = Pixel(*length, x, 116)[0] != Pixel(*bare, x, 116)[0];
    const bool before = x > 40 && Pixel(*length, x - 1, 116)[0] != Pixel(*bare, x - 1, 116)[0];
    marks += here && !before ? 1 : 0;
  }
  EXPECT_EQ(marks, 7);
  EXPECT_EQ(Pixel(*length, 60, 124)[0], Pixel(*bare, 60, 124)[0]) << "no tick below";
  // The value above the middle, on its light box: "60.0".
  bool label = false;
  for (int y = 60; y < 115; ++y)
    label = label || Pixel(*length, 100, y)[0] != Pixel(*bare, 100, y)[0];
  EXPECT_TRUE(label);

  // The arc: 20 units around (0, 20) from x towards y over 60 degrees.
  auto* angle = new QAVRulerDecoratedAngleEditor(nullptr, "angle");
  angle->SetFreeRadius(20);
  angle->SetDecoratorData(QAVMathPlane({0, 20, 0}, {1, 0, 0}, {1, 1, 0}));
  angle->SetValue(60);
  angle->Build();
  const QAVRef<QAVPixelImage> both = Render();
  const auto changedAt = [&](double degrees) {
    const double a = degrees * 3.141592653589793 / 180.0;
    const int x = static_cast<int>(100 + 2 * 20 * std::cos(a));
    const int y = static_cast<int>(100 - 2 * (20 + 20 * std::sin(a)));
    return Pixel(*both, x, y)[1] != Pixel(*length, x, y)[1];
  };
  EXPECT_TRUE(changedAt(10));
  EXPECT_TRUE(changedAt(50));
  EXPECT_FALSE(changedAt(100)) << "past the angle";
  EXPECT_FALSE(changedAt(-30)) << "before the first direction";
  // A negative angle turns the other way.
  angle->SetValue(-60);
  const QAVRef<QAVPixelImage> negative = Render();
  const double a = -30 * 3.141592653589793 / 180.0;
  const int x = static_cast<int>(100 + 40 * std::cos(a));
  const int y = static_cast<int>(100 - 2 * (20 + 20 * std::sin(a)));
  EXPECT_NE(Pixel(*negative, x, y)[1], Pixel(*length, x, y)[1]);
  ruler->RequestDelayedDestruction();
  angle->RequestDelayedDestruction();
}

TEST_F(RulerEditorTest, ATypedValueIsSentToTheEditorsSubscribers) {
  auto* ruler = new QAVRulerDecoratedAngleEditor(nullptr, "angle");
  int calls = 0;
  double seen = 0;
  QAVNotification* received = nullptr;
  void* data = nullptr;
  ruler->GetCallbackManager()->AddCallback(
      QAVRulerDecoratedEditor::EDIT_MODIFY(),
      [&](const char*, void* d, QAVNotification* notification, void*, QAVCallback) {
        ++calls;
        seen = ruler->GetValue();
        received = notification;
        data = d;
      });
  Driver().TypeRulerValue(ruler, 33.5);
  Driver().TypeRulerValue(nullptr, 1);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(seen, 33.5) << "the value is in the editor when its subscribers hear of it";
  EXPECT_EQ(received, ruler->GetVidEditModifyExtNotification());
  EXPECT_EQ(data, static_cast<QAVRulerDecoratedEditor*>(ruler));
  const auto dispatches = Dispatches(ruler->GetCallbackManager());
  ASSERT_EQ(dispatches.size(), 1U);
  EXPECT_EQ(dispatches[0].name, "QAVVidEditModifyExtNotification");
  ruler->RequestDelayedDestruction();
}

}  // namespace
