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
  EnvVar(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old, had_ = true;
    if (value) setenv(name, value, 1);
    else unsetenv(name);
  }
  ~EnvVar() {
    if (had_) setenv(name_, old_.c_str(), 1);
    else unsetenv(name_);
  }

 private:
  const char* name_;
  std::string old_;
  bool had_ = false;
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
  EXPECT_EQ(w.Written(), 0);
  EXPECT_EQ(w.Failed(), 1);
  EXPECT_FALSE(w.LastError().empty());
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

  // An unchanged document gives no copy.
  EXPECT_FALSE(keeper.Tick(t0));
  keeper.writer().WaitIdle();
  EXPECT_FALSE(fs::exists(path_));

  AddPoint(1, 2, 0, "A");
  PushSnapshot();
  EXPECT_TRUE(keeper.Tick(t0 + seconds(1)));
  keeper.writer().WaitIdle();
  EXPECT_EQ(CopyText(), GetUndoVar());

  // Another change inside the interval waits for it.
  AddPoint(3, 4, 0, "B");
  PushSnapshot();
  EXPECT_FALSE(keeper.Tick(t0 + seconds(20)));
  EXPECT_TRUE(keeper.Tick(t0 + seconds(31)));
  keeper.writer().WaitIdle();
  EXPECT_EQ(CopyText(), GetUndoVar());

  // No change, no copy, however long it waits.
  EXPECT_FALSE(keeper.Tick(t0 + seconds(100)));
  EXPECT_EQ(keeper.writer().Written(), 2);

  // An undo is a change as well.
  mnuFUndo_Click();
  EXPECT_TRUE(keeper.Tick(t0 + seconds(200)));
  keeper.writer().WaitIdle();
  EXPECT_EQ(CopyText(), GetUndoVar());
  EXPECT_EQ(Doc.Points.count(), 1);

  keeper.CleanExit();
  EXPECT_FALSE(fs::exists(path_));
}

TEST_F(RecoveryTest, PastTheUndoDepthTheTextIsWrittenAfresh) {
  RecoveryKeeper keeper(path_, seconds(0));
  keeper.Tick();
  AddPoint(1, 1, 0, "A");
  UndoCount = kUndoDepth + 5;  // the stack stores nothing past its depth
  EXPECT_TRUE(keeper.Tick());
  keeper.writer().WaitIdle();
  EXPECT_EQ(CopyText(), GetUndoVar());
}

TEST_F(RecoveryTest, RestoresTheCopyAsAnUnsavedDocument) {
  // The last run: three points, then a crash (no clean exit).
  {
    AddPoint(1, 2, 0, "A");
    AddPoint(3, 4, 0, "B");
    AddPoint(5, 6, 0, "C");
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
  EXPECT_EQ(CurrentFilePath, "");
  EXPECT_TRUE(DocumentModified());
  EXPECT_FALSE(fs::exists(path_));
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

TEST_F(RecoveryTest, NoCopyNoQuestion) {
  EXPECT_FALSE(OfferRecovery(path_));
  EXPECT_TRUE(host_.messages.empty());
  // A damaged copy (not a document frame) is no copy either.
  fs::create_directories(fs::path(path_).parent_path());
  std::ofstream(path_, std::ios::binary) << "garbage";
  EXPECT_FALSE(OfferRecovery(path_));
  EXPECT_TRUE(host_.messages.empty());
}

}  // namespace
}  // namespace vt
