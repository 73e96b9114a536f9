// The recovery copy: where it lives, when it is taken, the background
// writer, and the offer at the next start.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/recovery.h"
#include "document/undo.h"
#include "persist/docio.h"
#include "support/fixtures.h"

namespace vt {
namespace {

namespace fs = std::filesystem;
using test::DocumentTest;
using test::TempDir;
using Clock = RecoveryKeeper::Clock;
using std::chrono::seconds;

// Sets an environment variable for the scope and puts the old value back.
class EnvVar {
 public:
  EnvVar(const char* name, const char* value) : name_(name), had_(std::getenv(name) != nullptr) {
    if (had_) old_ = std::getenv(name);
    value ? setenv(name, value, 1) : unsetenv(name);
  }
  ~EnvVar() { had_ ? setenv(name_, old_.c_str(), 1) : unsetenv(name_); }

 private:
  const char* name_;
  bool had_;
  std::string old_;
};

TEST(RecoveryFolder, StateHomeThenHome) {
  const struct {
    const char *state, *home, *folder;
  } cases[] = {
      {"/var/tmp/st", "/home/u", "/var/tmp/st/vantrel"},
      {nullptr, "/home/u", "/home/u/.local/state/vantrel"},
      {"rel/state", "/home/u", "/home/u/.local/state/vantrel"},  // a relative state home does not count
      {nullptr, nullptr, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.folder);
    EnvVar state("XDG_STATE_HOME", c.state);
    EnvVar home("HOME", c.home);
    EXPECT_EQ(RecoveryFolder(), c.folder);
    EXPECT_EQ(RecoveryFilePath(42), *c.folder ? std::string(c.folder) + "/recovery-42.vtd" : "");
  }
}

TEST(RecoveryWriter, FailureIsCountedNotThrown) {
  TempDir dir;
  std::ofstream(dir.path("plain")) << "x";
  RecoveryWriter w(dir.path("plain/vantrel/recovery.vtd"));  // under a file
  w.Submit("GL;;");
  w.WaitIdle();
  EXPECT_TRUE(w.Written() == 0 && w.Failed() == 1 && !w.LastError().empty());
}

class RecoveryTest : public DocumentTest {
 protected:
  void SetUp() override {
    DocumentTest::SetUp();
    SceneMode = 1;  // a plane document, as the program starts with
    MarkDocumentSaved();
    CurrentFilePath.clear();
  }
  std::string CopyText() {
    std::string text;
    ReadRecoveryCopy(path_, text);
    return text;
  }
  TempDir dir_;
  std::string path_ = dir_.path("vantrel/recovery.vtd");
};

TEST_F(RecoveryTest, CopiesOnlyChangesAndAtMostEveryInterval) {
  RecoveryKeeper keeper(path_, seconds(30));
  const Clock::time_point t0 = Clock::now();
  // Ticks at these seconds, each after the edit named: whether a copy is taken.
  const struct {
    int at;
    const char* edit;
    bool copied;
  } ticks[] = {{0, "", false},     // an unchanged document gives no copy
               {1, "A", true},     {20, "B", false},  // another change inside the interval waits for it
               {31, "", true},     {100, "", false},  // no change, no copy, however long it waits
               {200, "undo", true}};                  // an undo is a change as well
  for (const auto& t : ticks) {
    if (std::string(t.edit) == "undo") {
      mnuFUndo_Click();
    } else if (*t.edit) {
      AddPoint(1, 2, 0, t.edit);
      PushSnapshot();
    }
    EXPECT_EQ(keeper.Tick(t0 + seconds(t.at)), t.copied) << t.at;
    keeper.writer().WaitIdle();
    if (t.copied) EXPECT_EQ(CopyText(), GetUndoVar()) << t.at;
  }
  EXPECT_EQ(keeper.writer().Written(), 3);
  EXPECT_EQ(Doc.Points.count(), 1);
  keeper.CleanExit();
  EXPECT_FALSE(fs::exists(path_));
  // Past the undo depth the stack stores nothing: the text is written afresh.
  RecoveryKeeper deep(path_, seconds(0));
  deep.Tick();
  AddPoint(1, 1, 0, "C");
  UndoCount = kUndoDepth + 5;
  EXPECT_TRUE(deep.Tick());
  deep.writer().WaitIdle();
  EXPECT_EQ(CopyText(), GetUndoVar());
}

TEST_F(RecoveryTest, RestoresTheCopyAsAnUnsavedDocument) {
  // No copy, or a damaged one (not a document frame): no question.
  EXPECT_FALSE(OfferRecovery(path_));
  fs::create_directories(fs::path(path_).parent_path());
  std::ofstream(path_, std::ios::binary) << "garbage";
  EXPECT_FALSE(OfferRecovery(path_));
  EXPECT_TRUE(host_.messages.empty());
  // The last run: three points, then a crash (no clean exit).
  {
    for (const char* l : {"A", "B", "C"}) AddPoint(l[0] - 'A', 2, 0, l);
    PushSnapshot();
    RecoveryKeeper keeper(path_, seconds(30));
    ASSERT_TRUE(keeper.Tick());
    keeper.writer().WaitIdle();
  }
  const std::string lost = GetUndoVar();
  ASSERT_TRUE(fs::exists(path_));

  // The next start.
  ResetGlobals();
  MarkDocumentSaved();
  CurrentFilePath = "/somewhere/else.vtd";
  ASSERT_EQ(Doc.Points.count(), 0);
  host_.msgAnswers.push_back(MsgResult::Yes);
  EXPECT_TRUE(OfferRecovery(path_));
  ASSERT_EQ(host_.messages.size(), 1u);
  EXPECT_EQ(host_.messages[0].buttons, MsgButtons::YesNo);
  EXPECT_EQ(GetUndoVar(), lost);
  ASSERT_EQ(Doc.Points.count(), 3);
  EXPECT_EQ(Doc.Points.Item(3)->PLabel, "C");
  EXPECT_TRUE(CurrentFilePath.empty() && DocumentModified() && !fs::exists(path_));
}

// Programs side by side keep their own copies; every orphan is offered, one
// question each, and a refused one goes as well.
TEST_F(RecoveryTest, ProgramsKeepTheirOwnCopiesAndEveryOrphanIsOffered) {
  auto copy = [&](long pid) { return dir_.path("vantrel/recovery-" + std::to_string(pid) + ".vtd"); };
  auto text = [](const std::string& path) {
    std::string t;
    ReadRecoveryCopy(path, t);
    return t;
  };
  AddPoint(1, 2, 0, "A");
  const std::string lost = GetUndoVar(), other = "GL Ver3.00 1 0 0 0 0;;";
  ClearDocument();
  for (long pid : {1003, 1004}) {  // ended without a clean exit
    RecoveryWriter crashed(copy(pid));
    crashed.Submit(lost);
  }
  RecoveryWriter first(copy(1001)), second(copy(1002));
  ASSERT_TRUE(first.locked() && second.locked());
  first.Submit(other);
  second.Submit(other);
  RecoveryWriter intruder(copy(1002));  // another program holds it: nothing written
  EXPECT_FALSE(intruder.locked());
  intruder.Submit(lost);
  intruder.Remove();
  first.Remove();  // a clean exit takes its own copy only
  second.WaitIdle();
  EXPECT_FALSE(fs::exists(copy(1001)));
  EXPECT_EQ(text(copy(1002)), other);
  std::string error;  // without a lock file the process counts: pid 1 runs
  ASSERT_TRUE(WriteDocumentFile(copy(1), other, error));

  EXPECT_EQ(OrphanedRecoveryCopies(dir_.path("vantrel")), (std::vector<std::string>{copy(1003), copy(1004)}));
  host_.msgAnswers = {MsgResult::Yes, MsgResult::No};
  EXPECT_EQ(OfferRecoveryCopies(dir_.path("vantrel"), ""), 1);
  EXPECT_EQ(host_.messages.size(), 2u);
  EXPECT_EQ(GetUndoVar(), lost);
  EXPECT_TRUE(DocumentModified());
  EXPECT_FALSE(fs::exists(copy(1003)) || fs::exists(copy(1004)));
  EXPECT_EQ(text(copy(1002)), other);
  EXPECT_TRUE(fs::exists(copy(1)));
}

}  // namespace
}  // namespace vt
