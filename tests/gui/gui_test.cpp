// The main window under a real display: start-up on the start document, the
// menus and toolbars built from the tables, the mirrors of the toggles and of
// undo, dialogs of New and Open, the canvas's mouse input, the clipboard,
// printing, help and the desktop registration.
#include <GL/gl.h>
#include <GL/glu.h>

#include <QClipboard>
#include <QDesktopServices>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QTextBrowser>
#include <QToolBar>
#include <QToolButton>

#include "app/svg_icon.h"
#include "document/command_table.h"
#include "document/undo.h"
#include "gui_fixture.h"
#include "persist/docio.h"
#include "render/view_state.h"
#include "tools/canvas_input.h"

using namespace vt;
using vt::app::Canvas;
using vt::app::frmF1;

namespace {

// A tool that keeps its calls with the GL matrices of the moment.
struct Call {
  QString op;
  float X, Y;
  Position scene, far, near;
  GLdouble model[16], proj[16];
  GLint viewport[4];
};

class RecordingTool : public CCommand {
 public:
  explicit RecordingTool(std::vector<Call>* log) : log_(log) {}
  void RButtonDown(Position&, Position& s, float& X, float& Y, Position&, Position&) override { Add("R", s, X, Y); }
  void MouseMove(Position&, Position& s, float& X, float& Y, Position&, Position&) override { Add("M", s, X, Y); }
  void LButtonDown(Position&, Position& s, float& X, float& Y, Position& f, Position& n) override {
    Add("L", s, X, Y, f, n);
  }

 private:
  void Add(const char* op, const Position& s, float X, float Y, const Position& f = {}, const Position& n = {}) {
    Call c{op, X, Y, s, f, n, {}, {}, {}};
    glGetDoublev(GL_MODELVIEW_MATRIX, c.model);
    glGetDoublev(GL_PROJECTION_MATRIX, c.proj);
    glGetIntegerv(GL_VIEWPORT, c.viewport);
    log_->push_back(c);
  }
  std::vector<Call>* log_;
};

int RecordsOf(const std::string& text, const std::string& tag) {
  int n = 0;
  for (size_t at = text.find(";;" + tag); at != std::string::npos; at = text.find(";;" + tag, at + 2)) ++n;
  return n;
}

}  // namespace

class GuiTest : public QObject {
  Q_OBJECT

 public slots:
  void openUrl(const QUrl& url) { openedUrls_ << url; }

 private slots:
  void theDocumentOnTheCommandLineIsShownInsteadOfTheStartDocument();
  void copyAsBitmapPutsTheCanvasOnTheClipboard();
  void printingToPdf();
  void helpAboutAndExit();
  void initTestCase();
  void init();
  void cleanup();
  void cleanupTestCase();

  void startsOnTheStartDocumentAndRegistersTheFileTypeWhenAsked();
  void everyMenuItemAndToolbarButtonIsWiredOrDeliberatelyDisabled();
  void togglesFlipTheirThreeMirrors();
  void svgDrawingsRenderAsDrawn();
  void newOnAnEmptyDocumentAsksNothingAndOtherwiseAsksToSave();
  void saveUndoEditAndCloseAsksAndTheTitleMarksChanges();
  void openOfADamagedFileKeepsTheOldDocument();
  void aClickReachesTheToolWithTheScenePointUnderThePixel();
  void copyCutAndPasteUseTheSystemClipboard();
  void withoutOpenGLTheProgramStartsAndSaysSo();
  void theProgramStartsOnTheContextItsThreadMade();

 private:
  // Runs `act` on the next modal dialog once it is open.
  void WhenModal(std::function<void(QWidget*)> act) { guitest::WhenModal<QWidget>(this, std::move(act)); }
  QWidget* ButtonWidget(int toolbar, int index);
  void RegisterTools();

  std::unique_ptr<QTemporaryDir> xdg_;
  std::unique_ptr<QTemporaryDir> temp_;
  frmF1* window_ = nullptr;
  QList<QUrl> openedUrls_;
  std::vector<Call> calls_;
  std::string startText_;
};

void GuiTest::initTestCase() {
  xdg_ = guitest::IsolateDesktopFolders();  // the desktop registration
  // No browser: the desktop's handler is this test.
  QDesktopServices::setUrlHandler("file", this, "openUrl");
  QDesktopServices::setUrlHandler("https", this, "openUrl");
  LocateSystemFolder();
  QVERIFY(ReadDocumentFile(ProgramPath("Tutorials/T000.vtd"), startText_));
  QVERIFY(RecordsOf(startText_, "PT") > 0);
}

void GuiTest::cleanupTestCase() {
  QDesktopServices::unsetUrlHandler("file");
  QDesktopServices::unsetUrlHandler("https");
}

void GuiTest::init() {
  temp_ = std::make_unique<QTemporaryDir>();
  openedUrls_.clear();
  calls_.clear();
  window_ = new frmF1();
  window_->show();
  QVERIFY(QTest::qWaitForWindowExposed(window_));
  QTRY_VERIFY(window_->started());
}

void GuiTest::cleanup() {
  for (ToolSlot s : {ToolSlot::Point, ToolSlot::Line, ToolSlot::Circle, ToolSlot::Text, ToolSlot::Select})
    RegisterTool(s, {});
  delete window_;
  window_ = nullptr;
  // Spies of a test must not outlive it; the next window wires its own.
  ClearHandlers();
}

QWidget* GuiTest::ButtonWidget(int toolbar, int index) {
  QAction* a = window_->toolbarButton(toolbar, index);
  return a ? window_->toolbar(toolbar)->widgetForAction(a) : nullptr;
}

void GuiTest::RegisterTools() {
  auto factory = [this] { return std::make_unique<RecordingTool>(&calls_); };
  for (ToolSlot s : {ToolSlot::Point, ToolSlot::Line, ToolSlot::Circle, ToolSlot::Text, ToolSlot::Select})
    RegisterTool(s, factory);
  window_->RefreshControls();
}

// ---- start -----------------------------------------------------------------------------

void GuiTest::startsOnTheStartDocumentAndRegistersTheFileTypeWhenAsked() {
  QCOMPARE(Doc.Points.count(), RecordsOf(startText_, "PT"));
  QVERIFY(!window_->isWindowModified());
  // The view follows the canvas's shape.
  const Canvas* canvas = window_->picDraw();
  QCOMPARE(View.ScreenWidth, static_cast<float>(canvas->DeviceWidth()));
  QVERIFY(std::fabs(View.VolWidth / View.VolHeight - View.ScreenWidth / View.ScreenHeight) < 1e-4);
  QVERIFY(window_->picDraw()->isValid());
  QVERIFY(QTest::qWaitFor([&] { return window_->picDraw()->paints() > 0; }, 5000));

  // Nothing in the user's home until Help > Register File Type.
  const QString data = xdg_->path() + "/data/";
  QFile entry(data + "applications/vantrel.desktop");
  QVERIFY(!entry.exists());
  QString said;
  WhenModal([&](QWidget* w) {
    said = static_cast<QMessageBox*>(w)->text();
    static_cast<QMessageBox*>(w)->accept();
  });
  window_->RunCommand("mnuHelpRegisterType");
  QVERIFY2(said.contains(xdg_->path() + "/data"), qPrintable(said));
  QVERIFY(entry.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(entry.readAll());
  QVERIFY(text.contains("Exec=" + QCoreApplication::applicationFilePath() + " %f"));
  QVERIFY(text.contains("MimeType=application/x-vantrel-document;"));
  QVERIFY(QFile::exists(data + "mime/packages/vantrel.xml"));
  QVERIFY(QFile::exists(data + "icons/hicolor/scalable/apps/vantrel.svg"));
  QVERIFY(QFile::exists(data + "icons/hicolor/scalable/mimetypes/application-x-vantrel-document.svg"));
}

// ---- menus and toolbars -------------------------------------------------------------------

// Commands of the menus and toolbars that nothing runs yet: their items stay,
// disabled. Wiring one means taking it off this list.
const QStringList kDeliberatelyDisabled = {
    "mnuDraw2XX",                                             // the centroid of a quadrilateral
    "mnuFunEdit", "mnuFunCut", "mnuFunCopy", "mnuFunDelete",  // the context menu of the function list
};

void GuiTest::everyMenuItemAndToolbarButtonIsWiredOrDeliberatelyDisabled() {
  // The window's own actions, as the user finds them: the menu bar with its
  // submenus, the toolbars and their drop-downs, and the context menus.
  QList<QAction*> actions;
  std::function<void(const QList<QAction*>&)> walk = [&](const QList<QAction*>& list) {
    for (QAction* a : list) {
      if (a->isSeparator()) continue;
      // Recent Files lists documents, not commands.
      if (a->menu() && a->menu()->objectName() == "mnuFileRecent") continue;
      if (a->menu()) walk(a->menu()->actions());
      else actions << a;
    }
  };
  walk(window_->menuBar()->actions());
  for (int tb : {1, 2}) {
    QToolBar* bar = window_->toolbar(tb);
    walk(bar->actions());
    for (QAction* a : bar->actions())
      if (auto* b = qobject_cast<QToolButton*>(bar->widgetForAction(a)); b && b->menu()) walk(b->menu()->actions());
  }
  for (const MenuItemDef& m : MenuTable())
    if (m.role == MenuRole::Popup) walk(window_->menuNamed(m.name)->actions());
  QVERIFY(actions.size() > 150);

  // Each is wired (a handler is registered for it) or listed above.
  QStringList unwired, listedButWired;
  QList<QAction*> wired;
  for (QAction* a : actions) {
    const QString h = a->property("handler").toString();
    const bool registered = !h.isEmpty() && HandlerRegistered(h.toStdString());
    if (registered) wired << a;
    if (kDeliberatelyDisabled.contains(h)) {
      if (registered) listedButWired << h;
      QVERIFY2(!a->isEnabled(), qPrintable(h + " is listed as disabled but can be chosen"));
    } else if (!registered) {
      unwired << a->objectName() + " \"" + a->text() + "\" -> " + (h.isEmpty() ? "no handler" : h);
    }
  }
  QVERIFY2(unwired.isEmpty(), qPrintable("unwired: " + unwired.join("; ")));
  QVERIFY2(listedButWired.isEmpty(), qPrintable("wired now, take off the list: " + listedButWired.join(", ")));

  // A wired item runs its own handler: each replaced by a spy, every action
  // triggered, and every command name run.
  QStringList ran;
  for (QAction* a : wired) {
    const QString h = a->property("handler").toString();
    RegisterHandler(h.toStdString(), [&ran, h] { ran << h; });
  }
  window_->RefreshControls();
  for (QAction* a : wired) {
    ran.clear();
    a->trigger();
    QCOMPARE(ran, QStringList{a->property("handler").toString()});
  }
  for (const CommandNameDef& c : CommandTable()) {
    ran.clear();
    QVERIFY(DoCommand(c.command));
    QCOMPARE(ran, QStringList{c.handler});
  }
  // A real click on a button.
  ran.clear();
  QTest::mouseClick(ButtonWidget(2, 31), Qt::LeftButton);
  QCOMPARE(ran, QStringList{"mnuViewISO"});
  ran.clear();
  QVERIFY(!DoCommand("Draw-Parallel Line"));
  QVERIFY(ran.isEmpty());
}

void GuiTest::togglesFlipTheirThreeMirrors() {
  const struct {
    const char* menu;
    const char* twin;
    int button;
    bool* flag;
    const char* command;
  } toggles[] = {{"mnuViewAxis", "mnuGraphShowAxis", 23, &ShowAxis, "View-Show/Hide Axis"},
                 {"mnuViewGrid", "mnuGraphShowGrid", 24, &ShowGrid, "View-Show/Hide Grid"},
                 {"mnuViewSnap", "mnuGraphSnap", 25, &SnapToGrid, "View-Snap"},
                 {"mnuViewCoordLines", "mnuGraphShowCoordLines", 26, &ShowCoordLines, "View-Coordinate Lines"}};
  for (const auto& t : toggles) {
    auto mirrorsAre = [&](bool on) {
      return *t.flag == on && window_->menuAction(t.menu)->isChecked() == on &&
             window_->menuAction(t.twin)->isChecked() == on && window_->toolbarButton(1, t.button)->isChecked() == on;
    };
    const bool before = *t.flag;
    QVERIFY2(mirrorsAre(before), t.menu);
    window_->menuAction(t.menu)->trigger();  // the main menu
    QVERIFY2(mirrorsAre(!before), t.menu);
    QTest::mouseClick(ButtonWidget(1, t.button), Qt::LeftButton);  // the toolbar
    QVERIFY2(mirrorsAre(before), t.menu);
    window_->menuAction(t.twin)->trigger();  // the context menu
    QVERIFY2(mirrorsAre(!before), t.menu);
    window_->RunCommand(CommandHandler(t.command));  // a command name
    QVERIFY2(mirrorsAre(before), t.menu);
  }
}

void GuiTest::svgDrawingsRenderAsDrawn() {
  using vt::app::RenderSvg;
  // Not a drawing, or broken: a null picture, and the icon falls back.
  QVERIFY(RenderSvg("<html></html>", QSize(8, 8)).isNull());
  QVERIFY(RenderSvg("<svg viewBox=\"0 0 10 10\"><rect", QSize(8, 8)).isNull());
  QVERIFY(vt::app::LoadSvgIcon(temp_->filePath("missing.svg")).isNull());
  // Every shipped toolbar picture draws something.
  QStringList names;
  for (const ToolbarButtonDef& b : ToolbarTable()) names << b.icon;
  for (const DropDownDef& d : DropDownTable()) names << d.icon;
  names << "vantrel" << "application-x-vantrel-document";
  for (const QString& name : names) {
    QFile f(QString::fromStdString(ProgramPath("icons/" + name.toStdString() + ".svg")));
    QVERIFY2(f.open(QIODevice::ReadOnly), qPrintable(name));
    const QImage icon = RenderSvg(f.readAll(), QSize(24, 24));
    QVERIFY2(!icon.isNull(), qPrintable(name));
    int opaque = 0;
    for (int y = 0; y < 24; ++y)
      for (int x = 0; x < 24; ++x) opaque += qAlpha(icon.pixel(x, y)) > 128;
    QVERIFY2(opaque > 20, qPrintable(name));
  }
}

// ---- files --------------------------------------------------------------------------------

void GuiTest::newOnAnEmptyDocumentAsksNothingAndOtherwiseAsksToSave() {
  // The start document unchanged: New asks nothing (a box would be answered
  // and noted here).
  guitest::MessageWatcher boxes;
  boxes.Start(this);
  window_->RunCommand("mnuFileNew");
  QTest::qWait(30);
  boxes.Stop();
  QCOMPARE(boxes.messages, QStringList{});
  QCOMPARE(DocumentObjectCount(), 0);
  // Changed: No clears it (Cancel keeping it is the close check of
  // saveUndoEditAndClose).
  auto edit = [] {
    Doc.Points.Add(NewObjectId("PT"), 1, 2, 0, 1, "", "", 0);
    PushSnapshot();
  };
  edit();
  QString asked;
  WhenModal([&](QWidget* w) {
    asked = qobject_cast<QMessageBox*>(w)->windowTitle() + ": " + qobject_cast<QMessageBox*>(w)->text();
    qobject_cast<QMessageBox*>(w)->button(QMessageBox::No)->click();
  });
  window_->RunCommand("mnuFileNew");
  QCOMPARE(asked, QString("Note: Save changes to file?"));
  QCOMPARE(DocumentObjectCount(), 0);
  QCOMPARE(SceneMode, 1);
  // Yes saves first, through the save dialog.
  edit();
  const QString saved = temp_->filePath("saved.vtd");
  WhenModal([this, saved](QWidget* w) {
    qobject_cast<QMessageBox*>(w)->button(QMessageBox::Yes)->click();
    WhenModal([saved](QWidget* d) {
      auto* dlg = qobject_cast<QFileDialog*>(d);
      QVERIFY(dlg);
      dlg->selectFile(saved);
      static_cast<QDialog*>(dlg)->accept();
    });
  });
  window_->RunCommand("mnuFileNew");
  QVERIFY(QFile::exists(saved));
  QCOMPARE(DocumentObjectCount(), 0);
}

void GuiTest::saveUndoEditAndCloseAsksAndTheTitleMarksChanges() {
  const int start = DocumentObjectCount();
  window_->RunCommand("mnuFUndo");  // the first Undo after start-up keeps the start document
  QCOMPARE(DocumentObjectCount(), start);
  auto edit = [this] {
    Doc.Points.Add(NewObjectId("PT"), 1, 2, 0, 1, "", "", 0);
    PushSnapshot();
    return window_->isWindowModified();
  };
  QVERIFY(!window_->isWindowModified() && edit());
  const QString path = temp_->filePath("session.VTD");
  WhenModal([path](QWidget* d) {
    qobject_cast<QFileDialog*>(d)->selectFile(path);
    static_cast<QDialog*>(d)->accept();
  });
  window_->RunCommand("mnuFileSave");
  QCOMPARE(window_->windowTitle(), QString("Vantrel - session.VTD[*]"));
  QVERIFY(!window_->isWindowModified());
  window_->RunCommand("mnuFUndo");
  QVERIFY(window_->isWindowModified() && edit());
  QString asked;  // closing asks; Cancel keeps the window
  WhenModal([&](QWidget* w) {
    asked = qobject_cast<QMessageBox*>(w)->text();
    qobject_cast<QMessageBox*>(w)->button(QMessageBox::Cancel)->click();
  });
  QVERIFY(!window_->close());
  QCOMPARE(asked, QString("Save changes to file?"));
}

void GuiTest::openOfADamagedFileKeepsTheOldDocument() {
  // Not a document at all (another kind of file with the extension).
  const QString damaged = temp_->filePath("damaged.vtd");
  QFile f(damaged);
  QVERIFY(f.open(QIODevice::WriteOnly));
  f.write(QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
  f.close();
  const std::string before = GetUndoVar();
  const int undo = UndoCount;
  // One watcher answers every dialog of the three opens: a file dialog gets
  // `file` (an empty name cancels it), a message box its OK. A watcher that
  // stays up cannot be spent on a dialog that is just closing.
  guitest::MessageWatcher boxes;
  boxes.Start(this);
  boxes.file = damaged;
  window_->RunCommand("mnuFileOpen");
  // The document and its history stay.
  QCOMPARE(GetUndoVar(), before);
  QCOMPARE(UndoCount, undo);
  QVERIFY(window_->isVisible());

  // A cancelled dialog changes nothing either; a good file opens.
  boxes.cancelFiles = true;
  window_->RunCommand("mnuFileOpen");
  QCOMPARE(GetUndoVar(), before);
  const QString good = temp_->filePath("good.vtd");
  std::string error;
  QVERIFY(WriteDocumentFile(good.toStdString(),
                            "GL Ver3.00 1 0 0 0 0 ;;PT0007 1 1 0 1 2 255 0 1 1 @K@ 0 0 0 0 @@ @@ @@ @@ 0 0 0 0 0 0 0 0;;",
                            error));
  boxes.cancelFiles = false;
  boxes.file = good;
  window_->RunCommand("mnuFileOpen");
  QCOMPARE(boxes.Take(), QStringList());
  QCOMPARE(Doc.Points.count(), 1);
  QCOMPARE(UndoCount, 1);  // a fresh history
  QCOMPARE(window_->windowTitle(), QString("Vantrel - good.vtd[*]"));
}

// ---- canvas -------------------------------------------------------------------------------

void GuiTest::aClickReachesTheToolWithTheScenePointUnderThePixel() {
  RegisterTools();
  QVERIFY(window_->menuAction("mnuDrawP")->isEnabled());
  window_->menuAction("mnuDrawP")->trigger();
  QCOMPARE(ActiveTool, 1);
  QVERIFY(window_->toolbarButton(2, 4)->isChecked());
  calls_.clear();
  Canvas* canvas = window_->picDraw();
  const QPoint pixel(canvas->width() / 3, canvas->height() / 4);
  QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, pixel);
  QTRY_VERIFY(!calls_.empty());
  auto press = std::find_if(calls_.begin(), calls_.end(), [](const Call& c) { return c.op == "L"; });
  QVERIFY(press != calls_.end());
  const qreal scale = canvas->devicePixelRatioF();
  QCOMPARE(press->X, static_cast<float>(pixel.x() * scale));
  GLdouble wx, wy, wz;
  QVERIFY(gluProject(press->scene.x, press->scene.y, press->scene.z, press->model, press->proj, press->viewport, &wx,
                     &wy, &wz) == GL_TRUE);
  QVERIFY2(std::fabs(wx - pixel.x() * scale) <= 1.0, qPrintable(QString::number(wx)));
  QVERIFY2(std::fabs(press->viewport[3] - wy - pixel.y() * scale) <= 1.0, qPrintable(QString::number(wy)));
  // The pick ray: its far end at window depth 1, its near end at 0, both on the pixel.
  for (const Position* p : {&press->far, &press->near}) {
    QVERIFY(gluProject(p->x, p->y, p->z, press->model, press->proj, press->viewport, &wx, &wy, &wz) == GL_TRUE);
    QVERIFY(std::fabs(wx - pixel.x() * scale) <= 1.0 && std::fabs(wz - (p == &press->far ? 1 : 0)) < 1e-3);
  }
  // In space the depth under the pixel is read from the canvas: a click
  // below the horizon lands on the ground, the plane z = 0.
  window_->RunCommand("mnuFileNew3D");
  window_->menuAction("mnuDrawP")->trigger();
  calls_.clear();
  QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, QPoint(canvas->width() / 2, canvas->height() * 4 / 5));
  QTRY_VERIFY(!calls_.empty());
  QVERIFY2(std::fabs(calls_.front().scene.z) < 0.05f, qPrintable(QString::number(calls_.front().scene.z)));
  // Moves reach the tool too, without a button.
  calls_.clear();
  // Sent straight to the canvas: a synthetic move through the window system
  // can be dropped on a loaded machine.
  const QPointF to = pixel + QPoint(10, 10);
  QMouseEvent move(QEvent::MouseMove, to, canvas->mapToGlobal(to), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(canvas, &move);
  QVERIFY(std::any_of(calls_.begin(), calls_.end(), [](const Call& c) { return c.op == "M"; }));
}

// ---- clipboard and printing -------------------------------------------------------------------

void GuiTest::copyCutAndPasteUseTheSystemClipboard() {
  Position* a = Doc.Points.Item(1);
  SelectObject(*a);
  window_->RunCommand("mnuEditCopy");
  QTRY_COMPARE(QGuiApplication::clipboard()->text().toStdString(), a->Save());
  const int points = Doc.Points.count();
  window_->RunCommand("mnuEditPaste");
  QCOMPARE(Doc.Points.count(), points + 1);
  // What another program put on the clipboard is pasted the same way.
  QGuiApplication::clipboard()->setText("not a record;;");
  window_->RunCommand("mnuEditPaste");
  QCOMPARE(Doc.Points.count(), points + 1);
  // Cut: the records go to the clipboard and the points leave the document.
  // (the pasted copy came selected, like its source)
  while (Sel.Points.count() > 0) DeselectObject(*FindPoint(Sel.Points.Item(1)->ID));
  Position* b = Doc.Points.Item(2);
  SelectObject(*b);
  const std::string bId = b->ID, bRecord = b->Save();
  window_->RunCommand("mnuEditCut");
  QTRY_COMPARE(QGuiApplication::clipboard()->text().toStdString(), bRecord);
  QVERIFY(!FindPoint(bId));
  QCOMPARE(Doc.Points.count(), points);  // one pasted, one cut
  // Nothing selected: an empty text.
  QGuiApplication::clipboard()->setText("something");
  window_->RunCommand("mnuEditCopy");
  QCOMPARE(QGuiApplication::clipboard()->text(), QString());
}

// ---- help and exit -----------------------------------------------------------------------------

void GuiTest::withoutOpenGLTheProgramStartsAndSaysSo() {
  // A display that gives no OpenGL: the program must show its message and
  // stay up, not fall over when its window is painted.
  QProcess program;
  QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
  env.insert("QT_XCB_GL_INTEGRATION", "none");
  env.insert("XDG_DATA_HOME", xdg_->path() + "/data");
  env.insert("XDG_DATA_DIRS", xdg_->path() + "/none");
  program.setProcessEnvironment(env);
  program.start(QCoreApplication::applicationDirPath() + "/vantrel", {});
  QVERIFY(program.waitForStarted(5000));
  QVERIFY2(!program.waitForFinished(2000), "the program ended without OpenGL");
  program.kill();
  program.waitForFinished(5000);
}

void GuiTest::theProgramStartsOnTheContextItsThreadMade() {
  // The program's own start: the canvas's context is made on a thread of its
  // own while the window is built, and handed to the canvas's window; the
  // first frame must reach the screen (the start-up report says when).
  const QString report = temp_->filePath("start.txt");
  QProcess program;
  QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
  env.insert("XDG_DATA_HOME", xdg_->path() + "/data");
  env.insert("XDG_DATA_DIRS", xdg_->path() + "/none");
  env.insert("VANTREL_STARTUP_REPORT", report);
  program.setProcessEnvironment(env);
  program.start(QCoreApplication::applicationDirPath() + "/vantrel", {});
  QVERIFY(program.waitForStarted(5000));
  QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(report).size() > 0, 30000);
  QFile file(report);
  QVERIFY(file.open(QIODevice::ReadOnly));
  const QStringList fields = QString::fromUtf8(file.readLine()).split(' ', Qt::SkipEmptyParts);
  QCOMPARE(fields.size(), 3);  // the moment, VmRSS and VmHWM
  QVERIFY(fields[1].toLong() > 0);
  QCOMPARE(program.state(), QProcess::Running);
  program.kill();
  program.waitForFinished(5000);
}

void GuiTest::theDocumentOnTheCommandLineIsShownInsteadOfTheStartDocument() {
  delete window_;
  const std::string path = temp_->filePath("one point.vtd").toStdString();
  std::string error;
  QVERIFY(WriteDocumentFile(path,
                            "GL Ver3.00 2 0 0 1 1 ;;PT0001 5 5 0 1 2 255 0 1 1 @Q@ 0 0 0 0 @@ @@ @@ @@ 0 0 0 0 0 0 0 0;;",
                            error));
  window_ = new frmF1(path);
  window_->show();
  QVERIFY(QTest::qWaitForWindowExposed(window_));
  QTRY_VERIFY(window_->started());
  QCOMPARE(Doc.Points.count(), 1);
  QCOMPARE(QString::fromStdString(Doc.Points.Item(1)->PLabel), QString("Q"));
  QCOMPARE(QString::fromStdString(CurrentFilePath), QString::fromStdString(path));
}

void GuiTest::copyAsBitmapPutsTheCanvasOnTheClipboard() {
  QGuiApplication::clipboard()->clear();
  window_->RunCommand("mnuEditCopyAs");
  const QImage img = QGuiApplication::clipboard()->image();
  QVERIFY(!img.isNull());
  const int w = window_->picDraw()->DeviceWidth();
  QCOMPARE(img.width(), (w * 3) % 4 == 0 ? w : w - 2);
  QCOMPARE(img.height(), window_->picDraw()->DeviceHeight());
  // The white canvas with the grid of the start document on it.
  int white = 0, other = 0;
  for (int y = 0; y < img.height(); y += 7)
    for (int x = 0; x < img.width(); x += 7) (img.pixel(x, y) == qRgb(255, 255, 255) ? white : other)++;
  QVERIFY(white > other);
  QVERIFY(other > 0);
  QVERIFY(QFile::exists(QString::fromStdString(ProgramPath("temp.bmp"))));
}

void GuiTest::printingToPdf() {
  const QString pdf = temp_->filePath("canvas.pdf");
  WhenModal([&](QWidget* w) {
    auto* dlg = qobject_cast<QPrintDialog*>(w);
    QVERIFY(dlg);
    dlg->printer()->setOutputFormat(QPrinter::PdfFormat);
    dlg->printer()->setOutputFileName(pdf);
    dlg->done(QDialog::Accepted);
  });
  window_->RunCommand("mnuFilePrint");
  QFile f(pdf);
  QVERIFY(f.open(QIODevice::ReadOnly));
  QVERIFY(f.read(5) == "%PDF-");
  QVERIFY(f.size() > 1000);
  // Cancelled: nothing printed.
  QFile::remove(pdf);
  WhenModal([](QWidget* w) { qobject_cast<QDialog*>(w)->reject(); });
  window_->RunCommand("mnuFilePrint");
  QVERIFY(!QFile::exists(pdf));
}

// ---- help and exit -----------------------------------------------------------------------------
void GuiTest::helpAboutAndExit() {
  // Help opens in the program's own window, not in a browser.
  window_->RunCommand("mnuHelpHome");
  auto* help = window_->findChild<QWidget*>("frmHelp");
  QVERIFY(help);
  QTRY_VERIFY(help->isVisible());
  QCOMPARE(help->findChild<QTextBrowser*>("HelpText")->source().fragment(), QString("about"));
  QVERIFY(openedUrls_.isEmpty());
  help->close();

  QString about;
  WhenModal([&](QWidget* w) {
    about = qobject_cast<QMessageBox*>(w)->text();
    qobject_cast<QMessageBox*>(w)->accept();
  });
  window_->RunCommand("mnuHelpAbout");
  QVERIFY(about.contains(VANTREL_VERSION));

  QVERIFY(window_->menuAction("mnuFileExit")->isEnabled());
  QVERIFY(DoCommand("File-Exit"));
  QTRY_VERIFY(!window_->isVisible());
}

VT_GUI_TEST_MAIN(GuiTest)
#include "gui_test.moc"
