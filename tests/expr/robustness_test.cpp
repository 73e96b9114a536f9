// Long formulas and deep nesting (beyond what the fuzz targets feed): the
// compiler, both evaluators and the derivative parser give their own messages
// or stop quietly, and never crash.
#include <gtest/gtest.h>

#include <string>

#include "expr/derivative.h"
#include "expr/expression.h"
#include "expr_test_util.h"

namespace vt {
namespace {

using exprtest::HostScope;

std::string Repeat(const std::string& s, int n) {
  std::string out;
  for (int i = 0; i < n; ++i) out += s;
  return out;
}

// Runs every entry point on a text; only ExprFailure may leave the evaluators.
void Exercise(HostScope& s, const std::string& text) {
  VariableTable t = exprtest::XY(0.5f, -2);
  exprtest::Compute(s.host, text, t);
  std::string error;
  bool ok = false;
  auto tree = ParseToPolish(text, error, ok);
  EXPECT_EQ(ok, tree != nullptr);
  EXPECT_EQ(ok, error.empty()) << error;
  if (tree) {
    auto d = Derive(*tree);
    auto p = DerivePartial(*tree, "y");
    if (d) PolishToText(*d);
    if (p) PolishToText(*p);
  }
}

TEST(Robustness, LongFormulas) {
  HostScope s;
  // 10,000 characters of a sum: compiles and evaluates; too deep to derive.
  const std::string sum = Repeat("x+", 4999) + "xx";
  ASSERT_EQ(sum.size(), 10000u);
  VariableTable t = exprtest::XY(0.5f);
  t.Add("XX", 1);
  exprtest::Calc c = exprtest::Compute(s.host, sum, t);
  EXPECT_EQ(c.compiled, 0);
  EXPECT_TRUE(c.eval.ok);
  EXPECT_EQ(c.eval.value, 2500.5f);
  std::string text;
  EXPECT_FALSE(DerivativeText(sum, "", text));
  EXPECT_EQ(s.host.LastMessage(), "Expression is illegal.");

  // A long formula of moderate depth derives.
  const std::string sines = Repeat("sin(x)+", 1400) + "x";
  ASSERT_TRUE(DerivativeText(sines, "", text));
  c = exprtest::Compute(s.host, text, t);
  EXPECT_EQ(c.compiled, 0);
  EXPECT_NEAR(c.eval.value, 1400 * std::cos(0.5) + 1, 0.05);

  // Products and powers of long chains grow too fast: refused, quickly.
  EXPECT_FALSE(DerivativeText(Repeat("x*", 1500) + "x", "", text));
  EXPECT_EQ(s.host.LastMessage(), "Expression is illegal.");
  EXPECT_FALSE(DerivativeText(Repeat("x^", 1500) + "x", "", text));

  // A sum nested to the right keeps every operand on the stack until the end.
  std::string right = "1";
  for (int i = 0; i < 300; ++i) right = "x+(" + right + ")";
  c = exprtest::Compute(s.host, right, t);
  EXPECT_EQ(c.compiled, 0);
  EXPECT_EQ(c.eval.value, 151.0f);

  // A very long number and a very long name.
  Exercise(s, std::string(10000, '9'));
  Exercise(s, "x+" + std::string(10000, 'a'));
  Exercise(s, "0." + std::string(10000, '0') + "1");
}

TEST(Robustness, DeepNesting) {
  HostScope s;
  VariableTable t = exprtest::XY(0.25f);
  const std::string parens = std::string(1000, '(') + "x" + std::string(1000, ')');
  exprtest::Calc c = exprtest::Compute(s.host, parens, t);
  EXPECT_EQ(c.compiled, 0);
  EXPECT_EQ(c.eval.value, 0.25f);
  std::string text;
  ASSERT_TRUE(DerivativeText(parens + "^2", "", text));
  EXPECT_EQ(text, "2*x");

  // The chain rule copies the argument at every level: 300 nested calls
  // derive, 1000 grow past the limit and are refused.
  const std::string sines = Repeat("sin(", 1000) + "x" + std::string(1000, ')');
  c = exprtest::Compute(s.host, sines, t);
  EXPECT_EQ(c.compiled, 0);
  EXPECT_TRUE(c.eval.ok);
  EXPECT_FALSE(DerivativeText(sines, "", text));
  EXPECT_EQ(s.host.LastMessage(), "Expression is illegal.");
  ASSERT_TRUE(DerivativeText(Repeat("sin(", 300) + "x" + std::string(300, ')'), "", text));
  c = exprtest::Compute(s.host, text, t);
  EXPECT_EQ(c.compiled, 0);
  EXPECT_TRUE(c.eval.ok);

  // Deeper than the derivative takes; unbalanced; nested signs.
  Exercise(s, Repeat("-(", 3000) + "x" + std::string(3000, ')'));
  Exercise(s, std::string(5000, '('));
  Exercise(s, std::string(5000, ')'));
  Exercise(s, Repeat("(x+", 2000) + "1" + std::string(1999, ')'));
  Exercise(s, Repeat("asech(", 1000) + "x" + std::string(1000, ')') + "+1");
  Exercise(s, Repeat("2^", 3000) + "x");
}

}  // namespace
}  // namespace vt
