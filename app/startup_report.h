// The end of start-up, at the first frame the canvas paints: once the event
// loop has shown that frame, the heap that start-up freed is handed back to
// the system, and when VANTREL_STARTUP_REPORT names a file (bench/startup.sh)
// one line is appended to it: the wall clock in milliseconds since the
// epoch, then VmRSS and VmHWM of the process in KiB.
#pragma once

namespace vt::app {

void NoteFirstPaint();

}  // namespace vt::app
