// LoadParameterTable: parameters of the players first, then the notes.
#include <gtest/gtest.h>

#include <memory>

#include "document/document.h"
#include "expr/parameters.h"

namespace vt {
namespace {

class ParameterTable : public ::testing::Test {
 protected:
  void SetUp() override { ClearDocument(); }
  void TearDown() override { ClearDocument(); }

  static CAniControl* AddPlayer(const std::string& id) {
    auto p = std::make_unique<CAniControl>();
    p->ID = id;
    return Doc.AniCtrls.Add(std::move(p));
  }
  static void AddTrack(CAniControl* player, int type, const std::string& name, float value) {
    auto a = std::make_unique<CAnimation>();
    a->AniType = type;
    a->Para1 = name;
    a->RangeTo2 = value;
    player->anis.push_back(std::move(a));
  }
  static void AddNote(const std::string& id, int type, const std::string& name, float value) {
    auto n = std::make_unique<CNote>();
    n->ID = id;
    n->NoteType = type;
    n->VarName = name;
    n->Value = value;
    Doc.Notes.Add(std::move(n));
  }
};

TEST_F(ParameterTable, PlayersThenNotesSkippingOtherKinds) {
  CAniControl* p1 = AddPlayer("AC0001");
  AddTrack(p1, 20, "A", 1.5f);
  AddTrack(p1, 3, "NotAParameter", 9);
  AddTrack(p1, 20, "B", -2);
  CAniControl* p2 = AddPlayer("AC0002");
  AddTrack(p2, 20, "C", 4);
  AddNote("NT0001", 0, "D", 7);
  AddNote("NT0002", 11, "E", 8);  // type 11 is not a parameter
  AddNote("NT0003", 5, "A", 99);  // same name as a player's: comes later

  VariableTable t;
  t.Add("Stale", 5);
  EXPECT_EQ(LoadParameterTable(t), 5);
  ASSERT_EQ(t.Count(), 5);
  const char* names[] = {"A", "B", "C", "D", "A"};
  const float values[] = {1.5f, -2, 4, 7, 99};
  for (int i = 1; i <= 5; ++i) {
    EXPECT_EQ(t.Name(i), names[i - 1]);
    EXPECT_EQ(t.values[i], values[i - 1]);
  }
  EXPECT_EQ(t.Find("a"), 1);  // the player's parameter wins the look-up

  // Rebuilt with current values; the free variables go behind.
  Doc.Notes.Item(1)->Value = 70;
  LoadParameterTable(t);
  EXPECT_EQ(t.values[4], 70);
  EXPECT_EQ(t.Add("X"), 6);
}

TEST_F(ParameterTable, EmptyDocumentGivesNoParameters) {
  VariableTable t;
  t.Add("X", 1);
  EXPECT_EQ(LoadParameterTable(t), 0);
  EXPECT_EQ(t.Count(), 0);
}

}  // namespace
}  // namespace vt
