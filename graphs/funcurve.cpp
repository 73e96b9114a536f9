// CFunCurve without the drawing: creation, sampling, the overlays' results,
// box, picking, intersections, the record.
#include "graphs/funcurve.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "document/document.h"
#include "document/globals.h"
#include "document/numtext.h"
#include "expr/text_prep.h"
#include "geometry/geom.h"
#include "geometry/line.h"
#include "graphs/curve_analysis.h"
#include "graphs/follow.h"
#include "persist/record.h"

namespace vt {

namespace {

// Graph kinds whose samples GetPoints computes.
bool SamplesGraphType(int g) {
  switch (g) {
    case 0: case 3: case 20: case 21: case 22: case 23: case 37:
    case 41: case 42: case 43: case 44: case 45:
      return true;
    default:
      return false;
  }
}

bool IsHole(const Position& p) { return p.x == BreakValue || p.y == BreakValue || p.z == BreakValue; }

bool Evaluate(Cls6& calc, const std::string& postfix, const VariableTable& vars, float& v) {
  return EvaluatePostfix(calc, postfix, vars, v);
}

bool Compile(const std::string& text, const VariableTable& vars, std::string& postfix) {
  return CompileFormula(text, vars, postfix);
}

std::string Num(float v) { return SingleToText(v); }

// A curve seen as x(w), y(w) of one variable, with the derivative texts:
// what tangents, normals and curvature circles are computed from.
struct ParametricView {
  FormulaVar var = FormulaVar::X;
  std::string px, py, dx, dy;
  bool ok = false;
};

}  // namespace

CFunCurve::CFunCurve() {
  GELineWidth = 1;
  GELineStyle = 1;
}

void CFunCurve::Init(const std::string& id, const std::string& name, int graphType, int coordType,
                     const std::string& expressX, const std::string& expressY, const std::string& expressZ, int stepU,
                     int stepV, const std::string& minU, const std::string& maxU, float minV, float maxV,
                     std::uint32_t lineColor, int lineWidth) {
  ID = id;
  NameS = name;
  GraphType = graphType;
  CoordType = coordType;
  ExpressX = expressX;
  ExpressY = expressY;
  ExpressZ = expressZ;
  StepU = stepU;
  StepV = stepV;
  MinU = minU;
  MaxU = maxU;
  MinV = minV;
  MaxV = maxV;
  LineColor = lineColor;
  LineWidth = lineWidth;
  ForeColor = lineColor;
  GELineWidth = static_cast<float>(lineWidth);
}

// ---- sampling ------------------------------------------------------------------------

int CFunCurve::OwnNames() const {
  if (CoordType != 2) return kOwnNone;
  if (FunForm == 2) return kOwnA;
  return FunForm == 1 || FunForm == 4 ? kOwnA | kOwnR : kOwnNone;
}

bool CFunCurve::EvaluateRange(float& start, float& end) const {
  CurveTable table;
  table.Load();
  std::string pmin, pmax;
  if (!Compile(MinU, table.vars, pmin) || !Compile(MaxU, table.vars, pmax)) return false;
  Cls6 calc;
  return Evaluate(calc, pmin, table.vars, start) && Evaluate(calc, pmax, table.vars, end);
}

bool CFunCurve::Sample(const std::string& px, const std::string& py, int steps, float start, float end,
                       bool derivative, std::vector<Position>& out) const {
  if (FunForm != 2 && FunForm != 3) return true;
  CurveTable table;
  Cls6 calc;
  out.resize(static_cast<size_t>(steps) + 1);
  const float du = (end - start) / static_cast<float>(steps);
  for (int i = 0; i <= steps; ++i) {
    const float t = du * static_cast<float>(i) + start;
    table.Load(OwnNames());  // parameters as they stand now
    float* v = table.vars.values;
    double x = 0, y = 0;
    if (FunForm == 2) {
      if (CoordType == 2) {
        v[table.A] = t;
        float r;
        if (!Evaluate(calc, py, table.vars, r)) return false;
        const double c = std::cos(static_cast<double>(t)), s = std::sin(static_cast<double>(t));
        // The derived curve of a polar graph takes sine and cosine the other
        // way round.
        x = derivative ? r * s : r * c;
        y = derivative ? r * c : r * s;
      } else {
        v[table.X] = t;
        float fy;
        if (!Evaluate(calc, py, table.vars, fy)) return false;
        x = t;
        y = fy;
      }
    } else {
      v[table.U] = t;
      float a, b;
      if (!Evaluate(calc, px, table.vars, a) || !Evaluate(calc, py, table.vars, b)) return false;
      if (CoordType == 2) {
        const double c = std::cos(static_cast<double>(a)), s = std::sin(static_cast<double>(a));
        x = derivative ? b * s : b * c;
        y = derivative ? b * c : b * s;
      } else {
        x = a;
        y = b;
      }
    }
    out[static_cast<size_t>(i)].Set(static_cast<float>(x), static_cast<float>(y), 0);
  }
  return true;
}

void CFunCurve::ClipSamples(std::vector<Position>& samples) const {
  // Up to StepV, not StepU: with the two apart the samples beyond StepV keep
  // their values.
  const int last = std::min(StepV, static_cast<int>(samples.size()) - 1);
  for (int i = 0; i <= last; ++i) {
    Position& p = samples[static_cast<size_t>(i)];
    if (p.x > BoxMaxX || p.x < BoxMinX) p.x = BreakValue;
    if (p.y > BoxMaxY || p.y < BoxMinY) p.y = BreakValue;
    if (p.z > BoxMaxZ || p.z < BoxMinZ) p.z = BreakValue;
  }
}

bool CFunCurve::GetPoints() {
  sampled_ = true;
  RecordFormulaInputs(ID, {});  // until the formulas compile: follows nothing
  resultLines_.clear();
  rootMarks_.clear();
  maxMarks_.clear();
  minMarks_.clear();
  guaiMarks_.clear();
  tangents_.clear();
  normals_.clear();
  circles_.clear();
  integral_ = length_ = 0;
  devOk_ = dev2Ok_ = false;

  if (StepU == 0) StepU = 1;
  if (StepV == 0) StepV = 1;
  if (StepU < 0 || StepU > kMaxSteps || StepV < 0) return false;
  const std::string fx = InsertImplicitProducts(ExpressX);
  const std::string fy = InsertImplicitProducts(ExpressY);
  const size_t n = static_cast<size_t>(StepU) + 1;
  Vert3D.assign(n, Position(0, 0, 0));
  DevVert.assign(n, Position(0, 0, 0));
  Dev2Vert.assign(n, Position(0, 0, 0));
  if (ShowJO) JOVert.assign(n, Position(0, 0, 0));
  else JOVert.clear();

  CurveTable table;
  table.Load(OwnNames());
  std::string px, py;
  // Only the parametric form has a formula of its own in ExpressX.
  if (FunForm == 3 && !Compile(fx, table.vars, px)) return false;
  if (!Compile(fy, table.vars, py)) return false;
  RecordFormulaInputs(ID, {ExpressX, ExpressY, MinU, MaxU, CurvPosExp, QiePosExp, NmlPosExp});
  float start, end;
  if (!EvaluateRange(start, end)) return false;
  StartValue = start;
  EndValue = end;
  if (!SamplesGraphType(GraphType)) {
    BoxFromSamples();
    return true;
  }
  if (!Sample(px, py, StepU, start, end, false, Vert3D)) return false;
  if (FunForm == 2 || FunForm == 3) ClipSamples(Vert3D);
  BoxFromSamples();
  if (FunForm == 2 || FunForm == 3) ComputeOverlays(fx, fy);
  return true;
}

// ---- overlays ------------------------------------------------------------------------

namespace {

// The curve as plane points x(w), y(w) of one variable.
ParametricView PlaneView(int funForm, int coordType, const std::string& fx, const std::string& fy) {
  ParametricView v;
  if (coordType != 2) {
    v.var = funForm == 2 ? FormulaVar::X : FormulaVar::U;
    v.px = funForm == 2 ? std::string("x") : fx;
    v.py = fy;
    return v;
  }
  // Polar: the plane point r (cos a, sin a).
  const std::string angle = funForm == 2 ? std::string("a") : fx;
  v.var = funForm == 2 ? FormulaVar::A : FormulaVar::U;
  v.px = "(" + fy + ")*cos(" + angle + ")";
  v.py = "(" + fy + ")*sin(" + angle + ")";
  return v;
}

// The view of the curve as x(w), y(w) with derivatives; dxText and dyText
// are the curve's first-derivative texts when they exist.
ParametricView MakeView(int funForm, int coordType, const std::string& fx, const std::string& fy,
                        const std::string& dxText, const std::string& dyText, bool haveDerivatives, int own) {
  ParametricView v = PlaneView(funForm, coordType, fx, fy);
  if (coordType != 2) {
    v.dx = funForm == 2 ? std::string("1") : dxText;
    v.dy = dyText;
    v.ok = haveDerivatives;
    return v;
  }
  // Polar: derived as one text.
  v.ok = CurveDerivativeText(v.px, v.dx, own) && CurveDerivativeText(v.py, v.dy, own);
  return v;
}

// A zero of a formula on the sampled chords, with the sense in which the
// samples crossed (1 rising, -1 falling, 0 a touch).
struct ChordZero {
  RefinedZero z;
  int trend = 0;
};

// The zeros of f(w) where its samples v[i] at w = start + i du (as Sample
// places them; BreakValue a hole) change sign, and with `touches` where they
// come closest to 0 without a change; refined on the formula and each found
// once (chords that meet at a zero on a sample both see it), in order of w.
std::vector<ChordZero> ZerosOnChords(FormulaEvaluator& f, const std::vector<float>& v, float start, float du,
                                     bool touches) {
  std::vector<ChordZero> found;
  auto w = [&](size_t i) { return du * static_cast<float>(i) + start; };
  auto hole = [&](size_t i) { return v[i] == BreakValue; };
  for (size_t i = 0; i + 1 < v.size(); ++i) {
    if (hole(i) || hole(i + 1)) continue;
    const float a = v[i], b = v[i + 1];
    RefinedZero z;
    if (((a <= 0 && b >= 0) || (a >= 0 && b <= 0)) && RefineSignChange(f, w(i), w(i + 1), z))
      found.push_back({z, b > a ? 1 : b < a ? -1 : 0});
    if (touches && i > 0 && !hole(i - 1) && v[i] != 0 && (v[i - 1] > 0) == (v[i] > 0) && (a > 0) == (b > 0) &&
        std::fabs(a) <= std::fabs(v[i - 1]) && std::fabs(a) <= std::fabs(b) && RefineTouch(f, w(i - 1), w(i + 1), z))
      found.push_back({z, 0});
  }
  std::stable_sort(found.begin(), found.end(), [](const ChordZero& p, const ChordZero& q) { return p.z.w < q.z.w; });
  std::vector<ChordZero> out;
  const double close = 1e-4 * std::fabs(static_cast<double>(du));
  for (const ChordZero& c : found) {
    if (!out.empty() &&
        std::fabs(static_cast<double>(c.z.w) - out.back().z.w) <= std::max({c.z.spread, out.back().z.spread, close}))
      continue;
    out.push_back(c);
  }
  return out;
}

// The point of a refined zero and its coordinates as text, with the digits
// that are known: how far the point moves over w +- spread. A root lies on
// the axis. False when the point has no value.
bool ZeroPoint(int kind, const ParametricView& view, const RefinedZero& z, float& x, float& y, std::string& xText,
               std::string& yText) {
  bool o[6];
  const double s = z.spread;
  x = FormulaValue(view.px, z.w, view.var, &o[0]);
  y = FormulaValue(view.py, z.w, view.var, &o[1]);
  const float x0 = FormulaValue(view.px, static_cast<float>(z.w - s), view.var, &o[2]);
  const float x1 = FormulaValue(view.px, static_cast<float>(z.w + s), view.var, &o[3]);
  const float y0 = FormulaValue(view.py, static_cast<float>(z.w - s), view.var, &o[4]);
  const float y1 = FormulaValue(view.py, static_cast<float>(z.w + s), view.var, &o[5]);
  if (!(o[0] && o[1]) || x == BreakValue || y == BreakValue) return false;
  auto spread = [](float v, float a, float b, bool ok) {
    const double ulp = 1.1920929e-7 * std::fabs(v);
    if (!ok || a == BreakValue || b == BreakValue) return ulp;
    return std::max(std::fabs(static_cast<double>(v) - a), std::fabs(static_cast<double>(v) - b)) + ulp;
  };
  xText = KnownDigitsText(x, view.px == "x" ? s : spread(x, x0, x1, o[2] && o[3]));
  if (kind == 0) {
    y = 0;
    yText = "0";
  } else {
    yText = KnownDigitsText(y, spread(y, y0, y1, o[4] && o[5]));
  }
  return true;
}

bool AnyHole(std::initializer_list<float> values) {
  for (float v : values)
    if (v == BreakValue) return true;
  return false;
}

}  // namespace

void CFunCurve::ComputeLinePositions(int posType, const std::string& posExp, const std::vector<float>& list,
                                     std::vector<float>& out) const {
  out.clear();
  if (posType == kPosByFormula) {
    bool ok = false;
    const float v = FormulaValue(InsertImplicitProducts(posExp), 0, FormulaVar::X, &ok);
    if (ok && v != BreakValue) out.push_back(v);
    return;
  }
  out = list;
}

void CFunCurve::AddMark(int kind, float x, float y, const std::string& xText, const std::string& yText) {
  static const char* const kTitles[4] = {"    Root: x=", "    Maximum: x=", "    Minimum: x=", "    Inflexion: x="};
  std::vector<Position>* marks[4] = {&rootMarks_, &maxMarks_, &minMarks_, &guaiMarks_};
  const std::uint32_t colors[4] = {RootColor, MaxColor, MinColor, GuaiColor};
  const int sizes[4] = {RootSize, MaxSize, MinSize, GuaiSize};
  const int symbols[4] = {RootSymbol, MaxSymbol, MinSymbol, GuaiSymbol};
  const int number = static_cast<int>(rootMarks_.size() + maxMarks_.size() + minMarks_.size() + guaiMarks_.size());
  Position m(x, y, 0);
  m.ID = "PT" + ZeroPad(number + 1, 4);
  m.ForeColor = colors[kind];
  m.Size = static_cast<short>(sizes[kind]);
  m.Symbol = symbols[kind];
  m.HideLabel = true;
  marks[kind]->push_back(m);
  resultLines_.push_back(kTitles[kind] + xText + (kind == 3 ? ", y=" : ",y=") + yText);
}

void CFunCurve::ComputeLength(bool form3, bool polar, const std::string& fy, const std::string& dx,
                              const std::string& dy) {
  if (!ShowLen || !devOk_) return;
  std::string integrand;
  FormulaVar var = VarOfCoordType(CoordType);
  if (!form3 && !polar) {
    integrand = "sqr((" + dy + ")^2+1)";
  } else if (!form3) {
    integrand = "sqr((" + fy + ")^2+(" + dy + ")^2)";
  } else {
    var = FormulaVar::U;
    integrand = polar ? "sqr((" + dy + ")^2+(" + fy + ")^2*(" + dx + ")^2)"
                      : "sqr((" + dx + ")^2+(" + dy + ")^2)";
  }
  KnownValue length;
  if (!IntegrateFormula(LenFrom, LenTo, integrand, var, length)) return;
  length_ = static_cast<float>(length.v);
  resultLines_.push_back("    The length of curve from " + Num(LenFrom) + " to " + Num(LenTo) + " is " + length.Text());
}

void CFunCurve::ComputeOverlays(const std::string& fx, const std::string& fy) {
  const bool form3 = FunForm == 3;
  const bool polar = CoordType == 2;
  const bool sampleDerived = GraphType == 0 || GraphType == 3;
  const bool needFirst = ShowDev || ShowQie || ShowNml || ShowMax || ShowMin || ShowCurv || ShowGuai || ShowLen ||
                         (ShowInt && form3);
  const bool needSecond = ShowGuai || ShowCurv;
  const int own = OwnNames();
  CurveTable table;
  table.Load(own);
  auto addZero = [this](int kind, const ParametricView& v, const RefinedZero& z) {
    float x, y;
    std::string xText, yText;
    if (ZeroPoint(kind, v, z, x, y, xText, yText)) AddMark(kind, x, y, xText, yText);
  };

  // First and second derivatives, texts and samples.
  std::string dx, dy, ddx, ddy;
  if (needFirst) {
    devOk_ = CurveDerivativeText(fy, dy, own) && (!form3 || CurveDerivativeText(fx, dx, own));
    if (devOk_ && sampleDerived) {
      // The derived curve of x(u), y(u) is the graph of dy/dx over x.
      const bool slope = form3 && !polar;
      std::string pdx, pdy;
      devOk_ = (!form3 || Compile(slope ? fx : dx, table.vars, pdx)) &&
               Compile(slope ? "(" + dy + ")/(" + dx + ")" : dy, table.vars, pdy) &&
               Sample(pdx, pdy, StepU, StartValue, EndValue, true, DevVert);
      if (devOk_) ClipSamples(DevVert);
    }
  }
  if (needSecond && devOk_) {
    dev2Ok_ = CurveDerivativeText(dy, ddy, own) && (!form3 || CurveDerivativeText(dx, ddx, own));
    if (dev2Ok_ && sampleDerived) {
      std::string pdx, pdy;
      dev2Ok_ = (!form3 || Compile(ddx, table.vars, pdx)) && Compile(ddy, table.vars, pdy) &&
                Sample(pdx, pdy, StepU, StartValue, EndValue, true, Dev2Vert);
      if (dev2Ok_) ClipSamples(Dev2Vert);
    }
  }

  // Parity: the curve of f(-x) beside the curve.
  if (ShowJO) {
    std::string pjx, pjy;
    const std::string jx = ParityText(fx), jy = ParityText(fy);
    if ((!form3 || Compile(jx, table.vars, pjx)) && Compile(jy, table.vars, pjy) &&
        Sample(pjx, pjy, StepU, StartValue, EndValue, false, JOVert))
      ClipSamples(JOVert);
  }

  // The integral and its area.
  if (ShowInt) {
    std::string integrand;
    FormulaVar var = VarOfCoordType(CoordType);
    bool can = true;
    if (!form3) {
      integrand = polar ? "0.5*(" + fy + ")^2" : fy;
    } else if (devOk_) {
      var = FormulaVar::U;
      // The area swept over u: y dx, or half r^2 da in polar form.
      integrand = polar ? "0.5*(" + fy + ")^2*(" + dx + ")" : "(" + fy + ")*(" + dx + ")";
    } else {
      can = false;
    }
    resultLines_.push_back("    Integral from " + Num(IntFrom) + " to " + Num(IntTo));
    KnownValue area;
    if (can && IntegrateFormula(IntFrom, IntTo, integrand, var, area)) {
      integral_ = static_cast<float>(area.v);
      resultLines_.push_back("    Area is " + area.Text());
    }
  }

  if (ShowRoot) {
    // Zeros of y(w), refined on the formula; x from x(w).
    const ParametricView plane = PlaneView(FunForm, CoordType, fx, fy);
    FormulaEvaluator fyOf;
    std::vector<float> ys(Vert3D.size(), BreakValue);
    for (size_t i = 0; i < Vert3D.size(); ++i)
      if (!IsHole(Vert3D[i])) ys[i] = Vert3D[i].y;
    const float du = (EndValue - StartValue) / static_cast<float>(StepU);
    if (fyOf.Compile(plane.py, plane.var))
      for (const ChordZero& c : ZerosOnChords(fyOf, ys, StartValue, du, true)) addZero(0, plane, c.z);
  }

  // The curve as x(w), y(w) with its derivatives, for the marks and lines.
  const bool wantMarks = sampleDerived && (ShowMax || ShowMin || (ShowGuai && dev2Ok_));
  if (!(wantMarks || ShowQie || ShowNml || ShowCurv)) {
    ComputeLength(form3, polar, fy, dx, dy);
    return;
  }
  const ParametricView view = MakeView(FunForm, CoordType, fx, fy, dx, dy, devOk_, own);
  if (wantMarks && view.ok) {
    // Extrema are where y(w) turns, inflexions where the curve's bending
    // x' y'' - y' x'' changes sign; the marks stand on the curve at that w.
    auto mark = [&](const std::string& text, int kind) {
      const float du = (EndValue - StartValue) / static_cast<float>(StepU);
      std::vector<float> values(static_cast<size_t>(StepU) + 1);
      FormulaEvaluator f;
      if (!f.Compile(text, view.var)) return;
      for (int i = 0; i <= StepU; ++i) {
        const float t = du * static_cast<float>(i) + StartValue;
        float& v = values[static_cast<size_t>(i)];
        if (!f.Value(t, v)) v = BreakValue;
      }
      for (const ChordZero& c : ZerosOnChords(f, values, StartValue, du, false)) {
        if ((kind == 1 && c.trend != -1) || (kind == 2 && c.trend != 1)) continue;
        addZero(kind, view, c.z);
      }
    };
    if (ShowMax) mark(view.dy, 1);
    if (ShowMin) mark(view.dy, 2);
    if (ShowGuai && dev2Ok_) {
      std::string ddxv, ddyv;
      if (view.dx == "1") {
        if (CurveDerivativeText(view.dy, ddyv, own)) mark(ddyv, 3);
      } else if (CurveDerivativeText(view.dx, ddxv, own) && CurveDerivativeText(view.dy, ddyv, own)) {
        mark("(" + view.dx + ")*(" + ddyv + ")-(" + view.dy + ")*(" + ddxv + ")", 3);
      }
    }
  }
  ComputeLength(form3, polar, fy, dx, dy);

  if (!view.ok) return;

  // Tangents and normals: a chord 4 long through the point.
  constexpr float kHalf = 2.0f;
  for (int which = 0; which < 2; ++which) {
    const bool normal = which == 1;
    if (normal ? !ShowNml : !ShowQie) continue;
    std::vector<float> at;
    if (normal) ComputeLinePositions(NmlPosType, NmlPosExp, NmlX, at);
    else ComputeLinePositions(QiePosType, QiePosExp, QieX, at);
    for (float w : at) {
      bool o1, o2, o3, o4;
      const float x0 = FormulaValue(view.px, w, view.var, &o1);
      const float y0 = FormulaValue(view.py, w, view.var, &o2);
      const float ddxv = FormulaValue(view.dx, w, view.var, &o3);
      const float ddyv = FormulaValue(view.dy, w, view.var, &o4);
      if (!(o1 && o2 && o3 && o4) || AnyHole({x0, y0, ddxv, ddyv})) continue;
      double ux = ddxv, uy = ddyv;
      const double len = std::hypot(ux, uy);
      if (len == 0) continue;
      ux /= len;
      uy /= len;
      if (normal) {
        const double t = ux;
        ux = -uy;
        uy = t;
      }
      // The slope and the point with the digits they are known to; a
      // vertical slope reads 10000.
      KnownValue kdx, kdy;
      std::string slope = Num(10000.0f);
      if (ValueKnown(view.dx, w, view.var, kdx) && ValueKnown(view.dy, w, view.var, kdy)) {
        KnownValue minus = kdx;
        minus.v = -minus.v;
        if (normal ? kdy.v != 0 : kdx.v != 0) slope = (normal ? Quotient(minus, kdy) : Quotient(kdy, kdx)).Text();
      }
      auto known = [](const std::string& f, float at, FormulaVar var) {
        KnownValue k;
        return ValueKnown(f, at, var, k) ? k.Text() : Num(FormulaValue(f, at, var));
      };
      std::string head = normal ? "    Normal position: " : "    Tangent position: ";
      if (polar) {
        const std::string a = FunForm == 2 ? Num(w) : known(fx, w, FormulaVar::U);
        resultLines_.push_back(head + "a=" + a + ", r=" + known(fy, w, FunForm == 2 ? FormulaVar::A : FormulaVar::U));
      } else {
        const std::string x = FunForm == 2 ? Num(w) : known(view.px, w, view.var);
        resultLines_.push_back(head + "x=" + x + ", y=" + known(view.py, w, view.var));
      }
      resultLines_.push_back("      Slope: " + slope);
      Stroke s{static_cast<float>(x0 - kHalf * ux), static_cast<float>(y0 - kHalf * uy),
               static_cast<float>(x0 + kHalf * ux), static_cast<float>(y0 + kHalf * uy)};
      (normal ? normals_ : tangents_).push_back(s);
    }
  }

  // Curvature circles: y' = dy/dx, and y'' from the derivative of that
  // quotient over dx.
  if (ShowCurv) {
    std::string dq;
    const std::string q = "(" + view.dy + ")/(" + view.dx + ")";
    if (!CurveDerivativeText(q, dq, own)) return;
    std::vector<float> at;
    ComputeLinePositions(CurvPosType, CurvPosExp, CurvX, at);
    for (float w : at) {
      bool o1, o2, o3, o4, o5;
      const float x0 = FormulaValue(view.px, w, view.var, &o1);
      const float y0 = FormulaValue(view.py, w, view.var, &o2);
      const float vdx = FormulaValue(view.dx, w, view.var, &o3);
      const float vdy = FormulaValue(view.dy, w, view.var, &o4);
      const float vdq = FormulaValue(dq, w, view.var, &o5);
      if (!(o1 && o2 && o3 && o4 && o5) || AnyHole({x0, y0, vdx, vdy, vdq}) || vdx == 0) continue;
      const double y1 = static_cast<double>(vdy) / vdx;
      double y2 = static_cast<double>(static_cast<float>(static_cast<double>(vdq) / vdx));
      if (y2 == 0) y2 = 0.0001;
      const double g = y1 * y1 + 1;
      const double curvature = std::fabs(y2) / std::pow(g, 1.5);
      const double radius = 1 / curvature;
      const double cx = x0 - y1 * g / y2;
      const double cy = y0 + g / y2;
      // The texts with the digits they are known to, from the spreads of the
      // point, y' and y''; a y'' of 0 stands in as 0.0001, and what follows
      // from it is printed whole.
      std::string t[6] = {Num(x0), Num(y0), Num(static_cast<float>(curvature)), Num(static_cast<float>(radius)),
                          Num(static_cast<float>(cx)), Num(static_cast<float>(cy))};
      KnownValue kx, ky, kdx, kdy, kdq;
      if (ValueKnown(view.px, w, view.var, kx) && ValueKnown(view.py, w, view.var, ky) &&
          ValueKnown(view.dx, w, view.var, kdx) && ValueKnown(view.dy, w, view.var, kdy) &&
          ValueKnown(dq, w, view.var, kdq)) {
        const KnownValue p1 = Quotient(kdy, kdx), p2 = Quotient(kdq, kdx);
        // base + fn(y', y''), its spread from the corners of the two spreads.
        auto known = [&](const KnownValue& base, double (*fn)(double, double)) {
          const double v = base.v + fn(p1.v, p2.v);
          double s = 0;
          for (int a : {-1, 1})
            for (int b : {-1, 1})
              s = std::max(s, std::fabs(fn(p1.v + a * p1.spread, p2.v + b * p2.spread) - (v - base.v)));
          return KnownDigitsText(v, s + base.spread + 2.4e-7 * std::fabs(v));
        };
        if (view.px != "x") t[0] = kx.Text();
        t[1] = ky.Text();
        if (p2.v != 0) {
          const KnownValue none;
          t[2] = known(none, [](double p, double q) { return std::fabs(q) / std::pow(p * p + 1, 1.5); });
          t[3] = known(none, [](double p, double q) { return std::pow(p * p + 1, 1.5) / std::fabs(q); });
          t[4] = known(kx, [](double p, double q) { return -p * (p * p + 1) / q; });
          t[5] = known(ky, [](double p, double q) { return (p * p + 1) / q; });
        }
      }
      resultLines_.push_back("    Curvature circle:");
      resultLines_.push_back("      Position: x=" + t[0] + ", y=" + t[1]);
      resultLines_.push_back("        Curvature: " + t[2]);
      resultLines_.push_back("        The radius of curvature circle: " + t[3]);
      resultLines_.push_back("        Center of curvature circle: x=" + t[4] + ", y=" + t[5]);
      circles_.push_back({static_cast<float>(cx), static_cast<float>(cy), static_cast<float>(radius)});
    }
  }
}

// ---- box --------------------------------------------------------------------------------

void CFunCurve::BoxFromSamples() {
  MinX = MinY = MinZ = 9999999.0f;
  MaxX = MaxY = MaxZ = -9999999.0f;
  if (FunForm == 1 || FunForm == 4) {
    if (CoordType == 2) {
      // Polar ranges: the disc of the largest radius.
      const float r = std::max(std::fabs(MinV), std::fabs(MaxV));
      MinX = MinY = -r;
      MaxX = MaxY = r;
    } else {
      MinX = std::min(StartValue, EndValue);
      MaxX = std::max(StartValue, EndValue);
      MinY = std::min(MinV, MaxV);
      MaxY = std::max(MinV, MaxV);
    }
    MinZ = MaxZ = 0;
    return;
  }
  for (const Position& p : Vert3D) {
    if (p.x != BreakValue) MinX = std::min(MinX, p.x), MaxX = std::max(MaxX, p.x);
    if (p.y != BreakValue) MinY = std::min(MinY, p.y), MaxY = std::max(MaxY, p.y);
    if (p.z != BreakValue) MinZ = std::min(MinZ, p.z), MaxZ = std::max(MaxZ, p.z);
  }
}

void CFunCurve::GetBox() {
  if ((FunForm == 2 || FunForm == 3) && CoordType == 2 && (GraphType == 0 || GraphType == 9)) {
    GetPoints();
    return;
  }
  if (FunForm == 1 || FunForm == 4) {
    // The ranges as they evaluate now.
    float start, end;
    if (EvaluateRange(start, end)) {
      StartValue = start;
      EndValue = end;
    }
  }
  BoxFromSamples();
}

void CFunCurve::GetBox(CBox& box) const {
  box.MinX = MinX;
  box.MaxX = MaxX;
  box.MinY = MinY;
  box.MaxY = MaxY;
  box.MinZ = MinZ;
  box.MaxZ = MaxZ;
}

// ---- picking and dependent objects ---------------------------------------------------------

bool CFunCurve::Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) {
  if (Hide) return false;
  return PickRay(scenePoint, nearPoint, farPoint);
}

bool CFunCurve::PickRay(const Position& scenePoint, const Position& rayStart, const Position& rayEnd) {
  constexpr double kTolerance = 0.12;
  auto chordHit = [&](float x1, float y1, float z1, float x2, float y2, float z2) {
    CBox b;
    b.MinX = std::min(x1, x2), b.MaxX = std::max(x1, x2);
    b.MinY = std::min(y1, y2), b.MaxY = std::max(y1, y2);
    b.MinZ = std::min(z1, z2), b.MaxZ = std::max(z1, z2);
    if (!RayMeetsBox(rayStart, rayEnd, b, kTolerance)) return false;
    return DistanceRayLine(rayStart, rayEnd, Position(x1, y1, z1), Position(x2, y2, z2)) < kTolerance;
  };
  try {
    if (FunForm == 1) {
      for (size_t k = 0; k + 3 < traced_.size(); k += 4)
        if (chordHit(traced_[k], traced_[k + 1], 0, traced_[k + 2], traced_[k + 3], 0)) return true;
      return false;
    }
    if (FunForm == 4) {
      // A press inside the field: the inequality holds at the scene point.
      // The compile of the last draw (a broken text is not compiled, nor its
      // message shown, again at every mouse move).
      CurveTable table;
      float start, end;
      if (!DrawTable(table, start, end)) return false;
      float a = scenePoint.x, b = scenePoint.y;
      const float lo = std::min(start, end), hi = std::max(start, end);
      if (CoordType == 2) {
        b = static_cast<float>(std::hypot(scenePoint.x, scenePoint.y));
        a = static_cast<float>(std::atan2(scenePoint.y, scenePoint.x));
        // The turn of the angle that falls into the range, when one does.
        if (a < lo) a += static_cast<float>(std::ceil((lo - a) / 6.2832) * 6.2832);
      }
      if (a < lo || a > hi || b < std::min(MinV, MaxV) || b > std::max(MinV, MaxV)) return false;
      table.vars.values[CoordType == 2 ? table.A : table.X] = a;
      table.vars.values[CoordType == 2 ? table.R : table.Y] = b;
      Cls6 calc;
      float v;
      return Evaluate(calc, drawPostfix_, table.vars, v) && v != BreakValue && v <= 0;
    }
    for (size_t i = 0; i + 1 < Vert3D.size(); ++i) {
      const Position& a = Vert3D[i];
      const Position& b = Vert3D[i + 1];
      if (IsHole(a) || IsHole(b)) continue;
      if (chordHit(a.x, a.y, a.z, b.x, b.y, b.z)) return true;
    }
  } catch (const ExprFailure&) {
  }
  return false;
}

bool CFunCurve::BoxSel(float x1, float y1, float x2, float y2) const {
  Position p;
  if (FunForm == 1) {
    for (size_t k = 0; k + 1 < traced_.size(); k += 2) {
      p.Set(traced_[k], traced_[k + 1], 0);
      if (p.BoxSel(x1, y1, x2, y2)) return true;
    }
    return false;
  }
  if (FunForm == 4) {
    for (size_t k = 0; k + 1 < field_.size(); k += 2) {
      p.Set(field_[k], field_[k + 1], 0);
      if (p.BoxSel(x1, y1, x2, y2)) return true;
    }
    return false;
  }
  for (const Position& s : Vert3D)
    if (!IsHole(s) && s.BoxSel(x1, y1, x2, y2)) return true;
  return false;
}

std::vector<Position> CFunCurve::Points() const {
  std::vector<Position> out(51, Position(0, 0, 0));
  if (FunForm != 2 && FunForm != 3) return out;
  CurveTable table;
  table.Load(OwnNames());
  const std::string fx = InsertImplicitProducts(ExpressX);
  const std::string fy = InsertImplicitProducts(ExpressY);
  std::string px, py;
  if (FunForm == 3 && !Compile(fx, table.vars, px)) return out;
  if (!Compile(fy, table.vars, py)) return out;
  float start, end;
  if (!EvaluateRange(start, end)) return out;
  if (Sample(px, py, 50, start, end, false, out)) ClipSamples(out);
  return out;
}

int CFunCurve::NearestSample(float x, float y) const {
  int best = -1;
  double bestD = std::numeric_limits<double>::max();
  for (size_t i = 0; i < Vert3D.size(); ++i) {
    const Position& p = Vert3D[i];
    if (IsHole(p)) continue;
    const double d = std::hypot(static_cast<double>(p.x) - x, static_cast<double>(p.y) - y);
    if (d < bestD) {
      bestD = d;
      best = static_cast<int>(i);
    }
  }
  return best;
}

std::vector<Position> CFunCurve::LineInters(const CLine& line) const {
  std::vector<Position> out;
  // Each crossing is refined on the formula: the zero between the chord's
  // ends of (y(w) - y0) dx - (x(w) - x0) dy, the side of the line.
  const ParametricView plane = PlaneView(FunForm, CoordType, InsertImplicitProducts(ExpressX),
                                         InsertImplicitProducts(ExpressY));
  const double lx = static_cast<double>(line.pEnd.x) - line.pBegin.x;
  const double ly = static_cast<double>(line.pEnd.y) - line.pBegin.y;
  auto num = [](double v) { return "(" + DoubleToText(v) + ")"; };
  FormulaEvaluator side, xOf, yOf;
  const bool refine = (FunForm == 2 || FunForm == 3) && StepU > 0 &&
                      side.Compile("((" + plane.py + ")-" + num(line.pBegin.y) + ")*" + num(lx) + "-((" + plane.px +
                                       ")-" + num(line.pBegin.x) + ")*" + num(ly),
                                   plane.var) &&
                      xOf.Compile(plane.px, plane.var) && yOf.Compile(plane.py, plane.var);
  const float du = (EndValue - StartValue) / static_cast<float>(std::max(StepU, 1));
  for (size_t i = 0; i + 1 < Vert3D.size(); ++i) {
    const Position& a = Vert3D[i];
    const Position& b = Vert3D[i + 1];
    if (IsHole(a) || IsHole(b)) continue;
    Position hit;
    if (!LineLine(a, b, line.pBegin, line.pEnd, hit)) continue;
    // On the chord, ends included.
    const double cx = static_cast<double>(b.x) - a.x, cy = static_cast<double>(b.y) - a.y;
    const double len2 = cx * cx + cy * cy;
    if (len2 == 0) continue;
    const double t = ((hit.x - a.x) * cx + (hit.y - a.y) * cy) / len2;
    if (t < -1e-6 || t > 1 + 1e-6) continue;
    hit.z = 0;
    RefinedZero z;
    float x, y;
    if (refine && RefineSignChange(side, du * static_cast<float>(i) + StartValue,
                                   du * static_cast<float>(i + 1) + StartValue, z) &&
        xOf.Value(z.w, x) && yOf.Value(z.w, y) && x != BreakValue && y != BreakValue)
      hit.Set(x, y, 0);
    if (!PointOnObject(line, hit)) continue;
    out.push_back(hit);
  }
  return out;
}

int CFunCurve::LineInter(const CLine& line, int pos, Position& result) const {
  if (pos < 1) return 0;
  const std::vector<Position> all = LineInters(line);
  if (static_cast<int>(all.size()) < pos) return 0;
  result.Set(all[static_cast<size_t>(pos - 1)].x, all[static_cast<size_t>(pos - 1)].y, 0);
  return 1;
}

void CFunCurve::UpdateStru() {
  for (Position& s : StruP)
    if (const Position* real = FindPoint(s.ID)) s.Set(real->x, real->y, real->z);
}

// ---- record ------------------------------------------------------------------------------

std::string CFunCurve::Save() const {
  RecordWriter w(ID);
  w.AddFramed(NameS).Add(GraphType).Add(FunForm).Add(CoordType).Add(DrawMode);
  w.AddFramed(ExpressX).AddFramed(ExpressY).AddFramed(ExpressZ);
  w.Add(StepU).Add(StepV).AddFramed(MinU).AddFramed(MaxU).Add(MinV).Add(MaxV);
  w.Add(static_cast<long>(LineColor)).Add(LineWidth).Add(LineStyle).Add(StruPNum());
  for (const Position& s : StruP) w.Add(s.ID);
  auto color = [&w](std::uint32_t c) { w.Add(static_cast<long>(c)); };
  w.Add(Show2DCurve).Add(ShowInverse);
  color(InvColor);
  w.Add(InvWidth).Add(ShowDev);
  color(DevColor);
  w.Add(DevWidth).Add(ShowInt);
  color(IntColor);
  w.Add(IntFrom).Add(IntTo).Add(ShowMax);
  color(MaxColor);
  w.Add(MaxSize).Add(MaxSymbol).Add(ShowMin);
  color(MinColor);
  w.Add(MinSize).Add(MinSymbol).Add(ShowGuai);
  color(GuaiColor);
  w.Add(GuaiSize).Add(GuaiSymbol).Add(ShowJO);
  color(JOColor);
  w.Add(JOWidth).Add(ShowRoot);
  color(RootColor);
  w.Add(RootSize).Add(RootSymbol);
  w.Add(ShowCurv).Add(CurvPosType).AddFramed(CurvPosExp).Add(CurvNum());
  for (float v : CurvX) w.Add(v);
  color(CurvColor);
  w.Add(CurvWidth);
  w.Add(ShowLen).Add(LenFrom).Add(LenTo);
  w.Add(ShowQie).Add(QiePosType).AddFramed(QiePosExp).Add(QieNum());
  for (float v : QieX) w.Add(v);
  color(QieColor);
  w.Add(QieWidth);
  w.Add(ShowNml).Add(NmlPosType).AddFramed(NmlPosExp).Add(NmlNum());
  for (float v : NmlX) w.Add(v);
  color(NmlColor);
  w.Add(NmlWidth);
  w.Add(Selected).Add(Hide);
  return w.Close();
}

std::unique_ptr<CFunCurve> CFunCurve::Load(RecordReader& r) {
  auto c = std::make_unique<CFunCurve>();
  c->ID = r.OwnId();
  c->NameS = r.FramedText();
  c->GraphType = r.Int();
  c->FunForm = r.Int();
  c->CoordType = r.Int();
  c->DrawMode = r.Int();
  c->ExpressX = r.FramedText();
  c->ExpressY = r.FramedText();
  c->ExpressZ = r.FramedText();
  c->StepU = r.Int();
  c->StepV = r.Int();
  c->MinU = r.FramedText();
  c->MaxU = r.FramedText();
  c->MinV = r.Single();
  c->MaxV = r.Single();
  c->LineColor = static_cast<std::uint32_t>(r.Long());
  c->LineWidth = r.Int();
  c->LineStyle = r.Int();
  const int n = r.Int();
  if (n < 0 || n > kMaxStru) throw RecordError("too many structure points");
  for (int i = 0; i < n; ++i) c->StruP.push_back(HolderCopyOf(r.Id()));
  auto color = [&r]() { return static_cast<std::uint32_t>(r.Long()); };
  auto list = [&r](std::vector<float>& out) {
    const int count = r.Int();
    if (count < 0 || count > kMaxPositions) throw RecordError("too many positions");
    out.clear();
    for (int i = 0; i < count; ++i) out.push_back(r.Single());
  };
  c->Show2DCurve = r.Bool();
  c->ShowInverse = r.Bool();
  c->InvColor = color();
  c->InvWidth = r.Int();
  c->ShowDev = r.Bool();
  c->DevColor = color();
  c->DevWidth = r.Int();
  c->ShowInt = r.Bool();
  c->IntColor = color();
  c->IntFrom = r.Single();
  c->IntTo = r.Single();
  c->ShowMax = r.Bool();
  c->MaxColor = color();
  c->MaxSize = r.Int();
  c->MaxSymbol = r.Int();
  c->ShowMin = r.Bool();
  c->MinColor = color();
  c->MinSize = r.Int();
  c->MinSymbol = r.Int();
  c->ShowGuai = r.Bool();
  c->GuaiColor = color();
  c->GuaiSize = r.Int();
  c->GuaiSymbol = r.Int();
  c->ShowJO = r.Bool();
  c->JOColor = color();
  c->JOWidth = r.Int();
  c->ShowRoot = r.Bool();
  c->RootColor = color();
  c->RootSize = r.Int();
  c->RootSymbol = r.Int();
  c->ShowCurv = r.Bool();
  c->CurvPosType = r.Int();
  c->CurvPosExp = r.FramedText();
  list(c->CurvX);
  c->CurvColor = color();
  c->CurvWidth = r.Int();
  c->ShowLen = r.Bool();
  c->LenFrom = r.Single();
  c->LenTo = r.Single();
  c->ShowQie = r.Bool();
  c->QiePosType = r.Int();
  c->QiePosExp = r.FramedText();
  list(c->QieX);
  c->QieColor = color();
  c->QieWidth = r.Int();
  c->ShowNml = r.Bool();
  c->NmlPosType = r.Int();
  c->NmlPosExp = r.FramedText();
  list(c->NmlX);
  c->NmlColor = color();
  c->NmlWidth = r.Int();
  c->Selected = r.Bool();
  c->Hide = r.Bool();
  c->ForeColor = c->LineColor;
  c->GELineWidth = static_cast<float>(c->LineWidth);
  c->GELineStyle = c->LineStyle;
  return c;
}

// ---- the collection ----------------------------------------------------------------------

CFunCurve* CFunCurves::Add(const CFunCurve& source, const std::string& key) {
  return Collection<CFunCurve>::Add(std::make_unique<CFunCurve>(source), key);
}

void RefreshFunCurves() {
  for (CFunCurve* c : Doc.FunCurves) c->GetPoints();
}

}  // namespace vt
