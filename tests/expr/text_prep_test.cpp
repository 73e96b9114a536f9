// The input filters, implicit products and sign folding.
#include <gtest/gtest.h>

#include <string>

#include "expr/text_prep.h"

namespace vt {
namespace {

// Each case: number field or formula field, the text, then the outcome, the
// cleaned text and what is left of the source.
TEST(FilterText, CleansOrStopsAtTheFirstBadCharacter) {
  const struct {
    bool number;
    const char* in;
    bool ok;
    const char *result, *rest;
  } cases[] = {
      {true, "1,5", true, "1.5", ""},   {true, " 1 2", true, "12", ""}, {true, "1e5", true, "1e5", ""},
      {true, "-2.5E-3", true, "-2.5E-3", ""}, {true, "1x", false, "1", "x"}, {true, "12+3", false, "12", "+3"},
      // Empty text and one blank give "0"; two blanks give "".
      {true, "", true, "0", ""},        {true, " ", true, "0", ""},     {true, "  ", true, "", ""},
      {true, "\t1", false, "", "\t1"}, // only the blank is dropped
      {false, "x + 1", true, "x+1", ""}, {false, "2,5*X^2/(a-b)", true, "2.5*X^2/(a-b)", ""},
      {false, "x_1&y", false, "x_1", "&y"}, {false, "", true, "0", ""}, {false, "x=1", false, "x", "=1"},
      {false, "1e5#", false, "1e5", "#"},
  };
  for (const auto& c : cases) {
    std::string source = c.in, result = "junk";
    EXPECT_EQ(c.number ? FilterNumberText(source, result) : FilterExprText(source, result), c.ok) << c.in;
    EXPECT_EQ(result, c.result) << c.in;
    EXPECT_EQ(source, c.rest) << c.in;
  }
}

TEST(InsertImplicitProducts, FourRules) {
  const std::pair<const char*, const char*> cases[] = {
      {"x", "x"}, {"", "*"}, {"2", "2"}, {"x2", "x*2"},
      {"ax2", "ax2"}, {"2pi", "2*pi"}, {"2x", "2*x"}, {"3x2", "3*x*2"},
      {"2(x+1)", "2*(x+1)"}, {"(x+1)(x-1)", "(x+1)*(x-1)"}, {"(x)2", "(x)*2"}, {"(x).5", "(x)*.5"},
      {"x(x+1)", "x*(x+1)"}, {"+x(2)", "+x*(2)"}, {"pi(2)", "pi*(2)"}, {"pi2", "pi*2"},
      {"sin(x)", "sin(x)"}, {"tan(x)", "tan(x)"}, {"sin2x", "sin2*x"}, {"q(2)", "q(2)"},
      {"2q", "2*q"}, {"y,5", "y*,5"}, {"exp(-x^2)*cos(3x)", "exp(-x^2)*cos(3*x)"}, {"sqr(x^2+y^2)", "sqr(x^2+y^2)"},
      {"2e", "2*e"}, {"1e-3x+2E5", "1e-3*x+2E5"}, {"3log10(x)", "3*log10(x)"}, {"x1e2", "x*1*e2"},
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
