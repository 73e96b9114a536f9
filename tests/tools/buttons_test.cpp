// Control buttons: the press and release of the face through the select
// tool, the five kinds of Click, the record, and the commands that make them.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/undo.h"
#include "persist/docio.h"
#include "tool_fixture.h"
#include "tools/buttons.h"
#include "tools/link_safety.h"
#include "tools/select.h"

namespace vt::test {
namespace {

class ButtonsTest : public ToolTest {
 protected:
  void SetUp() override {
    ToolTest::SetUp();
    ClearHandlers();
    RegisterAllCommands();
    ResetLinkTrust();
    ResetUndo();
    PushSnapshot();
  }
  void TearDown() override {
    SetButtonFormOpener({});
    ClearHandlers();
    ToolTest::TearDown();
  }

  // The event at a place given in per cent of the canvas, y from the bottom.
  static Mouse Pct(float px, float py) { return At(px / 5 - 10, (py - 50) / 5); }

  // A press at one place and the release at another, as the canvas hands
  // them on (the release goes to the tool only while the press is on).
  static void PressRelease(Mouse down, Mouse up) {
    {
      CSelect s;
      Press(s, down);
    }
    {
      CSelect s;
      Move(s, up);
    }
    if (SelectPressed) {
      CSelect s;
      Release(s, up);
    }
  }

  CButton* Make(int type, std::vector<std::string> ids, const std::string& para = "", int pathType = 1) {
    ButtonForm f = NewButtonForm(type);
    f.ObjIDs = std::move(ids);
    f.Para1 = para;
    f.PathType = pathType;
    CButton* b = ConfirmButtonForm(f, "");
    b->PosX = 10;
    b->PosY = 50;
    return b;
  }
  // The middle of the face of a button placed by Make.
  static Mouse Face() { return Pct(14, 52.5f); }
  static void PressFace() { PressRelease(Face(), Face()); }
};

// A show/hide button pressed with the mouse, and a press taken off its face,
// are the GUI screen items test's.
TEST_F(ButtonsTest, ObjectsHiddenBeforeTheFirstPressAreHiddenAgainAfterTheSecond) {
  Position* p = Free(1, 1);
  Position* q = Free(2, 2);
  Make(1, {p->ID, q->ID});
  p->Hide = q->Hide = true;
  const int undo = UndoCount;
  PressFace();
  EXPECT_FALSE(p->Hide || q->Hide);
  PressFace();
  EXPECT_TRUE(p->Hide && q->Hide);
  EXPECT_EQ(UndoCount, undo + 2);
}

TEST_F(ButtonsTest, AScrollButtonOverThreeObjectsShowsOneTwoThreeThenNone) {
  Position* a = Free(1, 1);
  Position* b = Free(2, 2);
  Position* c = Free(3, 3);
  Make(4, {a->ID, b->ID, c->ID});
  auto shown = [&] { return std::vector<bool>{!a->Hide, !b->Hide, !c->Hide}; };
  PressFace();
  EXPECT_EQ(shown(), (std::vector<bool>{true, false, false}));
  PressFace();
  EXPECT_EQ(shown(), (std::vector<bool>{true, true, false}));
  PressFace();
  EXPECT_EQ(shown(), (std::vector<bool>{true, true, true}));
  PressFace();
  EXPECT_EQ(shown(), (std::vector<bool>{false, false, false}));
  PressFace();
  EXPECT_EQ(shown(), (std::vector<bool>{true, false, false}));
}

TEST_F(ButtonsTest, ACommandButtonThatDeletesAllAndSavesAsksBeforeWriting) {
  Segment(Free(0, 0), Free(4, 0));
  Make(5, {"Edit-Delete All", "File-Save"});
  // The save is asked for, and No keeps the file.
  TempDir dir;
  ASSERT_TRUE(SaveDocumentAs(dir.path("kept.vtd")));
  const size_t asked = host_.messages.size();
  host_.msgAnswers.push_back(MsgResult::No);
  Doc.Buttons.Item(1)->Click();
  EXPECT_EQ(DocumentObjectCount(), 0);
  ASSERT_EQ(host_.messages.size(), asked + 1);
  EXPECT_EQ(host_.LastMessage(), "Save changes to file?");
  std::string kept;
  ASSERT_TRUE(ReadDocumentFile(dir.path("kept.vtd"), kept));
  EXPECT_NE(kept.find(";;BT"), std::string::npos);
}

TEST_F(ButtonsTest, AButtonRecordWithACountBeyondItsFieldsIsLeftOut) {
  // A count beyond the fields stops the read quietly, keeping what was read.
  OpenDocumentText("GL Ver3.00 1 0 0 0 0;;BT0007 1 @X@ 1 1 3 1 @@ PT0001;;");
  EXPECT_EQ(Doc.Buttons.count(), 0);
}

TEST_F(ButtonsTest, ALinkToAShellScriptIsRefusedAndNothingRuns) {
  TempDir dir;
  const std::string script = dir.path("run.sh");
  {
    std::ofstream out(script);
    out << "#!/bin/sh\ntouch " << dir.path("ran") << "\n";
  }
  std::filesystem::permissions(script, std::filesystem::perms::owner_all);
  CButton* b = Make(2, {}, script, 1);
  host_.msgAnswers.push_back(MsgResult::Yes);
  b->Click();
  EXPECT_EQ(host_.LastMessage(), kLinkRefused);
  EXPECT_TRUE(host_.openedPaths.empty());
  EXPECT_FALSE(std::filesystem::exists(dir.path("ran")));
}

TEST_F(ButtonsTest, ASampleButtonOpensOnlyDocumentsAndSaveThenAsksWhereToWrite) {
  TempDir dir;
  Free(1, 1);
  const std::string doc = dir.path("sample.vtd");
  std::string error;
  ASSERT_TRUE(WriteDocumentFile(doc, GetUndoVar(), error));
  ClearDocument();
  CurrentFilePath = dir.path("mine.vtd");
  MarkDocumentSaved();
  CButton* b = Make(3, {}, doc, 1);
  // A changed document is offered to be saved first; Cancel keeps it.
  host_.msgAnswers = {MsgResult::Cancel, MsgResult::No};
  b->Click();
  EXPECT_EQ(host_.LastMessage(), "Save changes to file?");
  ASSERT_EQ(Doc.Buttons.count(), 1);
  Doc.Buttons.Item(1)->Click();  // the button is gone with the old document
  EXPECT_EQ(Doc.Points.count(), 1);
  EXPECT_EQ(Doc.Buttons.count(), 0);
  EXPECT_EQ(CurrentFilePath, "");
  EXPECT_FALSE(UndoEnabled);  // the sample begins a history of its own

  const std::string script = dir.path("x.sh");
  std::ofstream(script) << "#!/bin/sh\n";
  CButton* c = Make(3, {}, script, 1);
  host_.msgAnswers.push_back(MsgResult::No);
  c->Click();
  EXPECT_EQ(host_.LastMessage(), kSampleRefused);
  EXPECT_EQ(Doc.Buttons.count(), 1);
}

}  // namespace
}  // namespace vt::test
