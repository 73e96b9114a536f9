// The installation of the curve windows: frmF5 as the curve dialog of the
// main window, and the results panel beside the canvas.
#include "graphs/dialogs/curve_forms.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QTimer>

#include "graphs/dialogs/form_opener.h"
#include "graphs/curve_analysis.h"

namespace vt::app {

void InstallCurveForms(QMainWindow* mainWindow) {
  InstallSingleFormOpener<frmF5>(mainWindow, &SetCurveFormOpener);

  // The results panel, beside the canvas while there is something in it.
  auto* dock = new QDockWidget(QObject::tr("Results"), mainWindow);
  dock->setObjectName("dockResults");
  dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
  auto* text = new QPlainTextEdit(dock);
  text->setObjectName("txtResults");
  text->setReadOnly(true);
  text->setLineWrapMode(QPlainTextEdit::NoWrap);
  text->setMinimumWidth(240);
  dock->setWidget(text);
  mainWindow->addDockWidget(Qt::RightDockWidgetArea, dock);
  dock->hide();
  // The curves write the panel while the scene is built; it is read back a
  // little later, whatever command built the scene.
  auto* poll = new QTimer(dock);
  poll->setInterval(150);
  QObject::connect(poll, &QTimer::timeout, dock, [dock, text] {
    const QString now = QString::fromStdString(CurveResults.Text());
    if (now != text->toPlainText()) text->setPlainText(now);
    if (dock->isHidden() != now.isEmpty()) dock->setVisible(!now.isEmpty());
  });
  poll->start();
}

}  // namespace vt::app
