// The document type with the desktop, the freedesktop way: a MIME type for
// *.vtd with its icon, and a desktop entry that opens such files with this
// program. `cmake --install` puts them in the installation's share folder; at
// start the program writes them for the current user when no data folder of
// the desktop has them yet (under XDG_DATA_HOME, by default
// ~/.local/share), then asks the desktop's tools to refresh their caches.
// Results are not checked: a desktop without these tools still starts the
// program.
#pragma once

#include <QString>
#include <QStringList>

namespace vt::app {

constexpr const char* kMimeType = "application/x-vantrel-document";

// The user's data folder (XDG_DATA_HOME, or ~/.local/share).
QString UserDataFolder();
// The data folders the desktop reads: the user's first, then XDG_DATA_DIRS.
QStringList DesktopDataFolders();
// True when some data folder already knows the document type.
bool DocumentTypeRegistered();

// Writes the MIME package, the desktop entry (running `executable`) and the
// two icons under `dataFolder`, taking the icons from `iconFolder`. Returns
// the files written.
QStringList WriteDesktopFiles(const QString& dataFolder, const QString& executable, const QString& iconFolder);

// Start-up step: registers the document type for the current user when it
// is missing.
void RegisterDocumentType();

}  // namespace vt::app
