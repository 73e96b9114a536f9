#include "document/recovery.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
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

std::string RecoveryFilePath(long pid) {
  std::string folder = RecoveryFolder();
  if (pid < 0) pid = static_cast<long>(getpid());
  return folder.empty() ? folder : (fs::path(folder) / ("recovery-" + std::to_string(pid) + ".vtd")).string();
}

namespace {

std::string LockPath(const std::string& copy) { return copy + ".lock"; }

// Takes the lock of a copy, making its lock file when there is none: the
// descriptor that holds it, or -1 when another program holds it.
int TakeLock(const std::string& copy) {
  int fd = open(LockPath(copy).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (fd >= 0 && flock(fd, LOCK_EX | LOCK_NB) != 0) {
    close(fd);
    fd = -1;
  }
  return fd;
}

// True when nobody holds the lock of a copy (or there is no lock file).
bool LockFree(const std::string& copy) {
  int fd = open(LockPath(copy).c_str(), O_RDWR | O_CLOEXEC);
  if (fd < 0) return errno == ENOENT;
  const bool free = flock(fd, LOCK_EX | LOCK_NB) == 0;
  close(fd);  // gives the lock back, if it was taken
  return free;
}

bool ProgramRunning(long pid) { return pid > 0 && (kill(static_cast<pid_t>(pid), 0) == 0 || errno == EPERM); }

// The process id in a copy's name "recovery-<pid>.vtd", or -1.
long CopyPid(const fs::path& p) {
  const std::string name = p.filename().string();
  const std::string head = "recovery-", tail = ".vtd";
  if (name.size() <= head.size() + tail.size() || name.compare(0, head.size(), head) != 0 ||
      name.compare(name.size() - tail.size(), tail.size(), tail) != 0)
    return -1;
  const std::string digits = name.substr(head.size(), name.size() - head.size() - tail.size());
  if (digits.size() > 9 || !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
    return -1;
  return std::stol(digits);
}

}  // namespace

// ---- the writer thread ----------------------------------------------------------

RecoveryWriter::RecoveryWriter(std::string path) : path_(std::move(path)) {
  if (!path_.empty()) {
    std::error_code ec;
    fs::create_directories(fs::path(path_).parent_path(), ec);
    lockFd_ = TakeLock(path_);
  }
  thread_ = std::thread([this] { Run(); });
}

RecoveryWriter::~RecoveryWriter() {
  {
    std::lock_guard<std::mutex> lock(mu_);
    stop_ = true;
  }
  cv_.notify_all();
  thread_.join();
  // The lock file stays: a copy left behind is known as an orphan by it.
  if (lockFd_ >= 0) close(lockFd_);
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
    bool ok = false;
    if (path_.empty()) {
      error = "no state folder";
    } else if (lockFd_ < 0) {
      error = "the copy is not locked for this program";
    } else {
      std::error_code ec;
      fs::create_directories(fs::path(path_).parent_path(), ec);
      ok = WriteDocumentFile(path_, text, error);
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
  if (lockFd_ < 0) return;  // not this program's copy
  std::error_code ec;
  fs::remove(path_, ec);
  fs::remove(path_ + ".saving", ec);
  fs::remove(LockPath(path_), ec);
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

// The document text as it stands: the newest undo snapshot when the
// document is that state (joined from its stored pieces, cheaper than
// writing it), else written afresh.
std::string CurrentText() {
  if (!UnrecordedChanges()) {
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

void RecoveryKeeper::CleanExit(bool removeCopy) {
  if (removeCopy) {
    writer_.Remove();
    return;
  }
  writer_.Submit(GetUndoVar());
  writer_.WaitIdle();
}

// ---- the next start ---------------------------------------------------------------

bool ReadRecoveryCopy(const std::string& path, std::string& text) {
  text.clear();
  if (path.empty()) return false;
  std::error_code ec;
  if (!fs::is_regular_file(path, ec)) return false;
  return ReadDocumentFile(path, text) && !text.empty();
}

std::vector<std::string> OrphanedRecoveryCopies(const std::string& folder, const std::string& ownCopy) {
  std::vector<std::pair<fs::file_time_type, std::string>> found;
  std::error_code ec;
  if (folder.empty()) return {};
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    const fs::path p = it->path();
    const long pid = CopyPid(p);
    if (pid < 0 || !it->is_regular_file(ec)) continue;
    const std::string copy = p.string();
    const bool orphan = copy == ownCopy ||
                        (fs::exists(LockPath(copy), ec) ? LockFree(copy) : !ProgramRunning(pid));
    if (orphan) found.emplace_back(fs::last_write_time(p, ec), copy);
  }
  std::sort(found.begin(), found.end());
  std::vector<std::string> copies;
  for (auto& f : found) copies.push_back(std::move(f.second));
  return copies;
}

bool OfferRecovery(const std::string& path, bool ours) {
  std::string text;
  if (!ReadRecoveryCopy(path, text)) {
    std::error_code ec;
    fs::remove(path + ".saving", ec);
    return false;
  }
  // The copy's lock is held while it is offered, so that a program started
  // beside this one does not offer it as well.
  int lockFd = -1;
  if (!ours && (lockFd = TakeLock(path)) < 0) return false;
  struct Unlock {
    int fd;
    ~Unlock() {
      if (fd >= 0) close(fd);
    }
  } unlock{lockFd};
  MsgResult answer = host().MsgBox(
      "Vantrel did not close properly. A recovery copy of the document you were working on "
      "was kept. Do you want to open it?",
      "Recovery", MsgButtons::YesNo, MsgIcon::Question);
  if (answer == MsgResult::Yes) {
    // The document on screen may hold work of its own (an earlier copy).
    if (!ConfirmDiscardChanges()) return false;  // kept for the next start
    OpenDocumentText(text);  // a damaged end keeps what was read
    CurrentFilePath.clear();
    BeginHistory();
    MarkDocumentUnsaved();  // a new, unsaved document: closing offers to save it
    RedrawScene();
  }
  std::error_code ec;
  fs::remove(path, ec);
  fs::remove(path + ".saving", ec);
  if (lockFd >= 0) fs::remove(LockPath(path), ec);
  return answer == MsgResult::Yes;
}

int OfferRecoveryCopies(const std::string& folder, const std::string& ownCopy) {
  // Lock files of programs that ended without a copy to leave are dropped.
  std::error_code ec;
  if (folder.empty()) return 0;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    const std::string lock = it->path().string();
    const std::string copy = lock.size() > 5 ? lock.substr(0, lock.size() - 5) : std::string();
    std::error_code ignore;
    if (CopyPid(copy) >= 0 && lock == LockPath(copy) && !fs::exists(copy, ignore) && LockFree(copy))
      fs::remove(lock, ignore);
  }
  int opened = 0;
  for (const std::string& copy : OrphanedRecoveryCopies(folder, ownCopy))
    opened += OfferRecovery(copy, copy == ownCopy) ? 1 : 0;
  return opened;
}

}  // namespace vt
