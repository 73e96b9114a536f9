#include <gtest/gtest.h>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/undo.h"
#include "persist/docio.h"
#include "support/fixtures.h"

namespace vt {
namespace {

class UndoTest : public test::DocumentTest {
 protected:
  void SetUp() override {
    DocumentTest::SetUp();
    SceneMode = 1;
  }
  // A command: one more point, then a snapshot.
  void AddPointCommand(float x) {
    Position* p = AddPoint(x, 0);
    AssignNextPointLabel(*p);
    PushSnapshot();
  }
  std::vector<float> Xs() {
    std::vector<float> xs;
    for (Position* p : Doc.Points) xs.push_back(p->x);
    return xs;
  }
};

TEST_F(UndoTest, UndoTwiceNewCommandRedoBringsBackTheOldState) {
  EXPECT_FALSE(UndoEnabled || RedoEnabled);
  mnuFUndo_Click();  // nothing to undo: nothing happens
  EXPECT_EQ(UndoCount + RedoCount, 1);
  AddPointCommand(1);
  EXPECT_TRUE(UndoEnabled && !RedoEnabled);
  AddPointCommand(2);
  AddPointCommand(3);
  mnuFUndo_Click();
  mnuFUndo_Click();
  EXPECT_EQ(Xs(), std::vector<float>{1});
  EXPECT_TRUE(UndoEnabled && RedoEnabled);
  AddPointCommand(9);  // the redo stack survives a new command
  EXPECT_EQ(Xs(), (std::vector<float>{1, 9}));
  EXPECT_EQ(RedoCount, 2);
  mnuFRedo_Click();
  EXPECT_EQ(Xs(), (std::vector<float>{1, 2}));  // the state before the first undo's target
  mnuFRedo_Click();
  mnuFRedo_Click();  // nothing left
  EXPECT_EQ(Xs(), (std::vector<float>{1, 2, 3}));
  EXPECT_TRUE(UndoEnabled && !RedoEnabled && RedoCount == 0);
  // A view toggle is restored, and the selection cleared.
  mnuViewAxis_Click();
  SelectObject(*Doc.Points.Item(1));
  PushSnapshot();
  mnuFUndo_Click();
  EXPECT_FALSE(ShowAxis);
  EXPECT_EQ(Sel.Points.count(), 0);
}

TEST_F(UndoTest, AFullHistoryDropsItsOldestStepNeverTheNewest) {
  Position* p = AddPoint(0, 0, 0, "A");
  for (int i = 1; i <= 1200; ++i) {  // 1,200 drags of one point
    p->x = static_cast<float>(i);
    PushSnapshot();
  }
  mnuFUndo_Click();
  ASSERT_EQ(Xs(), std::vector<float>{1199});
  mnuFRedo_Click();
  EXPECT_EQ(Xs(), std::vector<float>{1200});
  // Undo goes back as far as the history holds, and stops at a drawing.
  int steps = 0;
  while (UndoEnabled && steps < 2000) {
    mnuFUndo_Click();
    ++steps;
  }
  EXPECT_EQ(steps, kUndoDepth - 2);
  EXPECT_EQ(Xs(), std::vector<float>{static_cast<float>(1200 - steps)});
}

// ---- clipboard -------------------------------------------------------------------------

TEST_F(UndoTest, CopyTakesSelectedPointsOnlyAndPasteNeverReusesIds) {
  Position* a = AddPoint(1, 1, 0, "A");
  Position* b = AddPoint(2, 2, 0, "B");
  AddPoint(3, 3, 0, "C");
  a->AddChild(b->ID);
  b->AddParent(a->ID);
  SelectObject(*a);
  SelectObject(*b);
  mnuEditCopy_Click();
  EXPECT_EQ(host_.clipboardText, a->Save() + b->Save());
  LastPointLabel = "C";
  mnuEditPaste_Click();
  ASSERT_EQ(Doc.Points.count(), 5);
  Position* a2 = Doc.Points.Item(4);
  Position* b2 = Doc.Points.Item(5);
  // Fresh ids, links between them kept, labels already shown go to the next
  // free ones, and the pasted points are the selection now.
  EXPECT_EQ(a2->ID + a2->PLabel + b2->ID + b2->PLabel, "PT0004DPT0005E");
  EXPECT_EQ(a2->Child, std::vector<std::string>{"PT0005"});
  EXPECT_EQ(b2->Parent, std::vector<std::string>{"PT0004"});
  EXPECT_EQ(NextObjectNumber, 5);
  EXPECT_EQ(Sel.Points.count(), 2);
  EXPECT_TRUE(IsSelectedPoint(*a2) && !Doc.Points.Item(1)->Selected);
  // A second paste again takes fresh ids: with base 5, PT0001/2 become 6, 7.
  mnuEditPaste_Click();
  EXPECT_EQ(Doc.Points.Item(6)->ID + Doc.Points.Item(7)->ID, "PT0006PT0007");
  EXPECT_EQ(Doc.Points.Item(7)->Parent, std::vector<std::string>{"PT0006"});
}

TEST_F(UndoTest, CopyOfNoPointsIsEmptyAndADamagedPasteKeepsWhatWasRead) {
  auto text = std::make_unique<CText>();
  text->ID = NewObjectId("TT");
  SelectObject(*Doc.Texts.Add(std::move(text)));
  mnuEditCopy_Click();
  EXPECT_EQ(host_.clipboardText, "");
  const std::string before = GetUndoVar();
  const int undo = UndoCount;
  mnuEditPaste_Click();  // nothing pasted, still a step
  EXPECT_EQ(GetUndoVar(), before);
  EXPECT_EQ(UndoCount, undo + 1);

  ResetGlobals();
  SceneMode = 1;
  Position p(1, 1, 0);
  p.ID = "PT0001";
  p.PLabel = "K";
  host_.clipboardText = p.Save() + "PT0002 1 2;;";
  AddPoint(9, 9, 0, "A");
  mnuEditPaste_Click();
  ASSERT_EQ(Doc.Points.count(), 2);  // the damaged record ends the paste
  EXPECT_EQ(Doc.Points.Item(2)->PLabel + Doc.Points.Item(2)->ID, "KPT0002");  // an unused label stays
  EXPECT_EQ(NextObjectNumber, 2);
}

}  // namespace
}  // namespace vt

namespace vt {
namespace {

class ModifiedTest : public UndoTest {
 protected:
  void Edit(float x) { AddPointCommand(x); }
  test::TempDir dir_;
};

TEST_F(ModifiedTest, SaveUndoAndANewEditStillAskBeforeClosing) {
  Edit(1);
  // Yes saves, through the dialog; the name keeps the case of its extension.
  host_.msgAnswers = {MsgResult::Yes, MsgResult::Cancel, MsgResult::No};
  host_.savePaths.push_back(dir_.path("doc.VTD"));
  EXPECT_TRUE(ConfirmDiscardChanges());
  EXPECT_EQ(CurrentFilePath, dir_.path("doc.VTD"));
  EXPECT_TRUE(ConfirmDiscardChanges());  // saved: nothing asked
  // Undo and one new edit: as many steps as at the save, another document.
  mnuFUndo_Click();
  Edit(2);
  EXPECT_FALSE(ConfirmDiscardChanges());
  ASSERT_EQ(host_.messages.size(), 2u);
  EXPECT_EQ(host_.messages[1].text, "Save changes to file?");
  // Back to the saved state by undo and redo: unchanged; a view toggle,
  // which the file keeps, is a change, until the user lets it go.
  mnuFUndo_Click();
  mnuFRedo_Click();
  mnuFRedo_Click();
  EXPECT_FALSE(DocumentModified());
  mnuViewGrid_Click();
  EXPECT_TRUE(UnsavedWork());
  EXPECT_TRUE(ConfirmDiscardChanges());
  EXPECT_FALSE(UnsavedWork());
}

TEST_F(ModifiedTest, OpenAndNewBeginAFreshHistory) {
  Edit(5);
  std::string error;
  ASSERT_TRUE(WriteDocumentFile(dir_.path("b.vtd"), "GL Ver3.00 1 0 0 0 0 ;;PT0007 1 1 0 1 2 255 0 1 1 @K@ 0 0 0 0 @@ @@ @@ @@ 0 0 0 0 0 0 0 0;;", error));
  // Open asks first; a cancelled dialog keeps the document and its history.
  host_.msgAnswers = {MsgResult::No, MsgResult::No};
  mnuFileOpen_Click();
  EXPECT_EQ(UndoCount, 2);
  host_.openPaths.push_back(dir_.path("b.vtd"));
  mnuFileOpen_Click();
  EXPECT_EQ(host_.messages.size(), 2u);
  // Undo right after Open does nothing; Save writes the opened document.
  mnuFUndo_Click();
  ASSERT_EQ(Doc.Points.count(), 1);
  const std::string shown = GetUndoVar();
  ASSERT_TRUE(mnuFileSave_Click());
  std::string written;
  ASSERT_TRUE(ReadDocumentFile(dir_.path("b.vtd"), written));
  EXPECT_EQ(written, shown);
  // New on an unchanged document asks nothing and starts empty; Undo keeps it.
  mnuFileNew_Click();
  Edit(9);
  mnuFUndo_Click();
  mnuFUndo_Click();
  EXPECT_EQ(host_.messages.size(), 2u);
  EXPECT_EQ(DocumentObjectCount(), 0);
  EXPECT_FALSE(UndoEnabled || DocumentModified());
}

}  // namespace
}  // namespace vt
