// The host: everything the core needs from the window system, behind one
// small interface. The desktop program implements it with Qt; tests and the
// command-line tool install their own (a RecordingHost answers from a script
// and remembers every message it was asked to show).
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vt {

enum class MsgButtons { OK, OKCancel, YesNo, YesNoCancel };
enum class MsgIcon { None, Information, Exclamation, Critical, Question };
enum class MsgResult { OK, Cancel, Yes, No };

// A picture in memory: rows top-down, 3 bytes a pixel (R, G, B).
struct Image {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> rgb;
  bool empty() const { return width <= 0 || height <= 0; }
};

class Host {
 public:
  virtual ~Host() = default;

  // Message box; returns the button pressed.
  virtual MsgResult MsgBox(const std::string& text, const std::string& title,
                           MsgButtons buttons = MsgButtons::OK,
                           MsgIcon icon = MsgIcon::None) = 0;

  // File dialogs. The filter is in the "(*.vtd)|*.vtd" form. A cancelled
  // dialog gives the empty path.
  virtual std::string OpenFileDialog(const std::string& title, const std::string& filter) = 0;
  virtual std::string SaveFileDialog(const std::string& title, const std::string& filter) = 0;
  // Colour dialog: true and the chosen colour (red + 256 green + 65536 blue),
  // or false when cancelled.
  virtual bool ColorDialog(std::uint32_t& color) = 0;

  // Clipboard.
  virtual void SetClipboardText(const std::string& text) = 0;
  virtual std::string ClipboardText() = 0;
  virtual void SetClipboardImage(const Image& image) = 0;

  // Repeating timers. CreateTimer returns an id above 0.
  virtual int CreateTimer(int intervalMs, std::function<void()> tick) = 0;
  virtual void SetTimerInterval(int id, int intervalMs) = 0;
  virtual void EnableTimer(int id, bool enabled) = 0;
  virtual void RemoveTimer(int id) = 0;

  // Opens a path or address with the desktop's default handler.
  virtual bool OpenPath(const std::string& pathOrUrl) = 0;

  // Shows a page of the shipped help, at a section (an id in the page) when
  // one is named. The desktop program shows it in a window of its own.
  virtual void ShowHelp(const std::string& file, const std::string& section) {
    OpenPath(section.empty() ? file : file + "#" + section);
  }


  // The canvas: its size in pixels, a capture of what it shows, the buffer
  // swap that ends a frame, and a pass through pending events.
  virtual void CanvasSize(int& width, int& height) = 0;
  virtual Image CaptureCanvas() = 0;
  virtual void SwapBuffers() = 0;
  virtual void ProcessEvents() = 0;
};

// The host the core talks to. There is always one: until the program installs
// its own, a RecordingHost with default answers stands in. While a
// MessageHold lives, host() is a stand-in that passes everything on except
// message boxes, which the innermost hold keeps.
Host& host();
// Installs a host (not owned); nullptr goes back to the default one.
void SetHost(Host* h);

// Holds message boxes back where a modal box must not open: while the scene
// is drawn (a nested event loop would redraw inside the drawing), while a
// file is read, and in a timer's tick. A held box is not shown; it answers
// OK, Cancel or No (the button that changes nothing) and its text is kept
// once. Holds nest; the innermost one keeps the texts.
class MessageHold {
 public:
  MessageHold();
  ~MessageHold();
  MessageHold(const MessageHold&) = delete;
  MessageHold& operator=(const MessageHold&) = delete;

  struct Kept {
    std::string text;
    std::string title;
    MsgIcon icon;
  };
  // What was held, first to last, each text once.
  const std::vector<Kept>& kept() const { return kept_; }
  void Keep(const std::string& text, const std::string& title, MsgIcon icon);
  // Ends the hold (if still holding) and shows the first kept message, with
  // a line saying how many more there were; nothing when none was kept.
  void ShowFirst();
  // Ends the hold (if still holding) and forgets what it kept.
  void Release();
  // True while any hold lives.
  static bool Active();

 private:
  std::vector<Kept> kept_;
  bool holding_ = true;
};

// A host for tests and headless use: answers from scripted queues, records
// every message, keeps the clipboard in memory and runs timers by hand.
class RecordingHost : public Host {
 public:
  struct Message {
    std::string text;
    std::string title;
    MsgButtons buttons;
    MsgIcon icon;
    MsgResult answer;
  };

  // What was shown, in order.
  std::vector<Message> messages;
  // Scripted answers, used first to last; when empty the default answers.
  std::deque<MsgResult> msgAnswers;
  std::deque<std::string> openPaths;
  std::deque<std::string> savePaths;
  std::deque<std::uint32_t> colors;  // an empty queue cancels the dialog
  MsgResult defaultAnswer = MsgResult::OK;  // OK, or Cancel/No where absent

  std::string clipboardText;
  Image clipboardImage;
  std::vector<std::string> openedPaths;
  int canvasWidth = 800;
  int canvasHeight = 600;
  Image canvasImage;
  int swaps = 0;

  struct Timer {
    int intervalMs;
    bool enabled;
    std::function<void()> tick;
  };
  std::map<int, Timer> timers;

  MsgResult MsgBox(const std::string& text, const std::string& title, MsgButtons buttons,
                   MsgIcon icon) override;
  std::string OpenFileDialog(const std::string& title, const std::string& filter) override;
  std::string SaveFileDialog(const std::string& title, const std::string& filter) override;
  bool ColorDialog(std::uint32_t& color) override;
  void SetClipboardText(const std::string& text) override { clipboardText = text; }
  std::string ClipboardText() override { return clipboardText; }
  void SetClipboardImage(const Image& image) override { clipboardImage = image; }
  int CreateTimer(int intervalMs, std::function<void()> tick) override;
  void SetTimerInterval(int id, int intervalMs) override;
  void EnableTimer(int id, bool enabled) override;
  void RemoveTimer(int id) override;
  bool OpenPath(const std::string& pathOrUrl) override;
  void CanvasSize(int& width, int& height) override;
  Image CaptureCanvas() override { return canvasImage; }
  void SwapBuffers() override { ++swaps; }
  void ProcessEvents() override {}

  // Runs one tick of every enabled timer (in id order); returns how many ran.
  int TickTimers();
  // The text of the last message, or "" when none was shown.
  std::string LastMessage() const { return messages.empty() ? std::string() : messages.back().text; }

 private:
  int nextTimerId_ = 1;
};

}  // namespace vt
