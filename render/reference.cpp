#include "render/reference.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <cmath>
#include <functional>
#include <cstdio>
#include <string>

#include "document/globals.h"
#include "geometry/line.h"
#include "render/frame.h"
#include "render/strokes.h"
#include "render/text.h"

namespace vt {

namespace {

void Segment(float x1, float y1, float z1, float x2, float y2, float z2) {
  glVertex3f(x1, y1, z1);
  glVertex3f(x2, y2, z2);
}

// An axis vector: black, solid, width 1, from a to b.
void DrawAxisVector(CLine& line, float ax, float ay, float az, float bx, float by, float bz) {
  line.lt = 4;
  line.GELineStyle = 1;
  line.GELineWidth = 1.0f;
  line.ForeColor = RGB(0, 0, 0);
  line.DrawMode = 1;
  line.Hide = false;
  line.pBegin.Set(ax, ay, az);
  line.pEnd.Set(bx, by, bz);
  DrawVector(line);
  glDisable(GL_LIGHTING);  // the vector leaves lighting on
  glColor3f(0, 0, 0);
}

// What the plane scene shows of the plane z = 0: the box of the canvas's
// corners on it, the steps of ticks and of grid lines, and s, the world
// length of one unit of the ticks' and numbers' offsets (1 from 30 to 50
// pixels to the unit, else as many pixels as at the nearer end), so that
// they keep a readable size on the screen.
struct PlaneWindow {
  double minX = -10, maxX = 10, minY = -6, maxY = 6;
  double tick = 1, grid = 1, s = 1;
};

// The next step of 1, 2, 5 times a power of ten up (or down) from a step.
double StepUp(double st) {
  const double p = std::pow(10.0, std::floor(std::log10(st) + 1e-9));
  const double m = std::round(st / p);
  return (m < 1.5 ? 2 : m < 3.5 ? 5 : 10) * p;
}
double StepDown(double st) {
  const double p = std::pow(10.0, std::floor(std::log10(st) + 1e-9));
  const double m = std::round(st / p);
  return (m < 1.5 ? 0.5 : m < 3.5 ? 1 : 2) * p;
}

// The unit step, made coarser while it is less than `least` pixels wide and
// finer while it is more than 150 wide (and the finer one at least `least`).
double StepFor(double pixelsPerUnit, double least) {
  double st = 1;
  for (int i = 0; i < 60 && st * pixelsPerUnit < least; ++i) st = StepUp(st);
  for (int i = 0; i < 60 && st * pixelsPerUnit > 150 && StepDown(st) * pixelsPerUnit >= least; ++i)
    st = StepDown(st);
  return st;
}

PlaneWindow VisiblePlane() {
  PlaneWindow w;
  const WindowProjection& m = CompiledProjection();
  if (!m.valid || m.viewport[2] <= 0 || m.viewport[3] <= 0) return w;
  double minX = 1e300, maxX = -1e300, minY = 1e300, maxY = -1e300;
  for (int i = 0; i < 4; ++i) {
    const double wx = m.viewport[0] + (i & 1 ? m.viewport[2] : 0), wy = m.viewport[1] + (i & 2 ? m.viewport[3] : 0);
    double n[3], f[3];
    if (gluUnProject(wx, wy, 0, m.model, m.proj, m.viewport, &n[0], &n[1], &n[2]) != GL_TRUE ||
        gluUnProject(wx, wy, 1, m.model, m.proj, m.viewport, &f[0], &f[1], &f[2]) != GL_TRUE)
      return w;
    // Where the ray of the corner meets z = 0 (a ray along the plane: its start).
    const double dz = f[2] - n[2];
    const double t = std::fabs(dz) > 1e-12 ? -n[2] / dz : 0;
    const double x = n[0] + t * (f[0] - n[0]), y = n[1] + t * (f[1] - n[1]);
    minX = std::fmin(minX, x);
    maxX = std::fmax(maxX, x);
    minY = std::fmin(minY, y);
    maxY = std::fmax(maxY, y);
  }
  if (!(maxX > minX && maxY > minY) || maxX - minX > 1e7 || maxY - minY > 1e7) return w;
  w.minX = minX;
  w.maxX = maxX;
  w.minY = minY;
  w.maxY = maxY;
  const double ppu = m.viewport[3] / (maxY - minY);
  w.s = ppu < 30 ? 30 / ppu : ppu > 50 ? 50 / ppu : 1;
  // Numbers at least 28 pixels apart, grid lines 8; the grid's step divides
  // the ticks' step, or is the same.
  w.tick = StepFor(ppu, 28);
  w.grid = StepFor(ppu, 8);
  const double ratio = w.tick / w.grid;
  if (std::fabs(ratio - std::round(ratio)) > 1e-6) w.grid = w.tick;
  return w;
}

// A tick's number: as many decimals as the step needs.
std::string TickText(double v, double step) {
  const int decimals = step >= 1 ? 0 : static_cast<int>(std::ceil(-std::log10(step) - 1e-9));
  char buf[48];
  std::snprintf(buf, sizeof buf, "%.*f", decimals, v);
  std::string t = buf;
  return t == "-0" ? "0" : t;
}

void DrawPlaneGrid() {
  const PlaneWindow w = VisiblePlane();
  const double st = w.grid;
  const double x0 = std::floor(w.minX / st) * st, x1 = std::ceil(w.maxX / st) * st;
  const double y0 = std::floor(w.minY / st) * st, y1 = std::ceil(w.maxY / st) * st;
  glBegin(GL_LINES);
  for (long i = std::lround(x0 / st); i <= std::lround(x1 / st); ++i) {
    const float x = static_cast<float>(i * st);
    Segment(x, static_cast<float>(y0), 0, x, static_cast<float>(y1), 0);
  }
  for (long i = std::lround(y0 / st); i <= std::lround(y1 / st); ++i) {
    const float y = static_cast<float>(i * st);
    Segment(static_cast<float>(x0), y, 0, static_cast<float>(x1), y, 0);
  }
  glEnd();
}

// The plane axes over the visible part of the plane: x and y from edge to
// edge (their arrow heads just inside the canvas), ticks and numbers at the
// step, none too close to an arrow head, and "O", "x", "y".
void DrawPlaneAxes() {
  const PlaneWindow w = VisiblePlane();
  const double s = w.s, st = w.tick;
  const float fs = static_cast<float>(s);
  const double xa = w.minX + 0.1 * s, xb = w.maxX - 0.1 * s;
  const double ya = w.minY, yb = w.maxY;
  // Drawn in units of s, so that the arrow heads keep their size too.
  glPushMatrix();
  glScalef(fs, fs, 1);
  DrawAxisVector(AxisVectorY(), 0, static_cast<float>(ya / s), 0, 0, static_cast<float>(yb / s), 0);
  DrawAxisVector(AxisVectorXZ(), static_cast<float>(xa / s), 0, 0, static_cast<float>(xb / s), 0, 0);
  glPopMatrix();
  auto ticks = [&](double a, double b, const std::function<void(float, long)>& each) {
    for (long i = std::lround(std::ceil((a + 0.5 * s) / st)); i * st < b - 0.5 * s; ++i)
      if (i != 0) each(static_cast<float>(i * st), i);
  };
  glLineWidth(1.0f);
  glBegin(GL_LINES);
  ticks(ya, yb, [&](float v, long) { Segment(0, v, 0, 0.2f * fs, v, 0); });
  ticks(xa, xb, [&](float v, long) { Segment(v, 0, 0, v, 0.2f * fs, 0); });
  glEnd();
  ticks(ya, yb, [&](float v, long i) {
    DrawTextAt((i < 0 ? -0.5f : -0.4f) * fs, v - 0.1f * fs, 0, TickText(i * st, st));
  });
  ticks(xa, xb, [&](float v, long i) { DrawTextAt(v - 0.1f * fs, -0.4f * fs, 0, TickText(i * st, st)); });
  DrawTextAt(-0.3f * fs, -0.4f * fs, 0, "O");
  DrawTextAt(-0.4f * fs, static_cast<float>(yb - 0.2 * s), 0, "y");
  DrawTextAt(static_cast<float>(xb - 0.2 * s), -0.4f * fs, 0, "x");
}

}  // namespace

CLine& AxisVectorY() {
  static CLine line;
  return line;
}

CLine& AxisVectorXZ() {
  static CLine line;
  return line;
}

void DrawGrid() {
  const bool plane = SceneMode == 1;
  if (!plane && SceneMode != 3) return;
  glDisable(GL_LIGHTING);
  SetColor(RGB(200, 150, 0));
  glLineWidth(1.0f);
  if (!plane) {
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_LINE_SMOOTH);
  }
  if (plane) {
    DrawPlaneGrid();
  } else {
    glBegin(GL_LINES);
    for (int x = -10; x <= 10; ++x) Segment(static_cast<float>(x), -10, 0, static_cast<float>(x), 10, 0);
    for (int y = -10; y <= 10; ++y) Segment(-10, static_cast<float>(y), 0, 10, static_cast<float>(y), 0);
    glEnd();
  }
  if (!plane) {
    glDisable(GL_LINE_SMOOTH);
    glDisable(GL_BLEND);
  }
  glEnable(GL_LIGHTING);
}

void DrawAxes() {
  const bool space = SceneMode == 3;
  if (!space) {
    glDisable(GL_LIGHTING);
    DrawPlaneAxes();
    glEnable(GL_LIGHTING);
    return;
  }
  const int L = 9;
  const float fL = static_cast<float>(L);
  glDisable(GL_LIGHTING);
  DrawAxisVector(AxisVectorY(), 0, -(fL + 1), 0, 0, fL + 1, 0);
  DrawAxisVector(AxisVectorXZ(), -10, 0, 0, 10, 0, 0);

  glLineWidth(1.0f);
  glBegin(GL_LINES);
  for (int i = -L; i <= L; ++i) Segment(0, static_cast<float>(i), 0, 0.2f, static_cast<float>(i), 0);
  for (int i = -9; i <= 9; ++i) Segment(static_cast<float>(i), 0, 0, static_cast<float>(i), 0.2f, 0);
  glEnd();
  for (int i = -L; i <= L; ++i) {
    if (i == 0) continue;
    const float fi = static_cast<float>(i);
    DrawTextAt(i < 0 ? -0.5f : -0.4f, fi - 0.1f, 0, std::to_string(i));
  }
  for (int i = -9; i <= 9; ++i) {
    if (i == 0) continue;
    const float fi = static_cast<float>(i);
    DrawTextAt(fi - 0.1f, -0.4f, 0, std::to_string(i));
  }
  DrawTextAt(-0.3f, -0.4f, 0, "O");
  DrawTextAt(-0.4f, fL + 0.8f, 0, "y");
  DrawTextAt(9.8f, -0.4f, 0, "x");

  if (space) {
    glDisable(GL_LIGHTING);
    DrawAxisVector(AxisVectorXZ(), 0, 0, -6, 0, 0, 6);
    glLineWidth(1.0f);
    glBegin(GL_LINES);
    for (int i = -5; i <= 5; ++i) Segment(0, 0, static_cast<float>(i), 0.2f, 0, static_cast<float>(i));
    glEnd();
    for (int i = -5; i <= 5; ++i) {
      if (i == 0) continue;
      DrawTextAt(-0.3f, 0, static_cast<float>(i) - 0.1f, std::to_string(i));
    }
    DrawTextAt(-0.3f, 0, 5.8f, "z");
  }
  glEnable(GL_LIGHTING);
}

}  // namespace vt
