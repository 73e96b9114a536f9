// The host of the desktop program: message boxes, file and colour dialogs,
// the clipboard, timers, the desktop's default handler, printing and the
// canvas, all through Qt. Whenever control comes back from a nested event loop
// (a dialog, a pass through pending events) the canvas's context is made
// current again, as core code goes on drawing.
#pragma once

#include <QPointer>
#include <QString>
#include <map>

#include "document/host.h"

class QTimer;
class QWidget;
class QImage;

namespace vt::app {

class Canvas;

// The Qt form of a filter "(*.vtd)|*.vtd" (description|pattern pairs).
QString QtFileFilter(const std::string& filter);
QImage ToQImage(const Image& image);
Image FromQImage(const QImage& image);

class QtHost : public Host {
 public:
  // canvasArea: the widget in the canvas's place (the canvas itself, or a
  // blank stand-in when there is no OpenGL).
  QtHost(QWidget* window, Canvas* canvas, QWidget* canvasArea);
  // The canvas gave way to a blank area (the display refused a context).
  void SetCanvasArea(Canvas* canvas, QWidget* canvasArea) {
    canvas_ = canvas;
    canvasArea_ = canvasArea;
  }
  ~QtHost() override;

  MsgResult MsgBox(const std::string& text, const std::string& title, MsgButtons buttons,
                   MsgIcon icon) override;
  std::string OpenFileDialog(const std::string& title, const std::string& filter) override;
  std::string SaveFileDialog(const std::string& title, const std::string& filter) override;
  bool ColorDialog(std::uint32_t& color) override;

  void SetClipboardText(const std::string& text) override;
  std::string ClipboardText() override;
  void SetClipboardImage(const Image& image) override;

  int CreateTimer(int intervalMs, std::function<void()> tick) override;
  void SetTimerInterval(int id, int intervalMs) override;
  void EnableTimer(int id, bool enabled) override;
  void RemoveTimer(int id) override;

  bool OpenPath(const std::string& pathOrUrl) override;
  void ShowHelp(const std::string& file, const std::string& section) override;

  void CanvasSize(int& width, int& height) override;
  Image CaptureCanvas() override;
  void SwapBuffers() override;
  void ProcessEvents() override;

 private:
  QPointer<QWidget> help_;  // the help window, made on first use
  void CanvasCurrent();

  QPointer<QWidget> window_;
  QPointer<Canvas> canvas_;
  QPointer<QWidget> canvasArea_;
  std::map<int, QTimer*> timers_;
  int nextTimerId_ = 1;
  int boxesOpen_ = 0;  // message boxes open now
};

}  // namespace vt::app
