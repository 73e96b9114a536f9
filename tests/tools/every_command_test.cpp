// Every command of the main menu that the core wires, run the way a user who
// tries everything would: on an empty document, and on a full one (the start
// document with two models merged in) with everything selected. Dialogs get
// no answer (the host cancels them). No command may fail, and what each
// leaves must be a document whose text reads back to itself.
#include <set>
#include <string>
#include <vector>

#include "document/command_table.h"
#include "document/globals.h"
#include "document/undo.h"
#include "persist/docio.h"
#include "tool_fixture.h"
#include "tools/models.h"

namespace vt::test {
namespace {

const std::string kData = VT_SOURCE_DATA_DIR;

std::vector<std::string> WiredMainMenuHandlers() {
  std::set<std::string> seen;
  std::vector<std::string> out;
  for (const MenuItemDef& m : MenuTable()) {
    if (m.role != MenuRole::Item || !HandlerRegistered(m.handler)) continue;
    const MenuItemDef* p = FindMenuItem(m.parent);
    while (p && *p->parent) p = FindMenuItem(p->parent);
    if (p && p->role == MenuRole::Menu && seen.insert(m.handler).second) out.push_back(m.handler);
  }
  return out;
}

class EveryCommandTest : public ToolTest {
 protected:
  void SetUp() override {
    ToolTest::SetUp();
    savedFolder_ = SystemFolder;
    SystemFolder = kData;
    RegisterAllCommands();
  }
  void TearDown() override {
    ClearHandlers();
    SystemFolder = savedFolder_;
    ToolTest::TearDown();
  }

  static void FullDocument() {
    ASSERT_TRUE(OpenFile(kData + "/Tutorials/T000.vtd"));
    OpenModelCommand("Cube.vtd");
    OpenModelCommand("Sphere.vtd");
    ASSERT_GT(DocumentObjectCount(), 30);
    RunHandler("mnuEditSelAll");
  }

  // The document as it stands reads back to the same text.
  static void ExpectReadsBack(const std::string& handler) {
    const std::string text = GetUndoVar();
    OpenUnRe(text);
    EXPECT_EQ(GetUndoVar(), text) << "after " << handler;
  }

  std::string savedFolder_;
};

TEST_F(EveryCommandTest, OnAnEmptyDocument) {
  const std::vector<std::string> handlers = WiredMainMenuHandlers();
  ASSERT_GT(handlers.size(), 100u);
  for (const std::string& h : handlers) {
    SCOPED_TRACE(h);
    RunHandler("mnuEditDelAll");
    ASSERT_TRUE(RunHandler(h));
    ExpectReadsBack(h);
  }
}

TEST_F(EveryCommandTest, OnAFullDocumentWithEverythingSelected) {
  for (const std::string& h : WiredMainMenuHandlers()) {
    SCOPED_TRACE(h);
    FullDocument();
    const int before = DocumentObjectCount();
    const std::string text = GetUndoVar();
    host_.messages.clear();
    ASSERT_TRUE(RunHandler(h));
    // A refusal (a note or an error with only OK to press) changes nothing.
    const bool refused = !host_.messages.empty() && host_.messages.back().buttons == MsgButtons::OK &&
                         (host_.messages.back().title == "Note" || host_.messages.back().title == "Error");
    if (refused) EXPECT_EQ(GetUndoVar(), text) << host_.LastMessage();
    ExpectReadsBack(h);
    // What a command took away, undo brings back.
    if (h != "mnuFUndo" && DocumentObjectCount() < before && UndoEnabled) {
      RunHandler("mnuFUndo");
      EXPECT_EQ(DocumentObjectCount(), before) << "undo after " << h;
    }
    ResetUndo();
  }
}

}  // namespace
}  // namespace vt::test
