#include "app/startup_report.h"

#include <malloc.h>

#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string>

namespace vt::app {

namespace {

// A "VmRSS:" or "VmHWM:" line of /proc/self/status, in KiB; 0 when missing.
long StatusField(const std::string& status, const char* key) {
  const size_t at = status.find(key);
  return at == std::string::npos ? 0 : std::strtol(status.c_str() + at + std::char_traits<char>::length(key), nullptr, 10);
}

void WriteReport(const char* path) {
  const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(
                      std::chrono::system_clock::now().time_since_epoch())
                      .count();
  std::ifstream in("/proc/self/status");
  const std::string status((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::ofstream out(path, std::ios::app);
  out << ms << ' ' << StatusField(status, "VmRSS:") << ' ' << StatusField(status, "VmHWM:") << '\n';
}

}  // namespace

void NoteFirstPaint() {
  static bool done = false;
  if (done) return;
  done = true;
  // After the events already queued (the paint that puts the frame on the
  // screen): the heap that start-up used and freed goes back to the system.
  const char* path = std::getenv("VANTREL_STARTUP_REPORT");
  QTimer::singleShot(0, [path] {
    malloc_trim(0);
    if (path && *path) WriteReport(path);
  });
}

}  // namespace vt::app
