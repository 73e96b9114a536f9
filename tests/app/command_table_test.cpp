// The frame's commands with their states, copy as bitmap, hide and show. The
// window's own menus and buttons, printing, help, and the scene point and
// pick ray of a click on the canvas are the GUI test's.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "document/command_table.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/undo.h"
#include "geometry/property_commands.h"
#include "graphs/curve_form.h"
#include "graphs/funcurve.h"
#include "support/fixtures.h"
#include "tools/canvas_input.h"
#include "tools/create_tools.h"

namespace vt::test {
namespace {

class HandlerTest : public DocumentTest {
 protected:
  void SetUp() override {
    DocumentTest::SetUp();
    ClearHandlers();
  }
  void TearDown() override {
    ClearHandlers();
    DocumentTest::TearDown();
  }
};

TEST_F(HandlerTest, FrameCommandsWireUndoTogglesAndToolsWithTheirStates) {
  RegisterFrameCommands();
  // Undo is off at start and on after the first change.
  EXPECT_FALSE(HandlerEnabled("mnuFUndo"));
  EXPECT_TRUE(DoCommand("Edit-Undo"));  // does nothing harmful
  EXPECT_EQ(UndoCount, 1);
  AddPoint(1, 2);
  PushSnapshot();
  EXPECT_TRUE(HandlerEnabled("mnuFUndo"));
  EXPECT_TRUE(DoCommand("Edit-Delete All"));
  EXPECT_EQ(Doc.Points.count(), 0);
  EXPECT_FALSE(HandlerEnabled("mnuFRedo"));
  EXPECT_TRUE(DoCommand("Edit-Undo"));
  EXPECT_EQ(Doc.Points.count(), 1);
  EXPECT_TRUE(HandlerEnabled("mnuFRedo"));
  EXPECT_TRUE(DoCommand("Edit-Undo"));
  EXPECT_FALSE(HandlerEnabled("mnuFUndo"));
  // The toggles and their checks are the GUI test's (togglesFlipTheirThreeMirrors).
  // Tool commands wait for their tools.
  EXPECT_FALSE(HandlerEnabled("mnuDrawSeg"));
  RegisterToolCommands();
  EXPECT_TRUE(HandlerEnabled("mnuDrawSeg"));
  EXPECT_TRUE(DoCommand("Draw-Segment"));
  EXPECT_TRUE(HandlerChecked("mnuDrawSeg"));
  EXPECT_FALSE(HandlerChecked("mnuSelect"));
  EXPECT_TRUE(DoCommand("View-Zoom"));
  EXPECT_TRUE(HandlerChecked("mnuViewZoom"));
  for (ToolSlot s : {ToolSlot::Point, ToolSlot::Line, ToolSlot::Circle, ToolSlot::Text, ToolSlot::Select})
    RegisterTool(s, {});
}

// Edit > Properties opens, for a kind without a property form, what a double
// click on it opens.
TEST_F(HandlerTest, EditPropertiesOpensTheDialogOfASelectedCurve) {
  RegisterAllCommands();
  SetPropertyFormOpener([](PropertyForm, const std::string&) {});
  std::string opened = "none";
  SetCurveFormOpener([&](const std::string& id) { opened = id; });
  auto made = std::make_unique<CFunCurve>();
  made->ID = NewObjectId("C2");
  CFunCurve* curve = Doc.FunCurves.Add(std::move(made));
  EXPECT_TRUE(RunHandler("mnuEditProp"));
  EXPECT_EQ(host_.LastMessage(), "Please select objects first.");
  SelectObject(*curve);
  EXPECT_TRUE(RunHandler("mnuEditProp"));
  EXPECT_TRUE(opened == curve->ID && EditMode && EditObjectId == curve->ID) << opened;
  SetCurveFormOpener({});
  SetPropertyFormOpener({});
}

TEST_F(HandlerTest, HideSelectedAndShowAllAreUndoSteps) {
  RegisterFrameCommands();
  Position* a = AddPoint(0, 0);
  Position* b = AddPoint(1, 0);
  SelectObject(*a);
  const int undo = UndoCount;
  EXPECT_TRUE(DoCommand("View-Hide Selected"));
  EXPECT_TRUE(a->Hide);
  EXPECT_FALSE(b->Hide);
  EXPECT_EQ(Sel.Points.count(), 0);
  EXPECT_EQ(UndoCount, undo + 1);
  b->Hide = true;
  EXPECT_TRUE(DoCommand("View-Show All"));
  EXPECT_FALSE(a->Hide || b->Hide);
  EXPECT_EQ(UndoCount, undo + 2);
}

// ---- capture, bitmaps, print, copy as bitmap, help ----------------------------------

Image Pattern(int w, int h) {
  Image img;
  img.width = w;
  img.height = h;
  img.rgb.resize(static_cast<size_t>(w) * h * 3);
  for (size_t i = 0; i < img.rgb.size(); ++i) img.rgb[i] = static_cast<std::uint8_t>((i * 37 + i / 7) & 0xFF);
  return img;
}

TEST_F(HandlerTest, BitmapFilesRoundTripAndDamagedOnesAreRefused) {
  TempDir dir;
  const Image img = Pattern(7, 5);  // rows of 21 bytes, padded to 24
  ASSERT_TRUE(WriteBitmapFile(dir.path("a.bmp"), img));
  EXPECT_EQ(std::filesystem::file_size(dir.path("a.bmp")), 54u + 24u * 5u);
  Image back;
  ASSERT_TRUE(ReadBitmapFile(dir.path("a.bmp"), back));
  EXPECT_EQ(back.width, 7);
  EXPECT_EQ(back.height, 5);
  EXPECT_EQ(back.rgb, img.rgb);

  std::string bytes;
  {
    std::ifstream f(dir.path("a.bmp"), std::ios::binary);
    bytes.assign(std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>());
  }
  auto refused = [&](const std::string& content) {
    std::ofstream(dir.path("b.bmp"), std::ios::binary) << content;
    Image out = img;
    const bool ok = ReadBitmapFile(dir.path("b.bmp"), out);
    return !ok && out.rgb == img.rgb;  // a refused file leaves the picture alone
  };
  EXPECT_TRUE(refused(bytes.substr(0, bytes.size() - 10)));  // cut short
  std::string eightBit = bytes;
  eightBit[28] = 8;
  EXPECT_TRUE(refused(eightBit));
  EXPECT_TRUE(refused("not a bitmap at all, but long enough to have a header of fifty-four bytes"));
  EXPECT_FALSE(ReadBitmapFile(dir.path("missing.bmp"), back));
  EXPECT_FALSE(WriteBitmapFile(dir.path("no/such/folder/c.bmp"), img));
}

TEST_F(HandlerTest, CopyAsBitmapGoesThroughTempBmpInTheProgramFolder) {
  TempDir dir;
  SystemFolder = dir.dir();
  host_.canvasImage = Pattern(10, 4);
  mnuEditCopyAs_Click();
  EXPECT_TRUE(std::filesystem::exists(dir.path("temp.bmp")));
  EXPECT_EQ(host_.clipboardImage.width, 8);  // 30 bytes a row is not whole words: two pixels go
  EXPECT_EQ(host_.clipboardImage.height, 4);
  EXPECT_EQ(host_.clipboardImage.rgb[2 * 8 * 3], host_.canvasImage.rgb[2 * 10 * 3]);  // row 2 starts row 2

  // A folder that cannot be written: the picture still reaches the clipboard.
  SystemFolder = dir.path("no/such/folder");
  host_.clipboardImage = Image();
  host_.canvasImage = Pattern(12, 4);
  mnuEditCopyAs_Click();
  EXPECT_EQ(host_.clipboardImage.width, 12);
  EXPECT_EQ(host_.clipboardImage.rgb, host_.canvasImage.rgb);
}

}  // namespace
}  // namespace vt::test
