#include "render/reference.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <cmath>
#include <cstdio>
#include <functional>
#include <numeric>
#include <string>

#include "document/document.h"
#include "document/globals.h"
#include "geometry/line.h"
#include "render/frame.h"
#include "render/material.h"
#include "render/picture.h"
#include "render/strokes.h"
#include "render/text.h"
#include "render/view_state.h"

namespace vt {

namespace {

constexpr double kPi = 3.14159265358979323846;

void Segment(float x1, float y1, float z1, float x2, float y2, float z2) {
  glVertex3f(x1, y1, z1);
  glVertex3f(x2, y2, z2);
}

float AxisWidth() { return AxisObject.AxisWidth > 0 ? AxisObject.AxisWidth : 1.0f; }

// An axis vector in the axis colour and width, from a to b.
void DrawAxisVector(CLine& line, float ax, float ay, float az, float bx, float by, float bz) {
  line.lt = 4;
  line.GELineStyle = 1;
  line.GELineWidth = AxisWidth();
  line.ForeColor = AxisObject.AxisColor;
  line.DrawMode = 1;
  line.Hide = false;
  line.pBegin.Set(ax, ay, az);
  line.pEnd.Set(bx, by, bz);
  DrawVector(line);
  glDisable(GL_LIGHTING);  // the vector leaves lighting on
  SetColor(AxisObject.AxisColor);
}

// A number or a name of the axes: bitmap glyphs, or with "Better fonts" filled
// outline glyphs `size` to the em, facing the viewer whatever the scene's
// rotation.
void AxisText(float x, float y, float z, const std::string& text, float size) {
  if (text.empty()) return;
  // A picture export keeps the axis text as text (and the feedback pass of
  // the software renderer does not survive the glyph lists).
  if (!AxisObject.BetterFonts || !FontOutlineLarge || CapturingPicture()) {
    DrawTextAt(x, y, z, text);
    return;
  }
  glPushMatrix();
  glTranslatef(x, y, z);
  // The scene rotation undone (its transpose), so that the glyphs face the screen.
  float back[16];
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) back[r * 4 + c] = (r < 3 && c < 3) ? SceneMatrix[c * 4 + r] : (r == c ? 1.0f : 0.0f);
  glMultMatrixf(back);
  glScalef(size, size, size * 0.1f);
  SetColor(AxisObject.AxisColor);
  DrawOutlineText(text);
  glPopMatrix();
}

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

// Ticks and grid lines of one axis: the grid's step divides the ticks' step.
// With "Show PI" the x axis counts in multiples of pi.
struct AxisSteps {
  double tick = 1, grid = 1, unit = 1;  // unit: pi or 1
};
AxisSteps StepsFor(double ppu, double unit) {
  AxisSteps a;
  a.unit = unit;
  const double tick = StepFor(ppu * unit, 28), grid = StepFor(ppu * unit, 8);
  const double ratio = tick / grid;
  a.tick = tick * unit;
  a.grid = (std::fabs(ratio - std::round(ratio)) > 1e-6 ? tick : grid) * unit;
  return a;
}

// What the plane scene shows of the plane z = 0: the box of the canvas's
// corners on it, the steps of each axis, and s, the world length of one unit
// of the ticks' and numbers' offsets (1 from 30 to 50 pixels to the unit,
// else as many pixels as at the nearer end), so that they keep a readable
// size on the screen.
struct PlaneWindow {
  double minX = -10, maxX = 10, minY = -6, maxY = 6;
  AxisSteps x, y;
  double s = 1;
};

PlaneWindow VisiblePlane() {
  PlaneWindow w;
  if (AxisObject.ShowPI) w.x = StepsFor(1, kPi);  // the fallback view: 1 to the unit as before
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
  // Numbers at least 28 pixels apart, grid lines 8.
  w.y = StepsFor(ppu, 1);
  w.x = StepsFor(ppu, AxisObject.ShowPI ? kPi : 1);
  return w;
}

// A tick's number: as many decimals as the step needs; in units of pi a
// fraction ("π/2", "3π/2", "-2π").
std::string TickText(long i, const AxisSteps& a) {
  const double step = a.tick / a.unit;
  if (a.unit != 1) {
    long num = std::lround(i * step), den = 1;
    if (step < 1) {
      den = std::lround(1 / step);
      num = i;
      const long g = std::gcd(std::labs(num), den);
      num /= g;
      den /= g;
    }
    std::string t = num == 1 ? "" : num == -1 ? "-" : std::to_string(num);
    t += "\xCF\x80";  // π
    if (den != 1) t += "/" + std::to_string(den);
    return t;
  }
  const int decimals = step >= 1 ? 0 : static_cast<int>(std::ceil(-std::log10(step) - 1e-9));
  char buf[48];
  std::snprintf(buf, sizeof buf, "%.*f", decimals, i * step);
  std::string t = buf;
  return t == "-0" ? "0" : t;
}

// Lines at a step across the rectangle, in the colour given.
void GridLines(double minX, double maxX, double minY, double maxY, double stX, double stY, std::uint32_t colour) {
  const double x0 = std::floor(minX / stX) * stX, x1 = std::ceil(maxX / stX) * stX;
  const double y0 = std::floor(minY / stY) * stY, y1 = std::ceil(maxY / stY) * stY;
  SetColor(colour);
  glBegin(GL_LINES);
  for (long i = std::lround(x0 / stX); i <= std::lround(x1 / stX); ++i) {
    const float x = static_cast<float>(i * stX);
    Segment(x, static_cast<float>(y0), 0, x, static_cast<float>(y1), 0);
  }
  for (long i = std::lround(y0 / stY); i <= std::lround(y1 / stY); ++i) {
    const float y = static_cast<float>(i * stY);
    Segment(static_cast<float>(x0), y, 0, static_cast<float>(x1), y, 0);
  }
  glEnd();
}

// The secondary grid halves each cell of the primary one (4 pixels or more).
double Finer(double st) { return st / 2; }

// The space scene's reference spans LabelNum whole units each side (and one more for the arrows).
float Half(int labels) { return static_cast<float>(labels > 0 ? labels : 1); }

// A space axis under its axis scale: the ticks' values (in pi with `pi`) at
// a step of 1, 2 or 5 times a power of ten, and `drawn`, how far apart they
// are drawn, about one unit of the reference or more. Scale 1 keeps whole
// units (pi/2 with pi).
struct SpaceAxis {
  AxisSteps steps;
  double drawn = 1;
};
SpaceAxis SpaceAxisFor(int axis, bool pi) {
  const double s = DrawnScale(axis), unit = pi ? kPi : 1;
  double st = pi ? 0.5 : 1;  // in units
  for (int i = 0; i < 60 && st * unit * s < 0.99; ++i) st = StepUp(st);
  for (int i = 0; i < 60 && StepDown(st) * unit * s >= 0.99; ++i) st = StepDown(st);
  SpaceAxis a;
  a.steps.unit = unit;
  a.steps.tick = a.steps.grid = st * unit;
  a.drawn = st * unit * s;
  return a;
}
SpaceAxis Halved(SpaceAxis a) {
  a.steps.tick /= 2;
  a.drawn /= 2;
  return a;
}

void DrawPlaneGrid() {
  const PlaneWindow w = VisiblePlane();
  const Cls3& a = AxisObject;
  if (a.ShowSecondaryGrid)
    GridLines(w.minX, w.maxX, w.minY, w.maxY, Finer(w.x.grid), Finer(w.y.grid), a.SecGridColor);
  if (a.ShowprimaryGrid) GridLines(w.minX, w.maxX, w.minY, w.maxY, w.x.grid, w.y.grid, a.PriGridColor);
}

// Ticks of one axis from a to b (none near the arrow head or at 0), each at
// its value with its index.
void ForTicks(double a, double b, double margin, double st, const std::function<void(float, long)>& each) {
  for (long i = std::lround(std::ceil((a + margin) / st)); i * st < b - margin; ++i)
    if (i != 0) each(static_cast<float>(i * st), i);
}

// The plane axes over the visible part of the plane: x and y from edge to
// edge (their arrow heads just inside the canvas), ticks and numbers at the
// step, none too close to an arrow head, and "O" and the titles.
void DrawPlaneAxes() {
  const PlaneWindow w = VisiblePlane();
  const Cls3& set = AxisObject;
  const double s = w.s;
  const float fs = static_cast<float>(s), size = 0.32f * fs;
  const double xa = w.minX + 0.1 * s, xb = w.maxX - 0.1 * s;
  const double ya = w.minY, yb = w.maxY;
  // Drawn in units of s, so that the arrow heads keep their size too.
  glPushMatrix();
  glScalef(fs, fs, 1);
  DrawAxisVector(AxisVectorY(), 0, static_cast<float>(ya / s), 0, 0, static_cast<float>(yb / s), 0);
  DrawAxisVector(AxisVectorXZ(), static_cast<float>(xa / s), 0, 0, static_cast<float>(xb / s), 0, 0);
  glPopMatrix();
  glLineWidth(AxisWidth());
  glBegin(GL_LINES);
  ForTicks(ya, yb, 0.5 * s, w.y.tick, [&](float v, long) { Segment(0, v, 0, 0.2f * fs, v, 0); });
  ForTicks(xa, xb, 0.5 * s, w.x.tick, [&](float v, long) { Segment(v, 0, 0, v, 0.2f * fs, 0); });
  glEnd();
  auto yText = [&](float v, const std::string& t) { AxisText((v < 0 ? -0.5f : -0.4f) * fs, v - 0.1f * fs, 0, t, size); };
  auto xText = [&](float v, const std::string& t) { AxisText(v - 0.1f * fs, -0.4f * fs, 0, t, size); };
  ForTicks(ya, yb, 0.5 * s, w.y.tick, [&](float v, long i) { yText(v, TickText(i, w.y)); });
  ForTicks(xa, xb, 0.5 * s, w.x.tick, [&](float v, long i) { xText(v, TickText(i, w.x)); });
  if (set.ShowSecondaryLabel) {
    // Half-length ticks with their numbers halfway between the main ones.
    for (const AxisSteps* a : {&w.x, &w.y}) {
      AxisSteps half = *a;
      half.tick = a->tick / 2;
      const bool isX = a == &w.x;
      glBegin(GL_LINES);
      ForTicks(isX ? xa : ya, isX ? xb : yb, 0.5 * s, half.tick, [&](float v, long i) {
        if (i % 2 == 0) return;
        if (isX) Segment(v, 0, 0, v, 0.1f * fs, 0);
        else Segment(0, v, 0, 0.1f * fs, v, 0);
      });
      glEnd();
      ForTicks(isX ? xa : ya, isX ? xb : yb, 0.5 * s, half.tick, [&](float v, long i) {
        if (i % 2 == 0) return;
        if (isX) xText(v, TickText(i, half));
        else yText(v, TickText(i, half));
      });
    }
  }
  AxisText(-0.3f * fs, -0.4f * fs, 0, "O", size);
  AxisText(-0.4f * fs, static_cast<float>(yb - 0.2 * s), 0, set.TitleY, size);
  AxisText(static_cast<float>(xb - 0.2 * s), -0.4f * fs, 0, set.TitleX, size);
}

// Colour of a panel: its scheme's diffuse colour, half seen through.
void PanelColour(int scheme) {
  Cls11 m;
  m.LoadScheme(scheme);
  glColor4f(m.Diffuse[0], m.Diffuse[1], m.Diffuse[2], 0.45f);
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

void GridSteps(double& stepX, double& stepY) {
  if (SceneMode != 1) {
    stepX = SpaceAxisFor(0, AxisObject.ShowPI).steps.tick;
    stepY = SpaceAxisFor(1, false).steps.tick;
    return;
  }
  const PlaneWindow w = VisiblePlane();
  stepX = w.x.grid;
  stepY = w.y.grid;
}

Position SnappedToGrid(const Position& p) {
  double sx = 1, sy = 1;
  GridSteps(sx, sy);
  auto snap = [](double v, double st) { return static_cast<float>(std::nearbyint(v / st) * st); };
  return Position(snap(p.x, sx), snap(p.y, sy), snap(p.z, SpaceAxisFor(2, false).steps.tick));
}

bool ShadowOn() { return SceneMode == 3 && AxisObject.ShowShadow; }

void DrawShadow(const std::function<void()>& casters) {
  // The stencil marks the casters' shadow; without one the scene has none.
  GLint stencil = 0;
  glGetIntegerv(GL_STENCIL_BITS, &stencil);
  const CBox b = ViewGraph.GetBox();
  if (stencil <= 0 || !(b.MinX <= b.MaxX) || !(b.MinZ <= b.MaxZ)) return;
  // The floor: the lowest point of the document, or the xy plane below it.
  const float z0 = std::fmin(0.0f, b.MinZ), rise = b.MaxZ - z0;
  // Light from above, a little from the side: a point at height h above the
  // floor falls (kSlantX h, kSlantY h) aside. The matrix maps (x, y, z) to
  // (x + kSlantX (z - z0), y + kSlantY (z - z0), z0), column by column.
  constexpr float kSlantX = 0.35f, kSlantY = 0.25f;
  const float flatten[16] = {1, 0, 0, 0, 0, 1, 0, 0, kSlantX, kSlantY, 0, 0, -kSlantX * z0, -kSlantY * z0, z0, 1};
  glPushAttrib(GL_ALL_ATTRIB_BITS);
  glClearStencil(0);
  glClear(GL_STENCIL_BUFFER_BIT);
  glEnable(GL_STENCIL_TEST);
  glStencilFunc(GL_ALWAYS, 1, 0xFF);
  glStencilOp(GL_KEEP, GL_KEEP, GL_REPLACE);
  glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
  glDepthMask(GL_FALSE);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_LIGHTING);
  glPushMatrix();
  glMultMatrixf(flatten);
  casters();
  glPopMatrix();
  // Once over each marked pixel of the floor that is in sight: a dark, see-through quad.
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
  glStencilFunc(GL_EQUAL, 1, 0xFF);
  glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
  // The casters may have changed any of this.
  glEnable(GL_DEPTH_TEST);
  glDepthFunc(GL_LEQUAL);
  glDepthMask(GL_FALSE);
  glDisable(GL_LIGHTING);
  glDisable(GL_TEXTURE_2D);
  glDisable(GL_CULL_FACE);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  // A little behind the floor, so that a face lying on it is not darkened.
  glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(1, 2);
  glColor4f(0.08f, 0.08f, 0.12f, 0.45f);
  const float m = std::fmax(std::fmax(b.MaxX - b.MinX, b.MaxY - b.MinY), rise) + 1;
  const float x0 = b.MinX - m, x1 = b.MaxX + kSlantX * rise + m, y0 = b.MinY - m, y1 = b.MaxY + kSlantY * rise + m;
  glBegin(GL_QUADS);
  glVertex3f(x0, y0, z0), glVertex3f(x1, y0, z0), glVertex3f(x1, y1, z0), glVertex3f(x0, y1, z0);
  glEnd();
  glPopAttrib();
}

void DrawBackground() {
  const Cls3& a = AxisObject;
  if (!a.ShowBackground && !(a.ShowXYPanel || a.ShowXZPanel || a.ShowYZPanel)) return;
  glPushAttrib(GL_ENABLE_BIT | GL_DEPTH_BUFFER_BIT | GL_CURRENT_BIT | GL_COLOR_BUFFER_BIT);
  glDisable(GL_LIGHTING);
  glDisable(GL_TEXTURE_2D);
  if (a.ShowBackground) {
    // The whole canvas, from BackColor at the top to BackColor2 at the bottom.
    glDisable(GL_DEPTH_TEST);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    glBegin(GL_QUADS);
    SetColor(a.BackColor2);
    glVertex3f(-1, -1, 0.999f);
    glVertex3f(1, -1, 0.999f);
    SetColor(a.BackColor);
    glVertex3f(1, 1, 0.999f);
    glVertex3f(-1, 1, 0.999f);
    glEnd();
    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glEnable(GL_DEPTH_TEST);
  }
  // The panels: the coordinate planes, tinted by their schemes and seen through.
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glDepthMask(GL_FALSE);
  glBegin(GL_QUADS);
  if (SceneMode == 1) {
    if (a.ShowXYPanel) {
      const PlaneWindow w = VisiblePlane();
      PanelColour(a.XYPanelMaterial);
      const float x0 = static_cast<float>(w.minX), x1 = static_cast<float>(w.maxX);
      const float y0 = static_cast<float>(w.minY), y1 = static_cast<float>(w.maxY);
      glVertex3f(x0, y0, 0), glVertex3f(x1, y0, 0), glVertex3f(x1, y1, 0), glVertex3f(x0, y1, 0);
    }
  } else if (SceneMode == 3) {
    const float X = Half(a.LabelNumX) + 1, Y = Half(a.LabelNumY) + 1, Z = Half(a.LabelNumZ) + 1;
    if (a.ShowXYPanel) {
      PanelColour(a.XYPanelMaterial);
      glVertex3f(-X, -Y, 0), glVertex3f(X, -Y, 0), glVertex3f(X, Y, 0), glVertex3f(-X, Y, 0);
    }
    if (a.ShowXZPanel) {
      PanelColour(a.XZPanelMaterial);
      glVertex3f(-X, 0, -Z), glVertex3f(X, 0, -Z), glVertex3f(X, 0, Z), glVertex3f(-X, 0, Z);
    }
    if (a.ShowYZPanel) {
      PanelColour(a.YZPanelMaterial);
      glVertex3f(0, -Y, -Z), glVertex3f(0, Y, -Z), glVertex3f(0, Y, Z), glVertex3f(0, -Y, Z);
    }
  }
  glEnd();
  glPopAttrib();
}

void DrawGrid() {
  const bool plane = SceneMode == 1;
  if (!plane && SceneMode != 3) return;
  glDisable(GL_LIGHTING);
  glLineWidth(1.0f);
  if (plane) {
    DrawPlaneGrid();
  } else {
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_LINE_SMOOTH);
    const Cls3& a = AxisObject;
    const double X = Half(a.LabelNumX) + 1, Y = Half(a.LabelNumY) + 1;
    // At the ticks' values, drawn where the axis scales put them.
    const double gx = SpaceAxisFor(0, false).drawn, gy = SpaceAxisFor(1, false).drawn;
    if (a.ShowSecondaryGrid) GridLines(-X, X, -Y, Y, gx / 2, gy / 2, a.SecGridColor);
    if (a.ShowprimaryGrid) GridLines(-X, X, -Y, Y, gx, gy, a.PriGridColor);
    glDisable(GL_LINE_SMOOTH);
    glDisable(GL_BLEND);
  }
  glEnable(GL_LIGHTING);
}

void DrawAxes() {
  // The axes' numbers and names go through the glyph atlas, placed as drawn.
  TextPlacement place(UnscaledProjection());
  glDisable(GL_LIGHTING);
  if (SceneMode != 3) {
    DrawPlaneAxes();
    glEnable(GL_LIGHTING);
    return;
  }
  const Cls3& set = AxisObject;
  const float X = Half(set.LabelNumX), Y = Half(set.LabelNumY), Z = Half(set.LabelNumZ), size = 0.35f;
  DrawAxisVector(AxisVectorY(), 0, -(Y + 1), 0, 0, Y + 1, 0);
  DrawAxisVector(AxisVectorXZ(), -(X + 1), 0, 0, X + 1, 0, 0);
  // Ticks at the axes' values, drawn where the axis scales put them.
  const SpaceAxis xs = SpaceAxisFor(0, set.ShowPI), ys = SpaceAxisFor(1, false), zs = SpaceAxisFor(2, false);
  glLineWidth(AxisWidth());
  glBegin(GL_LINES);
  ForTicks(-Y - 0.5, Y + 0.5, 0, ys.drawn, [&](float v, long) { Segment(0, v, 0, 0.2f, v, 0); });
  ForTicks(-X - 0.5, X + 0.5, 0, xs.drawn, [&](float v, long) { Segment(v, 0, 0, v, 0.2f, 0); });
  ForTicks(-Z - 0.5, Z + 0.5, 0, zs.drawn, [&](float v, long) { Segment(0, 0, v, 0.2f, 0, v); });
  glEnd();
  ForTicks(-Y - 0.5, Y + 0.5, 0, ys.drawn,
           [&](float v, long i) { AxisText(i < 0 ? -0.5f : -0.4f, v - 0.1f, 0, TickText(i, ys.steps), size); });
  ForTicks(-X - 0.5, X + 0.5, 0, xs.drawn, [&](float v, long i) { AxisText(v - 0.1f, -0.4f, 0, TickText(i, xs.steps), size); });
  if (set.ShowSecondaryLabel) {
    // Half-length ticks with their numbers halfway between the whole ones.
    const SpaceAxis hx = Halved(xs), hy = Halved(ys);
    glBegin(GL_LINES);
    ForTicks(-Y - 0.5, Y + 0.5, 0, hy.drawn, [&](float v, long i) { if (i % 2) Segment(0, v, 0, 0.1f, v, 0); });
    ForTicks(-X - 0.5, X + 0.5, 0, hx.drawn, [&](float v, long i) { if (i % 2) Segment(v, 0, 0, v, 0.1f, 0); });
    glEnd();
    ForTicks(-Y - 0.5, Y + 0.5, 0, hy.drawn, [&](float v, long i) {
      if (i % 2) AxisText(i < 0 ? -0.7f : -0.6f, v - 0.1f, 0, TickText(i, hy.steps), size);
    });
    ForTicks(-X - 0.5, X + 0.5, 0, hx.drawn, [&](float v, long i) {
      if (i % 2) AxisText(v - 0.1f, -0.4f, 0, TickText(i, hx.steps), size);
    });
  }
  AxisText(-0.3f, -0.4f, 0, "O", size);
  AxisText(-0.4f, Y + 0.8f, 0, set.TitleY, size);
  AxisText(X + 0.8f, -0.4f, 0, set.TitleX, size);
  DrawAxisVector(AxisVectorXZ(), 0, 0, -(Z + 1), 0, 0, Z + 1);
  ForTicks(-Z - 0.5, Z + 0.5, 0, zs.drawn, [&](float v, long i) { AxisText(-0.3f, 0, v - 0.1f, TickText(i, zs.steps), size); });
  AxisText(-0.3f, 0, Z + 0.8f, set.TitleZ, size);
  glEnable(GL_LIGHTING);
}

}  // namespace vt
