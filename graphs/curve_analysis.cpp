#include "graphs/curve_analysis.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "document/document.h"
#include "document/numtext.h"
#include "expr/derivative.h"
#include "expr/parameters.h"

namespace vt {

ResultsPanel CurveResults;

// ---- the variable table ------------------------------------------------------------

void HideOwnNames(VariableTable& vars, int count, int own) {
  if (own == kOwnNone) return;
  for (int i = 1; i <= count; ++i) {
    const std::string& n = vars.Name(i);
    if (((own & kOwnA) && SameNameNoCase(n, "A")) || ((own & kOwnR) && SameNameNoCase(n, "R")) ||
        ((own & kOwnB) && SameNameNoCase(n, "B")))
      vars.SetName(i, "");
  }
}

void CurveTable::Load(int own) {
  HideOwnNames(vars, LoadParameterTable(vars), own);
  U = vars.Add("U");
  V = vars.Add("V");
  X = vars.Add("X");
  Y = vars.Add("Y");
  A = vars.Add("A");
  R = vars.Add("R");
}

std::string CurveTable::NamesKey() const {
  std::string key;
  for (int i = 1; i <= vars.Count(); ++i) {
    key += vars.Name(i);
    key += '\n';
  }
  return key;
}

bool CompileFormula(const std::string& text, const VariableTable& vars, std::string& postfix) {
  Cls6 calc;
  postfix.clear();
  return calc.InfixToPostfix(text, vars, postfix) == 0;
}

bool EvaluatePostfix(Cls6& calc, const std::string& postfix, const VariableTable& vars, float& value) {
  float r = 0;
  bool ok = false;
  try {
    calc.DoEvaluate(postfix, false, vars, r, ok);
  } catch (const ExprFailure& e) {
    if (!e.IsOverflow()) return false;
    value = BreakValue;
    return true;
  }
  if (!ok) return false;
  value = r;
  return true;
}

FormulaVar VarOfCoordType(int coordType) { return coordType == 2 ? FormulaVar::A : FormulaVar::X; }

// ---- single values ---------------------------------------------------------------------

bool FormulaEvaluator::Compile(const std::string& formula, FormulaVar var) {
  table_.Load(var == FormulaVar::A ? kOwnA : kOwnNone);
  slot_ = var == FormulaVar::X ? table_.X : var == FormulaVar::A ? table_.A : table_.U;
  postfix_.clear();
  ok_ = calc_.InfixToPostfix(formula, table_.vars, postfix_) == 0;
  return ok_;
}

bool FormulaEvaluator::Value(float t, float& value) {
  if (!ok_) return false;
  table_.vars.values[slot_] = t;
  return EvaluatePostfix(calc_, postfix_, table_.vars, value);
}

float FormulaValue(const std::string& formula, float x, FormulaVar var, bool* ok) {
  FormulaEvaluator f;
  float v = BreakValue;
  const bool good = f.Compile(formula, var) && f.Value(x, v);
  if (ok) *ok = good;
  return good ? v : BreakValue;
}

float FormulaValue(const std::string& formula, float x, int coordType, bool* ok) {
  return FormulaValue(formula, x, VarOfCoordType(coordType), ok);
}

// ---- zeros -------------------------------------------------------------------------------

namespace {

// A value of the formula; a break (a hole in the curve) fails too.
bool ValueAt(FormulaEvaluator& f, double w, float& v) {
  return f.Value(static_cast<float>(w), v) && v != BreakValue && std::isfinite(v);
}

int Sign(float v) { return v > 0 ? 1 : v < 0 ? -1 : 0; }

// From one Single step at w (or at the bracket's scale for a zero at 0),
// doubling, the first step from which on three steps the values at w - h and
// w + h are non-zero and grow in size with a steady sign on each side.
double ZeroSpread(FormulaEvaluator& f, float w, float a, float b) {
  const double width = std::fabs(static_cast<double>(b) - a);
  const double base = std::max(std::fabs(static_cast<double>(w)), width) * 1.1920929e-7;
  float lastL = 0, lastR = 0;
  int streak = 0;
  double start = base;
  for (double h = base; h < width; h *= 2) {
    float l = 0, r = 0;
    const bool ok = ValueAt(f, w - h, l) && ValueAt(f, w + h, r) && l != 0 && r != 0;
    const bool steady = ok && (streak == 0 || (Sign(l) == Sign(lastL) && Sign(r) == Sign(lastR) &&
                                               std::fabs(l) > std::fabs(lastL) && std::fabs(r) > std::fabs(lastR)));
    if (!ok) streak = 0;
    else if (!steady) streak = 1;
    else ++streak;
    if (streak == 1) start = h;
    if (streak == 3) return start;
    lastL = l, lastR = r;
  }
  return width;
}

}  // namespace

bool RefineSignChange(FormulaEvaluator& f, float a, float b, RefinedZero& z) {
  if (b < a) std::swap(a, b);
  float fa, fb;
  if (!ValueAt(f, a, fa) || !ValueAt(f, b, fb)) return false;
  float w;
  if (fa == 0 || fb == 0) {
    w = fa == 0 ? a : b;
  } else {
    if (Sign(fa) == Sign(fb)) return false;
    float lo = a, hi = b, flo = fa, fhi = fb;
    w = lo;
    for (int i = 0; i < 200; ++i) {
      // Narrower than the spread can ever be, or neighbouring Singles.
      const float mid = lo + (hi - lo) / 2;
      if (!(mid > lo && mid < hi) || hi - lo <= (b - a) * 1e-9f) break;
      float fm;
      if (!ValueAt(f, mid, fm)) return false;
      if (fm == 0) {
        lo = hi = mid, flo = fhi = 0;
        break;
      }
      if (Sign(fm) == Sign(flo)) lo = mid, flo = fm;
      else hi = mid, fhi = fm;
    }
    w = std::fabs(flo) <= std::fabs(fhi) ? lo : hi;
    // Across a pole the values grow as the bracket closes.
    if (std::min(std::fabs(flo), std::fabs(fhi)) > std::min(std::fabs(fa), std::fabs(fb))) return false;
  }
  z.w = w;
  z.spread = ZeroSpread(f, w, a, b);
  return true;
}

bool RefineTouch(FormulaEvaluator& f, float a, float b, RefinedZero& z) {
  if (b < a) std::swap(a, b);
  float fa, fb;
  if (!ValueAt(f, a, fa) || !ValueAt(f, b, fb)) return false;
  const double g = (std::sqrt(5.0) - 1) / 2;
  double lo = a, hi = b, x1 = hi - g * (hi - lo), x2 = lo + g * (hi - lo);
  float f1, f2;
  if (!ValueAt(f, x1, f1) || !ValueAt(f, x2, f2)) return false;
  for (int i = 0; i < 200 && static_cast<float>(x1) != static_cast<float>(x2); ++i) {
    if (std::fabs(f1) <= std::fabs(f2)) {
      hi = x2, x2 = x1, f2 = f1, x1 = hi - g * (hi - lo);
      if (!ValueAt(f, x1, f1)) return false;
    } else {
      lo = x1, x1 = x2, f1 = f2, x2 = lo + g * (hi - lo);
      if (!ValueAt(f, x2, f2)) return false;
    }
  }
  const float w = static_cast<float>(std::fabs(f1) <= std::fabs(f2) ? x1 : x2);
  float fw;
  if (!ValueAt(f, w, fw)) return false;
  // Zero within a few roundings of the values about it.
  const double noise = 4 * 1.1920929e-7 * std::max({1.0f, std::fabs(fa), std::fabs(fb)});
  if (std::fabs(fw) > noise) return false;
  z.w = w;
  z.spread = ZeroSpread(f, w, a, b);
  return true;
}

std::string KnownDigitsText(double v, double spread) {
  if (!(spread > 0)) spread = std::fabs(v) * 1e-7;
  if (std::fabs(v) <= spread) return "0";
  const int e = static_cast<int>(std::floor(std::log10(std::fabs(v))));
  int digits = 7;
  while (digits > 1 && spread > 0.5 * std::pow(10.0, e - digits + 1)) --digits;
  const int decimals = digits - 1 - e;
  if (decimals > 12 || std::fabs(v) >= 1e7) return SingleToText(static_cast<float>(v));
  // Fewer digits than the whole part has: rounded to tens, hundreds, ...
  const double unit = decimals < 0 ? std::pow(10.0, -decimals) : 1;
  std::string t = decimals < 0 ? FormatDecimals(std::round(v / unit) * unit, 0) : FormatDecimals(v, decimals);
  if (t.find('.') != std::string::npos) {
    while (!t.empty() && t.back() == '0') t.pop_back();
    if (!t.empty() && t.back() == '.') t.pop_back();
  }
  return t == "-0" ? "0" : t;
}

// ---- values known to their digits ---------------------------------------------------

namespace {
constexpr double kSingleEps = 1.1920929e-7;  // one unit in the last place of a Single at 1
}  // namespace

std::string KnownValue::Text() const { return KnownDigitsText(v, spread); }

bool ValueKnown(FormulaEvaluator& f, float w, KnownValue& out) {
  float v, lo, hi;
  if (!ValueAt(f, w, v)) return false;
  // A few roundings of the evaluation, and the change across one Single of w
  // (a position typed as 0.1 is the Single nearest to it).
  double moves = 0;
  if (ValueAt(f, std::nextafter(w, -INFINITY), lo)) moves = std::fabs(static_cast<double>(lo) - v);
  if (ValueAt(f, std::nextafter(w, INFINITY), hi)) moves = std::max(moves, std::fabs(static_cast<double>(hi) - v));
  out.v = v;
  out.spread = 2 * kSingleEps * std::fabs(v) + moves;
  return true;
}

bool ValueKnown(const std::string& formula, float w, FormulaVar var, KnownValue& out) {
  FormulaEvaluator f;
  return f.Compile(formula, var) && ValueKnown(f, w, out);
}

KnownValue Quotient(const KnownValue& num, const KnownValue& den) {
  KnownValue q;
  q.v = num.v / den.v;
  const double rn = num.v == 0 ? 0 : num.spread / std::fabs(num.v);
  q.spread = num.v == 0 ? num.spread / std::fabs(den.v) : std::fabs(q.v) * (rn + den.spread / std::fabs(den.v));
  return q;
}

bool IntegrateFormula(float from, float to, const std::string& formula, FormulaVar var, KnownValue& result) {
  // Compiled once: the values are those of a compile at every call.
  FormulaEvaluator f;
  if (!f.Compile(formula, var)) return false;
  static const double kx[8] = {0.991455371120812639, 0.949107912342758525, 0.864864423359769073,
                               0.741531185599394440, 0.586087235467691130, 0.405845151377397167,
                               0.207784955007898468, 0.0};
  static const double kw[8] = {0.022935322010529225, 0.063092092629978553, 0.104790010322250184,
                               0.140653259715525919, 0.169004726639267903, 0.190350578064785410,
                               0.204432940075298892, 0.209482141084727828};
  static const double gw[4] = {0.129484966168869693, 0.279705391489276668, 0.381830050505118945,
                               0.417959183673469388};  // at kx[1], kx[3], kx[5], kx[7]
  struct Piece {
    double a, b, value, error, absolute;
  };
  // The 15-point value of one interval, its error against the 7-point rule
  // (scaled as the rule's usual estimate does) and the integral of |f|.
  auto rule = [&](double a, double b, Piece& p) {
    const double c = (a + b) / 2, h = (b - a) / 2;
    double fv[15];
    for (int i = 0; i < 15; ++i) {
      const double x = i < 7 ? c - h * kx[i] : i == 7 ? c : c + h * kx[14 - i];
      float v;
      if (!ValueAt(f, x, v)) return false;
      fv[i] = v;
    }
    double k = 0, g = 0, mag = 0;
    for (int i = 0; i < 15; ++i) {
      const double w = kw[i < 8 ? i : 14 - i];
      k += w * fv[i];
      mag += w * std::fabs(fv[i]);
      const int j = i < 8 ? i : 14 - i;
      if (j % 2 == 1) g += gw[j / 2] * fv[i];
    }
    double spread = 0;  // how far f strays from its mean, for the scaled estimate
    for (int i = 0; i < 15; ++i) spread += kw[i < 8 ? i : 14 - i] * std::fabs(fv[i] - k / 2);
    const double raw = std::fabs(k - g) * std::fabs(h), asc = spread * std::fabs(h);
    const double error = asc > 0 && raw > 0 ? asc * std::min(1.0, std::pow(200 * raw / asc, 1.5)) : raw;
    p = {a, b, k * h, error, mag * std::fabs(h)};
    return true;
  };
  std::vector<Piece> pieces(1);
  if (!rule(from, to, pieces[0])) return false;
  for (;;) {
    double value = 0, error = 0, absolute = 0;
    size_t worst = 0;
    for (size_t i = 0; i < pieces.size(); ++i) {
      value += pieces[i].value, error += pieces[i].error, absolute += pieces[i].absolute;
      if (pieces[i].error > pieces[worst].error) worst = i;
    }
    const double rounding = kSingleEps * absolute;
    if (error <= rounding / 8 || pieces.size() >= 400) {
      result.v = value;
      result.spread = error + rounding;
      return true;
    }
    const Piece p = pieces[worst];
    const double mid = (p.a + p.b) / 2;
    Piece left, right;
    if (!rule(p.a, mid, left) || !rule(mid, p.b, right)) return false;
    pieces[worst] = left;
    pieces.push_back(right);
  }
}

// ---- crossings -----------------------------------------------------------------------------

bool Segment2DIntersect(const Position& p1, const Position& p2, const Position& q1, const Position& q2,
                        Position& result) {
  double ax = p1.x, ay = p1.y, bx = p2.x, by = p2.y;
  double cx = q1.x, cy = q1.y, dx = q2.x, dy = q2.y;
  if (bx < ax) std::swap(ax, bx), std::swap(ay, by);
  if (dx < cx) std::swap(cx, dx), std::swap(cy, dy);
  const double A1 = by - ay, B1 = ax - bx, C1 = A1 * ax + B1 * ay;
  const double A2 = dy - cy, B2 = cx - dx, C2 = A2 * cx + B2 * cy;
  const double det = A1 * B2 - A2 * B1;
  if (det == 0) {
    // Parallel: they meet only when on one line, where their x ranges
    // overlap.
    const double cross = (cx - ax) * A1 + (cy - ay) * B1;
    if (cross != 0) return false;
    const double lo = std::max(ax, cx), hi = std::min(bx, dx);
    if (lo > hi) return false;
    const double t = bx != ax ? (lo - ax) / (bx - ax) : 0;
    result.Set(static_cast<float>(lo), static_cast<float>(ay + (by - ay) * t), 0);
    return true;
  }
  const double x = (C1 * B2 - C2 * B1) / det;
  const double y = (A1 * C2 - A2 * C1) / det;
  // Ends included, with room for the rounding of the solve.
  auto within = [](double v, double a, double b) {
    const double lo = std::min(a, b), hi = std::max(a, b);
    const double eps = 1e-9 * std::max({1.0, std::fabs(lo), std::fabs(hi)});
    return v >= lo - eps && v <= hi + eps;
  };
  if (!within(x, ax, bx) || !within(x, cx, dx)) return false;
  if (!within(y, ay, by) || !within(y, cy, dy)) return false;
  result.Set(static_cast<float>(x), static_cast<float>(y), 0);
  return true;
}

std::vector<AxisCrossing> AxisCrossings(const std::vector<Position>& samples) {
  std::vector<AxisCrossing> out;
  float lo = 0, hi = 0;
  bool any = false;
  for (const Position& p : samples) {
    if (p.x == BreakValue) continue;
    if (!any) lo = hi = p.x, any = true;
    lo = std::min(lo, p.x);
    hi = std::max(hi, p.x);
  }
  if (!any) return out;
  const Position axisA(lo, 0, 0), axisB(hi, 0, 0);
  for (size_t i = 0; i + 1 < samples.size(); ++i) {
    const Position& a = samples[i];
    const Position& b = samples[i + 1];
    if (a.x == BreakValue || a.y == BreakValue || a.z == BreakValue || b.x == BreakValue || b.y == BreakValue ||
        b.z == BreakValue)
      continue;
    Position hit;
    if (!Segment2DIntersect(a, b, axisA, axisB, hit)) continue;
    AxisCrossing c;
    c.x = hit.x;
    c.y = hit.y;
    c.chord = static_cast<int>(i);
    c.trend = a.y > b.y ? -1 : a.y < b.y ? 1 : 0;
    out.push_back(c);
  }
  return out;
}

// ---- text ----------------------------------------------------------------------------------

std::string ParityText(const std::string& formula) {
  auto isLetter = [](char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; };
  std::string out;
  out.reserve(formula.size() * 2);
  for (size_t i = 0; i < formula.size(); ++i) {
    const char c = formula[i];
    const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    const bool alone = (i == 0 || !isLetter(formula[i - 1])) && (i + 1 == formula.size() || !isLetter(formula[i + 1]));
    if (alone && (lower == 'x' || lower == 'u' || lower == 'a')) {
      out += "(-";
      out += c;
      out += ')';
    } else {
      out += c;
    }
  }
  return out;
}

bool CurveDerivativeText(const std::string& formula, std::string& text, int own) {
  VariableTable parameters;
  HideOwnNames(parameters, LoadParameterTable(parameters), own);
  return DerivativeText(formula, "", text, &parameters);
}

// ---- the panel ---------------------------------------------------------------------------

void ResultsPanel::ClearOwner(const std::string& owner) { parts_.erase(owner); }

void ResultsPanel::AddLine(const std::string& owner, const std::string& line) { parts_[owner].push_back(line); }

void ResultsPanel::Clear() { parts_.clear(); }

std::vector<std::string> ResultsPanel::Lines() const {
  std::vector<std::string> out;
  if (parts_.empty()) return out;
  for (const CFunCurve* c : Doc.FunCurves) {
    auto it = parts_.find(c->ID);
    if (it != parts_.end()) out.insert(out.end(), it->second.begin(), it->second.end());
  }
  return out;
}

std::string ResultsPanel::Text() const {
  std::string s;
  if (parts_.empty()) return s;
  for (const CFunCurve* c : Doc.FunCurves) {
    auto it = parts_.find(c->ID);
    if (it == parts_.end() || it->second.empty()) continue;
    if (!s.empty()) s += "\n\n";
    s += CurveTitle(*c);
    for (const std::string& line : it->second) s += "\n" + line;
  }
  return s;
}

void ResultsPanel::SetListener(std::function<void(const std::string& text)> listener) {
  listener_ = std::move(listener);
  told_ = false;
}

void ResultsPanel::Publish() {
  if (!listener_) return;
  std::string now = Text();
  if (told_ && now == published_) return;
  published_ = std::move(now);
  told_ = true;
  listener_(published_);
}

std::string CurveTitle(const CFunCurve& c) {
  if (!c.NameS.empty()) return c.NameS;
  const bool polar = c.CoordType == 2;
  switch (c.FunForm) {
    case 1: return c.ExpressY + "=0";
    case 3: return (polar ? "a=" : "x=") + c.ExpressX + (polar ? ", r=" : ", y=") + c.ExpressY;
    case 4: return c.ExpressY + "<=0";
    default: return (polar ? "r=" : "y=") + c.ExpressY;
  }
}

const std::vector<std::string>& ResultsPanel::LinesOf(const std::string& owner) const {
  static const std::vector<std::string> none;
  auto it = parts_.find(owner);
  return it == parts_.end() ? none : it->second;
}

}  // namespace vt
