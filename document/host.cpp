#include "document/host.h"

#include <vector>

namespace vt {

namespace {
RecordingHost& DefaultHost() {
  static RecordingHost h;
  return h;
}
Host* g_host = nullptr;
Host& RealHost() { return g_host ? *g_host : DefaultHost(); }

std::vector<MessageHold*>& Holds() {
  static std::vector<MessageHold*> holds;
  return holds;
}

// What host() gives while a hold lives: everything goes to the real host but
// the message boxes.
class HeldHost : public Host {
 public:
  MsgResult MsgBox(const std::string& text, const std::string& title, MsgButtons buttons,
                   MsgIcon icon) override {
    if (!Holds().empty()) Holds().back()->Keep(text, title, icon);
    switch (buttons) {
      case MsgButtons::OK: return MsgResult::OK;
      case MsgButtons::YesNo: return MsgResult::No;
      default: return MsgResult::Cancel;
    }
  }
  std::string OpenFileDialog(const std::string& t, const std::string& f) override {
    return RealHost().OpenFileDialog(t, f);
  }
  std::string SaveFileDialog(const std::string& t, const std::string& f) override {
    return RealHost().SaveFileDialog(t, f);
  }
  bool ColorDialog(std::uint32_t& color) override { return RealHost().ColorDialog(color); }
  void SetClipboardText(const std::string& text) override { RealHost().SetClipboardText(text); }
  std::string ClipboardText() override { return RealHost().ClipboardText(); }
  void SetClipboardImage(const Image& image) override { RealHost().SetClipboardImage(image); }
  int CreateTimer(int ms, std::function<void()> tick) override { return RealHost().CreateTimer(ms, std::move(tick)); }
  void SetTimerInterval(int id, int ms) override { RealHost().SetTimerInterval(id, ms); }
  void EnableTimer(int id, bool enabled) override { RealHost().EnableTimer(id, enabled); }
  void RemoveTimer(int id) override { RealHost().RemoveTimer(id); }
  bool OpenPath(const std::string& p) override { return RealHost().OpenPath(p); }
  void CanvasSize(int& w, int& h) override { RealHost().CanvasSize(w, h); }
  Image CaptureCanvas() override { return RealHost().CaptureCanvas(); }
  void SwapBuffers() override { RealHost().SwapBuffers(); }
  void ProcessEvents() override { RealHost().ProcessEvents(); }
};

HeldHost& Held() {
  static HeldHost h;
  return h;
}
}  // namespace

Host& host() { return Holds().empty() ? RealHost() : Held(); }
void SetHost(Host* h) { g_host = h; }

MessageHold::MessageHold() { Holds().push_back(this); }

MessageHold::~MessageHold() {
  if (holding_) std::erase(Holds(), this);
}

bool MessageHold::Active() { return !Holds().empty(); }

void MessageHold::Keep(const std::string& text, const std::string& title, MsgIcon icon) {
  for (const Kept& k : kept_)
    if (k.text == text) return;
  kept_.push_back({text, title, icon});
}

void MessageHold::Release() {
  if (holding_) std::erase(Holds(), this);
  holding_ = false;
  kept_.clear();
}

void MessageHold::ShowFirst() {
  if (holding_) {
    std::erase(Holds(), this);
    holding_ = false;
  }
  if (kept_.empty()) return;
  std::string text = kept_.front().text;
  const std::size_t more = kept_.size() - 1;
  if (more > 0) text += "\n(and " + std::to_string(more) + (more == 1 ? " more message)" : " more messages)");
  host().MsgBox(text, kept_.front().title, MsgButtons::OK, kept_.front().icon);
  kept_.clear();
}

MsgResult RecordingHost::MsgBox(const std::string& text, const std::string& title,
                                MsgButtons buttons, MsgIcon icon) {
  MsgResult answer;
  if (!msgAnswers.empty()) {
    answer = msgAnswers.front();
    msgAnswers.pop_front();
  } else {
    answer = defaultAnswer;
    // The default must be a button the box has.
    switch (buttons) {
      case MsgButtons::OK:
        answer = MsgResult::OK;
        break;
      case MsgButtons::OKCancel:
        if (answer != MsgResult::OK) answer = MsgResult::Cancel;
        break;
      case MsgButtons::YesNo:
        if (answer != MsgResult::Yes) answer = MsgResult::No;
        break;
      case MsgButtons::YesNoCancel:
        if (answer == MsgResult::OK) answer = MsgResult::Cancel;
        break;
    }
  }
  messages.push_back({text, title, buttons, icon, answer});
  return answer;
}

std::string RecordingHost::OpenFileDialog(const std::string&, const std::string&) {
  if (openPaths.empty()) return {};
  std::string p = openPaths.front();
  openPaths.pop_front();
  return p;
}

std::string RecordingHost::SaveFileDialog(const std::string&, const std::string&) {
  if (savePaths.empty()) return {};
  std::string p = savePaths.front();
  savePaths.pop_front();
  return p;
}

bool RecordingHost::ColorDialog(std::uint32_t& color) {
  if (colors.empty()) return false;
  color = colors.front();
  colors.pop_front();
  return true;
}

int RecordingHost::CreateTimer(int intervalMs, std::function<void()> tick) {
  int id = nextTimerId_++;
  timers[id] = Timer{intervalMs, false, std::move(tick)};
  return id;
}

void RecordingHost::SetTimerInterval(int id, int intervalMs) {
  auto it = timers.find(id);
  if (it != timers.end()) it->second.intervalMs = intervalMs;
}

void RecordingHost::EnableTimer(int id, bool enabled) {
  auto it = timers.find(id);
  if (it != timers.end()) it->second.enabled = enabled;
}

void RecordingHost::RemoveTimer(int id) { timers.erase(id); }

bool RecordingHost::OpenPath(const std::string& pathOrUrl) {
  openedPaths.push_back(pathOrUrl);
  return true;
}

void RecordingHost::CanvasSize(int& width, int& height) {
  width = canvasWidth;
  height = canvasHeight;
}

int RecordingHost::TickTimers() {
  // Copy the ids first: a tick may remove or add timers.
  std::vector<int> ids;
  for (auto& [id, t] : timers)
    if (t.enabled) ids.push_back(id);
  int n = 0;
  for (int id : ids) {
    auto it = timers.find(id);
    if (it == timers.end() || !it->second.enabled) continue;
    auto tick = it->second.tick;
    if (tick) tick();
    ++n;
  }
  return n;
}

}  // namespace vt
