// The end of start-up, once the canvas's first frame is on the screen (the
// first swap of a painted frame while the main window is exposed): the heap that
// start-up freed is handed back to the system, and when
// VANTREL_STARTUP_REPORT names a file (bench/startup.sh) one line is appended
// to it: the wall clock in milliseconds since the epoch, then VmRSS and
// VmHWM of the process in KiB, all at that moment.
//
// The marks on the way there: with VANTREL_STARTUP_MARKS set, the first frame
// also prints one line per mark to stderr, the milliseconds since the process
// was made (to the kernel's 10 ms tick), the resident memory and the heap in
// use, so that a slow or heavy step shows where it is.
#pragma once

namespace vt::app {

// Notes the moment and the memory under a name (a literal) when marks are asked for.
void MarkStartup(const char* what);

// The canvas painted a frame.
void NoteFirstPaint();
// The window showed what the canvas painted.
void NoteFrameShown();

}  // namespace vt::app
