// A save that cannot be completed says why with the system's own message and
// leaves the file on disk as it was.
#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/undo.h"
#include "persist/docio.h"
#include "support/fixtures.h"

namespace vt {
namespace {

namespace fs = std::filesystem;
using test::DocumentTest;
using test::TempDir;

std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

// Lowers the largest file this process may write, the way a full disk stops
// a write part way, and puts it back at the end of the scope. Writing past
// the limit fails with EFBIG instead of a signal.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : oldHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &old_);
    rlimit lim = old_;
    lim.rlim_cur = bytes;
    ok_ = setrlimit(RLIMIT_FSIZE, &lim) == 0;
  }
  ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &old_), std::signal(SIGXFSZ, oldHandler_); }
  bool ok() const { return ok_; }

 private:
  rlimit old_{};
  void (*oldHandler_)(int);
  bool ok_ = false;
};

std::string BigText(int points) {
  std::string text = "GL Ver3.00 1 1 1 0 0;;";
  for (int i = 1; i <= points; ++i)
    text += "PT" + std::to_string(1000 + i) + " 1 2 0 1 2 255 0 1 1 @@ 0 0 0 0 @@ @@ @@ @@ 0 0 0 0 0 0 0 0;;";
  return text;
}

// A write that cannot be completed (a full disk, a missing folder, a folder
// in the way, no rights) fails with the platform's reason, keeps what stood at
// the path and leaves no part behind.
TEST(SaveFailure, AFailedWriteKeepsWhatStoodAndSaysWhy) {
  TempDir dir;
  const std::string path = dir.path("doc.vtd"), taken = dir.path("taken.vtd");
  std::string error;
  ASSERT_TRUE(WriteDocumentFile(path, "GL Ver3.00 1 1 1 0 0;;", error)) << error;
  const std::string before = ReadBytes(path);
  {
    FileSizeLimit limit(200);
    ASSERT_TRUE(limit.ok());
    EXPECT_FALSE(WriteDocumentFile(path, BigText(50), error));
  }
  EXPECT_EQ(error, std::strerror(EFBIG));
  EXPECT_FALSE(WriteDocumentFile(dir.path("no/such/doc.vtd"), "GL;;", error));
  EXPECT_EQ(error, std::strerror(ENOENT));
  fs::create_directory(taken);
  std::ofstream(taken + "/inside") << "keep";
  EXPECT_FALSE(WriteDocumentFile(taken, "GL Ver3.00 1 1 1 0 0;;", error));
  EXPECT_FALSE(error.empty());
  EXPECT_EQ(ReadBytes(taken + "/inside"), "keep");
  if (geteuid() != 0) {  // permissions do not stop the super-user
    fs::permissions(dir.dir(), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_FALSE(WriteDocumentFile(path, BigText(3), error));
    fs::permissions(dir.dir(), fs::perms::owner_all);
    EXPECT_EQ(error, std::strerror(EACCES));
  }
  EXPECT_EQ(ReadBytes(path), before);
  EXPECT_FALSE(fs::exists(path + ".saving") || fs::exists(taken + ".saving"));
  // A file replaced by a save keeps its permissions.
  const auto perms = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
  fs::permissions(path, perms);
  ASSERT_TRUE(WriteDocumentFile(path, BigText(2), error)) << error;
  EXPECT_EQ(fs::status(path).permissions(), perms);
  std::string text;
  EXPECT_TRUE(ReadDocumentFile(path, text) && text == BigText(2));
}

// A save killed part way leaves the old file whole: the text goes to a file
// beside it, which only a finished write renames into place.
TEST(SaveFailure, AKilledSaveLeavesTheOldFileWhole) {
  TempDir dir;
  const std::string path = dir.path("doc.vtd");
  const std::string old = BigText(1);
  std::string error;
  ASSERT_TRUE(WriteDocumentFile(path, old, error)) << error;
  std::string big = BigText(1);
  while (big.size() < (32u << 20)) big += std::string(4096, 'x') + ";;";
  int midWrite = 0;  // kills that caught the scratch file half written
  for (int delayUs : {0, 1000, 3000}) {
    pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      for (;;) WriteDocumentFile(path, big, error);  // until killed
    }
    // Kill once the scratch file is being written.
    for (int i = 0; i < 20000 && !fs::exists(path + ".saving"); ++i) usleep(500);
    usleep(static_cast<useconds_t>(delayUs));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    std::string back;
    ASSERT_TRUE(ReadDocumentFile(path, back)) << delayUs;
    EXPECT_TRUE(back == old || back == big) << "a torn file of " << back.size() << " bytes";
    midWrite += fs::exists(path + ".saving");
    ASSERT_TRUE(WriteDocumentFile(path, old, error));
  }
  EXPECT_GT(midWrite, 0);
}

// Through the Save command: the box names the file and the reason, and the
// document stays modified with its old path.
TEST_F(DocumentTest, FailedSaveShowsTheReasonAndKeepsTheDocumentModified) {
  TempDir dir;
  std::string path = dir.path("doc.vtd");
  ASSERT_TRUE(SaveDocumentAs(path));
  const std::string before = ReadBytes(path);
  for (int i = 0; i < 40; ++i) AddPoint(static_cast<float>(i), 1.0f);
  PushSnapshot();
  ASSERT_TRUE(DocumentModified());

  bool saved;
  {
    FileSizeLimit limit(static_cast<rlim_t>(before.size()) + 16);
    ASSERT_TRUE(limit.ok());
    saved = mnuFileSave_Click();
  }
  EXPECT_FALSE(saved);
  ASSERT_FALSE(host_.messages.empty());
  EXPECT_EQ(host_.messages.back().title + ": " + host_.LastMessage(),
            "Error: Unable to save " + path + ": " + std::strerror(EFBIG));
  EXPECT_EQ(ReadBytes(path), before);
  EXPECT_TRUE(CurrentFilePath == path && DocumentModified());

  // With room again the same command succeeds and the file reads back.
  EXPECT_TRUE(mnuFileSave_Click());
  EXPECT_FALSE(DocumentModified());
  std::string text;
  ASSERT_TRUE(ReadDocumentFile(path, text));
  EXPECT_EQ(text, GetUndoVar());
}

}  // namespace
}  // namespace vt
