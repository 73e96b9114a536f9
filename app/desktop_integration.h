// The document type with the desktop, the freedesktop way: a MIME type for
// *.vtd with its icon, and a desktop entry that opens such files with this
// program. `cmake --install` puts them in the installation's share folder;
// Help > Register File Type writes them for the current user (under
// XDG_DATA_HOME, by default ~/.local/share), then asks the desktop's tools to
// refresh their caches. Nothing is written at start.
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

// Help > Register File Type: writes the files for the current user, over
// any earlier ones. Returns the files written.
QStringList RegisterDocumentType();

}  // namespace vt::app
