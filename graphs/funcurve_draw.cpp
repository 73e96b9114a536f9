// Drawing of function curves: the polyline forms with their overlays, the
// implicit curve through the contour tracer, and the point field.
//
// A curve's polyline is drawn as one line strip from hole to hole, so that a
// dash pattern runs along the whole curve (a stipple starts anew only where
// a strip begins); GL state is set once per look, not per segment.
#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "document/globals.h"
#include "document/numtext.h"
#include "expr/text_prep.h"
#include "graphs/curve_analysis.h"
#include "graphs/funcurve.h"
#include "render/frame.h"
#include "render/strokes.h"
#include "render/text.h"

namespace vt {

namespace {

bool DrawsGraphType(int g) { return g == 0 || g == 9 || g == 20 || g == 23 || g == 38; }

bool IsHole(const Position& p) { return p.x == BreakValue || p.y == BreakValue || p.z == BreakValue; }

// The stipple of a curve's line style: 2 factor 2 pattern 255, 3 factor 1
// pattern 21845, 4 factor 1 pattern 10239; false for solid.
bool CurveStipple(int style, int& factor, unsigned short& pattern) {
  switch (style) {
    case 2: factor = 2, pattern = 255; return true;
    case 3: factor = 1, pattern = 21845; return true;
    case 4: factor = 1, pattern = 10239; return true;
    default: return false;
  }
}

// The polyline of the first `count` samples, broken at the holes: one strip
// for each run of samples between holes; with `swap` the graph of the
// inverse (x and y exchanged).
void DrawChords(const std::vector<Position>& s, size_t count, bool swap) {
  count = std::min(count, s.size());
  size_t i = 0;
  while (i < count) {
    while (i < count && IsHole(s[i])) ++i;
    size_t j = i;
    while (j < count && !IsHole(s[j])) ++j;
    if (j - i >= 2) {
      glBegin(GL_LINE_STRIP);
      for (size_t k = i; k < j; ++k) {
        const Position& a = s[k];
        if (swap) glVertex3f(a.y, a.x, a.z);
        else glVertex3f(a.x, a.y, a.z);
      }
      glEnd();
    }
    i = j;
  }
}

void LineLook(std::uint32_t color, float width) {
  SetColor(color);
  if (width > 0) glLineWidth(width);
}

}  // namespace

void CFunCurve::Draw() {
  // This curve's part of the results panel is written anew by each draw.
  CurveResults.ClearOwner(ID);
  if (Hide || !DrawsGraphType(GraphType)) return;
  try {
    switch (FunForm) {
      case 1: DrawImplicit(); break;
      case 4: DrawField(); break;
      case 2:
      case 3: DrawPolylineForm(); break;
      default: break;
    }
  } catch (const ExprFailure&) {
    // An overflow the samplers did not meet: the curve stays as drawn so far.
  }
}

// ---- forms 2 and 3 -----------------------------------------------------------------

void CFunCurve::DrawPolylineForm() {
  // A curve read from a document samples at its first draw, when every
  // parameter it may name has been read too.
  if (!sampled_) GetPoints();
  const size_t n = std::min(Vert3D.size(), static_cast<size_t>(std::max(StepU, 0)) + 1);

  glDisable(GL_LIGHTING);
  glEnable(GL_LINE_SMOOTH);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);

  if (ShowInt && n >= 2) {
    // The strip from the last sample at or before IntFrom to the first at
    // or after IntTo, clamped to the samples.
    const double du = (static_cast<double>(EndValue) - StartValue) / std::max(StepU, 1);
    if (du != 0) {
      const double fa = (IntFrom - StartValue) / du, fb = (IntTo - StartValue) / du;
      const double last = static_cast<double>(n - 1);
      const double lo = std::clamp(std::floor(std::min(fa, fb) + 1e-4), 0.0, last);
      const double hi = std::clamp(std::ceil(std::max(fa, fb) - 1e-4), 0.0, last);
      glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
      SetColor(IntColor, 0.5f);
      const bool polar = CoordType == 2;
      glBegin(polar ? GL_TRIANGLES : GL_QUADS);
      for (size_t i = static_cast<size_t>(lo); i < static_cast<size_t>(hi); ++i) {
        const Position& a = Vert3D[i];
        const Position& b = Vert3D[i + 1];
        if (IsHole(a) || IsHole(b)) continue;
        if (polar) {
          glVertex3f(0, 0, 0);
          glVertex3f(a.x, a.y, 0);
          glVertex3f(b.x, b.y, 0);
        } else {
          glVertex3f(a.x, 0, 0);
          glVertex3f(a.x, a.y, 0);
          glVertex3f(b.x, b.y, 0);
          glVertex3f(b.x, 0, 0);
        }
      }
      glEnd();
    }
  }

  if (Show2DCurve && GraphType != 38) {
    std::uint32_t color = LineColor;
    float width = static_cast<float>(LineWidth);
    int factor = 1;
    unsigned short pattern = 0xFFFF;
    bool stippled = false;
    if (DrawMode == 2 || DrawMode == 3) {
      color = RGB(255, 0, 0);
      width = 2;
    } else if (DrawMode == 4) {
      color = RGB(0, 255, 0);
      width = 5;
    } else {
      stippled = CurveStipple(LineStyle, factor, pattern);
    }
    LineLook(color, width);
    if (stippled) {
      glLineStipple(factor, pattern);
      glEnable(GL_LINE_STIPPLE);
    }
    DrawChords(Vert3D, n, false);
    if (stippled) glDisable(GL_LINE_STIPPLE);
  }
  if (ShowInverse) {
    LineLook(InvColor, static_cast<float>(InvWidth));
    DrawChords(Vert3D, n, true);
  }
  if (ShowDev && devOk_) {
    LineLook(DevColor, static_cast<float>(DevWidth));
    DrawChords(DevVert, n, false);
  }
  if (ShowJO) {
    LineLook(JOColor, static_cast<float>(JOWidth));
    DrawChords(JOVert, n, false);
  }
  auto strokes = [](const std::vector<Stroke>& list, std::uint32_t color, int width) {
    if (list.empty()) return;
    LineLook(color, static_cast<float>(width));
    glBegin(GL_LINES);
    for (const Stroke& s : list) {
      glVertex3f(s.x1, s.y1, 0);
      glVertex3f(s.x2, s.y2, 0);
    }
    glEnd();
  };
  strokes(tangents_, QieColor, QieWidth);
  strokes(normals_, NmlColor, NmlWidth);
  if (!circles_.empty()) {
    constexpr int kSegments = 72;
    LineLook(CurvColor, static_cast<float>(CurvWidth));
    glBegin(GL_LINES);
    for (const Circle& c : circles_) {
      for (int k = 0; k < kSegments; ++k) {
        const double a0 = 6.2832 * k / kSegments, a1 = 6.2832 * (k + 1) / kSegments;
        glVertex3f(static_cast<float>(c.cx + c.r * std::cos(a0)), static_cast<float>(c.cy + c.r * std::sin(a0)), 0);
        glVertex3f(static_cast<float>(c.cx + c.r * std::cos(a1)), static_cast<float>(c.cy + c.r * std::sin(a1)), 0);
      }
    }
    glEnd();
  }
  glDisable(GL_LINE_SMOOTH);
  glDisable(GL_BLEND);
  glEnable(GL_LIGHTING);

  for (std::vector<Position>* marks : {&rootMarks_, &maxMarks_, &minMarks_, &guaiMarks_})
    for (Position& m : *marks) m.Draw();
  for (const std::string& line : resultLines_) CurveResults.AddLine(ID, line);
}

// ---- forms 1 and 4 -------------------------------------------------------------------

bool CFunCurve::DrawTable(CurveTable& table, float& start, float& end) {
  table.Load(OwnNames());
  // The ranges read the parameters even where the curve's own names hide them.
  CurveTable ranges;
  ranges.Load();
  const std::string fy = InsertImplicitProducts(ExpressY);
  std::string key = fy;
  key += '\x01';
  key += MinU;
  key += '\x01';
  key += MaxU;
  key += '\x01';
  key += table.NamesKey();
  key += ranges.NamesKey();
  if (key != drawKey_) {
    // A text that failed keeps its key, so its message is not shown again
    // at every repaint.
    drawKey_ = key;
    drawCompiled_ = CompileFormula(fy, table.vars, drawPostfix_) &&
                    CompileFormula(MinU, ranges.vars, rangeMinPostfix_) &&
                    CompileFormula(MaxU, ranges.vars, rangeMaxPostfix_);
  }
  if (!drawCompiled_) return false;
  Cls6 calc;
  if (!EvaluatePostfix(calc, rangeMinPostfix_, ranges.vars, start) ||
      !EvaluatePostfix(calc, rangeMaxPostfix_, ranges.vars, end))
    return false;
  StartValue = start;
  EndValue = end;
  return true;
}

bool CFunCurve::TraceImplicit() {
  StepU = 90;
  StepV = 90;
  constexpr int kN = 91;
  // Graph kind 9 traces the grid of the last draw again.
  if (GraphType != 9 || grid_.nx() != kN) {
    CurveTable table;
    float start, end;
    traced_.clear();
    if (!DrawTable(table, start, end)) return false;
    const float dx = (end - start) / 90.0f, dy = (MaxV - MinV) / 90.0f;
    // Cells without a value stay holes.
    grid_.Resize(kN, kN, std::numeric_limits<float>::quiet_NaN());
    const bool polar = CoordType == 2;
    float* v = table.vars.values;
    const int sx = polar ? table.A : table.X, sy = polar ? table.R : table.Y;
    Cls6 calc;
    for (int i = 0; i < kN; ++i) {
      v[sx] = start + static_cast<float>(i) * dx;
      for (int j = 0; j < kN; ++j) {
        v[sy] = MinV + static_cast<float>(j) * dy;
        float f;
        if (EvaluatePostfix(calc, drawPostfix_, table.vars, f) && f != BreakValue) grid_(i + 1, j + 1) = f;
      }
    }
    gridFrame_ = {start, MinV, dx, dy};
  }
  ContourGrid grid = grid_;  // the tracer perturbs its grid
  traced_.clear();
  CContour::Trace(grid, 0, gridFrame_, traced_);
  // A traced pair is (a, r) in polar form: the point r (cos a, sin a), as
  // the explicit polar forms place it.
  if (CoordType == 2)
    for (size_t k = 0; k + 1 < traced_.size(); k += 2) {
      const double a = traced_[k], r = traced_[k + 1];
      traced_[k] = static_cast<float>(r * std::cos(a));
      traced_[k + 1] = static_cast<float>(r * std::sin(a));
    }
  return true;
}

void CFunCurve::DrawImplicit() {
  if (!TraceImplicit() || traced_.empty()) return;
  CContour::DrawSegments(traced_, static_cast<float>(LineWidth), LineColor);
}

bool CFunCurve::ComputeField() {
  CurveTable table;
  float start, end;
  field_.clear();
  fieldRuns_.clear();
  fieldDensity_ = 0;
  if (!DrawTable(table, start, end)) return false;
  const double area = (static_cast<double>(MaxV) - MinV) * (static_cast<double>(end) - start);
  const int k = area <= 300 ? 20 : 3;
  fieldDensity_ = k;
  const long a0 = RoundToLong(static_cast<double>(start) * k), a1 = RoundToLong(static_cast<double>(end) * k);
  const long b0 = RoundToLong(static_cast<double>(MinV) * k), b1 = RoundToLong(static_cast<double>(MaxV) * k);
  MinX = MinY = MinZ = 1e9f;
  MaxX = MaxY = MaxZ = -1e9f;
  // A damaged record must not stall the frame: past four million samples
  // the field is not computed.
  if (a1 >= a0 && b1 >= b0 && static_cast<double>(a1 - a0 + 1) * static_cast<double>(b1 - b0 + 1) > 4e6) return false;
  const bool polar = CoordType == 2;
  float* v = table.vars.values;
  const int sa = polar ? table.A : table.X, sb = polar ? table.R : table.Y;
  const float fk = static_cast<float>(k);
  Cls6 calc;
  for (long a = a0; a <= a1; ++a) {
    const float av = static_cast<float>(a) / fk;
    v[sa] = av;
    const double ca = polar ? std::cos(static_cast<double>(av)) : 0, sn = polar ? std::sin(static_cast<double>(av)) : 0;
    bool inRun = false;
    for (long b = b0; b <= b1; ++b) {
      const float bv = static_cast<float>(b) / fk;
      v[sb] = bv;
      float f;
      if (!EvaluatePostfix(calc, drawPostfix_, table.vars, f) || f == BreakValue || f > 0) {
        inRun = false;
        continue;
      }
      const float x = polar ? static_cast<float>(bv * ca) : av;
      const float y = polar ? static_cast<float>(bv * sn) : bv;
      const size_t index = field_.size() / 2;
      field_.push_back(x);
      field_.push_back(y);
      if (inRun) fieldRuns_.back().last = index;
      else fieldRuns_.push_back({index, index});
      inRun = true;
      MinX = std::min(MinX, x);
      MaxX = std::max(MaxX, x);
      MinY = std::min(MinY, y);
      MaxY = std::max(MaxY, y);
      MinZ = std::min(MinZ, 0.0f);
      MaxZ = std::max(MaxZ, 0.0f);
    }
  }
  return true;
}

namespace {

// Window position of a scene point under the matrices, without clipping;
// false behind the eye.
bool WindowOf(const WindowProjection& m, double x, double y, double& wx, double& wy) {
  double eye[4], clip[4];
  for (int r = 0; r < 4; ++r) eye[r] = m.model[r] * x + m.model[4 + r] * y + m.model[12 + r];
  for (int r = 0; r < 4; ++r)
    clip[r] = m.proj[r] * eye[0] + m.proj[4 + r] * eye[1] + m.proj[8 + r] * eye[2] + m.proj[12 + r] * eye[3];
  if (!(clip[3] > 0)) return false;
  wx = (clip[0] / clip[3] + 1) * m.viewport[2] / 2.0;
  wy = (clip[1] / clip[3] + 1) * m.viewport[3] / 2.0;
  return true;
}

// The largest distance in pixels between neighbours a step apart anywhere in
// the box, in x or y; infinity when it cannot be told.
double PixelsPerStep(const WindowProjection& m, float minX, float maxX, float minY, float maxY, double step) {
  double most = 0;
  for (double x : {static_cast<double>(minX), static_cast<double>(maxX)})
    for (double y : {static_cast<double>(minY), static_cast<double>(maxY)}) {
      double ox, oy, px, py, qx, qy;
      if (!WindowOf(m, x, y, ox, oy) || !WindowOf(m, x + step, y, px, py) || !WindowOf(m, x, y + step, qx, qy))
        return std::numeric_limits<double>::infinity();
      most = std::max({most, std::hypot(px - ox, py - oy), std::hypot(qx - ox, qy - oy)});
    }
  return most;
}

}  // namespace

void CFunCurve::DrawField() {
  if (!ComputeField() || field_.empty()) return;
  glDisable(GL_LIGHTING);
  glEnable(GL_POINT_SMOOTH);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  SetColor(LineColor);
  // Every vertex costs the display list about a tenth of a microsecond, and a
  // field has tens of thousands. Where neighbouring points lie at most a
  // pixel apart on the canvas (in the list's projection), a run of them
  // along a column covers an unbroken line of pixels, and is drawn as that
  // line plus its two end points: the same pixels but for the antialiased
  // fringe of the field's left and right edges. Polar fields, and points
  // further apart, are drawn one by one, those outside the view left out.
  const WindowProjection& m = CompiledProjection();
  const bool dense =
      CoordType != 2 && m.valid && PixelsPerStep(m, MinX, MaxX, MinY, MaxY, 1.0 / fieldDensity_) <= 1.0;
  const float* p = field_.data();
  if (dense) {
    glLineWidth(1.0f);
    glBegin(GL_LINES);
    for (const FieldRun& r : fieldRuns_) {
      if (r.last == r.first) continue;
      glVertex3f(p[2 * r.first], p[2 * r.first + 1], 0);
      glVertex3f(p[2 * r.last], p[2 * r.last + 1], 0);
    }
    glEnd();
    // The ends of each run as points too: a line leaves out the pixel it
    // ends in.
    glBegin(GL_POINTS);
    for (const FieldRun& r : fieldRuns_) {
      glVertex3f(p[2 * r.first], p[2 * r.first + 1], 0);
      if (r.last != r.first) glVertex3f(p[2 * r.last], p[2 * r.last + 1], 0);
    }
    glEnd();
  } else {
    glBegin(GL_POINTS);
    double wx, wy, wz;
    for (size_t i = 0; i + 1 < field_.size(); i += 2)
      if (!m.valid || ProjectToWindow(m, p[i], p[i + 1], 0, wx, wy, wz)) glVertex3f(p[i], p[i + 1], 0);
    glEnd();
  }
  glDisable(GL_POINT_SMOOTH);
  glDisable(GL_BLEND);
  glEnable(GL_LIGHTING);
}

}  // namespace vt
