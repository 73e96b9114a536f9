// frmF1: the main window. It owns the canvas picDraw, the menus (built from
// the menu table of document/command_table.h, object names = menu names),
// the two toolbars Toolbar1 and Toolbar2, the status bar StatusBar1 and the
// context menus GraphEdit and FunEdit. Every menu item, toolbar button and
// drop-down entry runs a handler by name; the window mirrors the handlers'
// enabled and checked states whenever the core asks it to.
//
// The program starts once the canvas has its GL context (StartUp runs inside
// the canvas's initialisation, so that Initialize finds the context current);
// a canvas that gets no context starts the program without one.
#pragma once

#include <QMainWindow>
#include <QPointer>
#include <map>
#include <memory>
#include <string>

class QLabel;
class QMenu;
class QToolBar;
class QTimer;

namespace vt::app {

class Canvas;
class QtHost;

class frmF1 : public QMainWindow {
  Q_OBJECT
 public:
  // commandLine: the document path, the whole command tail ("" for none).
  explicit frmF1(const std::string& commandLine = std::string(), QWidget* parent = nullptr);
  ~frmF1() override;

  // Makes the canvas's OpenGL context on a thread of its own, so that loading
  // the driver (most of the start's time) runs while the window is built and
  // shown; the next window built takes it (or the display's refusal) for its
  // canvas.
  static void MakeCanvasContextInBackground();

  // True once the start-up sequence has run.
  bool started() const { return started_; }

 signals:
  // The start-up sequence has run and its first frame is drawn.
  void programStarted();

 public:
  // The canvas; nullptr where the display gives no OpenGL at all.
  Canvas* picDraw() const { return picDraw_; }
  // A menu, submenu or context menu by its name ("mnuEdit", "GraphEdit").
  QMenu* menuNamed(const QString& name) const;
  // A menu item (main menu or context menu) by its name.
  QAction* menuAction(const QString& name) const;
  QToolBar* toolbar(int number) const;
  // The button of a toolbar by index; nullptr for a separator.
  QAction* toolbarButton(int toolbar, int index) const;
  // An entry of a toolbar drop-down by its key ("barFreePoint").
  QAction* dropDownEntry(const QString& key) const;
  // The first panel of StatusBar1.
  QLabel* statusPanel() const { return statusPanel_; }

  // Runs a handler by menu name as a menu item would: with the canvas's
  // context current, a fault shown as a message, the controls mirrored after.
  void RunCommand(const std::string& handler);
  // Mirrors the enabled and checked states of all menu items and buttons.
  void RefreshControls();

 protected:
  void closeEvent(QCloseEvent* e) override;
  void showEvent(QShowEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  void BuildMenus();
  void BuildToolbars();
  void BuildStatusBar();
  QAction* MakeAction(const QString& name, const QString& caption, const std::string& handler, bool check);
  QIcon IconFor(const QString& iconName, const QString& fallbackText) const;
  void StartProgram(bool haveContext);
  void OnContextReady();
  void OnContextRefused();
  void ShowGraphEdit(float X, float Y);
  void ShowHoverText(QToolBar* bar, const QPoint& posInBar);
  void UpdateTitle();

  std::string commandLine_;
  bool started_ = false;
  bool unloaded_ = false;
  Canvas* picDraw_ = nullptr;
  std::unique_ptr<QtHost> host_;
  QLabel* statusPanel_ = nullptr;
  bool hoverTextShown_ = false;  // the panel shows a toolbar button's help
  QToolBar* toolbars_[2] = {nullptr, nullptr};
  QTimer* timer1_ = nullptr;
  std::map<QString, QMenu*> menus_;
  std::map<QString, QAction*> menuActions_;
  std::map<std::pair<int, int>, QAction*> buttons_;
  std::map<QString, QAction*> dropDowns_;
  // Every action that runs a handler, for the mirroring.
  std::vector<QPointer<QAction>> handlerActions_;
};

}  // namespace vt::app
