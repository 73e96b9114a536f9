// Recovery copies of programs running side by side, and the copies left by
// programs that ended without cleaning up.
#include <gtest/gtest.h>

#include <filesystem>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/recovery.h"
#include "persist/docio.h"
#include "support/fixtures.h"

namespace vt {
namespace {

namespace fs = std::filesystem;

class RecoveryOwnerTest : public test::DocumentTest {
 protected:
  std::string Copy(long pid) const { return dir_.path("vantrel/recovery-" + std::to_string(pid) + ".vtd"); }
  std::string Text(const std::string& path) const {
    std::string text;
    ReadRecoveryCopy(path, text);
    return text;
  }
  test::TempDir dir_;
};

TEST_F(RecoveryOwnerTest, ProgramsKeepTheirOwnCopiesAndEveryOrphanIsOffered) {
  SceneMode = 1;
  AddPoint(1, 2, 0, "A");
  const std::string lost = GetUndoVar();
  ClearDocument();
  const std::string other = "GL Ver3.00 1 0 0 0 0;;";
  // Two programs that ended without a clean exit, two that still run.
  for (long pid : {1003, 1004}) {
    RecoveryWriter crashed(Copy(pid));
    crashed.Submit(lost);
    crashed.WaitIdle();
  }
  RecoveryWriter first(Copy(1001)), second(Copy(1002));
  ASSERT_TRUE(first.locked() && second.locked());
  first.Submit(other);
  second.Submit(other);
  // A writer of a copy that another program holds writes nothing.
  RecoveryWriter intruder(Copy(1002));
  EXPECT_FALSE(intruder.locked());
  intruder.Submit(lost);
  intruder.Remove();
  first.WaitIdle();
  second.WaitIdle();
  EXPECT_EQ(Text(Copy(1002)), other);
  // The first program's clean exit takes only its own copy.
  first.Remove();
  EXPECT_FALSE(fs::exists(Copy(1001)));
  EXPECT_EQ(Text(Copy(1002)), other);
  // A copy without a lock file counts by its process: pid 1 runs.
  std::string error;
  ASSERT_TRUE(WriteDocumentFile(Copy(1), other, error));

  EXPECT_EQ(OrphanedRecoveryCopies(dir_.path("vantrel")), (std::vector<std::string>{Copy(1003), Copy(1004)}));
  // One question each: the first opened as an unsaved document, the second
  // refused; both go, the running programs' copies stay.
  host_.msgAnswers = {MsgResult::Yes, MsgResult::No};
  EXPECT_EQ(OfferRecoveryCopies(dir_.path("vantrel"), ""), 1);
  EXPECT_EQ(host_.messages.size(), 2u);
  EXPECT_EQ(GetUndoVar(), lost);
  EXPECT_TRUE(DocumentModified());
  EXPECT_FALSE(fs::exists(Copy(1003)));
  EXPECT_FALSE(fs::exists(Copy(1004)));
  EXPECT_EQ(Text(Copy(1002)), other);
  EXPECT_TRUE(fs::exists(Copy(1)));
}

}  // namespace
}  // namespace vt
