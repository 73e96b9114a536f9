// The recovery copy: the document text written to the user's state folder
// while the program runs, so that a crash loses at most the last half minute.
//
// The program calls RecoveryKeeper::Tick from a repeating timer. A tick takes
// a copy of the document text only when the document changed since the last
// copy and the interval has passed; the copy is handed to a background
// thread that writes it (through the same .saving-and-rename path as a
// save), so the canvas never waits on the disk. A clean exit removes the
// copy; finding one at the next start means the program did not end
// cleanly, and OfferRecovery asks whether to open it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace vt {

// $XDG_STATE_HOME/vantrel, or ~/.local/state/vantrel when that is unset or
// not absolute; "" when neither can be found.
std::string RecoveryFolder();
// The copy itself: RecoveryFolder()/recovery.vtd ("" without a folder).
std::string RecoveryFilePath();

// Writes texts to one file on a thread of its own. Submit returns at once; a
// text submitted while another is being written replaces any text still
// waiting, so only the newest is written next.
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
  // Waits, then deletes the copy (and a leftover .saving beside it).
  void Remove();
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
  // The clean exit: no copy stays behind.
  void CleanExit();
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

// At start-up: when a copy exists, asks "Vantrel did not close properly..."
// and, on Yes, reads the copy as a new, unsaved document. The copy is
// removed either way (a kept document gets a new copy at its next change).
// True when the copy was opened.
bool OfferRecovery(const std::string& path);

}  // namespace vt
