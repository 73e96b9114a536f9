#include "app/desktop_integration.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include "document/globals.h"

namespace vt::app {

namespace {

const char* const kDesktopEntry = "applications/vantrel.desktop";
const char* const kMimePackage = "mime/packages/vantrel.xml";
const char* const kAppIcon = "icons/hicolor/scalable/apps/vantrel.svg";
const char* const kMimeIcon = "icons/hicolor/scalable/mimetypes/application-x-vantrel-document.svg";

QString Program(const char* relative) { return QString::fromStdString(ProgramPath(relative)); }

bool WriteFile(const QString& path, const QByteArray& bytes) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  QFile f(path);
  if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
  return f.write(bytes) == bytes.size();
}

QByteArray ReadFile(const QString& path) {
  QFile f(path);
  return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// The desktop entry's Exec line with the program's own path, quoted as the
// desktop entry format asks when it holds blanks or quotes; TryExec names the
// same file.
QByteArray WithExecutable(const QByteArray& entry, const QString& executable) {
  QString exe = executable;
  if (exe.contains(' ') || exe.contains('"') || exe.contains('\\')) {
    exe.replace("\\", "\\\\").replace("\"", "\\\"");
    exe = "\"" + exe + "\"";
  }
  QStringList lines = QString::fromUtf8(entry).split('\n');
  for (QString& line : lines)
    if (line.startsWith("Exec=")) line = "Exec=" + exe + " %f";
    else if (line.startsWith("TryExec=")) line = "TryExec=" + executable;
  return lines.join('\n').toUtf8();
}

}  // namespace

QString UserDataFolder() {
  const QString env = qEnvironmentVariable("XDG_DATA_HOME");
  if (!env.isEmpty() && QDir::isAbsolutePath(env)) return env;
  return QDir::homePath() + "/.local/share";
}

QStringList DesktopDataFolders() {
  QStringList folders{UserDataFolder()};
  QString dirs = qEnvironmentVariable("XDG_DATA_DIRS");
  if (dirs.isEmpty()) dirs = "/usr/local/share:/usr/share";
  for (const QString& d : dirs.split(':', Qt::SkipEmptyParts))
    if (QDir::isAbsolutePath(d)) folders << d;
  return folders;
}

bool DocumentTypeRegistered() {
  for (const QString& folder : DesktopDataFolders())
    if (QFileInfo::exists(folder + "/" + kMimePackage) && QFileInfo::exists(folder + "/" + kDesktopEntry))
      return true;
  return false;
}

QStringList WriteDesktopFiles(const QString& dataFolder, const QString& executable, const QString& iconFolder) {
  QStringList written;
  const QByteArray entry = ReadFile(Program("desktop/vantrel.desktop"));
  const QByteArray mime = ReadFile(Program("desktop/vantrel.xml"));
  if (entry.isEmpty() || mime.isEmpty()) return written;
  const struct {
    const char* target;
    QByteArray bytes;
  } files[] = {
      {kMimePackage, mime},
      {kDesktopEntry, WithExecutable(entry, executable)},
      {kAppIcon, ReadFile(iconFolder + "/vantrel.svg")},
      {kMimeIcon, ReadFile(iconFolder + "/application-x-vantrel-document.svg")},
  };
  for (const auto& f : files) {
    if (f.bytes.isEmpty()) continue;
    const QString path = dataFolder + "/" + f.target;
    if (WriteFile(path, f.bytes)) written << path;
  }
  return written;
}

QStringList RegisterDocumentType() {
  const QString folder = UserDataFolder();
  const QStringList written =
      WriteDesktopFiles(folder, QCoreApplication::applicationFilePath(), Program("icons"));
  if (written.isEmpty()) return written;
  // The caches of the desktop; without the tools the files still serve once
  // the desktop rescans its folders.
  const QString mimeTool = QStandardPaths::findExecutable("update-mime-database");
  if (!mimeTool.isEmpty()) QProcess::startDetached(mimeTool, {folder + "/mime"});
  const QString desktopTool = QStandardPaths::findExecutable("update-desktop-database");
  if (!desktopTool.isEmpty()) QProcess::startDetached(desktopTool, {folder + "/applications"});
  return written;
}

}  // namespace vt::app
