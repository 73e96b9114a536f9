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

// Each case: the text, then the outcome, the cleaned text and what is left of the source.
TEST(FilterNumberText, CleansOrStopsAtTheFirstBadCharacter) {
  const std::pair<const char*, Filtered> cases[] = {
      {"1,5", {true, "1.5", ""}},        {" 1 2", {true, "12", ""}},  {"1e5", {true, "1e5", ""}},
      {"-2.5E-3", {true, "-2.5E-3", ""}}, {"1x", {false, "1", "x"}},  {"12+3", {false, "12", "+3"}},
      // Empty text and one blank give "0"; two blanks give "".
      {"", {true, "0", ""}},             {" ", {true, "0", ""}},     {"  ", {true, "", ""}},
  };
  for (const auto& [in, want] : cases) {
    const Filtered f = Number(in);
    EXPECT_EQ(f.outcome, want.outcome) << in;
    EXPECT_EQ(f.result, want.result) << in;
    EXPECT_EQ(f.rest, want.rest) << in;
  }
  EXPECT_FALSE(Number("\t1").outcome);  // only the blank is dropped
}

TEST(FilterExprText, KeepsFormulaCharacters) {
  const std::pair<const char*, Filtered> cases[] = {
      {"x + 1", {true, "x+1", ""}}, {"sin(x)", {true, "sin(x)", ""}}, {"2,5*X^2/(a-b)", {true, "2.5*X^2/(a-b)", ""}},
      {"x_1", {false, "x", "_1"}},  {"", {true, "0", ""}},
  };
  for (const auto& [in, want] : cases) {
    const Filtered f = Expr(in);
    EXPECT_EQ(f.outcome, want.outcome) << in;
    EXPECT_EQ(f.result, want.result) << in;
    EXPECT_EQ(f.rest, want.rest) << in;
  }
  EXPECT_FALSE(Expr("x=1").outcome);
  EXPECT_FALSE(Expr("1e5#").outcome);
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
  const std::pair<const char*, const char*> cases[] = {{"x+-2", "x-2"}, {"x--2", "x+2"}, {"x-+2", "x-+2"},
                                                       {"---", "+-"},   {"----", "++"},  {"+--", "-" "-"},
                                                       {"", ""},        {"-", "-"}};
  for (const auto& [in, out] : cases) EXPECT_EQ(FoldSigns(in), out) << in;
}

}  // namespace
}  // namespace vt
