// Helpers of the expression tests: a recording host for the length of a test,
// and one call that compiles a formula and evaluates it with both evaluators,
// failing the test when they disagree in any way.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <random>
#include <string>
#include <tuple>

#include "document/host.h"
#include "expr/expression.h"
#include "expr/functions.h"

namespace vt::exprtest {

// Installs a recording host; puts the default host and flags back after.
class HostScope {
 public:
  HostScope() { SetHost(&host); }
  ~HostScope() {
    SetHost(nullptr);
    ReportEvalErrors = false;
  }
  HostScope(const HostScope&) = delete;
  HostScope& operator=(const HostScope&) = delete;

  RecordingHost host;
};

// What one evaluation did.
struct Eval {
  bool ok = false;
  float value = -777.0f;        // untouched unless the evaluator wrote it
  bool failed = false;          // an ExprFailure left the evaluator
  std::int32_t code = 0;
  std::string failure;
  std::size_t boxes = 0;        // message boxes shown during the evaluation
  std::string lastBox;

  std::uint32_t bits() const { return std::bit_cast<std::uint32_t>(value); }
};

template <class F>
Eval Capture(RecordingHost& host, F&& evaluate) {
  Eval e;
  const std::size_t before = host.messages.size();
  try {
    evaluate(e.value, e.ok);
  } catch (const ExprFailure& f) {
    e.failed = true;
    e.code = f.code();
    e.failure = f.what();
  }
  e.boxes = host.messages.size() - before;
  if (e.boxes) e.lastBox = host.messages.back().text;
  return e;
}

// Evaluates a postfix text with both evaluators (the random sequence restarted
// before each) and expects the same outcome to the bit.
inline Eval EvaluateBoth(RecordingHost& host, const std::string& postfix, const VariableTable& vars,
                         bool degrees = false) {
  Cls6 calc;
  SeedRandom(12345);
  Eval fast = Capture(host, [&](float& r, bool& ok) { calc.DoEvaluate(postfix, degrees, vars, r, ok); });
  SeedRandom(12345);
  Eval plain =
      Capture(host, [&](float& r, bool& ok) { calc.DoEvaluatePlain(postfix, degrees, vars, r, ok); });
  auto key = [](const Eval& e) {
    return std::make_tuple(e.ok, e.bits(), e.failed, e.code, e.failure, e.boxes, e.lastBox);
  };
  EXPECT_EQ(key(fast), key(plain)) << "postfix: " << postfix << " fast " << fast.value << " plain " << plain.value;
  return fast;
}

struct Calc {
  std::int32_t compiled = -1;
  std::string postfix;
  std::string syntaxError;  // the message of a syntax box, "" when none showed
  Eval eval;                // only when compiled is 0
};

inline Calc Compute(RecordingHost& host, const std::string& formula, const VariableTable& vars,
                    bool degrees = false) {
  Calc c;
  Cls6 calc;
  const std::size_t before = host.messages.size();
  c.compiled = calc.InfixToPostfix(formula, vars, c.postfix);
  if (host.messages.size() > before) c.syntaxError = calc.GetLastSyntaxError();
  if (c.compiled == 0) c.eval = EvaluateBoth(host, c.postfix, vars, degrees);
  return c;
}

// A table with X (and Y) set.
inline VariableTable XY(float x, float y = 0) {
  VariableTable t;
  t.Add("X", x);
  t.Add("Y", y);
  return t;
}

// A random formula of every function and operator, in the compiler's syntax.
inline std::string RandomFormula(std::mt19937& rng, int depth) {
  static const char* kFunctions[] = {
      "sin", "cos", "tan", "sec", "csec", "ctan", "atan", "asin", "acos", "asec",
      "acsec", "actan", "sinh", "cosh", "tanh", "ctanh", "sech", "csech", "asinh", "acosh",
      "atanh", "asech", "acsech", "actanh", "abs", "exp", "int", "log", "rnd", "sqr"};
  static const char* kLeaves[] = {"x", "y", "2", "0", "1", "0.5", "3,7", "pi", "10", "(-x)", "0.000001"};
  static const char* kOps[] = {"+", "-", "*", "/", "^"};
  std::uniform_int_distribution<int> pick(0, 9);
  const int p = depth <= 0 ? 0 : pick(rng);
  if (p < 3) return kLeaves[rng() % (sizeof kLeaves / sizeof *kLeaves)];
  if (p < 6) return std::string(kFunctions[rng() % 30]) + "(" + RandomFormula(rng, depth - 1) + ")";
  if (p < 7) return "-(" + RandomFormula(rng, depth - 1) + ")";
  return "(" + RandomFormula(rng, depth - 1) + ")" + kOps[rng() % 5] + "(" + RandomFormula(rng, depth - 1) + ")";
}

}  // namespace vt::exprtest
