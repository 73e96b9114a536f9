// What calculus says of a plane curve, as free routines on formula text and
// on sample arrays: single values of a formula with the digits they are known to, the integral,
// crossings of a polyline with the x axis, the parity rewrite, the curve's
// variable table; and the results text panel that the analysis writes to.
//
// The routines here compile formula text with Cls6 and so may show the
// compiler's "Syntax Error" box; they never let an ExprFailure out.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "expr/expression.h"
#include "geometry/position.h"

namespace vt {

class CFunCurve;

// ---- the variable table of a curve ----------------------------------------------
// The parameters of the document, then the six free variables U, V, X, Y,
// A, R, all 0. With p parameters U is slot p + 1, X p + 3, Y p + 4, A p + 5,
// R p + 6. A slot is 0 when the table had no room for it.
//
// A polar curve's angle and radius, where its form gives them values (a in
// r = f(a), a and r in f(a, r) = 0 and f(a, r) <= 0), are its own: a
// parameter of that name is hidden from its formula (its slot keeps the
// value under an empty name, which no formula word matches).
// Surfaces in cylindrical and spherical form have the same rule for a, r and
// b (graphs/surface.h).
enum OwnNames { kOwnNone = 0, kOwnA = 1, kOwnR = 2, kOwnB = 4 };
// Empties the names of the parameters (slots 1..count) that own names hide.
void HideOwnNames(VariableTable& vars, int count, int own);
struct CurveTable {
  VariableTable vars;
  int U = 0, V = 0, X = 0, Y = 0, A = 0, R = 0;
  // Fills the table anew (LoadParameterTable and the six names), hiding the
  // parameters named as the own names in `own` (OwnNames bits).
  void Load(int own = kOwnNone);
  // The names as one text, to tell whether a compiled text still fits.
  std::string NamesKey() const;
};

// Compiles a formula against a table; false (after the compiler's box) when
// it does not compile.
bool CompileFormula(const std::string& text, const VariableTable& vars, std::string& postfix);
// One evaluation for a sampler: false when the value fails (ok False, a
// broken text); an overflow gives BreakValue and true.
bool EvaluatePostfix(Cls6& calc, const std::string& postfix, const VariableTable& vars, float& value);

// Which variable the value of a single-variable formula goes to. A is the
// angle of a polar curve r = f(a) and hides a parameter named a.
enum class FormulaVar { X, A, U };
// CoordType 1 gives X, 2 gives A.
FormulaVar VarOfCoordType(int coordType);

// A formula compiled once against a curve table and evaluated many times.
class FormulaEvaluator {
 public:
  // Compiles the text as it stands (no preparation). False when it does not
  // compile; the compiler has shown its box.
  bool Compile(const std::string& formula, FormulaVar var);
  bool ok() const { return ok_; }
  // The value at t. False when the evaluation fails (ok False or a broken
  // text); an overflow gives BreakValue and true.
  bool Value(float t, float& value);

 private:
  CurveTable table_;
  Cls6 calc_;
  std::string postfix_;
  int slot_ = 0;
  bool ok_ = false;
};

// The formula's value at x: its own table, a compile at each call, x in X
// (CoordType 1) or A (CoordType 2). A formula that does not compile or
// evaluate gives BreakValue with ok false.
float FormulaValue(const std::string& formula, float x, int coordType, bool* ok = nullptr);
float FormulaValue(const std::string& formula, float x, FormulaVar var, bool* ok = nullptr);

// A value with how far it is known: the rounding of the Single evaluation
// and how far the value moves between the Singles next to the argument.
struct KnownValue {
  double v = 0;
  double spread = 0;
  std::string Text() const;  // KnownDigitsText(v, spread)
};
// The formula's value at w that way; false when it fails or breaks.
bool ValueKnown(FormulaEvaluator& f, float w, KnownValue& out);
bool ValueKnown(const std::string& formula, float w, FormulaVar var, KnownValue& out);
// A quotient of two known values (a slope dy / dx); its spread from the
// relative spreads of both.
KnownValue Quotient(const KnownValue& num, const KnownValue& den);

// ---- zeros refined on the formula ------------------------------------------------------
// Roots, extrema and inflexions are zeros of a formula of one variable. A
// zero is refined on the formula in Single (as every value is evaluated) and
// comes with its spread: how far from w it is known, the distance beyond
// which the formula's values grow steadily away from 0 on both sides.
struct RefinedZero {
  float w = 0;
  double spread = 0;
};
// Bisection between a and b, where the values differ in sign or one is 0,
// down to neighbouring Singles. False when a value fails or breaks on the way,
// or the bracket closes on a pole (a value larger than at both ends).
bool RefineSignChange(FormulaEvaluator& f, float a, float b, RefinedZero& z);
// A zero without a change of sign (the curve touches the axis): the
// smallest |value| between a and b by golden section, true when that is 0
// within the rounding of a Single evaluation.
bool RefineTouch(FormulaEvaluator& f, float a, float b, RefinedZero& z);
// A value known to +- spread with no more significant digits than that
// allows (at most 7), trailing zeros dropped: "-2", "1.414214", "9.42478",
// "-1670" (a whole part longer than the digits known is rounded).
std::string KnownDigitsText(double v, double spread);

// The integral of the formula from `from` to `to` by adaptive Gauss-Kronrod
// (7 and 15 points, the interval of the largest error halved next, at most
// 400 intervals), summed in double. Its spread is the estimated error of
// the rule plus the Single rounding of the values (one unit in the last
// place of the integral of |f|). False when the formula does not compile or a
// value fails or breaks on the way.
bool IntegrateFormula(float from, float to, const std::string& formula, FormulaVar var, KnownValue& result);

// Crossing of the segments P1 P2 and Q1 Q2 in the xy plane. The ends are
// ordered by x; parallel segments cross when they lie on one line and their
// x ranges overlap (the result is the start of the overlap); otherwise the
// solved point must lie in the ranges of both segments, ends included.
bool Segment2DIntersect(const Position& p1, const Position& p2, const Position& q1, const Position& q2,
                        Position& result);

// A crossing of a sampled polyline with the x axis: the place and whether
// the chord ran from above to below (falling) or from below to above.
struct AxisCrossing {
  float x = 0, y = 0;
  int chord = 0;   // index of the chord's first sample
  int trend = 0;   // -1 falling, 1 rising, 0 along the axis
};
// Each chord i -> i + 1 without a hole, intersected with the segment of the
// x axis that spans the samples. A crossing on a sample shows for both
// chords that meet there.
std::vector<AxisCrossing> AxisCrossings(const std::vector<Position>& samples);

// The text with every stand-alone x, u and a (either case; a letter counts
// as stand-alone when neither neighbour is a letter) replaced by "(-x)",
// "(-u)", "(-a)".
std::string ParityText(const std::string& formula);

// The derivative text of a curve formula (DerivativeText: the curve's
// variables derive to 1, the document's parameters to 0, but for those
// hidden by the own names in `own`), which shows its own message on failure.
bool CurveDerivativeText(const std::string& formula, std::string& text, int own = kOwnNone);

// ---- the results panel -------------------------------------------------------------
// The text panel beside the canvas. Each curve owns its part: its Draw
// empties that part and writes its lines again; the panel shows the parts of
// the curves of the document in their list order (parts of curves that are
// gone are dropped), one block per curve under the curve's title.
class ResultsPanel {
 public:
  void ClearOwner(const std::string& owner);
  void AddLine(const std::string& owner, const std::string& line);
  // Every part.
  void Clear();
  // The lines of the document's curves, in list order.
  std::vector<std::string> Lines() const;
  // The blocks: the curve's title on a line of its own, its lines below, an
  // empty line between two curves.
  std::string Text() const;
  // The lines of one owner.
  const std::vector<std::string>& LinesOf(const std::string& owner) const;

  // Whoever shows the panel: told the new Text whenever a scene compile
  // changed it (Publish). Installing one (or none) forgets what was told.
  void SetListener(std::function<void(const std::string& text)> listener);
  // Called when the scene was compiled (the curves have written their parts).
  void Publish();

 private:
  std::map<std::string, std::vector<std::string>> parts_;
  std::function<void(const std::string&)> listener_;
  std::string published_;
  bool told_ = false;
};

// How the results panel names a curve: its name, or else its formula as the
// dialog shows it ("y=x^2-2", "x=cos(u), y=sin(u)", "x^2+y^2-1=0").
std::string CurveTitle(const CFunCurve& c);

extern ResultsPanel CurveResults;

}  // namespace vt
