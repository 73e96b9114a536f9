#include "app/frmF1.h"
#include "app/startup_report.h"
#include "app/export_picture.h"
#include "app/recent_files.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEnterEvent>
#include <QFileInfo>
#include <QHoverEvent>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QOpenGLContext>
#include <QPalette>
#include <QSettings>
#include <QSurfaceFormat>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <future>
#include <memory>

#include "app/canvas.h"
#include "app/desktop_integration.h"
#include "app/qt_host.h"
#include "app/svg_icon.h"
#include "animation/dialogs/animation_forms.h"
#include "document/command_table.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "geometry/dialogs/property_forms.h"
#include "graphs/dialogs/curve_forms.h"
#include "graphs/dialogs/frmF6.h"
#include "graphs/dialogs/swept_forms.h"
#include "render/dialogs/settings_forms.h"
#include "render/frame.h"
#include "render/trackball.h"
#include "render/view_state.h"
#include "tools/canvas_input.h"
#include "tools/create_tools.h"
#include "tools/triangle_tool.h"
#include "tools/dialogs/frmButton.h"
#include "tools/dialogs/construction_forms.h"

namespace vt::app {

namespace {

const char* const kReady = "Ready";
// The toolbars' background.
const char* const kToolbarStyle = "QToolBar { background-color: rgb(236, 233, 216); border: none; spacing: 1px; }";

QString ButtonName(int toolbar, int index) { return QString("Toolbar%1_Button%2").arg(toolbar).arg(index); }

// The icon of a handler: the one of its toolbar button or drop-down entry.
QString IconOfHandler(const std::string& handler) {
  for (const ToolbarButtonDef& b : ToolbarTable())
    if (handler == b.handler) return b.icon;
  for (const DropDownDef& d : DropDownTable())
    if (handler == d.handler) return d.icon;
  return QString();
}

std::future<QOpenGLContext*> g_canvasContext;

QString CaptionOfHandler(const std::string& handler, const QString& fallback) {
  const MenuItemDef* m = FindMenuItem(handler);
  return m ? QString(m->caption) : fallback;
}

}  // namespace

void frmF1::MakeCanvasContextInBackground() {
  if (!g_canvasContext.valid()) g_canvasContext = std::async(std::launch::async, MakeCanvasContext);
}

frmF1::frmF1(const std::string& commandLine, QWidget* parent) : QMainWindow(parent), commandLine_(commandLine) {
  setObjectName("frmF1");
  setWindowTitle("Vantrel[*]");
  // The icons come from the program's folder, needed before start-up.
  LocateSystemFolder();
  setWindowIcon(IconFor("vantrel", "Vantrel"));

  RegisterAllCommands();
  RegisterHandler("mnuFileExit", [this] { close(); });
  RegisterHandler("mnuHelpRegisterType", [] {
    const QStringList written = RegisterDocumentType();
    if (written.isEmpty())
      host().MsgBox("The file type could not be registered: " + UserDataFolder().toStdString() +
                        " cannot be written.",
                    "Note", MsgButtons::OK, MsgIcon::Exclamation);
    else
      host().MsgBox("Vantrel documents (*.vtd) now open with this program. The files are in " +
                        UserDataFolder().toStdString() + ".",
                    "Note", MsgButtons::OK, MsgIcon::Information);
  });
  InstallPropertyForms(this);
  InstallCurveForms(this);
  InstallAnimationForms(this);
  InstallSettingsForms(this);
  InstallSurfaceForms(this);
  InstallSweptForms(this);
  InstallPictureExport(this);

  BuildMenus();
  BuildToolbars();
  BuildStatusBar();

  // Form load: Timer1 drives nothing; it is there, at 100 ms and stopped.
  timer1_ = new QTimer(this);
  timer1_->setObjectName("Timer1");
  timer1_->setInterval(100);

  Hooks.refreshControls = [this] { RefreshControls(); };
  Hooks.syntheticMouseMove = [] { SyntheticMouseMove(); };
  CanvasWindow.showGraphEdit = [this](float X, float Y) { ShowGraphEdit(X, Y); };
  InstallScreenItemForms(this);  // the text tool's frmText, the button dialogs
  InstallConstructionForms(this);  // frmComp, the transformations, the construction prompts
  InstallRecentFiles(this);

  // The canvas takes its context when it is ready: the window is shown while
  // the driver still loads. Without OpenGL the canvas gives way to a blank
  // area (OnContextRefused).
  picDraw_ = new Canvas(this, std::move(g_canvasContext));
  setCentralWidget(picDraw_);
  host_ = std::make_unique<QtHost>(this, picDraw_, centralWidget());
  SetHost(host_.get());

  // Escape drops a line, circle or triangle in the making.
  auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
  connect(escape, &QShortcut::activated, this, [this] {
    if (picDraw_) picDraw_->MakeCurrent();
    RunGuarded(DropToolGesture);
  });
  connect(picDraw_, &Canvas::contextReady, this, &frmF1::OnContextReady);
  connect(picDraw_, &Canvas::contextRefused, this, &frmF1::OnContextRefused);
  resize(1120, 760);
  // The way free turns go in space is the user's, kept between sessions.
  FreeTrackBall = QSettings("Vantrel", "Vantrel").value("view/freeTrackBall", false).toBool();
  RefreshControls();
}

frmF1::~frmF1() {
  QSettings settings("Vantrel", "Vantrel");
  if (settings.value("view/freeTrackBall", false).toBool() != FreeTrackBall)
    settings.setValue("view/freeTrackBall", FreeTrackBall);
  if (!unloaded_ && picDraw_ && picDraw_->isValid()) {
    picDraw_->makeCurrent();
    ReleaseContext();
  }
  Hooks = FrameHooks{};
  CanvasWindow = CanvasHooks{};
  TextToolDialog = {};
  UnregisterHandler("mnuFileExit");
  UnregisterHandler("mnuHelpRegisterType");
  SetHost(nullptr);
}

// ---- building -----------------------------------------------------------------------

QIcon frmF1::IconFor(const QString& iconName, const QString& fallbackText) const {
  if (!iconName.isEmpty()) {
    QIcon icon = LoadSvgIcon(QString::fromStdString(ProgramPath("icons/" + iconName.toStdString() + ".svg")));
    if (!icon.isNull()) return icon;
  }
  return LetterIcon(fallbackText);
}

QAction* frmF1::MakeAction(const QString& name, const QString& caption, const std::string& handler, bool check) {
  auto* a = new QAction(caption, this);
  a->setObjectName(name);
  a->setProperty("handler", QString::fromStdString(handler));
  a->setCheckable(check);
  connect(a, &QAction::triggered, this, [this, handler] { RunCommand(handler); });
  handlerActions_.emplace_back(a);
  return a;
}

void frmF1::BuildMenus() {
  for (const MenuItemDef& m : MenuTable()) {
    const QString name = m.name;
    QMenu* parentMenu = nullptr;
    if (*m.parent) {
      auto it = menus_.find(m.parent);
      if (it == menus_.end()) continue;  // the table lists every menu before its items
      parentMenu = it->second;
      if (m.separatorBefore) parentMenu->addSeparator();
    }
    switch (m.role) {
      case MenuRole::Menu: {
        QMenu* menu = parentMenu ? parentMenu->addMenu(m.caption) : menuBar()->addMenu(m.caption);
        menu->setObjectName(name);
        menu->menuAction()->setObjectName(name + "_menu");
        menus_[name] = menu;
        break;
      }
      case MenuRole::Popup: {
        auto* menu = new QMenu(m.caption, this);
        menu->setObjectName(name);
        menus_[name] = menu;
        break;
      }
      case MenuRole::Item: {
        if (!parentMenu) break;
        QAction* a = MakeAction(name, m.caption, m.handler, m.check);
        // Keys belong to the main menu; the context menus' twins go without.
        if (*m.shortcut && QString(m.parent) != "GraphEdit" && QString(m.parent) != "FunEdit")
          a->setShortcuts(QKeySequence::listFromString(QString(m.shortcut)));  // "A; B": two keys
        const QString icon = IconOfHandler(m.handler);
        if (!icon.isEmpty()) a->setIcon(IconFor(icon, m.caption));
        parentMenu->addAction(a);
        menuActions_[name] = a;
        break;
      }
    }
  }
}

void frmF1::BuildToolbars() {
  for (int tb = 1; tb <= 2; ++tb) {
    auto* bar = new QToolBar(QString("Toolbar%1").arg(tb), this);
    bar->setObjectName(QString("Toolbar%1").arg(tb));
    bar->setIconSize(QSize(22, 22));
    bar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    bar->setStyleSheet(kToolbarStyle);
    bar->setMouseTracking(true);
    bar->installEventFilter(this);
    addToolBar(Qt::TopToolBarArea, bar);
    if (tb == 1) addToolBarBreak(Qt::TopToolBarArea);
    toolbars_[tb - 1] = bar;

    const int length = ToolbarLength(tb);
    for (int index = 1; index <= length; ++index) {
      const ToolbarButtonDef* def = FindToolbarButton(tb, index);
      if (!def) {
        if (index > 1) bar->addSeparator();
        continue;
      }
      const QString status = def->status;
      QAction* a = MakeAction(ButtonName(tb, index), CaptionOfHandler(def->handler, status), def->handler, def->check);
      a->setIcon(IconFor(def->icon, status));
      a->setToolTip(status);
      a->setProperty("buttonIndex", index);
      a->setProperty("status", status);
      bar->addAction(a);
      buttons_[{tb, index}] = a;
      QWidget* w = bar->widgetForAction(a);
      w->setObjectName(ButtonName(tb, index) + "_widget");
      w->setMouseTracking(true);
      w->installEventFilter(this);

      QMenu* dropDown = nullptr;
      for (const DropDownDef& d : DropDownTable()) {
        if (d.toolbar != tb || d.index != index) continue;
        if (!dropDown) dropDown = new QMenu(this);
        const QString caption = CaptionOfHandler(d.handler, d.key);
        QAction* entry = MakeAction(d.key, caption, d.handler, false);
        entry->setIcon(IconFor(d.icon, caption));
        dropDown->addAction(entry);
        dropDowns_[d.key] = entry;
      }
      if (dropDown) {
        dropDown->setObjectName(ButtonName(tb, index) + "_dropDown");
        if (auto* button = qobject_cast<QToolButton*>(w)) {
          button->setMenu(dropDown);
          button->setPopupMode(QToolButton::MenuButtonPopup);
        }
      }
    }
  }
}

void frmF1::BuildStatusBar() {
  statusBar()->setObjectName("StatusBar1");
  statusPanel_ = new QLabel(kReady, this);
  statusPanel_->setObjectName("StatusBar1_Panel1");
  statusPanel_->setMinimumWidth(320);
  statusBar()->addWidget(statusPanel_, 1);
}

// ---- access -------------------------------------------------------------------------

QMenu* frmF1::menuNamed(const QString& name) const {
  auto it = menus_.find(name);
  return it == menus_.end() ? nullptr : it->second;
}

QAction* frmF1::menuAction(const QString& name) const {
  auto it = menuActions_.find(name);
  return it == menuActions_.end() ? nullptr : it->second;
}

QToolBar* frmF1::toolbar(int number) const { return number == 1 || number == 2 ? toolbars_[number - 1] : nullptr; }

QAction* frmF1::toolbarButton(int toolbar, int index) const {
  auto it = buttons_.find({toolbar, index});
  return it == buttons_.end() ? nullptr : it->second;
}

QAction* frmF1::dropDownEntry(const QString& key) const {
  auto it = dropDowns_.find(key);
  return it == dropDowns_.end() ? nullptr : it->second;
}

// ---- commands -----------------------------------------------------------------------

void frmF1::RunCommand(const std::string& handler) {
  // The button's help has done its work once it is clicked: the command may
  // open a window that takes the mouse before the toolbar sees it leave.
  if (hoverTextShown_) {
    hoverTextShown_ = false;
    statusPanel_->setText(kReady);
  }
  if (picDraw_) picDraw_->MakeCurrent();
  RunGuarded([&] { RunHandler(handler); });
  RefreshControls();
}

void frmF1::RefreshControls() {
  for (const QPointer<QAction>& a : handlerActions_) {
    if (!a) continue;
    const std::string h = a->property("handler").toString().toStdString();
    a->setEnabled(HandlerEnabled(h));
    if (a->isCheckable()) a->setChecked(HandlerChecked(h));
  }
  UpdateTitle();
}

void frmF1::UpdateTitle() {
  // "[*]" shows as "*" while the document has unsaved changes.
  QString title = "Vantrel";
  if (!CurrentFilePath.empty()) title += " - " + QFileInfo(QString::fromStdString(CurrentFilePath)).fileName();
  title += "[*]";
  if (windowTitle() != title) setWindowTitle(title);
  const bool modified = DocumentModified();
  if (isWindowModified() != modified) setWindowModified(modified);
}

// ---- start and stop -------------------------------------------------------------------

void frmF1::StartProgram(bool haveContext) {
  if (started_) return;
  started_ = true;
  if (picDraw_) picDraw_->MakeCurrent();
  MarkStartup("canvas context made");
  // The redraws inside the start are not seen: the first paint draws the frame.
  HoldFrames(true);
  RunGuarded([&] { StartUp(commandLine_, haveContext); });
  HoldFrames(false);
  if (picDraw_) picDraw_->update();
  MarkStartup("start document built");
  int w = 1, h = 1;
  host_->CanvasSize(w, h);
  View.SetScreen(w, h);
  RefreshControls();
  // After the paint the start runs in, so that the first frame shows first.
  QTimer::singleShot(0, this, &frmF1::programStarted);
}

void frmF1::OnContextReady() {
  if (!started_) {
    StartProgram(true);
    return;
  }
  // The program started without a context, and the canvas got one later.
  picDraw_->MakeCurrent();
  if (Initialize()) {
    View.SetScreen(picDraw_->DeviceWidth(), picDraw_->DeviceHeight());
    RedrawScene();
  }
}

void frmF1::OnContextRefused() {
  // The window gets a blank area in place of the canvas, and the program
  // starts without a context, as on a failed pixel format.
  if (!picDraw_) return;
  takeCentralWidget();
  picDraw_->deleteLater();
  picDraw_ = nullptr;
  auto* blank = new QWidget(this);
  blank->setObjectName("picDraw");
  blank->setAutoFillBackground(true);
  blank->setPalette(QPalette(Qt::white));
  setCentralWidget(blank);
  host_->SetCanvasArea(nullptr, blank);
  if (!started_) StartProgram(true);
}

void frmF1::showEvent(QShowEvent* e) {
  QMainWindow::showEvent(e);
  if (started_) return;
  // The canvas's window makes its context when it is first shown, and that
  // starts the program. Without a canvas, or when no context comes, the
  // program starts without one, and Initialize says so.
  QTimer::singleShot(picDraw_ ? 10000 : 0, this, [this] {
    if (started_) return;
    if (QOpenGLContext* other = QOpenGLContext::currentContext()) other->doneCurrent();
    StartProgram(true);
  });
}

void frmF1::closeEvent(QCloseEvent* e) {
  if (!unloaded_ && !ConfirmDiscardChanges()) {
    e->ignore();
    return;
  }
  if (!unloaded_) {
    unloaded_ = true;
    // The other windows of the program go first, the last opened first.
    const QWidgetList tops = QApplication::topLevelWidgets();
    for (auto it = tops.rbegin(); it != tops.rend(); ++it) {
      QWidget* w = *it;
      if (w != this && w->isVisible() && !qobject_cast<QMenu*>(w)) w->close();
    }
    ViewRotate = ViewZoom = ViewMove = false;
    SceneChanged = false;
    if (picDraw_ && picDraw_->isValid()) {
      picDraw_->makeCurrent();
      ReleaseContext();
    }
    if (!GraphList.FunList.empty() &&
        host().MsgBox("Do you want to save the graphs", "Note", MsgButtons::YesNo, MsgIcon::Question) ==
            MsgResult::Yes)
      RunGuarded([] { mnuFileSave_Click(); });
    for (QToolBar* bar : toolbars_) bar->setStyleSheet(QString());
  }
  e->accept();
}

// ---- canvas context menu and hover help --------------------------------------------------

void frmF1::ShowGraphEdit(float X, float Y) {
  QMenu* menu = menuNamed("GraphEdit");
  if (!menu) return;
  QWidget* area = centralWidget();
  const qreal scale = area->devicePixelRatioF();
  menu->popup(area->mapToGlobal(QPoint(static_cast<int>(X / scale), static_cast<int>(Y / scale))));
}

void frmF1::ShowHoverText(QToolBar* bar, const QPoint& posInBar) {
  const int number = bar == toolbars_[0] ? 1 : 2;
  QString text = kReady;
  for (const auto& [key, action] : buttons_) {
    if (key.first != number) continue;
    QWidget* w = bar->widgetForAction(action);
    if (w && w->isVisible() && w->geometry().contains(posInBar)) {
      text = action->property("status").toString();
      break;
    }
  }
  hoverTextShown_ = text != kReady;
  if (statusPanel_->text() != text) statusPanel_->setText(text);
}

bool frmF1::eventFilter(QObject* watched, QEvent* e) {
  auto* widget = qobject_cast<QWidget*>(watched);
  QToolBar* bar = qobject_cast<QToolBar*>(watched);
  if (!bar && widget) bar = qobject_cast<QToolBar*>(widget->parentWidget());
  if (bar && (bar == toolbars_[0] || bar == toolbars_[1])) {
    QPointF pos;
    bool moved = true;
    switch (e->type()) {
      case QEvent::MouseMove: pos = static_cast<QMouseEvent*>(e)->position(); break;
      case QEvent::Enter: pos = static_cast<QEnterEvent*>(e)->position(); break;
      case QEvent::HoverMove:
      case QEvent::HoverEnter: pos = static_cast<QHoverEvent*>(e)->position(); break;
      case QEvent::Leave:
        moved = false;
        hoverTextShown_ = false;
        statusPanel_->setText(kReady);
        break;
      default: moved = false; break;
    }
    if (moved) ShowHoverText(bar, widget == bar ? pos.toPoint() : widget->mapTo(bar, pos.toPoint()));
  }
  return QMainWindow::eventFilter(watched, e);
}

}  // namespace vt::app
