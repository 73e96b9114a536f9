// The recovery copy: the document text written to the user's state folder
// while the program runs, so that a crash loses at most the last half minute.
// Each running program has a copy of its own, named by its process id, and
// holds a lock on the file beside it ("<copy>.lock") while it runs: a copy
// whose lock nobody holds (or, without a lock file, whose process is gone)
// is an orphan, left by a program that did not end cleanly.
//
// The program calls RecoveryKeeper::Tick from a repeating timer. A tick takes
// a copy of the document text only when the document changed since the last
// copy and the interval has passed; the copy is handed to a background
// thread that writes it (through the same .saving-and-rename path as a
// save), so the canvas never waits on the disk. A clean exit removes the
// copy unless unsaved work would go with it; the next start offers every
// orphan (OfferRecoveryCopies).
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace vt {

// $XDG_STATE_HOME/vantrel, or ~/.local/state/vantrel when that is unset or
// not absolute; "" when neither can be found.
std::string RecoveryFolder();
// The copy of the program with this process id (by default this one):
// RecoveryFolder()/recovery-<pid>.vtd ("" without a folder).
std::string RecoveryFilePath(long pid = -1);

// Writes texts to one file on a thread of its own. Submit returns at once; a
// text submitted while another is being written replaces any text still
// waiting, so only the newest is written next. The writer holds the copy's
// lock from its start to its end; when another program holds it, nothing is
// written.
class RecoveryWriter {
 public:
  explicit RecoveryWriter(std::string path);
  ~RecoveryWriter();  // writes what is waiting, then ends the thread
  RecoveryWriter(const RecoveryWriter&) = delete;
  RecoveryWriter& operator=(const RecoveryWriter&) = delete;

  const std::string& path() const { return path_; }
  void Submit(std::string text);
  // Blocks until nothing waits and nothing is being written.
  void WaitIdle();
  // Waits, then deletes the copy (and a leftover .saving and the lock file).
  void Remove();
  bool locked() const { return lockFd_ >= 0; }
  // Writes done and failed so far; the last failure's message.
  int Written() const;
  int Failed() const;
  std::string LastError() const;

 private:
  void Run();

  std::string path_;
  mutable std::mutex mu_;
  std::condition_variable cv_;
  std::optional<std::string> pending_;
  bool busy_ = false;
  bool stop_ = false;
  int written_ = 0;
  int failed_ = 0;
  std::string lastError_;
  int lockFd_ = -1;
  std::thread thread_;
};

class RecoveryKeeper {
 public:
  using Clock = std::chrono::steady_clock;
  explicit RecoveryKeeper(std::string path,
                          Clock::duration interval = std::chrono::seconds(30));

  // Takes and submits a copy when the document changed since the last one
  // (or since the keeper started, for a document opened unchanged: no copy)
  // and `interval` has passed since the last copy. True when it submitted.
  bool Tick(Clock::time_point now = Clock::now());
  // The clean exit. With removeCopy no copy stays behind; otherwise the
  // document as it stands is written and kept, to be offered at the next
  // start.
  void CleanExit(bool removeCopy = true);
  RecoveryWriter& writer() { return writer_; }

 private:
  RecoveryWriter writer_;
  Clock::duration interval_;
  std::optional<Clock::time_point> last_;
  std::string lastText_;
  bool haveLast_ = false;
};

// The text of the copy at `path`; false when there is none or it cannot be
// read.
bool ReadRecoveryCopy(const std::string& path, std::string& text);

// The orphaned copies in a folder, oldest first. ownCopy, the path of this
// program's copy, counts as an orphan when it is there before this program
// wrote it (a program of the same process id ended without cleaning up).
std::vector<std::string> OrphanedRecoveryCopies(const std::string& folder, const std::string& ownCopy = "");

// Offers one copy: asks "Vantrel did not close properly..." and, on Yes,
// after the save question for a modified document, reads the copy as a new,
// unsaved document. The copy is removed when it was opened or refused, and
// kept when the save question was cancelled. The copy's lock is held while
// it is offered (ours: the copy has this program's own name, whose lock it
// holds already); a copy that another program holds is passed over. True
// when it was opened.
bool OfferRecovery(const std::string& path, bool ours = false);
// At start-up: offers every orphan of the folder, one question each, oldest
// first. Returns how many were opened.
int OfferRecoveryCopies(const std::string& folder, const std::string& ownCopy);

}  // namespace vt
