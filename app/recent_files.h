// File › Recent Files: the documents last opened or saved, newest first,
// kept per user in the platform's settings place (QSettings).
#pragma once

#include <QStringList>

namespace vt::app {

class frmF1;

// Adds the submenu to the File menu and follows the current document's path
// from then on (after every command the window refreshes its controls).
void InstallRecentFiles(frmF1* window);

// The list as kept, newest first.
QStringList RecentFiles();

}  // namespace vt::app
