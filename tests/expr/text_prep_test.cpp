// The input filters, implicit products and sign folding.
#include <gtest/gtest.h>

#include <string>

#include "expr/text_prep.h"

namespace vt {
namespace {

struct Filtered {
  bool outcome;
  std::string result;
  std::string rest;
};

Filtered Number(std::string s) {
  std::string r = "junk";
  bool ok = FilterNumberText(s, r);
  return {ok, r, s};
}

Filtered Expr(std::string s) {
  std::string r = "junk";
  bool ok = FilterExprText(s, r);
  return {ok, r, s};
}

TEST(FilterNumberText, CleansOrStopsAtTheFirstBadCharacter) {
  Filtered f = Number("1,5");
  EXPECT_TRUE(f.outcome);
  EXPECT_EQ(f.result, "1.5");
  EXPECT_EQ(f.rest, "");  // the source is consumed
  EXPECT_EQ(Number(" 1 2").result, "12");
  EXPECT_EQ(Number("1e5").result, "1e5");
  EXPECT_EQ(Number("-2.5E-3").result, "-2.5E-3");
  f = Number("1x");
  EXPECT_FALSE(f.outcome);
  EXPECT_EQ(f.result, "1");
  EXPECT_EQ(f.rest, "x");
  f = Number("12+3");
  EXPECT_FALSE(f.outcome);
  EXPECT_EQ(f.result, "12");
  EXPECT_EQ(f.rest, "+3");
  // Empty text and one blank give "0"; two blanks give "".
  f = Number("");
  EXPECT_TRUE(f.outcome);
  EXPECT_EQ(f.result, "0");
  EXPECT_EQ(Number(" ").result, "0");
  f = Number("  ");
  EXPECT_TRUE(f.outcome);
  EXPECT_EQ(f.result, "");
  EXPECT_FALSE(Number("\t1").outcome);  // only the blank is dropped
}

TEST(FilterExprText, KeepsFormulaCharacters) {
  EXPECT_EQ(Expr("x + 1").result, "x+1");
  EXPECT_EQ(Expr("sin(x)").result, "sin(x)");
  EXPECT_EQ(Expr("2,5*X^2/(a-b)").result, "2.5*X^2/(a-b)");
  Filtered f = Expr("x_1");
  EXPECT_FALSE(f.outcome);
  EXPECT_EQ(f.result, "x");
  EXPECT_EQ(f.rest, "_1");
  EXPECT_FALSE(Expr("x=1").outcome);
  EXPECT_FALSE(Expr("1e5#").outcome);
  EXPECT_EQ(Expr("").result, "0");
}

TEST(InsertImplicitProducts, FourRules) {
  const std::pair<const char*, const char*> cases[] = {
      {"x", "x"}, {"", "*"}, {"2", "2"}, {"x2", "x*2"},
      {"ax2", "ax2"}, {"2pi", "2*pi"}, {"2x", "2*x"}, {"3x2", "3*x*2"},
      {"2(x+1)", "2*(x+1)"}, {"(x+1)(x-1)", "(x+1)*(x-1)"}, {"(x)2", "(x)*2"}, {"(x).5", "(x)*.5"},
      {"x(x+1)", "x*(x+1)"}, {"+x(2)", "+x*(2)"}, {"pi(2)", "pi*(2)"}, {"pi2", "pi*2"},
      {"sin(x)", "sin(x)"}, {"tan(x)", "tan(x)"}, {"sin2x", "sin2*x"}, {"q(2)", "q(2)"},
      {"2q", "2*q"}, {"y,5", "y*,5"}, {"exp(-x^2)*cos(3x)", "exp(-x^2)*cos(3*x)"}, {"sqr(x^2+y^2)", "sqr(x^2+y^2)"},
  };
  for (const auto& [in, out] : cases) EXPECT_EQ(InsertImplicitProducts(in), out) << in;
}

TEST(FoldSigns, OnePassOverPairs) {
  EXPECT_EQ(FoldSigns("x+-2"), "x-2");
  EXPECT_EQ(FoldSigns("x--2"), "x+2");
  EXPECT_EQ(FoldSigns("x-+2"), "x-+2");
  EXPECT_EQ(FoldSigns("---"), "+-");
  EXPECT_EQ(FoldSigns("----"), "++");
  EXPECT_EQ(FoldSigns("+--"), "-" "-");
  EXPECT_EQ(FoldSigns(""), "");
  EXPECT_EQ(FoldSigns("-"), "-");
}

}  // namespace
}  // namespace vt
