// The installation of the curve windows: frmF5 as the curve dialog of the
// main window, and the results panel beside the canvas.
#include "graphs/dialogs/curve_forms.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPointer>

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
  // The curves write the panel while the scene is compiled; the panel is told
  // when the text changed and takes it once the event that drew is over.
  static QDockWidget* listening = nullptr;
  listening = dock;
  QPointer<QDockWidget> guard(dock);
  CurveResults.SetListener([guard, text](const std::string& now) {
    if (!guard) return;
    QMetaObject::invokeMethod(
        guard.data(),
        [guard, text, shown = QString::fromStdString(now)] {
          if (!guard) return;
          if (shown != text->toPlainText()) text->setPlainText(shown);
          if (guard->isHidden() != shown.isEmpty()) guard->setVisible(!shown.isEmpty());
        },
        Qt::QueuedConnection);
  });
  QObject::connect(dock, &QObject::destroyed, [dock] {
    if (listening != dock) return;
    listening = nullptr;
    CurveResults.SetListener(nullptr);
  });
}

}  // namespace vt::app
