// The evaluator: values to the bit, the functions and their guards, domain
// errors (silent and reported), the failures left to the caller, and the
// agreement of the prepared evaluator with the plain reading of the text.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "expr/expression.h"
#include "expr/functions.h"
#include "expr_test_util.h"

namespace vt {
namespace {

using exprtest::Calc;
using exprtest::Compute;
using exprtest::EvaluateBoth;
using exprtest::HostScope;
using exprtest::XY;

constexpr std::uint32_t kBreakBits = 0x3DFCD35Bu;  // BreakValue as a Single

float Value(HostScope& s, const std::string& formula, float x = 0, float y = 0, bool deg = false) {
  VariableTable t = XY(x, y);
  Calc c = Compute(s.host, formula, t, deg);
  EXPECT_TRUE(c.compiled == 0 && c.eval.ok && !c.eval.failed) << formula << ": " << c.eval.failure;
  return c.eval.value;
}

// A silent break: ok with BreakValue, no box.
void ExpectBreak(HostScope& s, const std::string& formula, float x = 0) {
  VariableTable t = XY(x);
  Calc c = Compute(s.host, formula, t);
  ASSERT_EQ(c.compiled, 0) << formula;
  EXPECT_TRUE(c.eval.ok && c.eval.boxes == 0) << formula;
  EXPECT_EQ(c.eval.bits(), kBreakBits) << formula << " gave " << c.eval.value;
}

// With ReportEvalErrors: the box, ok false, result untouched.
void ExpectReported(HostScope& s, const std::string& formula, float x, const std::string& message) {
  ReportEvalErrors = true;
  VariableTable t = XY(x);
  Calc c = Compute(s.host, formula, t);
  ReportEvalErrors = false;
  ASSERT_EQ(c.compiled, 0) << formula;
  EXPECT_FALSE(c.eval.ok) << formula;
  EXPECT_EQ(c.eval.value, -777.0f) << formula;  // untouched
  ASSERT_EQ(c.eval.boxes, 1u) << formula;
  EXPECT_EQ(c.eval.lastBox, message) << formula;
  EXPECT_EQ(s.host.messages.back().title, "Error");
}

TEST(Evaluator, ValuesToTheBit) {
  HostScope s;
  const float root2 = static_cast<float>(std::sqrt(2.0));
  const struct {
    const char* f;
    float x, y, want;
  } cases[] = {
      {"2^3^2", 0, 0, 64}, {"-2^2", 0, 0, -4}, {"-x*y", 2, 3, -6}, {"2^-3", 0, 0, 0.125f}, {"7-2-1", 0, 0, 4},
      {"8/4/2", 0, 0, 1}, {"(x+1)(x-1)", 3, 0, 8},
      // Every read from the stack is a Single.
      {"0.1+0.2", 0, 0, 0.1f + 0.2f}, {"16777217", 0, 0, 16777216}, {"16777217-16777216", 0, 0, 0},
      {"sqr(2)*sqr(2)", 0, 0, root2 * root2},
      // PI compiles to 3.1415926; the ends of ASIN/ACOS use 3.1416.
      {"pi", 0, 0, 3.1415926f}, {"asin(1)", 0, 0, static_cast<float>(3.1416 / 2)},
      {"asin(x)", 0.99999999f, 0, static_cast<float>(3.1416 / 2)}, {"asin(-1)", 0, 0, static_cast<float>(-3.1416 / 2)},
      {"acos(1)", 0, 0, 0}, {"acos(-1)", 0, 0, 3.1416f},
      // A comma reads as a decimal mark in the compiler, but the evaluator stops there.
      {"1,5", 0, 0, 1}, {"1.5", 0, 0, 1.5f}, {",5+1", 0, 0, 1},
      // Powers: an exponent under 1e-6 is 0; negative bases take whole exponents.
      {"x^0", -3, 0, 1}, {"0^0", 0, 0, 1}, {"5^0.0000001", 0, 0, 1}, {"(-8)^3", 0, 0, -512}, {"x^2", -3, 0, 9},
      {"x^3", 1.1f, 0, static_cast<float>(std::pow(static_cast<double>(1.1f), 3.0))}, {"2^0.5", 0, 0, root2},
      {"(-0.5)^2", 0, 0, 0.25f},
      {"sqr(x)", 0.0000002f, 0, static_cast<float>(std::sqrt(static_cast<double>(0.0000002f)))},
      // The calculator's words beside the old ones, and numbers with an exponent.
      {"sqrt(16)+ln(e)+log10(100)+sqrt(0)", 0, 0, 7}, {"1e-3*2E3+x", 0, 0, 2},
      {"2^e", 0, 0, static_cast<float>(std::pow(2.0, static_cast<double>(2.718281828f)))},
  };
  for (const auto& c : cases) EXPECT_EQ(Value(s, c.f, c.x, c.y), c.want) << c.f;
  EXPECT_GT(Value(s, "log(x)", 0.00002f), -11.0f);
  EXPECT_GT(std::fabs(Value(s, "tan(pi/2)")), 1e6f);  // TAN has no guard
  // Off the ends of ASIN and ACOS, inside the narrow band, nothing is pushed.
  // No Single other than 1 and -1 lies in the band, so the routine is asked.
  EXPECT_TRUE(FunctionValue(Fn::ASIN, 1 - 3e-8, false).IsNoValue());
  EXPECT_TRUE(FunctionValue(Fn::ACOS, -1 - 3e-8, false).IsNoValue());
  EXPECT_TRUE(FunctionValue(Fn::ASIN, 1.0, false).IsValue());
}

TEST(Evaluator, DomainErrorsAreSilentBreaksOrReported) {
  HostScope s;
  for (const char* f : {"sqr(0)", "log(0)", "1/0", "sec(pi/2)", "csec(0)", "ctan(0)", "asin(1.5)", "acos(-2)",
                        "asec(0.5)", "acsec(1)", "(-8)^(1/3)", "(-0.5)^0.5", "log(0)+exp(100)"})
    ExpectBreak(s, f);  // the last: a domain error ends the evaluation before the overflow
  ExpectBreak(s, "x^1.5", -0.25f);
  ExpectBreak(s, "sqr(x)", 0.00000009f);
  ExpectBreak(s, "log(x)", 0.00001f);  // at or below 1e-5
  ExpectBreak(s, "1/x", 0.0000009f);

  ExpectReported(s, "(-8)^(1/3)", 0, "A^B, B must be a integer if A is negative.");
  ExpectReported(s, "sqr(x)", -1, "The parameter of function SQR must be larger than or equal to 0.");
  ExpectReported(s, "log(x)", 0, "The parameter of function LOG must be larger than 0.");
  ExpectReported(s, "sqrt(x)", -1, "The parameter of function SQRT must be larger than or equal to 0.");
  ExpectReported(s, "ln(x)+log10(1)", 0, "The parameter of function LN must be larger than 0.");
  ExpectReported(s, "log10(x)", -1, "The parameter of function LOG10 must be larger than 0.");
  ExpectReported(s, "2/x", 0, "Devision by zero.");
  ExpectReported(s, "sec(x)", 3.1415926f / 2, "Devision by zero.");
  ExpectReported(s, "asin(x)", 2, "The expression is illegal.");
  ExpectReported(s, "asec(x)", 0, "The expression is illegal.");

  // The hyperbolic inverses and the like have no message even when reporting.
  ReportEvalErrors = true;
  for (const char* f : {"ctanh(0)", "csech(0)", "atanh(1)", "actanh(1)", "asech(0)", "acsech(0)", "acosh(0.5)",
                        "asinh(-100000)"})  // a log argument under 1e-5
    ExpectBreak(s, f);
  ReportEvalErrors = false;
}

TEST(Evaluator, FunctionValuesInRadiansAndDegrees) {
  HostScope s;
  const double t = 0.3f;  // the argument as the evaluator reads it
  // ASEC and ACSEC keep their own formulas, branches included.
  const double a2 = std::atan(2 / std::sqrt(3.0)), halfPi = std::acos(0.0);
  const struct {
    const char* f;
    float x;
    double expected;
  } cases[] = {
      {"sin", 0.3f, std::sin(t)},          {"cos", 0.3f, std::cos(t)},          {"tan", 0.3f, std::tan(t)},
      {"sec", 0.3f, 1 / std::cos(t)},      {"csec", 0.3f, 1 / std::sin(t)},     {"ctan", 0.3f, 1 / std::tan(t)},
      {"atan", 0.3f, std::atan(t)},        {"asin", 0.3f, std::asin(t)},        {"acos", 0.3f, std::acos(t)},
      {"actan", 0.3f, std::atan(1 / t)},   {"sinh", 0.3f, std::sinh(t)},        {"cosh", 0.3f, std::cosh(t)},
      {"tanh", 0.3f, std::tanh(t)},        {"ctanh", 0.3f, 1 / std::tanh(t)},   {"sech", 0.3f, 1 / std::cosh(t)},
      {"csech", 0.3f, 1 / std::sinh(t)},   {"asinh", 0.3f, std::asinh(t)},      {"acosh", 2, std::acosh(2.0)},
      {"atanh", 0.3f, std::atanh(t)},      {"asech", 0.3f, std::acosh(1 / t)},  {"acsech", 0.3f, std::asinh(1 / t)},
      {"actanh", 2, std::atanh(0.5)},      {"abs", -1.5f, 1.5},                 {"exp", 0.3f, std::exp(t)},
      {"int", -1.5f, -2},                  {"int", 0.3f, 0},                    {"log", 0.3f, std::log(t)},
      {"sqr", 0.3f, std::sqrt(t)},         {"asec", 2, a2 + halfPi},            {"asec", -2, -a2 - halfPi},
      {"acsec", 2, a2},                    {"acsec", -2, -a2 - 2 * halfPi},
  };
  for (const auto& k : cases)
    EXPECT_NEAR(Value(s, std::string(k.f) + "(x)", k.x), k.expected, 2e-7 * std::max(1.0, std::fabs(k.expected)))
        << k.f << "(" << k.x << ")";
  // With the degree flag the circular functions and ATAN convert their
  // argument (by 3.1416 / 180); the other inverses do not.
  const double r = 30 * 3.1416 / 180;
  const std::pair<const char*, double> degrees[] = {{"sin", std::sin(r)},      {"cos", std::cos(r)},
                                                    {"tan", std::tan(r)},      {"sec", 1 / std::cos(r)},
                                                    {"csec", 1 / std::sin(r)}, {"ctan", 1 / std::tan(r)},
                                                    {"atan", std::atan(r)}};
  for (const auto& [f, v] : degrees) EXPECT_EQ(Value(s, std::string(f) + "(x)", 30, 0, true), static_cast<float>(v)) << f;
  EXPECT_EQ(Value(s, "asin(x)", 0.5f, 0, true), Value(s, "asin(x)", 0.5f));
  EXPECT_EQ(Value(s, "sinh(x)", 0.5f, 0, true), Value(s, "sinh(x)", 0.5f));
}

TEST(Evaluator, FailuresReachTheCaller) {
  HostScope s;
  VariableTable t = XY(1);
  // Overflow: a value beyond Single, as an operand or as the result.
  Calc c = Compute(s.host, "exp(100)", t);
  EXPECT_TRUE(c.eval.failed && !c.eval.ok);
  EXPECT_EQ(c.eval.code, kErrOverflow);
  for (const std::string& f : std::vector<std::string>{"exp(100)*0", "10^39", "exp(1000)", "1" + std::string(39, '0'),
                                                     "0^(-1)", "sinh(100)-sinh(100)"})
    EXPECT_TRUE(Compute(s.host, f, t).eval.failed) << f;
  EXPECT_FALSE(Compute(s.host, "exp(88)", t).eval.failed);

  // A broken postfix text: the stack runs short, or a token is unknown
  // (tokens are matched case-sensitively).
  const struct {
    const char* postfix;
    std::int32_t code;
    const char* failure;
  } broken[] = {{"1 + ", kObjectErrorBase + 1011, "Pop method invoked on empty stack"},
                {"SIN ", kObjectErrorBase + 1011, "Pop method invoked on empty stack"},
                {"1 Q + ", kObjectErrorBase + 1002, "Bad token in Evaluate: Q"},
                {"sin ", kObjectErrorBase + 1002, "Bad token in Evaluate: sin"}};
  for (const auto& b : broken) {
    const exprtest::Eval e = EvaluateBoth(s.host, b.postfix, t);
    EXPECT_TRUE(e.failed) << b.postfix;
    EXPECT_EQ(e.code, b.code) << b.postfix;
    EXPECT_EQ(e.failure, b.failure) << b.postfix;
  }
  // A domain error before the bad token ends the evaluation first.
  exprtest::Eval e = EvaluateBoth(s.host, "0 LOG Q + ", t);
  EXPECT_TRUE(!e.failed && e.bits() == kBreakBits);
  // An empty stack at the end is ok false; values below the top are ignored.
  e = EvaluateBoth(s.host, "", t);
  EXPECT_TRUE(!e.ok && e.value == -777.0f);
  e = EvaluateBoth(s.host, "1 2 ", t);
  EXPECT_TRUE(e.ok && e.value == 2.0f);
  // An undefined symbol at the start compiles to an empty text: ok false.
  c = Compute(s.host, "q*2", t);
  EXPECT_TRUE(c.compiled == 0 && !c.eval.ok);
}

TEST(Evaluator, VariablesByNameAnyCaseFirstMatchAndPreparedTextsNeverGoStale) {
  HostScope s;
  VariableTable named;
  named.Add("Speed", 2);
  named.Add("x", 3);
  named.Add("SPEED", 100);
  Calc c = Compute(s.host, "speed*X", named);
  EXPECT_EQ(c.postfix, "SPEED X * ");
  EXPECT_EQ(c.eval.value, 6.0f);

  Cls6 calc;
  VariableTable t = XY(2, 10);
  float r = 0;
  bool ok = false;
  std::string post = "X 1 + ";
  auto eval = [&](const std::string& p, VariableTable& v) {
    calc.DoEvaluate(p, false, v, r, ok);
    return r;
  };
  EXPECT_EQ(eval(post, t), 3.0f);
  post[2] = '5';  // changed in place: same length, same buffer
  EXPECT_EQ(eval(post, t), 7.0f);
  t.values[1] = 4;  // new values are seen at once
  EXPECT_EQ(eval(post, t), 9.0f);
  t.SetName(1, "Y");  // renamed entries: the look-up follows the names
  t.SetName(2, "X");
  EXPECT_EQ(eval(post, t), 15.0f);
  t.SetCount(1);  // a name gone from the table: the failure of the plain reading
  EXPECT_THROW(eval(post, t), ExprFailure);
  // Many texts in turn, more than the recent ones kept up front.
  VariableTable u = XY(1);
  for (int round = 0; round < 3; ++round)
    for (int k = 0; k < 20; ++k) EXPECT_EQ(eval("X " + std::to_string(k) + " + ", u), 1.0f + k);
  ClearEvaluatorCache();
  EXPECT_EQ(eval("X 3 * ", u), 3.0f);
}

// Each fused step and inlined function of the prepared evaluator, on its own
// and on the top, at signs, zero, squares beyond a Single and divisors under
// 1e-6, and a text deeper than the prepared stack, agree with the plain
// reading to the bit in every outcome (EvaluateBoth checks). Random formulas
// and broken texts are the fuzz_eval target's.
TEST(Evaluator, FusedStepsAgreeWithThePlainReading) {
  HostScope s;
  std::vector<std::string> texts = {"0 X ^ ", "X 2 ^ 0.5 ^ ", std::string(140, ' ')};
  for (std::size_t k = 0; k < 140; k += 2) texts.back()[k] = k < 70 ? 'X' : '+';
  for (const char* op : {"+ ", "- ", "* ", "/ ", "^ "}) {
    for (const char* form : {"Y X 2 ^ ", "X 2 ^ 3 ", "X 2 ^ 0 ", "3 X ", "0.5 X ", "X 1 ", "Y X 0.5 - ",
                             "Y X 2 ^ 1 + ", "Y X 2 ^ Y 2 ^ ", "Y X 2 ^ (-) "})
      texts.push_back(form + std::string(op));
    texts.push_back("Y X 0 " + std::string(op) + "* ");
    texts.push_back("Y X 2 ^ 3 " + std::string(op) + "/ ");
  }
  for (const char* fn : {"SIN ", "COS ", "TAN ", "EXP ", "LOG ", "SQR ", "ABS "}) {
    texts.push_back(std::string("X ") + fn);
    texts.push_back(std::string("Y X * ") + fn + "Y + ");
  }
  int failures = 0;
  for (const std::string& post : texts)
    for (float x : {0.0f, -1.0f, -2.5f, 3.0f, 1e-7f, 1e20f, -1e38f})
      for (int k = 0; k < 3; ++k) {
        VariableTable t = XY(x, k == 0 ? 0.5f : -3.0f);
        ReportEvalErrors = (k == 2);
        failures += EvaluateBoth(s.host, post, t, k == 1).failed;
        ReportEvalErrors = false;
      }
  EXPECT_GT(failures, 0);  // the overflows are reached
}

}  // namespace
}  // namespace vt
