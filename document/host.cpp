#include "document/host.h"

namespace vt {

namespace {
RecordingHost& DefaultHost() {
  static RecordingHost h;
  return h;
}
Host* g_host = nullptr;
}  // namespace

Host& host() { return g_host ? *g_host : DefaultHost(); }
void SetHost(Host* h) { g_host = h; }

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

bool RecordingHost::PrintImage(const Image& image) {
  if (!printAccepts) return false;
  printed.push_back(image);
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
