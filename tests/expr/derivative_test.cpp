// The symbolic derivative: parse messages, the functions without a rule,
// printing, and derivatives checked by value against central differences.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "expr/derivative.h"
#include "expr/expression.h"
#include "expr/text_prep.h"
#include "expr_test_util.h"

namespace vt {
namespace {

using exprtest::HostScope;

std::string ParseError(const std::string& text) {
  std::string error;
  bool ok = true;
  auto tree = ParseToPolish(text, error, ok);
  EXPECT_FALSE(ok) << text;
  EXPECT_EQ(tree, nullptr) << text;
  return error;
}

TEST(ParseToPolish, Messages) {
  const std::pair<const char*, const char*> cases[] = {
      {"x--1", "Double - exist."}, {"x+*2", "Double * exist."},
      {"x*/2", "Double / exist."}, {"x-+2", "Double + exist."},
      {"*x", "Lack of parameter at 1"}, {"(^x)", "Lack of parameter at 2"},
      {"x+", "Lack of parameter at 3"}, {"sin", "Lack of parameter at 4"},
      {"x+()", "Lack of parameter at 4"}, {"x)", "Closing parenthesis without matching open parenthesis"},
      {"x$", "Illegal symbol $"}, {"1..2", "Illegal symbol ."},
      {"", "Expression is illegal."}, {"   ", "Expression is illegal."},
      {"(x", "Expression is illegal."}, {"x#+1", "Expression is illegal."},
      {"2 3", "Expression is illegal."},
  };
  for (const auto& [text, message] : cases) EXPECT_EQ(ParseError(text), message) << text;
}

// The derivative text, compiled and evaluated by the engine (both readings),
// against a central difference of the formula by the same engine.
double Evaluate(HostScope& s, const std::string& formula, double x, double y = 0) {
  VariableTable t = exprtest::XY(static_cast<float>(x), static_cast<float>(y));
  const exprtest::Calc c = exprtest::Compute(s.host, formula, t);
  EXPECT_TRUE(c.compiled == 0 && c.eval.ok && c.eval.value != BreakValue) << formula << " at " << x;
  return c.eval.value;
}

void ExpectDerivative(HostScope& s, const std::string& formula, const std::string& variable,
                      const std::vector<double>& points, double y = 0) {
  std::string text;
  ASSERT_TRUE(DerivativeText(InsertImplicitProducts(formula), variable, text)) << formula;
  const bool byY = variable == "y";
  const double h = 0.02;
  for (double p : points) {
    const double x = byY ? y : p, yy = byY ? p : y;
    auto at = [&](double d) { return byY ? Evaluate(s, formula, x, yy + d) : Evaluate(s, formula, x + d, yy); };
    const double ref = (at(-2 * h) - 8 * at(-h) + 8 * at(h) - at(2 * h)) / (12 * h);
    EXPECT_NEAR(Evaluate(s, text, x, yy), ref, 1e-3 * std::max(1.0, std::fabs(ref))) << formula << " -> " << text << " at " << p;
  }
}

TEST(Derive, ValuesMatchCentralDifferences) {
  HostScope s;
  const std::vector<std::pair<const char*, std::vector<double>>> cases = {
      {"x^3", {-1.3, 0.4, 2}}, {"sin(x)*x^2+1", {-2, 0.3, 1.7}}, {"exp(-x^2)*cos(3x)", {-0.8, 0.2, 1.1}},
      {"(x+1)(x-1)/(x^2+1)", {-1.5, 0.5, 2}}, {"sqr(x^2+1)", {-1, 0.5, 3}}, {"log(x+2)", {-1, 0.5, 3}},
      {"abs(tan(x))*0+tan(x)", {}},  // abs has no rule: checked below
      {"tan(x)", {-1, 0.3, 1.2}}, {"ctan(x)", {0.5, 1, 2}}, {"sec(x)", {-1, 0.3, 1}},
      {"csec(x)", {0.5, 1.5, 2.5}}, {"asin(x/2)", {-1, 0.3, 1.2}}, {"acos(x/2)", {-1, 0.3, 1.2}},
      {"atan(x)", {-2, 0.5, 3}}, {"actan(x)", {-2, 0.5, 3}}, {"sinh(x)", {-1, 0.5, 1.5}},
      {"cosh(x)", {-1, 0.5, 1.5}}, {"tanh(x)", {-1, 0.5, 1.5}}, {"ctanh(x)", {0.5, 1, 2}},
      {"asinh(x)", {-1, 0.5, 2}}, {"acosh(x+2)", {-0.5, 0.5, 2}}, {"atanh(x/2)", {-1, 0.3, 1}},
      {"actanh(x+2)", {0, 0.5, 1}}, {"exp(2x)", {-1, 0.5, 1}}, {"x^x", {0.5, 1.2, 2}},
      {"2^x", {-1, 0.5, 2}}, {"(x^2+1)^(x/3)", {-1, 0.5, 2}}, {"-x^2+pi*x", {-1, 0.5, 2}},
      {"x^0.5", {0.5, 1, 3}}, {"x^-2", {0.5, 1, 3}}, {"x^(1/3)", {0.5, 2}},
      {"cos(x)^3/x", {0.5, 1, 2}}, {"sin x^2", {0.5, 1, 2}}, {"exp(sin(x))*sqr(x+3)", {-1, 0.5, 2}},
      {"1/(1+exp(-x))", {-2, 0, 2}}, {"2x(x+1)-(x-(x-x^2))", {-1, 0.5, 2}},
      {"sqrt(x)+ln(2x)-log10(x)+e^x+x^e+1e-1x", {0.5, 1, 2}},
  };
  for (const auto& [f, points] : cases)
    if (!points.empty()) ExpectDerivative(s, f, "", points);
  std::string text;
  EXPECT_FALSE(DerivativeText("abs(tan(x))*0+tan(x)", "", text));

  // Partial derivatives of a surface.
  ExpectDerivative(s, "x^2*y+sin(x*y)", "x", {-1, 0.4, 1.3}, 0.7);
  ExpectDerivative(s, "x^2*y+sin(x*y)", "y", {-1, 0.4, 1.3}, 0.7);
  ExpectDerivative(s, "sqr(x^2+y^2)-2", "x", {-1, 0.5, 2}, 1.5);
  ExpectDerivative(s, "exp(-(x^2+y^2))", "y", {-1, 0.5}, 0.3);
}

// Parsing and printing keep the compiler's reading: the printed text has the
// value of the original, to the bit.
TEST(PolishToText, PrintedTextKeepsTheValue) {
  HostScope s;
  std::mt19937 rng(4242);
  Cls6 calc;
  for (int n = 0; n < 400; ++n) {
    const std::string f = exprtest::RandomFormula(rng, 4);
    std::string error;
    bool ok = false;
    auto tree = ParseToPolish(f, error, ok);
    if (!ok) {
      EXPECT_EQ(error, "Double - exist.") << f;  // only "--" is refused here
      continue;
    }
    const std::string printed = PolishToText(*tree);
    VariableTable t = exprtest::XY(0.7f, -1.3f);
    std::string p1, p2;
    ASSERT_EQ(calc.InfixToPostfix(f, t, p1), 0) << f;
    ASSERT_EQ(calc.InfixToPostfix(printed, t, p2), 0) << printed;
    exprtest::Eval a = exprtest::EvaluateBoth(s.host, p1, t);
    exprtest::Eval b = exprtest::EvaluateBoth(s.host, p2, t);
    EXPECT_EQ(a.failed, b.failed) << f << " printed " << printed;
    if (!a.failed && !b.failed) {
      EXPECT_EQ(a.bits(), b.bits()) << f << " printed " << printed;
    }
  }
}

}  // namespace
}  // namespace vt
