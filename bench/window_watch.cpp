// vt_window_watch PROGRAM [ARG...]: starts the program and tells, from
// outside it, when its first top-level window is mapped on the X display:
// the way any program's time-to-window is read, whether or not it reports
// on itself. Prints "PID MS" (the child's process id, and the milliseconds
// from the fork to the map) and leaves the program running; "PID -1" when no
// window was mapped within 30 seconds or the program ended first. With
// --epoch the time is the wall clock at the map instead, in milliseconds
// since the epoch (for a script that took its own start time).
#include <X11/Xlib.h>
#include <X11/Xatom.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <string>

namespace {

double NowMs() {
  timespec t{};
  clock_gettime(CLOCK_MONOTONIC, &t);
  return t.tv_sec * 1000.0 + t.tv_nsec / 1e6;
}

// The process that owns the window, from _NET_WM_PID; 0 when it is not set.
long WindowPid(Display* d, Window w) {
  static const Atom pidAtom = XInternAtom(d, "_NET_WM_PID", False);
  Atom type = None;
  int format = 0;
  unsigned long count = 0, after = 0;
  unsigned char* data = nullptr;
  long pid = 0;
  if (XGetWindowProperty(d, w, pidAtom, 0, 1, False, XA_CARDINAL, &type, &format, &count, &after, &data) ==
          Success &&
      data && format == 32 && count == 1)
    pid = *reinterpret_cast<long*>(data);
  if (data) XFree(data);
  return pid;
}

}  // namespace

int main(int argc, char* argv[]) {
  const bool epoch = argc > 1 && std::string(argv[1]) == "--epoch";
  if (epoch) {
    --argc;
    ++argv;
  }
  if (argc < 2) {
    std::fprintf(stderr, "usage: vt_window_watch [--epoch] PROGRAM [ARG...]\n");
    return 2;
  }
  Display* d = XOpenDisplay(nullptr);
  if (!d) {
    std::fprintf(stderr, "vt_window_watch: no display\n");
    return 2;
  }
  // Map events of the root's children: the top-level windows (no window
  // manager reparents them under Xvfb).
  XSelectInput(d, DefaultRootWindow(d), SubstructureNotifyMask);
  XSync(d, False);
  const double start = NowMs();
  const pid_t child = fork();
  if (child == 0) {
    setsid();  // the program outlives the watcher
    execvp(argv[1], argv + 1);
    _exit(127);
  }
  double mapped = -1;
  while (mapped < 0 && NowMs() - start < 30000) {
    if (waitpid(child, nullptr, WNOHANG) == child) break;
    if (!XPending(d)) {
      pollfd p{ConnectionNumber(d), POLLIN, 0};
      poll(&p, 1, 20);
      continue;
    }
    XEvent e;
    XNextEvent(d, &e);
    if (e.type != MapNotify || e.xmap.override_redirect) continue;
    // Qt sets the owner before it maps the window.
    if (WindowPid(d, e.xmap.window) == child) mapped = NowMs() - start;
  }
  if (epoch && mapped >= 0) {
    timespec wall{};
    clock_gettime(CLOCK_REALTIME, &wall);
    mapped = wall.tv_sec * 1000.0 + wall.tv_nsec / 1e6;
  }
  std::printf("%d %.0f\n", static_cast<int>(child), mapped);
  std::fflush(stdout);
  XCloseDisplay(d);
  return 0;
}
