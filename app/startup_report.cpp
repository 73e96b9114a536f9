#include "app/startup_report.h"

#include <malloc.h>
#include <time.h>
#include <unistd.h>

#include <QTimer>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace vt::app {

namespace {

// A "VmRSS:" or "VmHWM:" line of /proc/self/status, in KiB; 0 when missing.
long StatusField(const std::string& status, const char* key) {
  const size_t at = status.find(key);
  return at == std::string::npos ? 0 : std::strtol(status.c_str() + at + std::char_traits<char>::length(key), nullptr, 10);
}

std::string ReadAll(const char* path) {
  std::ifstream in(path);
  return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

// One line: the moment and the memory now, written to the report later.
std::string ReportLine() {
  const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(
                      std::chrono::system_clock::now().time_since_epoch())
                      .count();
  const std::string status = ReadAll("/proc/self/status");
  return std::to_string(ms) + ' ' + std::to_string(StatusField(status, "VmRSS:")) + ' ' +
         std::to_string(StatusField(status, "VmHWM:")) + '\n';
}

struct Mark {
  const char* what;
  double ms;
  long rssKib, heapKib;
};

std::vector<Mark>* Marks() {
  static std::vector<Mark>* marks = std::getenv("VANTREL_STARTUP_MARKS") ? new std::vector<Mark> : nullptr;
  return marks;
}

// Milliseconds since the process was made: its start in clock ticks after
// boot (field 22 of /proc/self/stat) against the boot clock now.
double SinceProcessStart() {
  const std::string stat = ReadAll("/proc/self/stat");
  const size_t close = stat.rfind(')');
  if (close == std::string::npos) return 0;
  const char* p = stat.c_str() + close + 2;
  for (int field = 3; field < 22 && *p; ++field) p = std::strchr(p, ' ') ? std::strchr(p, ' ') + 1 : "";
  const double startMs = std::strtod(p, nullptr) * 1000.0 / static_cast<double>(sysconf(_SC_CLK_TCK));
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  return now.tv_sec * 1000.0 + now.tv_nsec / 1e6 - startMs;
}

void PrintMarks() {
  std::vector<Mark>* marks = Marks();
  if (!marks) return;
  std::fprintf(stderr, "%-24s %8s %8s %8s\n", "start-up mark", "ms", "RSS MiB", "heap MiB");
  for (const Mark& m : *marks)
    std::fprintf(stderr, "%-24s %8.0f %8.1f %8.1f\n", m.what, m.ms, m.rssKib / 1024.0, m.heapKib / 1024.0);
}

}  // namespace

void MarkStartup(const char* what) {
  std::vector<Mark>* marks = Marks();
  if (!marks) return;
  const struct mallinfo2 heap = mallinfo2();
  const std::string status = ReadAll("/proc/self/status");
  marks->push_back({what, SinceProcessStart(), StatusField(status, "VmRSS:"),
                    static_cast<long>((heap.uordblks + heap.hblkhd) / 1024)});
}

namespace {
bool g_painted = false;
}  // namespace

void NoteFirstPaint() {
  if (g_painted) return;
  g_painted = true;
  MarkStartup("first frame drawn");
}

void NoteFrameShown() {
  static bool done = false;
  if (done || !g_painted) return;
  done = true;
  MarkStartup("first frame on screen");
  // The report tells this moment; it is written after the events already
  // queued, once the heap that start-up used and freed is back with the system.
  const char* path = std::getenv("VANTREL_STARTUP_REPORT");
  const std::string line = path && *path ? ReportLine() : std::string();
  QTimer::singleShot(0, [path, line] {
    malloc_trim(0);
    MarkStartup("heap trimmed");
    if (!line.empty()) std::ofstream(path, std::ios::app) << line;
    PrintMarks();
  });
}

}  // namespace vt::app
