#include "document/recovery.h"

#include <cstdlib>
#include <filesystem>

#include "document/frame_commands.h"
#include "document/host.h"
#include "document/undo.h"
#include "persist/docio.h"

namespace vt {

namespace fs = std::filesystem;

std::string RecoveryFolder() {
  const char* state = std::getenv("XDG_STATE_HOME");
  if (state && state[0] == '/') return (fs::path(state) / "vantrel").string();
  const char* home = std::getenv("HOME");
  if (home && home[0] == '/') return (fs::path(home) / ".local" / "state" / "vantrel").string();
  return std::string();
}

std::string RecoveryFilePath() {
  std::string folder = RecoveryFolder();
  return folder.empty() ? folder : (fs::path(folder) / "recovery.vtd").string();
}

// ---- the writer thread ----------------------------------------------------------

RecoveryWriter::RecoveryWriter(std::string path)
    : path_(std::move(path)), thread_([this] { Run(); }) {}

RecoveryWriter::~RecoveryWriter() {
  {
    std::lock_guard<std::mutex> lock(mu_);
    stop_ = true;
  }
  cv_.notify_all();
  thread_.join();
}

void RecoveryWriter::Submit(std::string text) {
  {
    std::lock_guard<std::mutex> lock(mu_);
    pending_ = std::move(text);
  }
  cv_.notify_all();
}

void RecoveryWriter::Run() {
  std::unique_lock<std::mutex> lock(mu_);
  for (;;) {
    cv_.wait(lock, [this] { return stop_ || pending_.has_value(); });
    if (!pending_) return;  // stopping with nothing left to write
    std::string text = std::move(*pending_);
    pending_.reset();
    busy_ = true;
    lock.unlock();

    std::string error;
    bool ok = !path_.empty();
    if (ok) {
      std::error_code ec;
      fs::create_directories(fs::path(path_).parent_path(), ec);
      ok = WriteDocumentFile(path_, text, error);
    } else {
      error = "no state folder";
    }

    lock.lock();
    busy_ = false;
    if (ok) {
      ++written_;
    } else {
      ++failed_;
      lastError_ = error;
    }
    cv_.notify_all();
  }
}

void RecoveryWriter::WaitIdle() {
  std::unique_lock<std::mutex> lock(mu_);
  cv_.wait(lock, [this] { return !pending_ && !busy_; });
}

void RecoveryWriter::Remove() {
  WaitIdle();
  if (path_.empty()) return;
  std::error_code ec;
  fs::remove(path_, ec);
  fs::remove(path_ + ".saving", ec);
}

int RecoveryWriter::Written() const {
  std::lock_guard<std::mutex> lock(mu_);
  return written_;
}

int RecoveryWriter::Failed() const {
  std::lock_guard<std::mutex> lock(mu_);
  return failed_;
}

std::string RecoveryWriter::LastError() const {
  std::lock_guard<std::mutex> lock(mu_);
  return lastError_;
}

// ---- when to copy ----------------------------------------------------------------

namespace {

// The document text as it stands: the newest undo snapshot when the stack
// holds it (joined from its stored pieces, cheaper than writing it), else
// written afresh.
std::string CurrentText() {
  if (UndoCount >= 1 && UndoCount < kUndoDepth) {
    std::string snap = UndoEntry(UndoCount);
    if (!snap.empty()) return snap;
  }
  return GetUndoVar();
}

}  // namespace

RecoveryKeeper::RecoveryKeeper(std::string path, Clock::duration interval)
    : writer_(std::move(path)), interval_(interval) {}

bool RecoveryKeeper::Tick(Clock::time_point now) {
  if (last_ && now - *last_ < interval_) return false;
  if (!haveLast_) {
    // The first tick only learns the document as it stands; an unchanged
    // document needs no copy.
    lastText_ = CurrentText();
    haveLast_ = true;
    if (!DocumentModified()) return false;
  } else {
    std::string text = CurrentText();
    if (text == lastText_) return false;
    lastText_ = std::move(text);
  }
  last_ = now;
  writer_.Submit(lastText_);
  return true;
}

void RecoveryKeeper::CleanExit() { writer_.Remove(); }

// ---- the next start ---------------------------------------------------------------

bool ReadRecoveryCopy(const std::string& path, std::string& text) {
  text.clear();
  if (path.empty()) return false;
  std::error_code ec;
  if (!fs::is_regular_file(path, ec)) return false;
  return ReadDocumentFile(path, text) && !text.empty();
}

bool OfferRecovery(const std::string& path) {
  std::string text;
  if (!ReadRecoveryCopy(path, text)) {
    std::error_code ec;
    fs::remove(path + ".saving", ec);
    return false;
  }
  MsgResult answer = host().MsgBox(
      "Vantrel did not close properly. A recovery copy of the document you were working on "
      "was kept. Do you want to open it?",
      "Recovery", MsgButtons::YesNo, MsgIcon::Question);
  bool opened = false;
  if (answer == MsgResult::Yes) {
    OpenDocumentText(text);  // a damaged end keeps what was read
    CurrentFilePath.clear();
    PushSnapshot();  // a new, unsaved document: closing offers to save it
    RedrawScene();
    opened = true;
  }
  std::error_code ec;
  fs::remove(path, ec);
  fs::remove(path + ".saving", ec);
  return opened;
}

}  // namespace vt
