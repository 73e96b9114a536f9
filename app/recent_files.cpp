#include "app/recent_files.h"

#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QSettings>

#include <memory>
#include <string>

#include "app/frmF1.h"
#include "document/frame_commands.h"
#include "document/host.h"

namespace vt::app {

namespace {

constexpr int kKept = 8;
const char* const kKey = "recentFiles";

QSettings Settings() { return QSettings("Vantrel", "Vantrel"); }

void Remember(const QString& path) {
  QStringList list = RecentFiles();
  list.removeAll(path);
  list.prepend(path);
  while (list.size() > kKept) list.removeLast();
  Settings().setValue(kKey, list);
}

void Forget(const QString& path) {
  QStringList list = RecentFiles();
  list.removeAll(path);
  Settings().setValue(kKey, list);
}

void Fill(QMenu* menu) {
  menu->clear();
  const QStringList list = RecentFiles();
  int n = 0;
  for (const QString& path : list) {
    ++n;
    QAction* a = menu->addAction(QString("&%1 %2").arg(n).arg(QFileInfo(path).fileName()));
    a->setObjectName(QString("mnuRecent%1").arg(n));
    a->setToolTip(path);
    a->setStatusTip(path);
    QObject::connect(a, &QAction::triggered, menu, [menu, path] {
      if (!QFileInfo(path).isFile()) {
        host().MsgBox("The file " + path.toStdString() + " cannot be found.", "Recent Files", MsgButtons::OK,
                      MsgIcon::Exclamation);
        Forget(path);
        Fill(menu);
        return;
      }
      if (!ConfirmDiscardChanges()) return;
      if (!OpenDocumentPath(path.toStdString()))
        host().MsgBox("The file " + path.toStdString() + " cannot be read.", "Recent Files", MsgButtons::OK,
                      MsgIcon::Exclamation);
      RefreshControls();
    });
  }
  if (list.isEmpty()) menu->addAction("(none)")->setEnabled(false);
  menu->setEnabled(true);
}

}  // namespace

QStringList RecentFiles() { return Settings().value(kKey).toStringList(); }

void InstallRecentFiles(frmF1* window) {
  QMenu* file = window->findChild<QMenu*>("File");
  QAction* exit = window->findChild<QAction*>("mnuFileExit");
  if (!file) return;
  auto* menu = new QMenu("Recent Files", window);
  menu->setObjectName("mnuFileRecent");
  // Above the separator that sets Exit apart.
  QAction* before = exit;
  const QList<QAction*> actions = file->actions();
  const qsizetype at = actions.indexOf(exit);
  if (at > 0 && actions[at - 1]->isSeparator()) before = actions[at - 1];
  file->insertMenu(before, menu);
  Fill(menu);
  QPointer<QMenu> guard(menu);
  auto seen = std::make_shared<std::string>();
  auto previous = Hooks.refreshControls;
  Hooks.refreshControls = [previous, guard, seen] {
    if (previous) previous();
    if (!guard || CurrentFilePath == *seen) return;
    *seen = CurrentFilePath;
    if (seen->empty()) return;
    Remember(QFileInfo(QString::fromStdString(*seen)).absoluteFilePath());
    Fill(guard);
  };
}

}  // namespace vt::app
