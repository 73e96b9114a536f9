// Canvas rate: how many mouse moves a second the canvas handles in a plane
// scene of many points. Each move is posted to the canvas like one from the
// window system and runs the whole way: the handler (two depth reads, the
// tool, DrawScene, Display) and the window's repaint. Needs a display (run it
// under xvfb-run).
//
//   vt_canvas_rate [points=1000] [moves=600]
#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QTest>
#include <cstdio>
#include <cstdlib>

#include "app/canvas.h"
#include "app/frmF1.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "tools/canvas_input.h"

using namespace vt;

namespace {

void PostMove(QWidget* canvas, const QPointF& p, Qt::MouseButtons buttons) {
  QCoreApplication::postEvent(canvas, new QMouseEvent(QEvent::MouseMove, p, canvas->mapToGlobal(p), Qt::NoButton,
                                                      buttons, Qt::NoModifier));
  // The move, then the repaint it asked for.
  QCoreApplication::processEvents();
  QCoreApplication::processEvents();
}

}  // namespace

int main(int argc, char** argv) {
  QApplication qapp(argc, argv);
  const int points = argc > 1 ? std::atoi(argv[1]) : 1000;
  const int moves = argc > 2 ? std::atoi(argv[2]) : 600;

  app::frmF1 window;
  window.show();
  if (!QTest::qWaitForWindowExposed(&window) || !QTest::qWaitFor([&] { return window.started(); }, 10000)) {
    std::fprintf(stderr, "canvas_rate: the window did not start\n");
    return 1;
  }
  app::Canvas* canvas = window.picDraw();
  window.RunCommand("mnuFileNew2D");
  ClearDocument();
  NextObjectNumber = 0;
  // A plane scene: the points on a grid across the view.
  const int columns = 40;
  for (int i = 0; i < points; ++i) {
    const std::string id = NewObjectId("PT");
    Position* p = Doc.Points.Add(id, -9.5f + 19.0f * (i % columns) / (columns - 1),
                                 -5.5f + 11.0f * (i / columns) / ((points + columns - 1) / columns), 0, 1, "", "", 0, id);
    AssignNextPointLabel(*p);
  }
  canvas->MakeCurrent();
  RedrawScene();

  const int w = canvas->width(), h = canvas->height();
  auto at = [&](int i) { return QPointF(20 + (i * 7) % (w - 40), 20 + (i * 3) % (h - 40)); };
  for (int i = 0; i < 30; ++i) PostMove(canvas, at(i), Qt::NoButton);  // warm-up

  QElapsedTimer timer;
  timer.start();
  for (int i = 0; i < moves; ++i) PostMove(canvas, at(i), Qt::NoButton);
  const double hover = timer.nsecsElapsed() / 1e9;

  // The same with the left button held and a move armed: a view drag.
  window.RunCommand("mnuViewMove");
  timer.restart();
  for (int i = 0; i < moves; ++i) PostMove(canvas, at(i), Qt::LeftButton);
  const double drag = timer.nsecsElapsed() / 1e9;

  // The handler alone, called directly: two depth reads, the tool, DrawScene
  // and Display.
  canvas->MakeCurrent();
  timer.restart();
  for (int i = 0; i < moves; ++i) {
    const QPointF p = at(i);
    picDraw_MouseMove(0, 0, static_cast<float>(p.x()), static_cast<float>(p.y()));
  }
  const double handler = timer.nsecsElapsed() / 1e9;

  std::printf("canvas %dx%d, %d points, %d moves each\n", canvas->DeviceWidth(), canvas->DeviceHeight(),
              Doc.Points.count(), moves);
  std::printf("moves without a button:  %8.1f events/s (%.2f ms each)\n", moves / hover, 1000 * hover / moves);
  std::printf("moves of a view drag:    %8.1f events/s (%.2f ms each)\n", moves / drag, 1000 * drag / moves);
  std::printf("handler alone:           %8.1f events/s (%.2f ms each)\n", moves / handler, 1000 * handler / moves);
  return 0;
}
