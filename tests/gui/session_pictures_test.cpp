// A teacher prepares a worksheet in the real window: the start document
// exported as SVG, PNG at twice the canvas and PDF; the help's sections in
// the program's own help window; the saved lesson found again under Recent
// Files after New; Greek text on the clipboard for other programs.
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QInputDialog>
#include <QMenu>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QXmlStreamReader>
#include <QtTest>
#include <memory>

#include "app/frmF1.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "gui_fixture.h"

using namespace vt;
using vt::app::frmF1;

class SessionPicturesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    xdg_ = guitest::IsolateDesktopFolders();
    qputenv("XDG_CONFIG_HOME", (xdg_->path() + "/config").toUtf8());  // the recent files
  }
  void init() { QVERIFY(guitest::OpenEmptyWindow(window_)); }
  void cleanup() {
    watcher_.Stop();
    delete window_;
    window_ = nullptr;
  }

  void aWorksheetFromTheStartDocument();

 private:
  // Runs a command whose file dialog is answered with `path`.
  void RunWithFile(const char* command, const QString& path) {
    watcher_.file = path;
    watcher_.Start(this);
    window_->RunCommand(command);
    watcher_.Stop();
  }
  frmF1* window_ = nullptr;
  guitest::MessageWatcher watcher_;
  std::unique_ptr<QTemporaryDir> xdg_;
  QTemporaryDir temp_;
};

void SessionPicturesTest::aWorksheetFromTheStartDocument() {
  QVERIFY(OpenDocumentPath(ProgramPath("Tutorials/T000.vtd")));
  const QString dir = temp_.path();

  // SVG: the figure as paths, the labels as text; the status bar says where.
  RunWithFile("mnuFileExportPicture", dir + "/lesson.svg");
  QFile svg(dir + "/lesson.svg");
  QVERIFY(svg.open(QIODevice::ReadOnly));
  QXmlStreamReader xml(&svg);
  int paths = 0;
  QStringList texts;
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    if (xml.name() == QLatin1String("path")) ++paths;
    if (xml.name() == QLatin1String("text")) texts << xml.readElementText().trimmed();
  }
  QVERIFY(!xml.hasError());
  QVERIFY2(paths > 20, qPrintable(QString::number(paths)));
  QVERIFY2(texts.contains("ABC") && texts.contains("K = 1.50"), qPrintable(texts.join("|")));
  QVERIFY(window_->statusBar()->currentMessage().contains("lesson.svg"));
  QVERIFY(watcher_.Take().isEmpty());

  // PNG: the size question offers 1x to 4x; 2x is the first choice.
  guitest::WhenModal<QInputDialog>(this, [](QInputDialog* d) { d->accept(); });
  RunWithFile("mnuFileExportPicture", dir + "/lesson.png");
  const QImage png(dir + "/lesson.png");
  QCOMPARE(png.size(), QSize(CanvasWidth * 2, CanvasHeight * 2));

  // PDF.
  RunWithFile("mnuFileExportPicture", dir + "/lesson.pdf");
  QFile pdf(dir + "/lesson.pdf");
  QVERIFY(pdf.open(QIODevice::ReadOnly));
  QVERIFY(pdf.read(5) == "%PDF-");

  // Help: the sections of the menu open in the program's help window.
  window_->RunCommand("mnuHelpCus");
  auto* help = window_->findChild<QWidget*>("frmHelp");
  QVERIFY(help);
  QTRY_VERIFY(help->isVisible());
  auto* page = help->findChild<QTextBrowser*>("HelpText");
  QCOMPARE(page->source().fragment(), QString("support"));
  QVERIFY(page->toPlainText().contains("When something goes wrong"));
  window_->RunCommand("mnuHelpCon");
  QCOMPARE(window_->findChildren<QTextBrowser*>("HelpText").size(), 1);  // one window, reused
  QVERIFY(page->source().fragment().isEmpty());
  help->close();

  // Recent Files: the saved lesson comes back after New.
  const QString lesson = QFileInfo(dir + "/lesson.vtd").absoluteFilePath();
  RunWithFile("mnuFileSaveAs", lesson);
  QVERIFY(QFileInfo::exists(lesson));
  auto* recent = window_->findChild<QMenu*>("mnuFileRecent");
  QVERIFY(recent);
  QTRY_COMPARE(recent->actions().value(0)->toolTip(), lesson);
  window_->RunCommand("mnuFileNew");
  QVERIFY(CurrentFilePath.empty() && Doc.Points.count() == 0);
  recent->actions().first()->trigger();
  QCOMPARE(QString::fromStdString(CurrentFilePath), lesson);
  QVERIFY(Doc.Points.count() > 0);

  // The clipboard carries Unicode: other programs read the Greek letters.
  host().SetClipboardText("\xce\xb1\xce\xb2 = 90\xc2\xb0");
  QCOMPARE(QApplication::clipboard()->text(), QString::fromUtf8("\xce\xb1\xce\xb2 = 90\xc2\xb0"));
  QApplication::clipboard()->setText(QString::fromUtf8("\xce\xb3"));
  QCOMPARE(host().ClipboardText(), std::string("\xce\xb3"));
}

VT_GUI_TEST_MAIN(SessionPicturesTest)
#include "session_pictures_test.moc"
