// The four context bars: their rows exactly as the frame receives them, the
// mapping container with the current type first, the sticker's align pair and
// its exclusions, a bar without its row, and a refill that replaces.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QAVAfrCtxBarFrame.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRbaUIContextBarSticker.h"
#include "QAVRef.h"
#include "QAVTestSupport.h"

namespace {

class ContextBarsTest : public qavtest::HostTest {
 protected:
  // The row of a bar shown in a frame, one item a line, for a mapping type.
  static std::vector<std::string> Row(const char* bar, int mappingType) {
    QAVRbaContextBarManager::GetContextBarManager()->SetCurrentMappingType(mappingType);
    auto frame = QAVMakeRef<QAVAfrCtxBarFrame>(QAVString(bar));
    EXPECT_EQ(frame->Show(), S_OK) << bar;
    std::vector<std::string> lines;
    std::string text = frame->Describe();
    for (std::size_t at = 0; (at = text.find('\n')) != std::string::npos; text.erase(0, at + 1))
      lines.push_back(text.substr(0, at));
    return lines;
  }
  // The starters of the mapping container, in order.
  static std::vector<std::string> Container(int mappingType) {
    std::vector<std::string> starters;
    for (const std::string& line : Row("QAVRbaUIContextBarMaterialComponent", mappingType))
      if (line.rfind("    QAVCmdStarter", 0) == 0) starters.push_back(line.substr(18));
    return starters;
  }
};

const std::vector<std::string> kContainer0 = {
    "    QAVCmdStarter QAVRbaContextBarTypePlanarHdr",
    "    QAVCmdStarter QAVRbaContextBarTypeCubicalHdr",
    "    QAVCmdStarter QAVRbaContextBarTypeSphericalHdr",
    "    QAVCmdStarter QAVRbaContextBarTypeFiniteCylindricalHdr",
    "    QAVCmdStarter QAVRbaContextBarTypeInfiniteCylindricalHdr",
    "    QAVCmdStarter QAVRbaContextBarTypeUVHdr"};

std::vector<std::string> Join(std::vector<std::string> a, const std::vector<std::string>& b,
                              const std::vector<std::string>& c = {}) {
  a.insert(a.end(), b.begin(), b.end());
  a.insert(a.end(), c.begin(), c.end());
  return a;
}

TEST_F(ContextBarsTest, RowsAsTabledWithSeparatorsNotRenumbered) {
  const std::string row = "AfrContextBarRow AfrContextBarRow1";
  EXPECT_EQ(Row("QAVRbaUIContextBarMaterialComponent", 0),
            Join({row, "  QAVCmdStarter QAVRbaContextBarDisplayManipRepHdr",
                  "  QAVCmdSeparator pRowSeparator1", "  QAVCmdContainer MappingCommandsContainer"},
                 kContainer0,
                 {"  QAVCmdSeparator pRowSeparator2",
                  "  QAVCmdStarter QAVRbaContextBarMaterialSnapperHdr",
                  "  QAVCmdSeparator pRowSeparator3",
                  "  QAVCmdStarter QAVRbaContextBarFitToSupportScaleHdr",
                  "  QAVCmdSeparator pRowSeparator4",
                  "  QAVCmdStarter QAVRbaContextBarEditMatrixPositionHdr"}));
  EXPECT_EQ(
      Row("QAVRbaUIContextBarStickerComponent", 0),
      Join(
          {row, "  QAVCmdStarter QAVRbaContextBarDisplayDrawingZoneManipHdr",
           "  QAVCmdSeparator pRowSeparator0", "  QAVCmdStarter QAVRbaContextBarDisplayManipRepHdr",
           "  QAVCmdSeparator pRowSeparator1", "  QAVCmdContainer MappingCommandsContainer"},
          kContainer0,
          {"  QAVCmdSeparator pRowSeparator2", "  QAVCmdStarter QAVRbaContextBarMaterialSnapperHdr",
           "  QAVCmdSeparator pRowSeparator3",
           "  QAVCmdStarter QAVRbaContextBarFitToSupportScaleHdr",
           "  QAVCmdSeparator pRowSeparator4",
           "  QAVCmdStarter QAVRbaContextBarAlignWithCameraViewHdr",
           "  QAVCmdSeparator pRowSeparator5",
           "  QAVCmdStarter QAVRbaContextBarEditMatrixPositionHdr"}));
  EXPECT_EQ(Row("QAVRbaUIContextBarUVManipulatorComponent", 0),
            Join({row, "  QAVCmdStarter QAVRbaContextBarEnableCropModeHdr",
                  "  QAVCmdSeparator pRowSeparator1", "  QAVCmdContainer MappingCommandsContainer"},
                 kContainer0,
                 {"  QAVCmdSeparator pRowSeparator2",
                  "  QAVCmdStarter QAVRbaContextBarFitToSupportScaleHdr"}));
  EXPECT_EQ(Row("QAVRbaUIContextBarDecalCropModeComponent", 0),
            (std::vector<std::string>{row, "  QAVCmdStarter QAVRbaContextBarDisableCropModeHdr",
                                      "  QAVCmdSeparator pRowSeparator4",
                                      "  QAVCmdStarter QAVRbaContextBarEditMatrixPositionHdr"}));
  // Every item carries its own name as "Command" (Describe would show it
  // otherwise), and no pointer check was reported.
  EXPECT_TRUE(Driver().GetJournal("pointer-check").empty());
}

TEST_F(ContextBarsTest, MappingContainerShowsTheCurrentTypeFirst) {
  const std::vector<std::string> fixed = {"QAVRbaContextBarTypePlanarHdr",
                                          "QAVRbaContextBarTypeCubicalHdr",
                                          "QAVRbaContextBarTypeSphericalHdr",
                                          "QAVRbaContextBarTypeFiniteCylindricalHdr",
                                          "QAVRbaContextBarTypeInfiniteCylindricalHdr",
                                          "QAVRbaContextBarTypeUVHdr"};
  EXPECT_EQ(Container(0), fixed);
  EXPECT_EQ(Container(3),
            (std::vector<std::string>{fixed[1], fixed[0], fixed[2], fixed[3], fixed[4], fixed[5]}));
  EXPECT_EQ(Container(8),
            (std::vector<std::string>{fixed[4], fixed[0], fixed[1], fixed[2], fixed[3], fixed[5]}));
  EXPECT_EQ(Container(6),
            (std::vector<std::string>{fixed[5], fixed[0], fixed[1], fixed[2], fixed[3], fixed[4]}));
  EXPECT_EQ(Container(1),
            (std::vector<std::string>{fixed[2], fixed[0], fixed[1], fixed[3], fixed[4], fixed[5]}));
  // Nothing known yet: a nameless starter, then the six in the fixed order.
  QAVRbaContextBarManager::DestroyContextBarManager();
  auto frame = QAVMakeRef<QAVAfrCtxBarFrame>(QAVString("QAVRbaUIContextBarMaterialComponent"));
  ASSERT_EQ(frame->Show(), S_OK);
  QAVICAfrComponent* container = frame->GetRow(0)->GetComponent(2);
  ASSERT_NE(container, nullptr);
  EXPECT_EQ(container->GetComponentName(), "MappingCommandsContainer");
  ASSERT_EQ(container->GetComponentCount(), 7);
  EXPECT_EQ(container->GetComponent(0)->GetComponentName(), "");
  for (int i = 0; i < 6; ++i)
    EXPECT_EQ(container->GetComponent(i + 1)->GetComponentName().str(), fixed[i]);
}

TEST_F(ContextBarsTest, StickerOffersAlignmentExceptForUVAndSpherical) {
  auto hasAlign = [](const std::vector<std::string>& row) {
    int found = 0;
    for (const std::string& line : row)
      found += line == "  QAVCmdStarter QAVRbaContextBarAlignWithCameraViewHdr" ||
               line == "  QAVCmdSeparator pRowSeparator5";
    return found;
  };
  for (int type : {0, 2, 3, 8, -1, 7})
    EXPECT_EQ(hasAlign(Row("QAVRbaUIContextBarStickerComponent", type)), 2) << type;
  for (int type : {1, 6}) {
    const auto row = Row("QAVRbaUIContextBarStickerComponent", type);
    EXPECT_EQ(hasAlign(row), 0) << type;
    // It ends with the fourth separator and the position button.
    ASSERT_GE(row.size(), 2u);
    EXPECT_EQ(row[row.size() - 2], "  QAVCmdSeparator pRowSeparator4");
    EXPECT_EQ(row.back(), "  QAVCmdStarter QAVRbaContextBarEditMatrixPositionHdr");
  }
  // Called with no parent it appends nothing and reports nothing.
  auto bar = QAVMakeRef<QAVRbaUIContextBarSticker>();
  bar->AppendAlignWithCameraViewInRow(nullptr, QAVString("x"));
  bar->AppendCommandInRow(nullptr, QAVString("x"));
  bar->AppendMappingContainerInRow(nullptr, QAVString("x"));
  EXPECT_TRUE(Driver().GetJournal("pointer-check").empty());
  EXPECT_EQ(bar->FillCtxBar(QAVString()), S_OK) << "no frame, no row: nothing";
}

TEST_F(ContextBarsTest, FramesWithoutTheRowRefillsAndUnknownLateTypes) {
  // No "AfrContextBarRow1": nothing is built.
  auto other =
      QAVMakeRef<QAVAfrCtxBarFrame>(QAVString("QAVRbaUIContextBarMaterialComponent"),
                                    std::vector<QAVString>{QAVString("AfrContextBarRow2")});
  EXPECT_EQ(other->Show(), S_OK);
  EXPECT_EQ(other->GetRow(0)->GetComponentCount(), 0);
  EXPECT_EQ(other->GetFillCount(), 1);

  // Each fill replaces the previous one; a refresh without repaint does not fill.
  auto frame = QAVMakeRef<QAVAfrCtxBarFrame>(QAVString("QAVRbaUIContextBarDecalCropModeComponent"));
  EXPECT_EQ(frame->Refresh(true), S_FALSE) << "not shown yet";
  frame->Show();
  frame->Refresh(true);
  frame->Refresh(false);
  EXPECT_EQ(frame->GetFillCount(), 2);
  EXPECT_EQ(frame->GetRow(0)->GetComponentCount(), 3);

  // A late type that no bar extends gives no bar.
  auto unknown = QAVMakeRef<QAVAfrCtxBarFrame>(QAVString("NoSuchBarComponent"));
  EXPECT_EQ(unknown->Show(), E_FAIL);
  EXPECT_EQ(unknown->GetBar(), nullptr);
  auto empty = QAVMakeRef<QAVAfrCtxBarFrame>(QAVString());
  EXPECT_EQ(empty->Show(), E_FAIL);
}

}  // namespace
