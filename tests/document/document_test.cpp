#include <gtest/gtest.h>

#include <array>
#include <tuple>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/undo.h"
#include "persist/docio.h"
#include "support/fixtures.h"

namespace vt {
namespace {

using test::DocumentTest;

// ---- ids and labels -------------------------------------------------------------

TEST_F(DocumentTest, IdsShareOneCounterAcrossKindsAndNeverWrap) {
  NextObjectNumber = 9998;
  const std::string pt = NewObjectId("PT");
  EXPECT_EQ(pt + NewObjectId("CR"), "PT9999CR10000");
  EXPECT_TRUE(IdNumber("CR10000") == 10000 && IdNumber("GL") == -1);
  EXPECT_EQ(ShiftId("PT0003", 40) + ShiftId("", 40) + ShiftId("label", 40), "PT0043label");
}

TEST_F(DocumentTest, PointLabelsRunOnAndTheLatestIsFound) {
  std::vector<std::string> seen = {"0"};
  for (int i = 0; i < 53; ++i) seen.push_back(NextPointLabel(seen.back()));
  EXPECT_EQ((std::vector<std::string>{seen[1], seen[2], seen[26], seen[27], seen[52], seen[53]}),
            (std::vector<std::string>{"A", "B", "Z", "A1", "Z1", "A2"}));
  EXPECT_EQ(NextPointLabel("c"), "D");  // the first letter is upper-cased
  EXPECT_EQ(NextPointLabel(""), "A");
  // Longer is later, then the higher suffix, then the higher letter; a prime is no label.
  const std::array<const char*, 3> cases[] = {{"A", "B", "B"},   {"Z", "A1", "A1"}, {"C1", "B2", "B2"}, {"C2", "B2", "C2"},
                                              {"A''", "B", "B"}, {"Z'", "", ""},     {"", "C", "C"}};
  for (const auto& [a, b, later] : cases) EXPECT_EQ(LaterPointLabel(a, b), later) << a << " " << b;
  AddPoint(0, 0, 0, "B'");
  RecomputeLastPointLabel();
  EXPECT_EQ(LastPointLabel, "0");
  for (const char* l : {"C", "A1", "Z"}) AddPoint(0, 0, 0, l);
  RecomputeLastPointLabel();
  EXPECT_EQ(LastPointLabel, "A1");
  Position* p = AddPoint(1, 1);
  AssignNextPointLabel(*p);
  EXPECT_EQ(p->PLabel + LastPointLabel, "B1B1");
}

// ---- collections and lookups --------------------------------------------------------

TEST_F(DocumentTest, IdLookupKeepsTheFirstOfDuplicates) {
  // A damaged document may hold one id twice: the first in list order wins,
  // before and after removals.
  for (int i = 0; i < 3; ++i) {
    auto l = std::make_unique<CLine>();
    l->ID = "LN0007";
    l->lt = i + 1;
    Doc.Lines.Add(std::move(l));
  }
  EXPECT_EQ(Doc.Lines.FindId("LN0007"), 1);
  Doc.Lines.Remove(1);
  EXPECT_EQ(Doc.Lines.FindId("LN0007"), 1);
  EXPECT_EQ(Doc.Lines.FindById("LN0007")->lt, 2);
  Doc.Lines.Remove(2);  // the last one: the first match stays
  EXPECT_EQ(Doc.Lines.FindById("LN0007")->lt, 2);
  Doc.Lines.Remove(1);
  EXPECT_EQ(Doc.Lines.FindId("LN0007"), 0);
}

TEST_F(DocumentTest, FindObjectIndexCoversEveryKindAndTracks) {
  AddPoint(0, 0);
  auto add = []<class T>(Collection<T>& c, const std::string& id) {
    auto o = std::make_unique<T>();
    o->ID = id;
    return c.Add(std::move(o));
  };
  add(Doc.Lines, "LN0002"), add(Doc.Notes, "NT0003"), add(Doc.Spheres, "SP0004");
  CAniControl* players[] = {add(Doc.AniCtrls, "AC0005"), add(Doc.AniCtrls, "AC0008")};
  for (const char* t : {"AN0006", "AN0007", "AN0009"}) {
    CAniControl* ctrl = players[t[5] == '9'];
    ctrl->anis.push_back(std::make_unique<CAnimation>());
    ctrl->anis.back()->ID = t;
  }
  int index = 0, ani = 0;
  const std::tuple<const char*, int, int> found[] = {{"LN0002", 1, 0}, {"SP0004", 1, 0}, {"AN0007", 1, 2}, {"AN0009", 2, 1}};
  for (const auto& [id, wantIndex, wantAni] : found) {
    ASSERT_TRUE(FindObjectIndex(id, index, ani)) << id;
    EXPECT_TRUE(index == wantIndex && ani == wantAni && GetObjectById(id)->ID == id) << id;
  }
  EXPECT_FALSE(FindObjectIndex("AN0010", index, ani));
  EXPECT_EQ(GetObjectById("NT0003"), Doc.Notes.Item(1));
  EXPECT_TRUE(GetObjectById("PT0099") == nullptr && GetObjectById("") == nullptr);
  EXPECT_EQ(DocumentObjectCount(), 9);  // 1 point, 1 line, 1 note, 1 sphere, 2 players, 3 tracks
}

// ---- deletion ---------------------------------------------------------------------------

using DeleteTest = DocumentTest;

TEST_F(DeleteTest, DeletingAPointTakesItsDependentsAndLinkedLines) {
  Position* a = AddPoint(0, 0);
  Position* b = AddPoint(4, 0);
  Segment(a, b);
  Segment(b, AddPoint(0, 3));
  // A point hanging on a (PT0006), and one hanging on that (PT0007).
  Position* child = AddPoint(1, 1);
  a->AddChild(child->ID);
  child->AddChild(AddPoint(2, 2)->ID);
  // A sector holding a: outside the kinds this command removes.
  auto fan = std::make_unique<CFan>();
  fan->ID = NewObjectId("FA");
  a->AddLink({fan->ID, 0, 1, 0, 0});
  Doc.Fans.Add(std::move(fan));
  SelectObject(*a);
  const int undoBefore = UndoCount;
  mnuEditDelete_Click();
  for (const char* gone : {"PT0001", "PT0006", "PT0007"}) EXPECT_EQ(FindPoint(gone), nullptr) << gone;
  EXPECT_NE(FindPoint("PT0002"), nullptr);
  EXPECT_EQ(Doc.Lines.FindId("LN0003"), 0);
  EXPECT_EQ(Doc.Lines.count(), 1);  // b-c stays
  EXPECT_EQ(Doc.Fans.count(), 1);   // the sector stays, its point gone
  EXPECT_EQ(Sel.Points.count(), 0);
  EXPECT_EQ(UndoCount, undoBefore + 1);

  // A selected line takes its structure points, not its ends.
  CLine* bc = Doc.Lines.Item(1);
  Position* onLine = AddPoint(2, 0);
  onLine->ptype = 7;
  onLine->AddParent(bc->ID);
  bc->AddStruP(*onLine);
  bc->StruPercB.push_back(0.5f);
  const std::string onLineId = onLine->ID;
  SelectObject(*bc);
  mnuEditDelete_Click();
  EXPECT_EQ(Doc.Lines.count(), 0);
  EXPECT_EQ(FindPoint(onLineId), nullptr);
  EXPECT_NE(FindPoint("PT0002"), nullptr);
  EXPECT_EQ(Sel.Lines.count(), 0);
}

TEST_F(DeleteTest, MoreThan500IdsEndsTheCommandWithoutChanges) {
  Position* root = AddPoint(0, 0);
  for (int i = 0; i < 500; ++i) root->Child.push_back(AddPoint(i, 1)->ID);  // past the bound of 30 on purpose
  SelectObject(*root);
  const int count = Doc.Points.count(), undo = UndoCount;
  mnuEditDelete_Click();
  EXPECT_TRUE(Doc.Points.count() == count && UndoCount == undo);
  ASSERT_EQ(host_.messages.size(), 1u);
  EXPECT_EQ(host_.messages[0].title, "Error");
}

}  // namespace
}  // namespace vt
